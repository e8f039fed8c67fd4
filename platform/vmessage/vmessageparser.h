// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QScopedPointer>

class VMessageParserPrivate;

//! One parsed vMessage (IrMC 1.1, section 9.9). Owned by its parser.
class VMessage;

// The four records of a parsed vMessage. Every text is a zero-terminated byte string that lives as
// long as the parser's message. It is null if the vMessage has no such part. Values are as written,
// without blanks at their ends; the records do not interpret them. An empty name, number or date
// counts as absent.

struct VMessageHeader
{
    const char *status; //!< X-IRMC-STATUS, else X-READ or X-MESSAGE-STATUS
    const char *box;    //!< X-IRMC-BOX, else X-BOX
    const char *type;   //!< X-IRMC-TYPE, else X-TYPE
    const char
        *dateTime; //!< X-QLT-DT or another maker's X-...-DT, else the Date line, else DateOrigin
    const char *messageType; //!< X-MESSAGE-TYPE; DELIVER or SUBMIT, 1 or 2: received or sent
};

struct VMessageOriginator
{
    const char *name;              //!< N of the first vCard with a number outside the envelopes
    const char *telephone;         //!< its first TEL or FROMTEL; some write the recipient here
    const char *const *telephones; //!< that of every such vCard, \a count of them
    int count;
};

struct VMessageRecipient
{
    const char *name;              //!< N of the first vCard with a number inside an envelope
    const char *telephone;         //!< its first TEL or FROMTEL
    const char *const *telephones; //!< that of every such vCard, \a count of them
    int count;
};

struct VMessageBody
{
    const char *date;     //!< value of a Date line at the top of the body
    const char *property; //!< name of the property that carried the text, null for bare lines
    const char *encoding; //!< transfer encoding as named, such as QUOTED-PRINTABLE
    const char *charset;  //!< as named by the body, else by a card; \a text is UTF-8 all the same
    const char *language; //!< likewise
    const char *text;     //!< the message text, decoded, in UTF-8, line ends as LF
    int length;           //!< bytes of \a text without the terminating zero
};

//! Why bytes hold no message that is whole, and the line where it shows.
struct VMessageProblem
{
    enum Kind {
        None,           //!< there is a message
        NoBegin,        //!< BEGIN:VMSG is missing; the first line
        CutHeader,      //!< what stands above the text is cut; its last line that is not blank
        NoBody,         //!< BEGIN:VBODY is missing; the first line that closes body or envelope
        OpenBody,       //!< END:VBODY is missing; the line of BEGIN:VBODY
        LineBehindBody, //!< the first line behind END:VBODY that closes no message
        LongText        //!< beyond what VMessageBody::length holds; the line of BEGIN:VBODY
    };

    Kind kind = None;
    unsigned line = 0; //!< of the bytes, from 1; 0 = no problem
};

//! Parser for text messages stored as vMessage, in the forms that VMessageEncoder, phones
//! and backup programs write. One object parses one message after the other; the latest
//! result replaces the one before.
//!
//! A text that holds vMessage syntax comes back whole: the lines that close the message are
//! looked for from the end. So give it one message at a time; VMessageScanner finds them in
//! a file of many.
class KORVAPLATFORM_EXPORT VMessageParser
{
public:
    VMessageParser();
    ~VMessageParser();

    //! \param data    the bytes; UTF-8, or another character set where the vMessage names it
    //! \param length  bytes to read; zeros at the end and lines around the message are passed over
    //! \return owned by the parser, until the next call. Null if the bytes hold no message, or one
    //!         that is cut short. A message that only lacks END:VENV and END:VMSG behind a closed
    //!         body is whole.
    const VMessage *parseVMessage(const char *data, unsigned int length);

    //! Why the latest bytes gave no message. VMessageProblem::None if they gave one.
    VMessageProblem problem() const;

    //! Each returns null when the message has no such part.
    const VMessageHeader *header(const VMessage *message);
    const VMessageOriginator *originator(const VMessage *message);
    const VMessageRecipient *recipients(const VMessage *message); //!< the first recipient only
    const VMessageBody *body(const VMessage *message);

private:
    Q_DISABLE_COPY(VMessageParser)
    QScopedPointer<VMessageParserPrivate> d;
};
