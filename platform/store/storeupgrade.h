// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storeconnection.h"

#include <optional>

namespace CommHistory {

//! Copies all that a store of an older format holds into a new database, in portions. What the
//! new one must hold then; nothing when that fails. What an event has is known to
//! platform/commhistory, which defines this.
std::optional<StoreConnection::Contents> copyHistory(StoreConnection &old, StoreConnection &fresh);

} // namespace CommHistory
