// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "vmessageparser.h"

#include <string_view>

// Why a vMessage was refused. It is looked for only then, in a second reading by the same rules,
// so that the first one counts no lines.
namespace VMessageDiagnosis {

//! \param bytes  which VMessageParser refused, as they were given, without zeros at their end
//! \return never VMessageProblem::None
VMessageProblem diagnose(std::string_view bytes);

} // namespace VMessageDiagnosis
