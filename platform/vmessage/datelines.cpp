// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datelines.h"

#include "datespellings.h"
#include "vmessagelines.h"

using VMessageLines::startsWith;
using VMessageLines::trimmed;

namespace DateLines {

namespace {

bool isDate(std::string_view text)
{
    constexpr size_t secondsDigits = 9; // a shorter number is what a person writes
    return text.empty() || text == "0" || DateSpellings::isCount(text, secondsDigits)
        || DateSpellings::isDate(text);
}

} // namespace

std::optional<std::string_view> dateOf(std::string_view line)
{
    constexpr std::string_view name = "Date";
    constexpr size_t millisecondsDigits = 12;
    if (!startsWith(line, name))
        return std::nullopt;
    const std::string_view behindName = line.substr(name.size());
    const std::string_view rest = trimmed(behindName);
    if (startsWith(rest, ":")) {
        const std::string_view value = trimmed(rest.substr(1));
        return isDate(value) ? std::optional(value) : std::nullopt;
    }
    const bool isApart = rest.data() != behindName.data();
    return isApart && DateSpellings::isCount(rest, millisecondsDigits) ? std::optional(rest)
                                                                       : std::nullopt;
}

} // namespace DateLines
