// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QScopedPointer>

class VMessageParserPrivate;

//! One parsed vMessage (IrMC 1.1, section 9.9). Owned by its parser.
class VMessage;

// The four records of a parsed vMessage. Every text is a zero-terminated byte string
// that lives as long as the parser's message, or null when the vMessage has no such
// part. What they hold is told apart from what it means: values stand as written, ends
// trimmed.

struct VMessageHeader
{
    const char *status;   //!< X-IRMC-STATUS
    const char *box;      //!< X-IRMC-BOX
    const char *type;     //!< X-IRMC-TYPE
    const char *dateTime; //!< X-QLT-DT or another maker's X-...-DT, else the body's Date line
};

struct VMessageOriginator
{
    const char *name;      //!< N of the sender's vCard 2.1
    const char *telephone; //!< TEL of the sender's vCard 2.1
};

struct VMessageRecipient
{
    const char *name;      //!< N of the first recipient's vCard 2.1
    const char *telephone; //!< TEL of the first recipient's vCard 2.1
};

struct VMessageBody
{
    const char *date;     //!< value of a Date line at the top of the body
    const char *property; //!< name of the property that carried the text, null for bare lines
    const char *encoding; //!< transfer encoding as named, such as QUOTED-PRINTABLE
    const char *charset;  //!< character set as named; the text itself is UTF-8 whatever it says
    const char *language;
    const char *text; //!< the message text, decoded, in UTF-8, line ends as LF
    int length;       //!< bytes of \a text without the terminating zero
};

//! Parser for text messages stored as vMessage. One object parses one message after
//! the other; the latest result replaces the one before.
class KORVAPLATFORM_EXPORT VMessageParser
{
public:
    VMessageParser();
    ~VMessageParser();

    //! \param data    the bytes; UTF-8, or another character set where the vMessage names it
    //! \param length  bytes to read; a terminating zero may be counted in
    //! \return the message, or null when the bytes hold none or its body is cut short
    const VMessage *parseVMessage(const char *data, unsigned int length);

    //! Each returns null when the message has no such part.
    const VMessageHeader *header(const VMessage *message);
    const VMessageOriginator *originator(const VMessage *message);
    const VMessageRecipient *recipients(const VMessage *message); //!< the first recipient only
    const VMessageBody *body(const VMessage *message);

private:
    Q_DISABLE_COPY(VMessageParser)
    QScopedPointer<VMessageParserPrivate> d;
};
