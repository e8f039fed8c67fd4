// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "event.h"
#include "group.h"

#include <QtCore/QList>
#include <QtCore/QVector>

namespace CommHistory {

class StoreConnection;

// Writes to the store. Each is one transaction: false when nothing was written. At most
// MaxTransaction items are given at a time, so that memory stays bounded.

constexpr int MaxTransaction = 1000;

//! Calls \a write, which writes and reports, with the next items until all are done or it
//! returns false; once for an empty list.
template <typename Item, typename Write>
void writeInPortions(const QList<Item> &items, Write write)
{
    int done = 0;
    do {
        QList<Item> portion = items.mid(done, MaxTransaction);
        done += int(portion.size());
        if (!write(portion))
            return;
    } while (done < items.size());
}

//! Gives each event its id and the time of the modification.
bool addEvents(StoreConnection &connection, QList<Event> &events);
//! Writes the fields that were set and gives each event the time of the modification.
//! False also when an event has an unknown id.
bool modifyEvents(StoreConnection &connection, QList<Event> &events);
//! \param removed  for each id, whether there was such an event; false from the second
//!                 time on for an id that stands there more than once
bool removeEvents(StoreConnection &connection, const QVector<int> &ids, QVector<bool> *removed);
bool removeCalls(StoreConnection &connection);
//! \param ids  the id of each conversation, new or found
bool addConversations(StoreConnection &connection, const QList<Group> &groups, QList<int> *ids);

} // namespace CommHistory
