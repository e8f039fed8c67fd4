// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QScopedPointer>

#include <string_view>

class VMessageScannerPrivate;

//! Finds the vMessages in a UTF-8 file that is read piece by piece:
//! \code
//! while (read(&chunk)) {
//!     scanner.add(chunk);
//!     while (scanner.next(&message))
//!         parse(message.bytes);
//! }
//! scanner.finish();
//! while (scanner.next(&message)) ...
//! \endcode
//! What stands before, between and behind the messages is passed over. The size of the
//! pieces makes no difference, and no byte is looked at more often for being in a long
//! message. The scanner keeps what it has not handed out.
//!
//! In the form of VMessageEncoder, whose lines end in CR LF, what stands behind a bare line feed
//! is text and never ends a message: so no text that it wrote can pass for another message.
//! In any other form this cannot be told: there a text with an END:VBODY line ends early if
//! nothing but END:VENV lines stands between it and END:VMSG, BEGIN:VMSG or the end of the file,
//! and a BEGIN:VMSG line always begins a message.
class KORVAPLATFORM_EXPORT VMessageScanner
{
public:
    struct Message
    {
        std::string_view bytes; //!< from BEGIN:VMSG on; for VMessageParser::parseVMessage()
        quint64 offset = 0;     //!< of the first byte in the file
        quint64 line = 0;       //!< of BEGIN:VMSG in the file, from 1
        bool complete = false;  //!< ends in END:VMSG; if not, the parser tells whether it was cut
        bool isJoined = false;  //!< the next one begins on the line on which this one ends
    };

    //! Whether a message begins with this line.
    static bool isBegin(std::string_view line);
    //! Whether it ends with this line.
    static bool isEnd(std::string_view line);
    //! Whether the line opens or closes a message, an envelope or a body.
    static bool isStructure(std::string_view line);

    VMessageScanner();
    ~VMessageScanner();

    //! Adds the next bytes of the file. Ends the life of all bytes handed out so far.
    void add(std::string_view bytes);
    //! Says that the file has ended, so that its last lines count as whole.
    void finish();
    //! Whether the line that begins behind all bytes so far may be structure: by the rule
    //! above it is no text of the open message.
    bool nextLineCanBeStructure() const;
    //! \return false when the next message is not there as a whole; after finish(): no more
    bool next(Message *message);

private:
    Q_DISABLE_COPY(VMessageScanner)
    QScopedPointer<VMessageScannerPrivate> d;
};
