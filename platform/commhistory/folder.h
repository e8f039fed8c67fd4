// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

namespace CommHistory {

//! Ids of the folders that the platform itself knows. It stores any other id as it is.
enum Folder : int {
    InboxFolder = 4098,
    OutboxFolder = 4099,
    SentFolder = 4101,
    LastSystemFolder = 4103 //!< the user's own folders come after it
};

} // namespace CommHistory
