// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

namespace CommHistory {

//! Ids of folders that the platform itself has to do with; others are its users'.
enum Folder : int {
    InboxFolder = 4098,
    OutboxFolder = 4099,
    SentFolder = 4101,
    LastSystemFolder = 4103 //!< the user's own folders come after it
};

} // namespace CommHistory
