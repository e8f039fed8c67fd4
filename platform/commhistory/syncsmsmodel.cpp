// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncsmsmodel.h"

#include "eventmodel_p.h"
#include "historyreading_p.h"

namespace CommHistory {

SyncSMSModel::SyncSMSModel(int parentId, const QDateTime &time, bool lastModified, QObject *parent)
    : EventModel(parent)
    , m_filter(parentId, time, lastModified)
{
}

SyncSMSModel::~SyncSMSModel() = default;

void SyncSMSModel::setSyncSmsFilter(const SyncSMSFilter &filter) { m_filter = filter; }

bool SyncSMSModel::getEvents()
{
    return d->read(
        [filter = m_filter](StoreConnection &connection, QVector<EventRow> *rows) {
            return readMessages(connection, filter, rows);
        },
        [this] { Q_EMIT modelReady(true); });
}

} // namespace CommHistory

#include "moc_syncsmsmodel.cpp"
