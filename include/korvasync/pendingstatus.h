// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QObject>

namespace KorvaSyncIf {

class SyncStorageIf;

//! Result of a write: one slot per item, by reference index.
//!
//! Life: a facade creates it, as its child, notes the faults it finds itself, and hands
//! the other items to the store. When there is nothing to hand over or the store cannot
//! take it, isError() is true at once, finished() never comes, and the object lives until
//! the facade goes. Otherwise finished() comes once, on a later turn of the event loop;
//! inside the slots connected to it the results can be read; after them the object deletes
//! itself. Where conversations for new numbers could not be made, finished() does not come
//! and status() shows SmsDatabaseError: callers set a time limit of their own.
class KORVASYNC_EXPORT PendingStatus : public QObject
{
    Q_OBJECT
public:
    //! \param count  items in the caller's request
    PendingStatus(int count, SyncType syncType, QObject *parent);
    ~PendingStatus() override;

    //! Notes errors[i] for reference index refIds[i], as far as both lists reach. An index
    //! outside the request is refused with a warning.
    void setStatusIds(QList<int> refIds, QList<SMSSyncError> errors);
    void setStatusCallIds(QList<int> refIds, QList<CallSyncError> errors);
    //! Notes that the request held no items: one SmsZeroMessagesPassed, one id -1, isError().
    void setZeroMessagesPassedError();

    // Hand-over to the store; the facades call one of them, once. Records carry their
    // reference index in refId (CallInfo: id). An empty list sets isError().
    void modify(const QList<SmsInfo> &smsInfos);
    void store(const QList<CallInfo> &callInfos);
    void deleteIds(const QList<SmsInfo> &smsInfos);

    QList<SMSSyncError> status();          //!< by reference index; empty for calls
    QList<CallSyncError> statusCallMsgs(); //!< by reference index; empty for messages
    //! The request could not be started, or the store did not commit all of it. Failed
    //! deletions show in status() alone.
    bool isError();

Q_SIGNALS:
    void finished(PendingStatus *pendingStatus);

protected Q_SLOTS:
    void eventsCommittedSlot(QList<int> refIds, QList<int> dbIds);
    void eventsCommitFailed(QList<int> refIds);
    void errorIndexesNotProcessed(QList<int> idxs, KorvaSyncIf::ErrorCause errCause);
    void deletedIdsStatus(QList<int> ids, QList<bool> deletedIdsStatus);

protected:
    void connectSignalHandlers();
    void disconnectSignalHandlers();

    SyncType syncType;
    QList<int> idsList;
    QList<SMSSyncError> statusList;
    QList<CallSyncError> callStatusList;
    bool errorOccured = false;
    QElapsedTimer timer;
    SyncStorageIf *storageIf = nullptr; // of the pool, not owned
};

} // namespace KorvaSyncIf
