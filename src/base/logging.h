// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QLoggingCategory>

// The library's logging categories. All are on by default down to debug level, which shows
// numbers and texts; "korvasync.*.debug=false" in the filter rules silences the trace.
Q_DECLARE_LOGGING_CATEGORY(lcFacade)  // korvasync.facade: calls of the public interfaces
Q_DECLARE_LOGGING_CATEGORY(lcRecords) // korvasync.records: printed records
Q_DECLARE_LOGGING_CATEGORY(lcEncoder) // korvasync.encoder: outgoing vMessages
Q_DECLARE_LOGGING_CATEGORY(lcDecoder) // korvasync.decoder: incoming vMessages
Q_DECLARE_LOGGING_CATEGORY(lcAdapter) // korvasync.adapter: the store adapter and its pool
Q_DECLARE_LOGGING_CATEGORY(lcSend)    // korvasync.send: the sending service
Q_DECLARE_LOGGING_CATEGORY(lcPending) // korvasync.pending: pending results

// How the trace writes a truth value.
inline const char *boolText(bool value) { return value ? "true" : "false"; }
