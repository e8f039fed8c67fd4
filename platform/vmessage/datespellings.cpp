// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datespellings.h"

#include "vmessagelines.h"

#include <algorithm>

namespace DateSpellings {

namespace {

// The one table. A letter stands for a part of the date:
//   Y                year, four digits
//   M D h m s        month to second, one or two digits; two behind a 2
//   N                name of the month
//   W                name of the day of the week, or none
//   c                hour:minute[:second[.fraction]]
//   C                hour.minute[.second[.fraction]]
//   P                AM or PM
//   z                zone, or none
//   _                blanks; a blank: blanks or none
//   ,                a comma or none
// All else stands for itself.
constexpr std::string_view Spellings[] = {
    "Y2M2DT2h2m2sz", // 20101103T142530Z, 19700000T000000Z
    "D.M.Y_cz",      // 03.11.2010 14:25:30
    "D-M-Y_cz",      // 03-11-2010 14:25:30
    "Y/M/D_cz",      // 2010/11/03 14:25:30 GMT
    "Y/M/DTcz",      "Y/M/D.Cz",
    "Y-M-D_cz", // 2010-11-03 14:25:30
    "Y-M-DTcz", // 2010-11-03T14:25:30
    "Y-M-D.Cz",      "Y.M.D_cz", "Y.M.DTcz",
    "Y.M.D.Cz",      // 2010.11.3.14.25.30Z
    "h:m P, Y N Dz", // 02:25PM, 2010 Nov 03
    "W, D N Y_cz",   // Wed, 03 Nov 2010 14:25:30 +0900
};

constexpr std::string_view DayNames = "MonTueWedThuFriSatSun";
constexpr std::string_view MonthNames = "JanFebMarAprMayJunJulAugSepOctNovDec";

enum class Half { None, Morning, Afternoon };

//! A date as it stands, and how its day is counted.
struct Written
{
    Date date;
    Half half = Half::None;
    int zoneSign = 0; // 0 = no distance is named
    int zoneHours = 0;
    int zoneMinutes = 0;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

//! Takes a text apart from the left.
class Scanner
{
public:
    explicit Scanner(std::string_view text)
        : m_rest(text)
    {
    }

    bool atEnd() const { return m_rest.empty(); }

    bool take(std::string_view word)
    {
        const bool fits = VMessageLines::startsWith(m_rest, word);
        if (fits)
            m_rest.remove_prefix(word.size());
        return fits;
    }

    bool take(char c) { return take(std::string_view(&c, 1)); }

    bool takeBlanks()
    {
        const size_t count = std::min(m_rest.find_first_not_of(' '), m_rest.size());
        m_rest.remove_prefix(count);
        return count > 0;
    }

    //! At most so many digits are taken.
    bool takeNumber(size_t least, size_t most, int *number)
    {
        size_t digits = 0;
        *number = 0;
        for (; digits < most && digits < m_rest.size() && isDigit(m_rest[digits]); ++digits)
            *number = *number * 10 + (m_rest[digits] - '0');
        m_rest.remove_prefix(digits);
        return digits >= least;
    }

    //! One of names of three letters. \return its place from 1, 0 for none
    int takeName(std::string_view names)
    {
        for (size_t at = 0; at < names.size(); at += 3) {
            if (take(names.substr(at, 3)))
                return int(at / 3) + 1;
        }
        return 0;
    }

    //! \return whether one of them is not 0
    bool takeFraction()
    {
        const auto isNoDigit = [](char c) { return !isDigit(c); };
        const auto end = std::find_if(m_rest.begin(), m_rest.end(), isNoDigit);
        const bool isMore = std::any_of(m_rest.begin(), end, [](char c) { return c != '0'; });
        m_rest.remove_prefix(size_t(end - m_rest.begin()));
        return isMore;
    }

private:
    std::string_view m_rest;
};

bool takeClock(Scanner &scanner, Date *date, char separator)
{
    if (!scanner.takeNumber(1, 2, &date->hour) || !scanner.take(separator)
        || !scanner.takeNumber(1, 2, &date->minute))
        return false;
    if (!scanner.take(separator))
        return true;
    if (!scanner.takeNumber(1, 2, &date->second))
        return false;
    date->hasFraction = scanner.take('.') && scanner.takeFraction();
    return true;
}

// Nothing, Z, GMT, UTC, UT, or a distance such as +0900 or -05:30.
bool takeZone(Scanner &scanner, Written *written)
{
    scanner.takeBlanks();
    for (std::string_view utc : {"Z", "GMT", "UTC", "UT"}) {
        if (scanner.take(utc)) {
            written->zoneSign = 1;
            scanner.takeBlanks();
            return true;
        }
    }
    written->zoneSign = scanner.take('-') ? -1 : scanner.take('+') ? 1 : 0;
    if (written->zoneSign == 0)
        return true;
    if (!scanner.takeNumber(2, 2, &written->zoneHours))
        return false;
    scanner.take(':');
    const bool fits = scanner.takeNumber(2, 2, &written->zoneMinutes);
    scanner.takeBlanks();
    return fits;
}

bool takeHalf(Scanner &scanner, Half *half)
{
    *half = scanner.take("AM") ? Half::Morning : scanner.take("PM") ? Half::Afternoon : Half::None;
    return *half != Half::None;
}

bool takePart(Scanner &scanner, char part, size_t leastDigits, Written *written)
{
    Date &date = written->date;
    switch (part) {
    case 'Y':
        return scanner.takeNumber(4, 4, &date.year);
    case 'M':
        return scanner.takeNumber(leastDigits, 2, &date.month);
    case 'D':
        return scanner.takeNumber(leastDigits, 2, &date.day);
    case 'h':
        return scanner.takeNumber(leastDigits, 2, &date.hour);
    case 'm':
        return scanner.takeNumber(leastDigits, 2, &date.minute);
    case 's':
        return scanner.takeNumber(leastDigits, 2, &date.second);
    case 'N':
        date.month = scanner.takeName(MonthNames);
        return date.month > 0;
    case 'W':
        scanner.takeName(DayNames);
        return true;
    case 'c':
        return takeClock(scanner, &date, ':');
    case 'C':
        return takeClock(scanner, &date, '.');
    case 'P':
        return takeHalf(scanner, &written->half);
    case 'z':
        return takeZone(scanner, written);
    case '_':
        return scanner.takeBlanks();
    case ' ':
        scanner.takeBlanks();
        return true;
    case ',':
        scanner.take(',');
        return true;
    default:
        return scanner.take(part);
    }
}

std::optional<Written> readSpelling(Scanner scanner, std::string_view spelling)
{
    Written written;
    size_t leastDigits = 1;
    for (const char part : spelling) {
        if (isDigit(part)) {
            leastDigits = size_t(part - '0');
        } else if (takePart(scanner, part, leastDigits, &written)) {
            leastDigits = 1;
        } else {
            return std::nullopt;
        }
    }
    return scanner.atEnd() ? std::optional(written) : std::nullopt;
}

// No text has two spellings.
std::optional<Written> readWritten(std::string_view text)
{
    for (std::string_view spelling : Spellings) {
        if (const auto written = readSpelling(Scanner(text), spelling))
            return written;
    }
    return std::nullopt;
}

} // namespace

bool isDate(std::string_view text) { return readWritten(text).has_value(); }

std::optional<Date> readDate(std::string_view text)
{
    const auto written = readWritten(text);
    if (!written)
        return std::nullopt;
    Date date = written->date;
    const bool isTwelveHours = written->half != Half::None;
    if (isTwelveHours ? date.hour < 1 || date.hour > 12 : date.hour > 24)
        return std::nullopt;
    if (date.minute > 59 || date.second > 60)
        return std::nullopt;
    if (written->zoneHours > 23 || written->zoneMinutes > 59)
        return std::nullopt;
    // Some programs count hours from 1 to 24, and their 24 is the first of the day.
    date.hour = isTwelveHours ? date.hour % 12 + (written->half == Half::Afternoon ? 12 : 0)
                              : date.hour % 24;
    date.second = std::min(date.second, 59); // a leap second has no place of its own
    if (written->zoneSign != 0)
        date.offset = written->zoneSign * (written->zoneHours * 3600 + written->zoneMinutes * 60);
    return date;
}

bool isCount(std::string_view text, size_t leastDigits)
{
    return text.size() >= leastDigits && std::all_of(text.begin(), text.end(), isDigit);
}

std::optional<std::int64_t> readCount(std::string_view text)
{
    if (!isCount(text, 1))
        return std::nullopt;
    constexpr std::int64_t secondsEnd = 100000000000;
    std::int64_t count = 0;
    for (const char digit : text) {
        count = count * 10 + (digit - '0');
        if (count >= secondsEnd * 1000)
            return std::nullopt;
    }
    const std::int64_t seconds = count < secondsEnd ? count : count / 1000;
    return seconds > 0 ? std::optional(seconds) : std::nullopt;
}

} // namespace DateSpellings
