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
//! Life: a facade creates it, as its child, and starts the read. When the store cannot
//! take the read, isError() is true at once, finished() never comes, and the object lives
//! until the facade goes. Otherwise finished() comes once, on a later turn of the event
//! loop; inside the slots connected to it the results can be read; after them the object
//! deletes itself. A read that fails after it began gives no signal at all: callers that
//! must know set a time limit of their own.
class KORVASYNC_EXPORT PendingMsgs : public QObject
{
    Q_OBJECT
public:
    explicit PendingMsgs(QObject *parent);
    ~PendingMsgs() override;

    //! Starts a read of the messages of one folder; the facades call it once.
    //! \param fromTime      lower bound, any time zone; null = all
    //! \param modifiedOnly  bound on the last modification instead of the message's time
    void messages(const QDateTime &fromTime, LocationId location, bool modifiedOnly);
    //! Starts a read of the call log; the facades call it once.
    //! \param typeText  "incoming", "outgoing" or "missed"; any other text means all
    void callMessages(const QDateTime &fromTime, const QString &typeText);

    //! The call as a call-history entry (see CallSyncInterface).
    QString encodeCallSyncMsgs(const KorvaSyncIf::CallInfo &callInfo);

    QList<SyncSmsInfo> syncSmsInfo(); //!< messages in the order of the store
    QStringList callLogs();           //!< call-history entries in the order of the store
    bool isError();                   //!< the read could not be started

Q_SIGNALS:
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
