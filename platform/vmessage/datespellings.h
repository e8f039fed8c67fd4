// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <cstdint>
#include <optional>
#include <string_view>

// The dates of message files, in every spelling that programs use. Who tells whether a text is a
// date and who reads it go by the same table, so that no line is a date for one of them alone.
namespace DateSpellings {

//! A day, which the calendar need not have, and a time of that day.
struct Date
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;              //!< 0 to 23
    int minute = 0;            //!< 0 to 59
    int second = 0;            //!< 0 to 59
    bool hasFraction = false;  //!< of a second, which the time is without
    std::optional<int> offset; //!< seconds east of UTC; none = local
};

//! Whether a text is spelled as a date, also one that cannot be, such as 19700000T000000Z.
//! \param text  without blanks at its beginning
KORVAPLATFORM_EXPORT bool isDate(std::string_view text);

//! \param text  likewise
//! \return nothing when it is not spelled as a date or names no time of a day
KORVAPLATFORM_EXPORT std::optional<Date> readDate(std::string_view text);

//! Whether a text is digits alone, which count seconds or milliseconds since 1970.
bool isCount(std::string_view text, size_t leastDigits);

//! Seconds since 1970 of a count: up to the year 5138 it is one of seconds, above of milliseconds.
//! \return nothing for any other text, for 0, and when it is beyond 5138 as milliseconds too
KORVAPLATFORM_EXPORT std::optional<std::int64_t> readCount(std::string_view text);

} // namespace DateSpellings
