// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncstorageif.h"
#include "syncstorageif_p.h"

#include "base/logging.h"

#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlquery.h>
#include <sparql/qsparqlresult.h>

#include <QtCore/QDebug>
#include <QtCore/QSet>

using CommHistory::Group;

HashSeed qHash(const QPair<QString, QString> &key, HashSeed seed)
{
    const QString account = KorvaSyncIf::cellularAccountUid();
    if (key.first == account)
        return qHash(key.second, seed);
    if (key.second == account)
        return qHash(key.first, seed);
    return qHash(key.first, seed) ^ qHash(key.second, seed);
}

namespace KorvaSyncIf {

namespace {

QPair<QString, QString> groupKey(const QString &normalizedNumber)
{
    return {cellularAccountUid(), normalizedNumber};
}

} // namespace

void SyncStorageIfPrivate::fillGroupIdsOfMsgs()
{
    const char *const signature = "void KorvaSyncIf::SyncStorageIfPrivate::fillGroupIdsOfMsgs()";
    qCDebug(lcAdapter) << signature;
    refIds.clear();
    QSet<QString> knownContacts(contactIds.cbegin(), contactIds.cend());
    for (SmsInfo &msg : pendingMessages) {
        refIds.append(msg.refId);
        const QString remote = getRemoteId(msg);
        const QString normalized = normalizedNumber(remote);
        const auto key = groupKey(normalized);
        const auto cached = groupCache.constFind(key);
        if (cached != groupCache.constEnd()) {
            msg.groupId = *cached;
            qCDebug(lcAdapter) << "Original remoteId " << remote << "Found GRPID " << msg.groupId
                               << "for remoteNo. " << normalized;
            continue;
        }
        msg.groupId = getGroup(cellularAccountUid(), normalized);
        if (msg.groupId >= 1) {
            groupCache.insert(key, msg.groupId);
        } else if (!knownContacts.contains(normalized)) {
            knownContacts.insert(normalized);
            contactIds.append(normalized);
            // The second copy is part of what a failed modification reports.
            refIds.append(msg.refId);
        }
    }
    qCDebug(lcAdapter) << "Returning from" << signature;
}

int SyncStorageIfPrivate::getGroup(const QString &localUid, const QString &remoteId)
{
    qCDebug(lcAdapter) << "Enter"
                       << "int KorvaSyncIf::SyncStorageIfPrivate::getGroup(const QString&, const "
                          "QString&)";
    QSparqlConnection connection(QStringLiteral("QTRACKER_DIRECT"), QSparqlConnectionOptions(),
                                 nullptr);
    // The number is pasted in as it is, since this text is what a platform recognises: ours reads
    // the number out of it, and a phone's own runs it. What is not digits can find a wrong
    // conversation or none. The platform sees to it that it does no more.
    const QString text =
        QStringLiteral("SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject '%1'; "
                       "nie:generator ?remoteId. FILTER REGEX(?remoteId, '%2$')}")
            .arg(localUid)
            .arg(remoteId);
    QScopedPointer<QSparqlResult> result(
        connection.exec(QSparqlQuery(text, QSparqlQuery::SelectStatement)));
    int id = -1;
    if (result) {
        result->waitForFinished();
        if (result->next()) {
            const QString channel = result->value(0);
            if (!channel.isEmpty())
                id = channel.mid(channel.indexOf(QLatin1Char(':')) + 1).toInt();
        }
    }
    result.reset();
    qCDebug(lcAdapter) << "Exit ";
    return id;
}

void SyncStorageIf::addGroups(QStringList contactIds)
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::addGroups(QStringList)";
    d->groupsToAdd.clear();
    d->groupsToAdd.reserve(contactIds.size());
    for (const QString &contactId : qAsConst(contactIds)) {
        Group group;
        group.setLocalUid(cellularAccountUid());
        group.setRemoteUids({contactId});
        d->groupsToAdd.append(group);
    }
    d->groupsCommittedCount = 0;
    connect(d->groupModel.get(), &CommHistory::GroupModel::groupsCommitted, this,
            &SyncStorageIf::groupIdsCommittedSlot);
    d->groupModel->addGroups(d->groupsToAdd);
}

void SyncStorageIf::groupIdsCommittedSlot(QList<int> groups, bool status)
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIf::groupIdsCommittedSlot(QList<int>, bool)"
                       << boolText(status);
    if (status) {
        d->insertGroupIdInPendingMsgs(groups, d->groupsCommittedCount);
        d->groupsCommittedCount += int(groups.size());
        if (d->groupsCommittedCount < d->contactIds.size())
            return;
        qCDebug(lcAdapter) << "Done all groups Committed ..";
        disconnect(d->groupModel.get(), &CommHistory::GroupModel::groupsCommitted, this,
                   &SyncStorageIf::groupIdsCommittedSlot);
        if (!d->pendingMessages.isEmpty())
            addEvents();
        return;
    }
    if (lcAdapter().isDebugEnabled()) {
        QStringList ids;
        for (const int refId : qAsConst(d->refIds))
            ids.append(QString::number(refId));
        qCDebug(lcAdapter).noquote()
            << "Group Ids commit failed..removing ids" << ids.join(QLatin1String(", "));
    }
    d->removeIdsFromPendingMsgs(d->refIds);
    disconnect(d->groupModel.get(), &CommHistory::GroupModel::groupsCommitted, this,
               &SyncStorageIf::groupIdsCommittedSlot);
    d->inUse = false;
    // No commit signal follows: the pending object waits on, and goes with its facade or
    // with the adapter's next batch.
    Q_EMIT error(d->refIds, GroupIdNotFound);
}

void SyncStorageIfPrivate::insertGroupIdInPendingMsgs(const QList<int> &groupIds, int startIndex)
{
    qCDebug(lcAdapter) << "Inserting the new group ids";
    for (int i = 0; i < groupIds.size() && startIndex + i < groupsToAdd.size(); ++i) {
        const QString normalized =
            normalizedNumber(groupsToAdd.at(startIndex + i).remoteUids().value(0));
        groupCache.insert(groupKey(normalized), groupIds.at(i));
        qCDebug(lcAdapter) << "Inserting grpId" << groupIds.at(i) << "for remotecontact(normalized)"
                           << normalized;
    }
    for (SmsInfo &msg : pendingMessages) {
        const auto cached = groupCache.constFind(groupKey(normalizedNumber(getRemoteId(msg))));
        if (cached == groupCache.constEnd())
            continue;
        msg.groupId = *cached;
        qCDebug(lcAdapter) << "Calculated grp Id" << msg.groupId;
    }
}

} // namespace KorvaSyncIf
