// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <optional>
#include <string_view>

// The Date lines of message bodies, told from texts that begin with the same word.
namespace DateLines {

//! The value of a line "Date: ..." or, as one program writes it, "Date 1288794330000"; nothing
//! when what stands there is no date in any of the spellings that programs use. None at all,
//! and the zeros that stand for none, are dates here.
std::optional<std::string_view> dateOf(std::string_view line);

} // namespace DateLines
