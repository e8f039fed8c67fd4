// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

//! Takes the places of standard descriptors that are closed, before a file of the store gets
//! one of them and what is printed ends up there. Reading from and writing to them fails, as
//! it does with a closed one.
void occupyClosedDescriptors();
