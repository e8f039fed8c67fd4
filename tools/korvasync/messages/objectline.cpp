// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "objectline.h"

#include <QtCore/QByteArray>

#include <array>
#include <cctype>

namespace ObjectLine {

namespace {

constexpr std::array<std::string_view, 5> names{callEntry, "VMESSAGE", "BMSG", "VNOTE",
                                                "VCALENDAR"};

// What stands in the wrong letter case, or with blanks around it, is an object all the same,
// so that it is refused instead of passed over.
QByteArray wordsOf(std::string_view line)
{
    return QByteArray(line.data(), static_cast<int>(line.size())).trimmed().toUpper();
}

bool isObjectLine(const QByteArray &words, const char *keyword, std::string_view name)
{
    const QByteArray wanted =
        QByteArray(keyword).append(name.data(), static_cast<int>(name.size()));
    return words.startsWith(wanted)
        && (words.size() == wanted.size()
            || !std::isalnum(static_cast<unsigned char>(words.at(wanted.size()))));
}

} // namespace

std::string_view beginOf(std::string_view line)
{
    const size_t word = line.find_first_not_of(" \t");
    if (word == std::string_view::npos || (line[word] != 'B' && line[word] != 'b'))
        return {};
    const QByteArray words = wordsOf(line);
    for (const std::string_view name : names) {
        if (isObjectLine(words, "BEGIN:", name))
            return name;
    }
    return {};
}

bool isEnd(std::string_view line, std::string_view name)
{
    return isObjectLine(wordsOf(line), "END:", name);
}

} // namespace ObjectLine
