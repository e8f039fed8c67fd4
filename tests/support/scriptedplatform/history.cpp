// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The reader of the communication history, on the scripted store.

#include "scriptedstore.h"

#include <commhistory/historyreader.h>
#include <store/storeupgrade.h>

#include <QtCore/QPointer>
#include <QtCore/QStringList>

namespace CommHistory {

class HistoryReaderPrivate
{
};

namespace {

QString selectionText(const HistorySelection &selection)
{
    QStringList folders;
    for (const int folder : selection.folders)
        folders.append(QString::number(folder));
    return QStringLiteral("type %1, folders [%2], party %3 %4, conversation %5, %6 to %7, "
                          "modified %8, unread %9, newest %10, limit %11, portion %12")
        .arg(int(selection.type))
        .arg(folders.join(QLatin1Char(' ')), selection.party)
        .arg(int(selection.partyMatch))
        .arg(selection.conversation)
        .arg(ScriptedStore::timeText(selection.from), ScriptedStore::timeText(selection.to),
             ScriptedStore::timeText(selection.modifiedSince))
        .arg(int(selection.unreadOnly))
        .arg(int(selection.newestFirst))
        .arg(selection.limit)
        .arg(selection.portion);
}

//! A read that is refused ends as one of a store that is not there.
void startRead(HistoryReader *reader, const QList<QList<HistoryEntry>> &portions)
{
    ScriptedStore *const store = ScriptedStore::current();
    const auto deliver = [=](const Report &report) {
        const QPointer<HistoryReader> guard(reader);
        for (const auto &portion : portions) {
            if (guard)
                Q_EMIT guard->entriesRead(portion);
        }
        if (guard)
            Q_EMIT guard->ended(report.status ? HistoryReader::Done : store->historyFailure);
    };
    if (!store->start(Request::ReadHistory, {}, reader, deliver))
        Q_EMIT reader->ended(HistoryReader::NoStore);
}

} // namespace

HistoryReader::HistoryReader(QObject *parent)
    : QObject(parent)
{
}

HistoryReader::~HistoryReader() = default;

void HistoryReader::read(const HistorySelection &selection)
{
    ScriptedStore::record(QStringLiteral("HistoryReader::read(%1)").arg(selectionText(selection)));
    startRead(this, ScriptedStore::current()->historyPortions);
}

void HistoryReader::readChanges(const HistoryPosition &since, int portion)
{
    ScriptedStore::record(QStringLiteral("HistoryReader::readChanges(%1 %2 %3, %4)")
                              .arg(QString::fromLatin1(since.store))
                              .arg(since.change)
                              .arg(since.lastId)
                              .arg(portion));
    const bool isLatest = since.change == HistoryPosition::latest().change;
    startRead(this,
              isLatest ? QList<QList<HistoryEntry>>() : ScriptedStore::current()->historyPortions);
}

void HistoryReader::count(const HistorySelection &selection, Key key)
{
    ScriptedStore::record(QStringLiteral("HistoryReader::count(%1, key %2)")
                              .arg(selectionText(selection))
                              .arg(int(key)));
    startRead(this, ScriptedStore::current()->historyPortions);
}

HistoryPosition HistoryReader::position() const
{
    return ScriptedStore::current()->historyPosition;
}

QList<HistoryTally> HistoryReader::tallies() const
{
    return ScriptedStore::current()->historyTallies;
}

bool isStoreBeingUpgraded() { return ScriptedStore::current()->isBeingUpgraded; }

} // namespace CommHistory
