// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventmodel.h"
#include "eventmodel_p.h"

#include "announcement_p.h"
#include "historywriting_p.h"

#include <store/store.h>

#include <QtCore/QPointer>

namespace CommHistory {

namespace {

//! Reports the deletions in order, those of unequal status apart.
void reportRemoved(const QVector<int> &ids, const QVector<bool> &removed,
                   const EventReporter &report)
{
    QList<Event> events;
    for (int i = 0; i < ids.size(); ++i) {
        Event event;
        event.setId(ids.at(i));
        events.append(event);
        if (i + 1 < ids.size() && removed.at(i + 1) == removed.at(i))
            continue;
        report(events, removed.at(i));
        events.clear();
    }
}

void removeInPortions(StoreConnection *connection, const QVector<int> &ids,
                      const EventReporter &report)
{
    for (int i = 0; i < ids.size(); i += MaxTransaction) {
        const QVector<int> portion = ids.mid(i, MaxTransaction);
        QVector<bool> removed;
        if (!connection || !removeEvents(*connection, portion, &removed))
            removed.fill(false, portion.size());
        reportRemoved(portion, removed, report);
    }
}

} // namespace

EventModelPrivate::EventModelPrivate(EventModel *model)
    : q(model)
    , mailbox(std::make_shared<Mailbox>(model))
{
}

EventModelPrivate::~EventModelPrivate()
{
    endGathering();
    mailbox->close();
}

void EventModelPrivate::endGathering()
{
    if (isGathering)
        Store::instance().endGathering();
    isGathering = false;
}

EventReporter EventModelPrivate::reporter() const
{
    return [model = q, mailbox = mailbox](const QList<Event> &events, bool status) {
        mailbox->post([=] { Q_EMIT model->eventsCommitted(events, status); });
    };
}

bool EventModelPrivate::read(std::function<bool(StoreConnection &, QVector<EventRow> *)> read,
                             std::function<void()> ready)
{
    if (!Store::instance().isReadable(Store::Access::Read))
        return false;
    const auto request = [=, mailbox = mailbox](StoreConnection *connection) {
        QVector<EventRow> found;
        if (!connection || !read(*connection, &found))
            return;
        mailbox->post([=]() mutable {
            const QPointer<EventModel> guard(q);
            q->beginResetModel();
            rows.swap(found);
            q->endResetModel();
            if (guard)
                ready();
        });
    };
    Store::instance().post(Store::Access::Read, request);
    return true;
}

EventModel::EventModel(QObject *parent)
    : QAbstractListModel(parent)
    , d(new EventModelPrivate(this))
{
    // So that the reports can be connected by name across threads.
    qRegisterMetaType<QList<CommHistory::Event>>("QList<CommHistory::Event>");
}

EventModel::~EventModel() = default;

int EventModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->rows.size());
}

QVariant EventModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::UserRole || !hasIndex(index.row(), index.column()))
        return QVariant();
    return QVariant::fromValue(event(index));
}

Event EventModel::event(const QModelIndex &index) const
{
    if (!hasIndex(index.row(), index.column()))
        return Event();
    return fromRow(d->rows.at(index.row()));
}

void EventModel::setQueryMode(QueryMode) { }

bool EventModel::addEvents(QList<Event> &events, bool toModelOnly)
{
    if (toModelOnly) {
        if (events.isEmpty())
            return true;
        const int first = int(d->rows.size());
        beginInsertRows(QModelIndex(), first, first + int(events.size()) - 1);
        for (const Event &event : std::as_const(events))
            d->rows.append(toRow(event));
        endInsertRows();
        return true;
    }
    Store::instance().post(
        Store::Access::Write, [events, report = d->reporter()](StoreConnection *connection) {
            writeInPortions(events, [&](QList<Event> &portion) {
                const bool status = portion.isEmpty()
                    || (connection && CommHistory::addEvents(*connection, portion));
                if (status)
                    announceAdded(portion);
                report(portion, status);
                return status;
            });
        });
    return true;
}

bool EventModel::modifyEvents(QList<Event> &events)
{
    Store::instance().post(
        Store::Access::Write, [events, report = d->reporter()](StoreConnection *connection) {
            writeInPortions(events, [&](QList<Event> &portion) {
                const bool status = portion.isEmpty()
                    || (connection && CommHistory::modifyEvents(*connection, portion));
                report(portion, status);
                return status;
            });
        });
    return true;
}

bool EventModel::deleteEvent(int id)
{
    const auto request = [report = d->reporter()](const QVector<int> &ids) {
        return [=](StoreConnection *connection) { removeInPortions(connection, ids, report); };
    };
    if (Store::instance().gather(d->mailbox.get(), id, request)) {
        d->isGathering = true;
        QMetaObject::invokeMethod(
            this, [this] { d->endGathering(); }, Qt::QueuedConnection);
    }
    return true;
}

} // namespace CommHistory

#include "moc_eventmodel.cpp"
