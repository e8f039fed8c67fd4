// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <algorithm>
#include <string_view>

// The lines of a vMessage, and the rule by which its body ends. Parser and scanner share them, so
// that both see the same message in the same bytes.
namespace VMessageLines {

enum class LineEnd { CrLf, Lf, None };

struct Line
{
    std::string_view text; //!< without the line end
    std::string_view rest; //!< what follows the line end
    LineEnd end;
};

//! The first line of \a bytes.
Line readLine(std::string_view bytes);

enum class Keyword {
    None,
    BeginVMsg,
    EndVMsg,
    BeginVEnv,
    EndVEnv,
    BeginVCard,
    EndVCard,
    BeginVBody,
    EndVBody,
};

//! What a line opens or closes. Blanks around the colon and at the end of the line are ignored, but
//! not before its first word: an indented line is text. A line that closes one message and begins
//! the next counts as the first of the two; see joint().
Keyword keyword(std::string_view line);

//! Where BEGIN:VMSG begins on a line with END:VMSG and BEGIN:VMSG, in bytes; 0 for any other line.
//! Such a line arises when files are joined and the first lacks its last line end.
size_t joint(std::string_view line);

// These run many times for every line, and are here for the compiler to inline.

inline bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

inline char lower(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

//! The text without blanks at either end.
inline std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

//! Ignores the case of ASCII letters.
inline bool startsWith(std::string_view text, std::string_view start)
{
    return text.size() >= start.size()
        && std::equal(start.begin(), start.end(), text.begin(),
                      [](char a, char b) { return a == b || lower(a) == lower(b); });
}

//! Ignores the case of ASCII letters.
inline bool equals(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && startsWith(a, b);
}

//! The start of the END:VBODY line that closes the body at the start of \a bytes: the last one that
//! is followed only by END:VENV lines, up to END:VMSG, BEGIN:VMSG or the end. Null if the body is
//! not closed.
//! \param own  see isOwnText()
const char *findBodyEnd(std::string_view bytes, bool own);

//! Whether a body is in the form of VMessageEncoder. That drops every carriage return from a text,
//! ends its own lines in CR LF, and begins the text behind the name of its property. In this form a
//! line behind a bare line feed is text, whatever it says, and no other line is.
//! \param crLf  the lines before the body end in CR LF
inline bool isOwnText(std::string_view firstLine, bool crLf)
{
    return crLf && startsWith(firstLine, "X-SMS");
}

//! What tells an END:VBODY line behind a bare line feed, as an editor leaves it that ends
//! its lines so, from a text that ends in these words: behind that text another END:VBODY
//! line follows. (Where files were joined, the last line may have lost its end.)
inline bool closesEnvelope(Keyword word, LineEnd end)
{
    return (word == Keyword::EndVEnv || word == Keyword::EndVMsg) && end != LineEnd::Lf;
}

} // namespace VMessageLines
