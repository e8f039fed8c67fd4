// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/pendinghistory.h>

#include "historymapping.h"

#include <QtCore/QPointer>

using CommHistory::HistoryEntry;
using CommHistory::HistoryReader;

namespace KorvaSyncIf {

namespace {

//! Emits finished() and lets the object go. A receiver may have deleted it, or its interface.
template <typename Pending>
void finish(Pending *pending)
{
    const QPointer<Pending> guard(pending);
    Q_EMIT pending->finished(pending);
    if (guard)
        guard->deleteLater();
}

//! Starts the read on the next turn of the event loop, so that nothing is emitted before the caller
//! could connect. A refused request finishes then.
template <typename Pending, typename Private, typename Start>
void begin(Pending *pending, Private &d, const Start &start)
{
    QObject::connect(&d.reader, &HistoryReader::ended, pending,
                     [pending, &d](HistoryReader::Result result) {
                         d.reader.disconnect(pending);
                         d.error = HistoryMapping::toError(result);
                         finish(pending);
                     });
    const auto run = [pending, &d, start] {
        if (d.error == HistoryError::None)
            start();
        else
            finish(pending);
    };
    QMetaObject::invokeMethod(pending, run, Qt::QueuedConnection);
}

} // namespace

// ---- query()

class PendingHistoryPrivate
{
public:
    HistoryReader reader;
    HistoryError error = HistoryError::None;
};

PendingHistory::PendingHistory(const HistoryFilter &filter, QObject *parent)
    : QObject(parent)
    , d(new PendingHistoryPrivate)
{
    const auto selection = HistoryMapping::toSelection(filter);
    if (!selection)
        d->error = HistoryError::InvalidFilter;
    connect(&d->reader, &HistoryReader::entriesRead, this,
            [this](const QList<HistoryEntry> &entries) {
                QList<HistoryItem> items;
                items.reserve(entries.size());
                for (const HistoryEntry &entry : entries)
                    items.append(HistoryMapping::toItem(entry));
                Q_EMIT portion(items);
            });
    begin(this, *d, [this, selection] { d->reader.read(*selection); });
}

PendingHistory::~PendingHistory() = default;

HistoryError PendingHistory::error() const { return d->error; }

// ---- changes()

class PendingChangesPrivate
{
public:
    HistoryReader reader;
    HistoryError error = HistoryError::None;
    int lastId = 0; //!< of the items that were there when the cursor was given
    QString cursor;
};

namespace {

HistoryChange toChange(const HistoryEntry &entry, int lastId)
{
    HistoryChange change;
    if (entry.isRemoved)
        change.kind = HistoryChange::Kind::Deleted;
    else if (entry.id <= lastId)
        change.kind = HistoryChange::Kind::Changed;
    change.item = HistoryMapping::toItem(entry);
    return change;
}

} // namespace

PendingChanges::PendingChanges(const QString &cursor, int portionSize, QObject *parent)
    : QObject(parent)
    , d(new PendingChangesPrivate)
{
    const auto position = HistoryMapping::toPosition(cursor);
    if (!position)
        d->error = HistoryError::UnknownCursor;
    else if (portionSize < 1 || portionSize > HistoryFilter::MaxPortion)
        d->error = HistoryError::InvalidFilter;
    else
        d->lastId = position->lastId;
    connect(&d->reader, &HistoryReader::entriesRead, this,
            [this](const QList<HistoryEntry> &entries) {
                QList<HistoryChange> changes;
                changes.reserve(entries.size());
                for (const HistoryEntry &entry : entries)
                    changes.append(toChange(entry, d->lastId));
                Q_EMIT portion(changes);
            });
    connect(&d->reader, &HistoryReader::ended, this, [this](HistoryReader::Result result) {
        if (result == HistoryReader::Done)
            d->cursor = HistoryMapping::toCursor(d->reader.position());
    });
    begin(this, *d,
          [this, position, portionSize] { d->reader.readChanges(*position, portionSize); });
}

PendingChanges::~PendingChanges() = default;

HistoryError PendingChanges::error() const { return d->error; }

QString PendingChanges::cursor() const { return d->cursor; }

// ---- counts()

class PendingCountsPrivate
{
public:
    HistoryReader reader;
    HistoryError error = HistoryError::None;
    QList<HistoryCount> counts;
};

namespace {

HistoryReader::Key toKey(HistoryCount::By by)
{
    switch (by) {
    case HistoryCount::By::Folder:
        break;
    case HistoryCount::By::Year:
        return HistoryReader::Year;
    case HistoryCount::By::Party:
        return HistoryReader::Party;
    }
    return HistoryReader::Folder;
}

} // namespace

PendingCounts::PendingCounts(const HistoryFilter &filter, HistoryCount::By by, QObject *parent)
    : QObject(parent)
    , d(new PendingCountsPrivate)
{
    const auto selection = HistoryMapping::toSelection(filter);
    if (!selection)
        d->error = HistoryError::InvalidFilter;
    connect(&d->reader, &HistoryReader::ended, this, [this](HistoryReader::Result result) {
        if (result != HistoryReader::Done)
            return;
        for (const CommHistory::HistoryTally &tally : d->reader.tallies())
            d->counts.append(HistoryMapping::toCount(tally));
    });
    begin(this, *d, [this, selection, by] { d->reader.count(*selection, toKey(by)); });
}

PendingCounts::~PendingCounts() = default;

HistoryError PendingCounts::error() const { return d->error; }

QList<HistoryCount> PendingCounts::counts() const { return d->counts; }

} // namespace KorvaSyncIf

#include "korvasync/moc_pendinghistory.cpp"
