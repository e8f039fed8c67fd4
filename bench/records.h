// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Bench {

//! The local side of every message and call.
constexpr char Account[] = "/org/freedesktop/Telepathy/Account/ring/tel/ring";

//! One invented message, the same in every run and for every participant.
struct Record
{
    int folder;         //!< inbox, outbox, sent and the user's own, in turns
    std::string number; //!< +15550100 and on
    std::int64_t time;  //!< seconds since 1970 in UTC, a minute after the one before
    std::string body;   //!< 60 characters; every third body is not ASCII
    std::string stamp;  //!< the time as vMessages and cards have it
    bool isSent() const { return folder == 4099 || folder == 4101; }
};

//! \param numbers  how many parties there are
//! \param first    index of the first record, for more of them after others
std::vector<Record> makeRecords(int count, int numbers, int first = 0);

//! Seconds since 1970 as yyyyMMddThhmmssZ.
std::string makeStamp(std::int64_t time);

//! The record as the library's encoder writes it.
void appendVMessage(const Record &record, std::string &text);

} // namespace Bench
