// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QLoggingCategory>

namespace CommHistory {

//! Why the store cannot be used: one warning, one sentence for the user.
Q_DECLARE_LOGGING_CATEGORY(lcStore)
//! What the database library says. Off, since it may hold texts of the user.
Q_DECLARE_LOGGING_CATEGORY(lcStoreDatabase)
//! What became of announcements, which are no part of the store.
Q_DECLARE_LOGGING_CATEGORY(lcAnnouncement)

} // namespace CommHistory
