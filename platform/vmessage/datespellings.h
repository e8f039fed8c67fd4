// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <cstdint>
#include <optional>
#include <string_view>

// The dates of message files, in every spelling that programs use. Recognising a date and reading
// it use the same table, so that they always agree. No standard covers these spellings.
namespace DateSpellings {

//! A day, which need not exist in the calendar, and a time of that day.
struct Date
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;              //!< 0 to 23
    int minute = 0;            //!< 0 to 59
    int second = 0;            //!< 0 to 59
    bool hasFraction = false;  //!< whether a fraction of a second was left out
    std::optional<int> offset; //!< seconds east of UTC; none = local
};

//! Whether a text is spelled as a date. It may be an impossible one, such as 19700000T000000Z.
//! \param text  without blanks at its beginning
KORVAPLATFORM_EXPORT bool isDate(std::string_view text);

//! \param text  without blanks at its beginning
//! \return nothing if it is not spelled as a date or names no time of day
KORVAPLATFORM_EXPORT std::optional<Date> readDate(std::string_view text);

//! Whether a text is nothing but digits, which count seconds or milliseconds since 1970 in UTC.
bool isCount(std::string_view text, size_t leastDigits);

//! Seconds since 1970 in UTC. A count that means a time before the year 5138 in seconds is taken as
//! seconds, a higher one as milliseconds.
//! \return nothing for any other text, for 0, and for a time beyond 5138 in milliseconds
KORVAPLATFORM_EXPORT std::optional<std::int64_t> readCount(std::string_view text);

} // namespace DateSpellings
