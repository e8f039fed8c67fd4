// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "messagestore.h"
#include "process/exitcode.h"
#include "storelocation.h"

//! Whether the store is fit for a command that needs one; what is wrong is told on stderr.
namespace StoreAccess {

//! There must be a store. Whether it answers, the first request tells.
ExitCode requireStore(StoreLocation &location);

//! There must be a store, and it must answer.
ExitCode requireReadable(StoreLocation &location, MessageStore &store);

//! There must be a store, or a place for one.
ExitCode requirePlace(StoreLocation &location);

//! Tells why a request was not answered, in one sentence.
ExitCode complain(const StoreLocation &location, Answer answer);

} // namespace StoreAccess
