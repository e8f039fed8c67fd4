// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datelines.h"

#include "vmessagelines.h"

#include <algorithm>

using VMessageLines::startsWith;
using VMessageLines::trimmed;

namespace DateLines {

namespace {

// Y four digits, D two, d one or two, W and M the names of a day and a month, _ blanks, P AM or
// PM, s seconds or none, z a zone or none; all else stands for itself.
constexpr std::string_view spellings[] = {
    "YDDTDDDz",       // 20101103T142530Z, 19700000T000000Z
    "d.d.Y_d:Dsz",    // 03.11.2010 14:25:30
    "d-d-Y_d:Dsz",    // 03-11-2010 14:25:30
    "Y/d/d_d:Dsz",    // 2010/11/03 14:25:30 GMT
    "Y-d-d_d:Dsz",    // 2010-11-03 14:25:30
    "Y-d-dTd:Dsz",    // 2010-11-03T14:25:30
    "Y.d.d.d.d.dz",   // 2010.11.3.14.25.30Z
    "d:DP,_Y_M_d",    // 02:25PM, 2010 Nov 03
    "W,_d_M_Y_d:Dsz", // Wed, 03 Nov 2010 14:25:30 +0900
    "d_M_Y_d:Dsz",
};

constexpr std::string_view days = "MonTueWedThuFriSatSun";
constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

size_t digitCount(std::string_view text)
{
    return size_t(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
}

bool take(std::string_view *text, size_t length, bool fits)
{
    if (fits)
        text->remove_prefix(length);
    return fits;
}

bool takeDigits(std::string_view *text, size_t least, size_t most)
{
    const size_t count = std::min(digitCount(*text), most);
    return take(text, count, count >= least);
}

bool takeBlanks(std::string_view *text)
{
    const size_t count = std::min(text->find_first_not_of(' '), text->size());
    return take(text, count, count > 0);
}

bool takeName(std::string_view *text, std::string_view names)
{
    for (; !names.empty(); names.remove_prefix(3)) {
        if (startsWith(*text, names.substr(0, 3)))
            return take(text, 3, true);
    }
    return false;
}

bool takeSeconds(std::string_view *text)
{
    if (startsWith(*text, ":")) {
        text->remove_prefix(1);
        if (!takeDigits(text, 1, 2))
            return false;
        if (startsWith(*text, "."))
            text->remove_prefix(1 + digitCount(text->substr(1)));
    }
    return true;
}

bool takeZone(std::string_view *text)
{
    takeBlanks(text);
    for (std::string_view name : {"Z", "GMT", "UTC", "UT"}) {
        if (VMessageLines::equals(*text, name))
            return take(text, name.size(), true);
    }
    if (text->empty() || (text->front() != '+' && text->front() != '-'))
        return true;
    text->remove_prefix(1);
    if (!takeDigits(text, 2, 2))
        return false;
    take(text, 1, startsWith(*text, ":"));
    return takeDigits(text, 2, 2);
}

bool takePart(std::string_view *text, char part)
{
    switch (part) {
    case 'Y':
        return takeDigits(text, 4, 4);
    case 'D':
        return takeDigits(text, 2, 2);
    case 'd':
        return takeDigits(text, 1, 2);
    case 'W':
        return takeName(text, days);
    case 'M':
        return takeName(text, months);
    case '_':
        return takeBlanks(text);
    case 'P':
        return take(text, 2, startsWith(*text, "AM") || startsWith(*text, "PM"));
    case 's':
        return takeSeconds(text);
    case 'z':
        return takeZone(text);
    default:
        return take(text, 1, startsWith(*text, std::string_view(&part, 1)));
    }
}

bool isSpelledAs(std::string_view text, std::string_view spelling)
{
    return std::all_of(spelling.begin(), spelling.end(),
                       [&text](char part) { return takePart(&text, part); })
        && text.empty();
}

// Seconds or milliseconds since 1970; a shorter number is what a person writes.
bool isCount(std::string_view text, size_t leastDigits)
{
    return text.size() >= leastDigits && digitCount(text) == text.size();
}

bool isDate(std::string_view text)
{
    constexpr size_t secondsDigits = 9;
    return text.empty() || text == "0" || isCount(text, secondsDigits)
        || std::any_of(std::begin(spellings), std::end(spellings),
                       [text](std::string_view spelling) { return isSpelledAs(text, spelling); });
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
    return isApart && isCount(rest, millisecondsDigits) ? std::optional(rest) : std::nullopt;
}

} // namespace DateLines
