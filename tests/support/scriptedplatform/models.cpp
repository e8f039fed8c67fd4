// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The models of the communication history, on the scripted store.

#include "scriptedstore.h"

#include <commhistory/callmodel.h>
#include <commhistory/groupmodel.h>
#include <commhistory/syncsmsmodel.h>
#include <commhistory/trackerio.h>

#include <memory>

namespace CommHistory {

class EventModelPrivate
{
public:
    QString className = QStringLiteral("EventModel");
    QList<Event> rows;
    QList<int> deletionsOfThisTurn;
};

class GroupModelPrivate
{
};

namespace {

QString boolText(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }

QString filterText(const SyncSMSFilter &filter)
{
    return QStringLiteral("%1, %2, %3")
        .arg(filter.parentId)
        .arg(ScriptedStore::timeText(filter.time), boolText(filter.lastModified));
}

//! The requested events with the ids that the report names; ids beyond them come alone.
QList<Event> reportedEvents(const QList<Event> &requested, const QList<int> &ids, int &position)
{
    QList<Event> events;
    for (const int id : ids) {
        Event event = position < requested.size() ? requested.at(position) : Event();
        event.setId(id);
        events.append(event);
        ++position;
    }
    return events;
}

//! Takes a write of events; reports name the events in the order of the request.
bool startWrite(Request request, const QList<Event> &events, const QList<int> &ids,
                EventModel *model)
{
    const auto position = std::make_shared<int>(0);
    return ScriptedStore::current()->start(request, ids, model, [=](const Report &report) {
        Q_EMIT model->eventsCommitted(reportedEvents(events, report.ids, *position), report.status);
    });
}

} // namespace

// ---- EventModel

EventModel::EventModel(QObject *parent)
    : QAbstractListModel(parent)
    , d(new EventModelPrivate)
{
    qRegisterMetaType<QList<Event>>("QList<CommHistory::Event>");
}

EventModel::~EventModel() { ScriptedStore::record(QLatin1Char('~') + d->className); }

int EventModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->rows.size());
}

QVariant EventModel::data(const QModelIndex &index, int role) const
{
    return role == Qt::UserRole ? QVariant::fromValue(event(index)) : QVariant();
}

Event EventModel::event(const QModelIndex &index) const { return d->rows.value(index.row()); }

void EventModel::setQueryMode(QueryMode mode)
{
    ScriptedStore::record(QStringLiteral("%1::setQueryMode(%2)").arg(d->className).arg(int(mode)));
}

bool EventModel::addEvents(QList<Event> &events, bool toModelOnly)
{
    ScriptedStore *const store = ScriptedStore::current();
    store->record(QStringLiteral("%1::addEvents(%2 events, %3)")
                      .arg(d->className)
                      .arg(events.size())
                      .arg(boolText(toModelOnly)));
    store->addedEvents += events;
    return startWrite(Request::AddEvents, events, store->newEventIds(int(events.size())), this);
}

bool EventModel::modifyEvents(QList<Event> &events)
{
    ScriptedStore *const store = ScriptedStore::current();
    store->record(
        QStringLiteral("%1::modifyEvents(%2 events)").arg(d->className).arg(events.size()));
    store->modifiedEvents += events;
    QList<int> ids;
    for (const Event &event : events)
        ids.append(event.id());
    return startWrite(Request::ModifyEvents, events, ids, this);
}

bool EventModel::deleteEvent(int id)
{
    ScriptedStore::record(QStringLiteral("%1::deleteEvent(%2)").arg(d->className).arg(id));
    d->deletionsOfThisTurn.append(id);
    if (d->deletionsOfThisTurn.size() > 1)
        return true;
    return QMetaObject::invokeMethod(
        this,
        [this] {
            const QList<int> ids = d->deletionsOfThisTurn;
            d->deletionsOfThisTurn.clear();
            startWrite(Request::DeleteEvents, {}, ids, this);
        },
        Qt::QueuedConnection);
}

// ---- SyncSMSModel

SyncSMSModel::SyncSMSModel(int parentId, const QDateTime &time, bool lastModified, QObject *parent)
    : EventModel(parent)
    , m_filter(parentId, time, lastModified)
{
    d->className = QStringLiteral("SyncSMSModel");
    ScriptedStore::record(QStringLiteral("SyncSMSModel(%1)").arg(filterText(m_filter)));
}

SyncSMSModel::~SyncSMSModel() = default;

void SyncSMSModel::setSyncSmsFilter(const SyncSMSFilter &filter)
{
    m_filter = filter;
    ScriptedStore::record(
        QStringLiteral("SyncSMSModel::setSyncSmsFilter(%1)").arg(filterText(m_filter)));
}

bool SyncSMSModel::getEvents()
{
    ScriptedStore *const store = ScriptedStore::current();
    store->record(QStringLiteral("SyncSMSModel::getEvents()"));
    d->rows = store->messageRows;
    return store->start(Request::ReadMessages, {}, this,
                        [this](const Report &report) { Q_EMIT modelReady(report.status); });
}

// ---- CallModel

CallModel::CallModel(QObject *parent)
    : EventModel(parent)
{
    d->className = QStringLiteral("CallModel");
    ScriptedStore::record(QStringLiteral("CallModel()"));
}

CallModel::~CallModel() = default;

void CallModel::setFilter(Sorting sorting, CallEvent::CallType type, const QDateTime &since)
{
    m_type = type;
    m_since = since;
    ScriptedStore::record(QStringLiteral("CallModel::setFilter(%1, %2, %3)")
                              .arg(int(sorting))
                              .arg(int(m_type))
                              .arg(ScriptedStore::timeText(m_since)));
}

bool CallModel::getEvents()
{
    ScriptedStore *const store = ScriptedStore::current();
    store->record(QStringLiteral("CallModel::getEvents()"));
    d->rows = store->callRows;
    return store->start(Request::ReadCalls, {}, this,
                        [this](const Report &) { Q_EMIT modelReady(); });
}

bool CallModel::deleteAll()
{
    ScriptedStore::record(QStringLiteral("CallModel::deleteAll()"));
    return ScriptedStore::current()->callsCanBeDeleted;
}

// ---- GroupModel

GroupModel::GroupModel(QObject *parent)
    : QObject(parent)
    , d(new GroupModelPrivate)
{
    ScriptedStore::record(QStringLiteral("GroupModel()"));
}

GroupModel::~GroupModel() { ScriptedStore::record(QStringLiteral("~GroupModel")); }

void GroupModel::enableContactChanges(bool enabled)
{
    ScriptedStore::record(
        QStringLiteral("GroupModel::enableContactChanges(%1)").arg(boolText(enabled)));
}

bool GroupModel::addGroups(QList<Group> &groups)
{
    ScriptedStore *const store = ScriptedStore::current();
    store->record(QStringLiteral("GroupModel::addGroups(%1 groups)").arg(groups.size()));
    store->addedGroups += groups;
    return store->start(
        Request::AddGroups, store->newGroupIds(int(groups.size())), this,
        [this](const Report &report) { Q_EMIT groupsCommitted(report.ids, report.status); });
}

// ---- TrackerIO

TrackerIO *TrackerIO::instance()
{
    static TrackerIO io;
    return &io;
}

bool TrackerIO::getEvent(int id, Event &event)
{
    const ScriptedStore *const store = ScriptedStore::current();
    store->record(QStringLiteral("TrackerIO::getEvent(%1)").arg(id));
    if (!store->eventsById.contains(id))
        return false;
    event = store->eventsById.value(id);
    return true;
}

} // namespace CommHistory
