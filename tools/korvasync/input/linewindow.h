// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "inputfile.h"

#include <optional>
#include <string_view>

//! The bytes of a file that are in memory, from the first that somebody still needs to the last
//! that was read, with the position of the reader and its line. Offsets count from the beginning
//! of the file.
class LineWindow
{
public:
    //! A position in the file.
    struct Mark
    {
        quint64 offset = 0;
        quint64 line = 1;
    };
    //! Of a line that much is looked at to tell what it begins or ends: a reason names a file.
    static constexpr size_t headLength = 8192;

    //! As for InputFile.
    LineWindow(const QString &path, const QByteArray &readAhead);

    //! Reads the next piece of the file.
    //! \param needed  the first byte that is still needed
    //! \return false after an error and when a signal came: what is there of the next item is not
    //!         its all then
    bool fill(quint64 needed);

    bool hasEnded() const { return ended; }
    Reason error() const { return file.error(); } //!< empty = none so far
    qint64 bytesRead() const { return file.bytesRead(); }

    quint64 offset() const { return start + static_cast<quint64>(position); }
    quint64 end() const { return start + static_cast<quint64>(buffer.size()); }
    Mark here() const { return {offset(), line}; }
    //! Whether a line begins here that nobody has looked at; see enterLine().
    bool atLineStart() const { return isAtLineStart; }

    std::string_view view(quint64 from, quint64 to) const;
    QByteArray bytes(quint64 from, quint64 to) const;
    std::string_view rest() const { return view(offset(), end()); } //!< what was not taken
    //! The first bytes of the line that begins here; nothing when more of it has to be read.
    std::optional<std::string_view> lineHead() const;

    //! Whether the byte before is a line feed; there must be one.
    bool isBehindFeed() const { return buffer.at(position - 1) == '\n'; }

    void enterLine() { isAtLineStart = false; }
    void takeByte(char c); //!< which is next
    //! Takes the next bytes, which have no line end among them.
    void take(size_t count) { position += static_cast<Size>(count); }
    //! Takes all up to the first of these signs. \return false when none is there yet
    bool takeUpTo(const char *signs);
    //! Takes bytes up to this offset, and counts the lines.
    void takeTo(quint64 to);
    //! Takes the rest of the line. \return false when its end is further on
    bool takeLine();
    //! Goes to a position that was passed and is still in memory.
    void goBackTo(const Mark &mark);

private:
    using Size = decltype(QByteArray().size());

    InputFile file;
    QByteArray buffer;
    quint64 start = 0; // of the buffer in the file
    Size position = 0; // in the buffer
    quint64 line = 1;
    bool isAtLineStart = true;
    bool ended = false;
};

inline void LineWindow::takeByte(char c)
{
    ++position;
    if (c == '\n')
        ++line;
}

inline std::string_view LineWindow::view(quint64 from, quint64 to) const
{
    return {buffer.constData() + (from - start), static_cast<size_t>(to - from)};
}
