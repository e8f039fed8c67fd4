// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "callmodel.h"
#include "eventrow_p.h"
#include "syncsmsmodel.h"

#include <QtCore/QVector>

namespace CommHistory {

class StoreConnection;

// Reads of the store. Each returns false when the store cannot be read, and then leaves
// its result as it was.

//! The event with this id; no row when there is none.
bool readEvent(StoreConnection &connection, int id, QVector<EventRow> *rows);
//! See SyncSMSModel for what is read and in which order.
bool readMessages(StoreConnection &connection, const SyncSMSFilter &filter,
                  QVector<EventRow> *rows);
//! See CallModel for what is read and in which order.
bool readCalls(StoreConnection &connection, CallEvent::CallType type, const QDateTime &since,
               QVector<EventRow> *rows);

} // namespace CommHistory
