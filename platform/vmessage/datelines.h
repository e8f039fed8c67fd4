// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <optional>
#include <string_view>

// The Date lines of message bodies, as opposed to texts that begin with the same word.
namespace DateLines {

//! The value of a line "Date: ..." or, as one program writes it, "Date 1288794330000". An empty
//! value, and the zeros that some programs write for none, count as dates.
//! \return nothing if the value is no date in any spelling of DateSpellings
std::optional<std::string_view> dateOf(std::string_view line);

} // namespace DateLines
