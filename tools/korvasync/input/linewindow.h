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
    static constexpr size_t HeadLength = 8192;

    //! As for InputFile.
    LineWindow(const QString &path, const QByteArray &readAhead);

    //! Reads the next piece of the file.
    //! \param needed  the first byte that is still needed
    //! \return false after an error and when a signal came: what is there of the next item is not
    //!         its all then
    bool fill(quint64 needed);

    bool hasEnded() const { return m_ended; }
    Reason error() const { return m_file.error(); } //!< empty = none so far
    qint64 bytesRead() const { return m_file.bytesRead(); }

    quint64 offset() const { return m_start + static_cast<quint64>(m_position); }
    quint64 end() const { return m_start + static_cast<quint64>(m_buffer.size()); }
    Mark here() const { return {offset(), m_line}; }
    //! Whether a line begins here that nobody has looked at; see enterLine().
    bool atLineStart() const { return m_isAtLineStart; }

    std::string_view view(quint64 from, quint64 to) const;
    QByteArray bytes(quint64 from, quint64 to) const;
    std::string_view rest() const { return view(offset(), end()); } //!< what was not taken
    //! The first bytes of the line that begins here; nothing when more of it has to be read.
    std::optional<std::string_view> lineHead() const;

    //! Whether the byte before is a line feed; there must be one.
    bool isBehindFeed() const { return m_buffer.at(m_position - 1) == '\n'; }

    void enterLine() { m_isAtLineStart = false; }
    void takeByte(char c); //!< which is next
    //! Takes the next bytes, which have no line end among them.
    void take(size_t count) { m_position += static_cast<Size>(count); }
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

    InputFile m_file;
    QByteArray m_buffer;
    quint64 m_start = 0; // of the buffer in the file
    Size m_position = 0; // in the buffer
    quint64 m_line = 1;
    bool m_isAtLineStart = true;
    bool m_ended = false;
};

inline void LineWindow::takeByte(char c)
{
    ++m_position;
    if (c == '\n')
        ++m_line;
}

inline std::string_view LineWindow::view(quint64 from, quint64 to) const
{
    return {m_buffer.constData() + (from - m_start), static_cast<size_t>(to - from)};
}
