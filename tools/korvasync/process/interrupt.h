// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

//! SIGINT and SIGTERM as a note that the commands look at between two chunks. The second
//! such signal ends the process at once.
namespace Interrupt {

void install();
int signalNumber(); //!< the signal that came, 0 = none

} // namespace Interrupt
