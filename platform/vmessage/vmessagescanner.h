// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <string_view>

namespace VMessageLines {
struct Line;
}

//! Finds the end of one vMessage in a UTF-8 file, line by line from its BEGIN:VMSG line:
//! \code
//! VMessageScanner scanner;
//! VMessageScanner::Taken taken;
//! do {
//!     taken = scanner.take(nextLine());
//! } while (taken.verdict == VMessageScanner::Unfinished);
//! \endcode
//! It keeps no bytes, and hands back those that belong to the next message.
//!
//! VMessageEncoder ends its lines in CR LF. In its form, a line behind a bare line feed is text and
//! never ends a message, so no text that it wrote can pass for another message. Other forms do not
//! show the difference. There, a text with an END:VBODY line ends early if only END:VENV lines
//! stand between that line and END:VMSG, BEGIN:VMSG or the end of the file. A BEGIN:VMSG line
//! always begins a message.
class KORVAPLATFORM_EXPORT VMessageScanner
{
public:
    enum Verdict {
        Unfinished,
        Whole,  //!< it ends on this line, in END:VMSG
        Broken, //!< likewise, but a body was closed whose BEGIN:VBODY is missing
        Cut //!< before this line, on which the next one begins; the parser tells what is missing
    };

    struct Taken
    {
        Verdict verdict = Unfinished;
        std::string_view unused; //!< the end of the line, where the next message begins; or empty
    };

    //! Whether a message begins with this line.
    static bool isBegin(std::string_view line);
    //! Whether it ends with this line.
    static bool isEnd(std::string_view line);
    //! Whether the line opens or closes a message, an envelope or a body.
    static bool isStructure(std::string_view line);

    //! \param line  the next one, with its line end, which the last line of a file may lack
    Taken take(std::string_view line);
    //! Whether the next line may be structure: by the rule above it is no text of the message.
    bool nextLineCanBeStructure() const { return !m_crLf || !m_isBehindFeed; }

private:
    enum Place {
        Start,
        Header, // and the vCards
        Body,
        Closing, // behind an END:VBODY line that closes the body unless text follows
    };

    Verdict takeInHeader(const VMessageLines::Line &line);
    Verdict takeInBody(const VMessageLines::Line &line);

    Place m_place = Start;
    bool m_crLf = true;    // the lines up to the body end in CR LF
    bool m_atText = false; // the next line is the first of the body
    bool m_ownText = false;
    bool m_mayBeClosed = false;  // the line before was END:VBODY behind a bare line feed
    bool m_isBehindFeed = false; // the line before ended in a bare line feed
    bool m_lacksBegin = false;   // END:VBODY came before any BEGIN:VBODY
};
