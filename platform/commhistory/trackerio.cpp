// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "trackerio.h"

#include "historyreading_p.h"

#include <store/store.h>

namespace CommHistory {

TrackerIO *TrackerIO::instance()
{
    static TrackerIO io;
    return &io;
}

bool TrackerIO::getEvent(int id, Event &event)
{
    QVector<EventRow> rows;
    Store::instance().run(Store::Access::Read, [&](StoreConnection *connection) {
        if (connection)
            readEvent(*connection, id, &rows);
    });
    if (rows.isEmpty())
        return false;
    event = fromRow(rows.first());
    return true;
}

} // namespace CommHistory
