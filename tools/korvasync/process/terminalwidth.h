// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

//! The width of the terminal behind a descriptor in columns; 0 when there is none.
int terminalWidth(int descriptor);
