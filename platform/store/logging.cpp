// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "logging.h"

namespace CommHistory {

Q_LOGGING_CATEGORY(lcStore, "korvasync.store", QtWarningMsg)
Q_LOGGING_CATEGORY(lcStoreDatabase, "korvasync.store.database", QtWarningMsg)
Q_LOGGING_CATEGORY(lcAnnouncement, "korvasync.announcement", QtWarningMsg)

} // namespace CommHistory
