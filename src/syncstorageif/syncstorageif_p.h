// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "base/qtversion.h"

#include <korvasync/syncrecords.h>

#include <commhistory/callmodel.h>
#include <commhistory/event.h>
#include <commhistory/group.h>
#include <commhistory/groupmodel.h>
#include <commhistory/syncsmsmodel.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

//! Hash of a conversation's key (local uid, normalised remote number). The uid of the one
//! cellular account takes no part in it. Global and with a seed, since QHash looks for it so.
HashSeed qHash(const QPair<QString, QString> &key, HashSeed seed = 0);

namespace KorvaSyncIf {

//! The account through which every text message goes.
QString cellularAccountUid();

//! State of an adapter's one batch, and the steps of its work that send no signal.
class SyncStorageIfPrivate
{
public:
    SyncStorageIfPrivate();
    ~SyncStorageIfPrivate();

    // Event mapping
    static bool isOutboundEvent(const SmsInfo &info);
    static QString getRemoteId(const SmsInfo &info);
    static QString normalizedNumber(const QString &number);
    static void constructSmsEvent(const SmsInfo &info, CommHistory::Event &event, bool forModify);
    static void fillSmsInfo(const CommHistory::Event &event, SmsInfo &info, bool useModifiedTime);
    static void constructCallEvent(const CallInfo &call, CommHistory::Event &event);
    static CallInfo callInfo(const CommHistory::Event &event);
    //! The events of the list, in order; fills refIds.
    QList<CommHistory::Event> constructEventList(const QList<SmsInfo> &list, bool forModify);
    QList<CommHistory::Event> constructCallEventList(const QList<CallInfo> &list);

    // Batch accounting
    static QList<int> getRefIds(const QList<SmsInfo> &msgs);
    void clearCachedDBIdsAndRefIndexes();
    void removeIdsFromPendingMsgs(const QList<int> &ids);

    // Conversations
    void fillGroupIdsOfMsgs();
    //! Database id of the conversation with the normalised number, -1 (or 0) when none.
    static int getGroup(const QString &localUid, const QString &remoteId);
    void insertGroupIdInPendingMsgs(const QList<int> &groupIds, int startIndex);

    CommHistory::CallModel *ensureCallModel();
    CommHistory::EventModel *ensureEventModel();

    QList<SmsInfo> pendingMessages;
    QList<CommHistory::Group> groupsToAdd;
    QStringList contactIds; // normalised numbers that need a conversation, each once
    QHash<QPair<QString, QString>, int> groupCache;
    QList<int> refIds;
    QList<int> dbIds; // in the order of the store's reports
    int committedCount = 0;
    int groupsCommittedCount = 0;
    bool useModifiedTime = false;
    bool inUse = false;
    QList<int> idsToDelete;     // database ids of the deletion under way
    QList<bool> deletionStatus; // one for each of them, in the order of the store's reports
    std::unique_ptr<CommHistory::SyncSMSModel> smsModel;
    std::unique_ptr<CommHistory::GroupModel> groupModel;
    std::unique_ptr<CommHistory::CallModel> callModel;   // made when first needed
    std::unique_ptr<CommHistory::EventModel> eventModel; // made when first needed

private:
    Q_DISABLE_COPY(SyncStorageIfPrivate)
};

} // namespace KorvaSyncIf
