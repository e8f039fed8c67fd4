// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "platformexport.h"

namespace CommHistory {

//! Whether this process brings a store of an older format up to date now, for a request to write
//! that waits for it. May be asked in any thread.
[[nodiscard]] KORVAPLATFORM_EXPORT bool isStoreBeingUpgraded();

} // namespace CommHistory
