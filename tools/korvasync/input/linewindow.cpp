// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "linewindow.h"

#include "shared/interrupt.h"

#include <algorithm>

LineWindow::LineWindow(const QString &path, const QByteArray &readAhead)
    : file(path, readAhead)
{
}

bool LineWindow::fill(quint64 needed)
{
    const auto done = static_cast<Size>(needed - start);
    buffer.remove(0, done);
    start = needed;
    position -= done;
    const QByteArray piece = file.read();
    ended = piece.isEmpty();
    buffer += piece;
    return file.error().isEmpty() && (!ended || Interrupt::signalNumber() == 0);
}

QByteArray LineWindow::bytes(quint64 from, quint64 to) const
{
    return buffer.mid(static_cast<Size>(from - start), static_cast<Size>(to - from));
}

std::optional<std::string_view> LineWindow::lineHead() const
{
    const std::string_view head = rest().substr(0, headLength);
    const size_t feed = head.find('\n');
    if (feed == std::string_view::npos && head.size() < headLength && !ended)
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
    line += static_cast<quint64>(std::count(passed.begin(), passed.end(), '\n'));
    take(passed.size());
}

bool LineWindow::takeLine()
{
    const auto feed = buffer.indexOf('\n', position);
    position = feed < 0 ? buffer.size() : feed + 1;
    isAtLineStart = feed >= 0;
    if (isAtLineStart)
        ++line;
    return isAtLineStart;
}

void LineWindow::goBackTo(const Mark &mark)
{
    position = static_cast<Size>(mark.offset - start);
    line = mark.line;
    isAtLineStart = position == 0 || isBehindFeed();
}
