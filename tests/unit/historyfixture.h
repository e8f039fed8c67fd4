// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "eventloop.h"
#include "scriptedstore.h"

#include <korvasync/historyinterface.h>

#include <QtCore/QPointer>
#include <QtTest/QTest>

#include <initializer_list>
#include <memory>

//! What the unit tests of HistoryInterface share.
namespace HistoryFixture {

using namespace KorvaSyncIf;
using CommHistory::Event;
using CommHistory::HistoryEntry;

inline HistoryEntry message(int id, int folder = LocInbox)
{
    HistoryEntry entry;
    entry.id = id;
    entry.type = Event::SmsEvent;
    entry.folder = folder;
    entry.change = 1000 + id;
    return entry;
}

inline QDateTime utc(int hour, int minute = 0)
{
    return QDateTime(QDate(2026, 3, 1), QTime(hour, minute), Qt::UTC);
}

inline qint64 msecs(int hour, int minute = 0) { return utc(hour, minute).toMSecsSinceEpoch(); }

inline QStringList lines(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromLatin1(text));
    return list;
}

//! A request on the scripted store, and everything that it emitted: "portion ID...", "finished".
struct Fixture
{
    template <typename Pending>
    Pending *watch(Pending *pending)
    {
        QObject::connect(pending, &Pending::finished, &receiver, [this, pending](Pending *sender) {
            emitted.append(QLatin1String(sender == pending ? "finished" : "another finished"));
            error = sender->error();
        });
        return pending;
    }

    PendingHistory *query(const HistoryFilter &filter = HistoryFilter())
    {
        PendingHistory *const pending = watch(history->query(filter));
        QObject::connect(pending, &PendingHistory::portion, &receiver,
                         [this](const QList<HistoryItem> &portion) {
                             items += portion;
                             QString text = QStringLiteral("portion");
                             for (const HistoryItem &item : portion)
                                 text += QLatin1Char(' ') + QString::number(item.id);
                             emitted.append(text);
                         });
        return pending;
    }

    PendingChanges *changesSince(const QString &since)
    {
        PendingChanges *const pending = watch(history->changes(since));
        QObject::connect(pending, &PendingChanges::portion, &receiver,
                         [this](const QList<HistoryChange> &portion) { changes += portion; });
        QObject::connect(pending, &PendingChanges::finished, &receiver,
                         [this](PendingChanges *sender) { cursor = sender->cursor(); });
        return pending;
    }

    ScriptedStore store;
    std::unique_ptr<HistoryInterface> history = std::make_unique<HistoryInterface>();
    QStringList emitted;
    HistoryError error = HistoryError::None;
    QList<HistoryItem> items;
    QList<HistoryChange> changes;
    QString cursor;
    QObject receiver;
};

} // namespace HistoryFixture
