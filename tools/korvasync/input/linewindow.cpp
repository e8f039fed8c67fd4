// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "linewindow.h"

#include "shared/interrupt.h"

#include <algorithm>

LineWindow::LineWindow(const QString &path, const QByteArray &readAhead)
    : m_file(path, readAhead)
{
}

bool LineWindow::fill(quint64 needed)
{
    const auto done = static_cast<Size>(needed - m_start);
    m_buffer.remove(0, done);
    m_start = needed;
    m_position -= done;
    const QByteArray piece = m_file.read();
    m_ended = piece.isEmpty();
    m_buffer += piece;
    return m_file.error().isEmpty() && (!m_ended || Interrupt::signalNumber() == 0);
}

QByteArray LineWindow::bytes(quint64 from, quint64 to) const
{
    return m_buffer.mid(static_cast<Size>(from - m_start), static_cast<Size>(to - from));
}

std::optional<std::string_view> LineWindow::lineHead() const
{
    const std::string_view head = rest().substr(0, HeadLength);
    const size_t feed = head.find('\n');
    if (feed == std::string_view::npos && head.size() < HeadLength && !m_ended)
        return std::nullopt;
    return head.substr(0, feed);
}

bool LineWindow::takeUpTo(const char *signs)
{
    const std::string_view text = rest();
    const size_t length = std::min(text.find_first_of(signs), text.size());
    take(length);
    return length < text.size();
}

void LineWindow::takeTo(quint64 to)
{
    const std::string_view passed = view(offset(), to);
    m_line += static_cast<quint64>(std::count(passed.begin(), passed.end(), '\n'));
    take(passed.size());
}

bool LineWindow::takeLine()
{
    const auto feed = m_buffer.indexOf('\n', m_position);
    m_position = feed < 0 ? m_buffer.size() : feed + 1;
    m_isAtLineStart = feed >= 0;
    if (m_isAtLineStart)
        ++m_line;
    return m_isAtLineStart;
}

void LineWindow::goBackTo(const Mark &mark)
{
    m_position = static_cast<Size>(mark.offset - m_start);
    m_line = mark.line;
    m_isAtLineStart = m_position == 0 || isBehindFeed();
}
