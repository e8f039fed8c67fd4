// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/syncrecords.h>

#include <commhistory/event.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtCore/QStringList>

namespace KorvaSyncIf {

class SyncStorageIfPrivate;

//! The one object through which the library reads and writes the store.
//!
//! A call starts work and returns; the outcome comes as a signal. true means that the work
//! was started. Callers connect right after the call, before they return to the event loop.
//! A receiver may destroy the adapter.
class SyncStorageIf : public QObject
{
    Q_OBJECT
public:
    explicit SyncStorageIf(QObject *parent);
    ~SyncStorageIf() override;

    bool storeSms(const QList<SmsInfo> &msgs);
    bool modifySms(const QList<SmsInfo> &msgs);

    bool fetchSmsMessages(const QDateTime &time, int parentId, bool useModifiedTime);
    //! Waits for the store; a default record when there is no such event.
    SmsInfo fetchSms(int id);
    bool deleteSms(const QList<SmsInfo> &msgs);

    bool fetchCallMessages(const QDateTime &time, const QString &callType);
    bool storeCallLogMsgs(const QList<CallInfo> &calls);
    //! Waits for the store.
    bool deleteAllCallLogMsgs();

    //! A batch is under way, so that the pool must not hand this adapter out.
    bool inUse();

Q_SIGNALS:
    void dataReadyInModel(QList<KorvaSyncIf::SmsInfo> smsInfoList);
    void callInfoDataReadyInModel(QList<KorvaSyncIf::CallInfo> callInfoList);
    void error(QList<int> idxs, KorvaSyncIf::ErrorCause errCause);
    void eventsCommitted(QList<int> refIds, QList<int> dbIds);
    void eventsCommitFailed(QList<int> refIds);
    void deletedIdsStatus(QList<int> refIds, QList<bool> idsStatus);
    void groupIdsCommitted(QList<int> groupIds, bool status);

private Q_SLOTS:
    void startAddingMessages();
    void startModifyingMessages();
    void addGroups(QStringList contactIds);
    void addEvents();
    void modifyEvents();
    void groupIdsCommittedSlot(QList<int> groups, bool status);
    void eventsAvailableInModel();
    void callEventsAvailableInModel();
    void eventsCommitted(QList<CommHistory::Event> eventList, bool status);
    void deletedEventsCommitted(QList<CommHistory::Event> events, bool status);

private:
    bool startWriting(const QList<SmsInfo> &msgs, const char *slot, const char *signature);
    void connectToSmsModelCommits();
    void disconnectFromCommits();

    QScopedPointer<SyncStorageIfPrivate> d;
};

} // namespace KorvaSyncIf
