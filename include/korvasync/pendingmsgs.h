// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QStringList>

namespace KorvaSyncIf {

class SyncStorageIf;

//! Result of a read.
//!
//! Life:
//! - *Created*: by a facade, as its child. The facade starts the read.
//! - *Not started*: The store is absent or cannot be read. isError() is true at once, finished()
//!   never comes, and the object lives until the facade is destroyed.
//! - *Running*: The caller connects to finished() before it returns to the event loop.
//! - *Finished*: finished() comes once, from the event loop, never inside the facade's call. The
//!   slots connected to it read the results.
//! - *Deleted*: The object deletes itself after finished(). A caller that is no longer interested
//!   may delete it earlier.
//! - *Failed later*: A read that fails after its start emits nothing, not even a part of its
//!   results. The object lives until the facade is destroyed. Callers set a time limit of their
//!   own.
class KORVASYNC_EXPORT PendingMsgs : public QObject
{
    Q_OBJECT
public:
    explicit PendingMsgs(QObject *parent);
    ~PendingMsgs() override;

    //! Starts a read of the messages of one folder. The facade calls it, once.
    //! \param fromTime      lower bound; see SMSSyncInterface::messages() and modifiedMessages()
    //! \param modifiedOnly  the bound is on the last modification, not on the message's time
    void messages(const QDateTime &fromTime, LocationId location, bool modifiedOnly);
    //! Starts a read of the call log. The facade calls it, once.
    //! \param fromTime  lower bound; see CallSyncInterface::calls()
    //! \param typeText  "incoming", "outgoing" or "missed"; any other text means all
    void callMessages(const QDateTime &fromTime, const QString &typeText);

    //! Writes a call as the call-history entry that a read gives (see CallSyncInterface). The time
    //! keeps its own time zone. Never fails: values are written as they are.
    QString encodeCallSyncMsgs(const KorvaSyncIf::CallInfo &callInfo);

    //! Messages in the order that the facade's call names. Empty before finished(), and for calls.
    QList<SyncSmsInfo> syncSmsInfo();
    //! Call-history entries, likewise. Empty for messages.
    QStringList callLogs();
    //! Whether the read could not be started. Final when the facade's call returns.
    bool isError();

Q_SIGNALS:
    //! The results are complete.
    //! \param pendingMsgs  this object
    void finished(PendingMsgs *pendingMsgs);

private Q_SLOTS:
    void retrievedMessages(QList<KorvaSyncIf::SmsInfo> smsInfoList);
    void retrievedCallMessages(QList<KorvaSyncIf::CallInfo> callInfoList);

private:
    SyncStorageIf *storageIf = nullptr; // of the pool, not owned
    QList<SyncSmsInfo> smsResults;
    QStringList callResults;
    bool errorOccured = false;
    QElapsedTimer timer;
};

} // namespace KorvaSyncIf
