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

//! Result of a write: one entry per item, at its reference index.
//!
//! Life:
//! - *Created*: by a facade, as its child. The facade sets the errors of items that it refuses
//!   itself, and hands the others to the store.
//! - *Not started*: No item is left, or the store refuses the request. isError() is true at once,
//!   finished() never comes, and the object lives until the facade is destroyed. status() has the
//!   errors of the refused items.
//! - *Running*: The caller connects to finished() before it returns to the event loop.
//! - *Finished*: finished() comes once, from the event loop, never inside the facade's call. The
//!   slots connected to it read the results.
//! - *Deleted*: The object deletes itself after finished(). A caller that is no longer interested
//!   may delete it earlier; the write goes on.
//! - *No answer*: finished() never comes if conversations for new numbers could not be made.
//!   status() then shows SmsDatabaseError, but isError() is false. It never comes, either, if the
//!   store refuses a request late, or breaks off its reports. The object lives until the facade is
//!   destroyed. Callers set a time limit of their own.
//!
//! What is reported as written is on the disk.
class KORVASYNC_EXPORT PendingStatus : public QObject
{
    Q_OBJECT
public:
    //! \param count  items in the caller's request
    PendingStatus(int count, SyncType syncType, QObject *parent);
    ~PendingStatus() override;

    //! Sets errors[i] at reference index refIds[i], until the shorter list ends. An index outside
    //! the request is ignored with a warning. For the facade.
    void setStatusIds(QList<int> refIds, QList<SMSSyncError> errors);
    //! The same for calls.
    void setStatusCallIds(QList<int> refIds, QList<CallSyncError> errors);
    //! Marks the request as empty: one SmsZeroMessagesPassed, one id -1, and isError(). For the
    //! facade.
    void setZeroMessagesPassedError();

    //! Hands modifications to the store. The facade calls one of the three hand-overs, once. An
    //! empty list sets isError().
    //! \param smsInfos  records with their reference indexes in SmsInfo::refId
    void modify(const QList<SmsInfo> &smsInfos);
    //! Hands calls to the store; see modify().
    //! \param callInfos  records with their reference indexes in CallInfo::id
    void store(const QList<CallInfo> &callInfos);
    //! Hands deletions to the store; see modify().
    //! \param smsInfos  records of which only SmsInfo::id and SmsInfo::refId are used
    void deleteIds(const QList<SmsInfo> &smsInfos);

    //! Results of messages by reference index, complete in the slots of finished(). Empty for
    //! calls.
    QList<SMSSyncError> status();
    //! Results of calls, likewise. Empty for messages.
    QList<CallSyncError> statusCallMsgs();
    //! Whether the request could not be started, or the store did not commit all that was handed
    //! over. Refused items and failed deletions show in status() alone. So does a modification
    //! whose party has no conversation, unless nothing else was left to write.
    bool isError();

Q_SIGNALS:
    //! The results are complete.
    //! \param pendingStatus  this object; a PendingIds for additions of messages
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
