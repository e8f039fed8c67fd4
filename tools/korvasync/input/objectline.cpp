// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "objectline.h"

#include <QtCore/QByteArray>

#include <array>
#include <cctype>

namespace ObjectLine {

namespace {

constexpr std::array<std::string_view, 5> Names{CallEntry, "VMESSAGE", "BMSG", "VNOTE",
                                                "VCALENDAR"};

std::string_view trimmed(std::string_view line)
{
    constexpr std::string_view blanks(" \t\n\v\f\r");
    const size_t first = line.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

// What stands in the wrong letter case, or with blanks around it, is an object all the same,
// so that it is refused instead of passed over.
bool takeWord(std::string_view &line, std::string_view word)
{
    if (line.size() < word.size()
        || qstrnicmp(line.data(), word.data(), static_cast<uint>(word.size())) != 0)
        return false;
    line.remove_prefix(word.size());
    return true;
}

bool isName(std::string_view words, std::string_view name)
{
    return takeWord(words, name)
        && (words.empty() || !std::isalnum(static_cast<unsigned char>(words.front())));
}

} // namespace

std::string_view beginOf(std::string_view line)
{
    const size_t word = line.find_first_not_of(" \t");
    if (word == std::string_view::npos || (line[word] != 'B' && line[word] != 'b'))
        return {}; // as most lines
    std::string_view words = trimmed(line);
    if (!takeWord(words, "BEGIN:"))
        return {};
    for (const std::string_view name : Names) {
        if (isName(words, name))
            return name;
    }
    return {};
}

bool isEnd(std::string_view line, std::string_view name)
{
    std::string_view words = trimmed(line);
    return takeWord(words, "END:") && isName(words, name);
}

} // namespace ObjectLine
