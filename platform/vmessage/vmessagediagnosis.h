// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "vmessageparser.h"

#include <string_view>

// Why a vMessage was refused. Only a refused one is read a second time, by the same rules, so that
// the first reading need not count lines.
namespace VMessageDiagnosis {

//! \param bytes  what VMessageParser refused, without zeros at the end
//! \return never VMessageProblem::None
VMessageProblem diagnose(std::string_view bytes);

} // namespace VMessageDiagnosis
