// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "options/command.h"

//! The question before something is deleted. --yes and a dry run need none.
namespace Confirmation {

//! Whether it will be asked.
bool isNeeded(const Invocation &invocation);

//! Whether there is somebody to ask, should it be needed; tells on stderr when not.
bool isPossible(const Invocation &invocation, const QString &command);

//! Asks on the terminal, if needed. No client holds up others meanwhile, so what is asked about can
//! change. Tells on stderr that nothing was deleted when that is the answer.
bool isGiven(const Invocation &invocation, const QString &question);

} // namespace Confirmation
