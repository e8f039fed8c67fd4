// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncstorageif.h"
#include "syncstorageif_p.h"

#include "base/logging.h"

#include <commhistory/trackerio.h>

#include <QtCore/QDebug>

using CommHistory::CallModel;
using CommHistory::Event;
using CommHistory::EventModel;
using CommHistory::SyncSMSModel;

namespace KorvaSyncIf {

namespace {

CommHistory::CallEvent::CallType storeCallType(const QString &callType)
{
    if (callType == QLatin1String("incoming"))
        return CommHistory::CallEvent::IncomingCall;
    if (callType == QLatin1String("outgoing"))
        return CommHistory::CallEvent::OutgoingCall;
    if (callType == QLatin1String("missed"))
        return CommHistory::CallEvent::MissedCall;
    return CommHistory::CallEvent::AllCalls;
}

//! Calls \a use with each valid event of the model, in row order.
template <typename Use>
void forEachValidEvent(const EventModel &model, Use use)
{
    for (int row = 0, rows = model.rowCount(); row < rows; ++row) {
        const Event event = model.event(model.index(row, 0));
        if (event.isValid())
            use(event);
    }
}

} // namespace

bool SyncStorageIf::fetchSmsMessages(const QDateTime &time, int parentId, bool useModifiedTime)
{
    qCDebug(lcAdapter)
        << "bool KorvaSyncIf::SyncStorageIf::fetchSmsMessages(const QDateTime&, int, bool)";
    d->inUse = true;
    d->useModifiedTime = useModifiedTime;
    d->smsModel->setSyncSmsFilter(CommHistory::SyncSMSFilter(parentId, time, useModifiedTime));
    d->smsModel->setQueryMode(EventModel::AsyncQuery);
    connect(d->smsModel.get(), &SyncSMSModel::modelReady, this,
            &SyncStorageIf::eventsAvailableInModel, Qt::QueuedConnection);
    return d->smsModel->getEvents();
}

void SyncStorageIf::eventsAvailableInModel()
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::eventsAvailableInModel()";
    disconnect(d->smsModel.get(), &SyncSMSModel::modelReady, this,
               &SyncStorageIf::eventsAvailableInModel);
    QList<SmsInfo> messages;
    messages.reserve(d->smsModel->rowCount());
    forEachValidEvent(*d->smsModel, [&](const Event &event) {
        messages.append(SmsInfo());
        SyncStorageIfPrivate::fillSmsInfo(event, messages.last(), d->useModifiedTime);
    });
    d->inUse = false;
    Q_EMIT dataReadyInModel(messages);
}

SmsInfo SyncStorageIf::fetchSms(int id)
{
    qCDebug(lcAdapter) << "KorvaSyncIf::SmsInfo KorvaSyncIf::SyncStorageIf::fetchSms(int)";
    SmsInfo info;
    Event event;
    CommHistory::TrackerIO::instance()->getEvent(id, event);
    if (event.isValid())
        SyncStorageIfPrivate::fillSmsInfo(event, info, false);
    return info;
}

bool SyncStorageIf::deleteSms(const QList<SmsInfo> &msgs)
{
    qCDebug(lcAdapter)
        << "bool KorvaSyncIf::SyncStorageIf::deleteSms(const QList<KorvaSyncIf::SmsInfo>&)"
        << msgs.size();
    EventModel *const model = d->ensureEventModel();
    d->inUse = true;
    d->refIds.clear();
    d->idsToDelete.clear();
    d->deletionStatus.clear();
    d->committedCount = 0;
    if (msgs.isEmpty())
        qCWarning(lcAdapter) << "Empty list for deletion";
    d->refIds = SyncStorageIfPrivate::getRefIds(msgs);
    connect(model, &EventModel::eventsCommitted, this, &SyncStorageIf::deletedEventsCommitted,
            Qt::QueuedConnection);
    for (const SmsInfo &msg : msgs)
        d->idsToDelete.append(msg.id);
    for (const int id : qAsConst(d->idsToDelete))
        model->deleteEvent(id);
    return true;
}

void SyncStorageIf::deletedEventsCommitted(QList<Event> events, bool status)
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::deletedEventsCommitted("
                          "QList<CommHistory::Event>, bool)"
                       << boolText(status);
    for (const Event &event : qAsConst(events)) {
        qCDebug(lcAdapter) << "Deleted event id" << event.id();
        d->deletionStatus.append(status);
        ++d->committedCount;
    }
    if (d->committedCount != d->refIds.size())
        return;
    qCDebug(lcAdapter) << "All ids deleted";
    d->inUse = false;
    disconnect(d->eventModel.get(), &EventModel::eventsCommitted, this,
               &SyncStorageIf::deletedEventsCommitted);
    Q_EMIT deletedIdsStatus(d->refIds, d->deletionStatus);
}

bool SyncStorageIf::fetchCallMessages(const QDateTime &time, const QString &callType)
{
    qCDebug(lcAdapter)
        << "bool KorvaSyncIf::SyncStorageIf::fetchCallMessages(const QDateTime&, const QString&)";
    d->inUse = true;
    CallModel *const model = d->ensureCallModel();
    model->setFilter(CallModel::SortByTime, storeCallType(callType), time);
    connect(model, &CallModel::modelReady, this, &SyncStorageIf::callEventsAvailableInModel,
            Qt::QueuedConnection);
    return model->getEvents();
}

void SyncStorageIf::callEventsAvailableInModel()
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::callEventsAvailableInModel()";
    disconnect(d->callModel.get(), &CallModel::modelReady, this,
               &SyncStorageIf::callEventsAvailableInModel);
    QList<CallInfo> calls;
    calls.reserve(d->callModel->rowCount());
    forEachValidEvent(*d->callModel, [&](const Event &event) {
        calls.append(SyncStorageIfPrivate::callInfo(event));
    });
    // The adapter stays busy: whoever holds its call model's rows keeps it to himself, and
    // the pool hands out another.
    Q_EMIT callInfoDataReadyInModel(calls);
}

bool SyncStorageIf::storeCallLogMsgs(const QList<CallInfo> &calls)
{
    qCDebug(lcAdapter)
        << "bool KorvaSyncIf::SyncStorageIf::storeCallLogMsgs(const QList<KorvaSyncIf::CallInfo>&)";
    d->clearCachedDBIdsAndRefIndexes();
    d->inUse = true;
    QList<Event> events = d->constructCallEventList(calls);
    CallModel *const model = d->ensureCallModel();
    connect(model, &EventModel::eventsCommitted, this,
            qOverload<QList<Event>, bool>(&SyncStorageIf::eventsCommitted), Qt::QueuedConnection);
    return model->addEvents(events, false);
}

bool SyncStorageIf::deleteAllCallLogMsgs()
{
    qCDebug(lcAdapter) << "bool KorvaSyncIf::SyncStorageIf::deleteAllCallLogMsgs()";
    return d->ensureCallModel()->deleteAll();
}

} // namespace KorvaSyncIf
