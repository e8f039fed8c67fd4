// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/historyinterface.h>

namespace KorvaSyncIf {

HistoryInterface::HistoryInterface(QObject *parent)
    : QObject(parent)
{
}

HistoryInterface::~HistoryInterface() = default;

PendingHistory *HistoryInterface::query(const HistoryFilter &filter)
{
    return new PendingHistory(filter, this);
}

PendingChanges *HistoryInterface::changes(const QString &cursor, int portion)
{
    return new PendingChanges(cursor, portion, this);
}

QString HistoryInterface::now() { return QStringLiteral("now"); }

PendingCounts *HistoryInterface::counts(const HistoryFilter &filter, HistoryCount::By by)
{
    return new PendingCounts(filter, by, this);
}

} // namespace KorvaSyncIf

#include "korvasync/moc_historyinterface.cpp"
