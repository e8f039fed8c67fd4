// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/historyitem.h>
#include <korvasync/korvasyncexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>

namespace KorvaSyncIf {

//! Reads text messages that are vMessages 1.1 (IrMC 1.1, section 9.9), in the form of
//! VMessageEncoder and in those of phones and backup programs.
//!
//! \include readmessage.cpp
//!
//! A plain value. One decoder may decode any number of messages, one after the other; what it tells
//! is about the latest. It needs a libkorvasync that was built with korvasync's own platform.
//!
//! The bytes hold one message. Lines around it and zeros at their end are passed over. Lines end in
//! CR LF or LF. The bytes are UTF-8, or in the character set that the message names.
//!
//! Decoding what VMessageEncoder wrote gives back the message, whatever its text says, without the
//! carriage returns that the encoder drops. No text is cut short: a message that is not whole is
//! refused, unless only its last END:VENV and END:VMSG are missing.
class KORVASYNC_EXPORT VMessageDecoder
{
public:
    //! Why bytes hold no message that is whole, and the line where it shows.
    struct Problem
    {
        enum Kind {
            None,           //!< there is a message
            NoBegin,        //!< BEGIN:VMSG is missing; line 1
            CutHeader,      //!< cut above the text; the last line that is not blank
            NoBody,         //!< BEGIN:VBODY is missing; the first line that closes body or envelope
            OpenBody,       //!< END:VBODY is missing; the line of BEGIN:VBODY
            LineBehindBody, //!< the first line behind END:VBODY that closes no message
            LongText,       //!< more than 2 GiB; the line of BEGIN:VBODY, or 1 for all the bytes
            SecondMessage   //!< another message begins behind or in the first; its BEGIN:VMSG
        };

        Kind kind = None;
        int line = 0; //!< of the bytes, from 1; 0 = no problem
    };

    VMessageDecoder() = default;
    ~VMessageDecoder() = default;

    //! The zone of times that name none. Without a call, or for an invalid zone, the system's.
    void setLocalZone(const QTimeZone &zone) { localZone = zone; }

    //! The folder of messages that name no known one, a LocationId or a user's own folder. 0, the
    //! default, leaves such a message without a folder.
    void setDefaultFolder(int folder) { defaultFolder = folder; }

    //! Decodes a message. Takes time and memory in proportion to the bytes.
    //!
    //! | member of \a item | from |
    //! |---|---|
    //! | folder | the box, by its first letters in any case; else the status DRAFT or SENT, or the
    //! message type DELIVER or 1 (inbox), SUBMIT or 2 (sent); else the default folder | | direction
    //! | the folder; Unknown without one | | party | the first number in the recipient's place of
    //! an outbound message, else in the originator's; in the other place if this one has none | |
    //! time | the header, else the text's Date line; null if none can be read | | isRead | the
    //! status READ or 1; true for an outbound message, unless the status is UNREAD or 0 | | text |
    //! decoded, every line end a line feed; a byte order mark and zeros stay | | charset, encoding,
    //! language | as named; null if they are not |
    //!
    //! The other members get their defaults. A local time that a change of the clock skips is taken
    //! as if the clock had not been put forward. Of one that it shows twice the first is meant. The
    //! beginning of 1970 stands for no time.
    //!
    //! \param vMessage  the bytes of one message
    //! \param item      set only if there is one; not null
    //! \return whether there is a message that is whole; if not, problem() says why
    [[nodiscard]] bool decode(const QByteArray &vMessage, HistoryItem *item);

    //! Why the latest bytes gave no message. Problem::None if they gave one.
    Problem problem() const { return latestProblem; }

    //! What kind of object the message is, as it says itself: SMS, but also INET for an e-mail or
    //! MMS. Empty if it does not say.
    QString type() const { return latestType; }

    //! Numbers in the originator's place, as written, one for each vCard that has one. Many
    //! programs write the other party always here.
    QStringList originators() const { return latestOriginators; }

    //! Numbers in the recipient's place, likewise. HistoryItem::party holds only the first; a
    //! message to several has the others here.
    QStringList recipients() const { return latestRecipients; }

private:
    QTimeZone localZone;
    int defaultFolder = 0;
    Problem latestProblem;
    QString latestType;
    QStringList latestOriginators;
    QStringList latestRecipients;
};

} // namespace KorvaSyncIf
