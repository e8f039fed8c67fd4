// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncstorageif.h"
#include "syncstorageif_p.h"

#include "base/logging.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaObject>
#include <QtCore/QPointer>

#include <numeric>
#include <vector>

using CommHistory::Event;

namespace KorvaSyncIf {

QList<int> SyncStorageIfPrivate::getRefIds(const QList<SmsInfo> &msgs)
{
    QList<int> ids;
    ids.reserve(msgs.size());
    for (const SmsInfo &msg : msgs)
        ids.append(msg.refId);
    return ids;
}

void SyncStorageIfPrivate::clearCachedDBIdsAndRefIndexes()
{
    refIds.clear();
    dbIds.clear();
    committedCount = 0;
}

// Removes at positions that were looked up before the first removal, so a later id takes
// out a message further on than its own. Sync clients rely on which messages of a modification
// with unknown parties are written; those that must be sure send one such message a request.
void SyncStorageIfPrivate::removeIdsFromPendingMsgs(const QList<int> &ids)
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIfPrivate::removeIdsFromPendingMsgs(const "
                          "QList<int>&)";
    QHash<int, size_t> firstPositions;
    std::vector<int> remaining(size_t(pendingMessages.size())); // indexes into pendingMessages
    std::iota(remaining.begin(), remaining.end(), 0);
    for (int i = int(pendingMessages.size()) - 1; i >= 0; --i)
        firstPositions.insert(pendingMessages.at(i).refId, size_t(i));

    for (const int id : ids) {
        const auto position = firstPositions.constFind(id);
        if (position == firstPositions.constEnd())
            qCWarning(lcAdapter) << "Cannot find idx for id" << id;
        else if (*position < remaining.size())
            remaining.erase(remaining.begin() + std::ptrdiff_t(*position));
    }

    QList<SmsInfo> kept;
    kept.reserve(int(remaining.size()));
    for (const int index : remaining)
        kept.append(pendingMessages.at(index));
    pendingMessages = kept;
}

bool SyncStorageIf::startWriting(const QList<SmsInfo> &msgs, const char *slot,
                                 const char *signature)
{
    qCDebug(lcAdapter) << signature;
    d->inUse = true;
    d->clearCachedDBIdsAndRefIndexes();
    d->pendingMessages = msgs;
    const bool posted = QMetaObject::invokeMethod(this, slot, Qt::QueuedConnection);
    qCDebug(lcAdapter) << "Exit" << signature << boolText(posted);
    return posted;
}

bool SyncStorageIf::storeSms(const QList<SmsInfo> &msgs)
{
    return startWriting(
        msgs, "startAddingMessages",
        "bool KorvaSyncIf::SyncStorageIf::storeSms(const QList<KorvaSyncIf::SmsInfo>&)");
}

bool SyncStorageIf::modifySms(const QList<SmsInfo> &msgs)
{
    return startWriting(
        msgs, "startModifyingMessages",
        "bool KorvaSyncIf::SyncStorageIf::modifySms(const QList<KorvaSyncIf::SmsInfo>&)");
}

void SyncStorageIf::startAddingMessages()
{
    qCDebug(lcAdapter) << "Enter"
                       << "void KorvaSyncIf::SyncStorageIf::startAddingMessages()";
    d->contactIds.clear();
    d->fillGroupIdsOfMsgs();
    if (d->contactIds.isEmpty())
        addEvents();
    else
        addGroups(d->contactIds);
}

void SyncStorageIf::startModifyingMessages()
{
    qCDebug(lcAdapter) << "Enter"
                       << "void KorvaSyncIf::SyncStorageIf::startModifyingMessages()";
    d->contactIds.clear();
    d->fillGroupIdsOfMsgs();
    // refIds now holds every index of the batch once and those that introduced an unknown
    // party twice. A modification makes no conversations: it gives up that whole list, and
    // what the stale positions leave is written.
    if (!d->contactIds.isEmpty()) {
        d->removeIdsFromPendingMsgs(d->refIds);
        const QPointer<SyncStorageIf> self(this);
        Q_EMIT error(d->refIds, GroupIdNotFound);
        if (!self)
            return;
    }
    if (d->pendingMessages.isEmpty()) {
        d->inUse = false;
        Q_EMIT eventsCommitFailed(d->refIds);
    } else {
        modifyEvents();
    }
}

void SyncStorageIf::addEvents()
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::addEvents()";
    QList<Event> events = d->constructEventList(d->pendingMessages, false);
    connectToSmsModelCommits();
    // A request that the store refuses at once stays without any signal and the adapter stays
    // busy: the pool then sets it aside, and the caller's time limit ends the wait.
    if (!d->smsModel->addEvents(events, false))
        qCDebug(lcAdapter) << "Add Events of EventModel returned FALSE";
}

void SyncStorageIf::modifyEvents()
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::modifyEvents()";
    QList<Event> events = d->constructEventList(d->pendingMessages, true);
    connectToSmsModelCommits();
    if (!d->smsModel->modifyEvents(events)) // as in addEvents()
        qCDebug(lcAdapter) << "Modiy Events of EventModel returned false";
}

void SyncStorageIf::connectToSmsModelCommits()
{
    connect(d->smsModel.get(), &CommHistory::EventModel::eventsCommitted, this,
            qOverload<QList<Event>, bool>(&SyncStorageIf::eventsCommitted));
}

void SyncStorageIf::disconnectFromCommits()
{
    const auto slot = qOverload<QList<Event>, bool>(&SyncStorageIf::eventsCommitted);
    disconnect(d->smsModel.get(), &CommHistory::EventModel::eventsCommitted, this, slot);
    if (d->callModel)
        disconnect(d->callModel.get(), &CommHistory::EventModel::eventsCommitted, this, slot);
}

// The end of every write, of messages and of calls.
void SyncStorageIf::eventsCommitted(QList<Event> eventList, bool status)
{
    qCDebug(lcAdapter)
        << "void KorvaSyncIf::SyncStorageIf::eventsCommitted(QList<CommHistory::Event>, bool)"
        << eventList.size() << boolText(status);
    if (!status) {
        disconnectFromCommits();
        qCDebug(lcAdapter) << "Committing db ids failed";
        d->inUse = false;
        Q_EMIT eventsCommitFailed(d->refIds);
        return;
    }
    for (const Event &event : qAsConst(eventList))
        d->dbIds.append(event.id());
    d->committedCount += int(eventList.size());
    if (d->committedCount < d->refIds.size()) {
        qCDebug(lcAdapter) << "Waiting for remaining indexes: recvd events count"
                           << d->committedCount << "Expected " << d->refIds.size();
        return;
    }
    disconnectFromCommits();
    qCDebug(lcAdapter)
        << "Finished getting all expected events, resetting indexAdded and inUse counters";
    d->inUse = false;
    Q_EMIT eventsCommitted(d->refIds, d->dbIds);
}

} // namespace KorvaSyncIf
