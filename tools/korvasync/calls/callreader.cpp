// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callreader.h"

#include "process/interrupt.h"

CallReader::CallReader(const QString &path)
    : file(path)
    , errorText(file.error())
{
}

// An entry has a few hundred bytes; what never ends is not kept.
static constexpr int longestEntry = 1024 * 1024;

// What stands in the wrong letter case, or with blanks around it, is an entry all the same,
// so that it is refused instead of passed over.
static bool is(const QByteArray &line, const char *start)
{
    return line.trimmed().toUpper().startsWith(start);
}

std::optional<CallReader::Entry> CallReader::next()
{
    Entry entry;
    while (lineIsBegin || readLine()) {
        if (!lineIsBegin && entry.line == 0 && firstLine.isEmpty())
            firstLine = line.trimmed();
        const bool begins = is(line, "BEGIN:VCALLHISTENTRY");
        const bool ends = is(line, "END:VCALLHISTENTRY");
        if (begins && entry.line != 0) {
            lineIsBegin = true;
            return entry;
        }
        lineIsBegin = false;
        if (entry.line == 0 && (begins || ends))
            entry.line = lineNumber;
        if (entry.line != 0)
            entry.bytes += line;
        if (ends)
            return entry;
        if (entry.bytes.size() > longestEntry)
            errorText = QStringLiteral("no entry ends within 1 MiB");
    }
    const bool isCut = !errorText.isEmpty() || Interrupt::signalNumber() != 0;
    return entry.line != 0 && !isCut ? std::optional(entry) : std::nullopt;
}

//! \return false at the end, after an error and when a signal came
bool CallReader::readLine()
{
    auto end = buffer.indexOf('\n', position);
    while (end < 0 && errorText.isEmpty()) {
        const QByteArray piece = file.read();
        errorText = file.error();
        if (piece.isEmpty())
            break;
        buffer = buffer.mid(position) + piece;
        position = 0;
        end = buffer.indexOf('\n');
        if (end < 0 && buffer.size() > longestEntry)
            errorText = QStringLiteral("a line is longer than 1 MiB");
    }
    const auto length = (end < 0 ? buffer.size() : end + 1) - position;
    line = buffer.mid(position, length);
    position += length;
    ++lineNumber;
    return !line.isEmpty() && errorText.isEmpty();
}
