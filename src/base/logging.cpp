// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "logging.h"

Q_LOGGING_CATEGORY(lcFacade, "korvasync.facade", QtDebugMsg)
Q_LOGGING_CATEGORY(lcRecords, "korvasync.records", QtDebugMsg)
Q_LOGGING_CATEGORY(lcEncoder, "korvasync.encoder", QtDebugMsg)
Q_LOGGING_CATEGORY(lcDecoder, "korvasync.decoder", QtDebugMsg)
Q_LOGGING_CATEGORY(lcAdapter, "korvasync.adapter", QtDebugMsg)
Q_LOGGING_CATEGORY(lcSend, "korvasync.send", QtDebugMsg)
Q_LOGGING_CATEGORY(lcPending, "korvasync.pending", QtDebugMsg)
