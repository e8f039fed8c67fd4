// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "command.h"

//! The question before something is deleted. --yes and a dry run need none.
namespace Confirmation {

//! Whether there is somebody to ask, should it be needed; tells on stderr when not.
bool isPossible(const Invocation &invocation, const QString &command);

//! Asks on the terminal, if needed.
bool isGiven(const Invocation &invocation, const QString &question);

} // namespace Confirmation
