// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callmodel.h"

#include "eventmodel_p.h"
#include "historyreading_p.h"
#include "historywriting_p.h"

#include <store/store.h>

namespace CommHistory {

CallModel::CallModel(QObject *parent)
    : EventModel(parent)
{
}

CallModel::~CallModel() = default;

void CallModel::setFilter(Sorting, CallEvent::CallType type, const QDateTime &since)
{
    m_type = type;
    m_since = since;
}

bool CallModel::getEvents()
{
    return d->read(
        [type = m_type, since = m_since](StoreConnection &connection, QVector<EventRow> *rows) {
            return readCalls(connection, type, since, rows);
        },
        [this] { Q_EMIT modelReady(); });
}

bool CallModel::deleteAll()
{
    bool removed = false;
    Store::instance().run(Store::Access::Change, [&](StoreConnection *connection) {
        removed = connection && removeCalls(*connection);
    });
    return removed;
}

} // namespace CommHistory

#include "moc_callmodel.cpp"
