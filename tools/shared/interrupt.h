// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

//! SIGINT, SIGTERM and SIGHUP as a note that the commands look at between two chunks. The
//! second such signal ends the process at once. One that was ignored at the start stays so.
namespace Interrupt {

void install();
int signalNumber(); //!< the signal that came, 0 = none

} // namespace Interrupt
