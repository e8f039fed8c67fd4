// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <string_view>

//! The lines that begin and end an object which is no vMessage: a call-history entry, or one of
//! the related objects, which are told by name instead of being passed over.
namespace ObjectLine {

constexpr std::string_view CallEntry("VCALLHISTENTRY");

//! The name of the object that begins with this line; empty when none does.
std::string_view beginOf(std::string_view line);
bool isEnd(std::string_view line, std::string_view name);

} // namespace ObjectLine
