// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/pendingids.h>
#include <korvasync/pendingmsgs.h>
#include <korvasync/pendingstatus.h>

#include <korvasync/vmessageencoder.h>

#include "base/datetimetext.h"
#include "base/logging.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"

#include <QtCore/QDebug>
#include <QtCore/QPointer>

namespace KorvaSyncIf {

namespace {

SyncStorageIf *adapterOfPool()
{
    SyncStorageIf *const adapter = SyncStorageIfManager::getInstance()->syncStorageIf();
    Q_ASSERT_X(adapter, "pendingresult", "storageIf != NULL");
    return adapter;
}

//! Emits finished() and lets the object go. A receiver may have deleted it, or its facade.
template <typename Pending>
void finishPending(Pending *pending)
{
    const QPointer<Pending> guard(pending);
    Q_EMIT pending->finished(pending);
    if (guard)
        guard->deleteLater();
}

//! Writes one entry of a result list. An index outside the list is a fault of the caller
//! or the store; the write is refused.
template <typename T>
void setEntry(QList<T> &list, int refId, T value)
{
    if (refId >= 0 && refId < list.size())
        list[refId] = value;
    else
        qCWarning(lcPending) << "Reference index" << refId << "is outside the request of"
                             << list.size() << "items, not set";
}

template <typename T>
void setEntries(QList<T> &list, const QList<int> &refIds, const QList<T> &values)
{
    for (int i = 0; i < refIds.size() && i < values.size(); ++i)
        setEntry(list, refIds.at(i), values.at(i));
}

//! Milliseconds since the start; 0 for a timer that never ran.
qint64 elapsedMilliseconds(const QElapsedTimer &timer)
{
    return timer.isValid() ? timer.elapsed() : 0;
}

} // namespace

// ---- reads

PendingMsgs::PendingMsgs(QObject *parent)
    : QObject(parent)
{
    qCDebug(lcPending) << "KorvaSyncIf::PendingMsgs::PendingMsgs(QObject*)";
    storageIf = adapterOfPool();
}

PendingMsgs::~PendingMsgs()
{
    qCDebug(lcPending) << "virtual KorvaSyncIf::PendingMsgs::~PendingMsgs()"
                       << "Destroyed";
}

void PendingMsgs::messages(const QDateTime &fromTime, LocationId location, bool modifiedOnly)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingMsgs::messages(const QDateTime&, "
                          "KorvaSyncIf::LocationId, bool)";
    timer.start();
    connect(storageIf, &SyncStorageIf::dataReadyInModel, this, &PendingMsgs::retrievedMessages);
    errorOccured = !storageIf->fetchSmsMessages(fromTime, location, modifiedOnly);
}

void PendingMsgs::callMessages(const QDateTime &fromTime, const QString &typeText)
{
    qCDebug(lcPending)
        << "void KorvaSyncIf::PendingMsgs::callMessages(const QDateTime&, const QString&)"
        << fromTime << typeText;
    timer.start();
    connect(storageIf, &SyncStorageIf::callInfoDataReadyInModel, this,
            &PendingMsgs::retrievedCallMessages);
    errorOccured = !storageIf->fetchCallMessages(fromTime, typeText);
}

void PendingMsgs::retrievedMessages(QList<SmsInfo> smsInfoList)
{
    qCDebug(lcPending)
        << "void KorvaSyncIf::PendingMsgs::retrievedMessages(QList<KorvaSyncIf::SmsInfo>)";
    disconnect(storageIf, &SyncStorageIf::dataReadyInModel, this, &PendingMsgs::retrievedMessages);
    VMessageEncoder encoder;
    smsResults.reserve(smsInfoList.size());
    for (const SmsInfo &info : qAsConst(smsInfoList))
        smsResults.append(encoder.encode(info));
    qCCritical(lcPending) << "Time taken by Pending Msgs to retrieve " << smsResults.size()
                          << "msgs" << elapsedMilliseconds(timer) << "ms";
    finishPending(this);
}

void PendingMsgs::retrievedCallMessages(QList<CallInfo> callInfoList)
{
    qCDebug(lcPending)
        << "void KorvaSyncIf::PendingMsgs::retrievedCallMessages(QList<KorvaSyncIf::CallInfo>)";
    disconnect(storageIf, &SyncStorageIf::callInfoDataReadyInModel, this,
               &PendingMsgs::retrievedCallMessages);
    callResults.reserve(callInfoList.size());
    for (const CallInfo &call : qAsConst(callInfoList))
        callResults.append(encodeCallSyncMsgs(call));
    qCCritical(lcPending) << "Time taken by Pending Msgs to retrieve " << callInfoList.size()
                          << "calls" << elapsedMilliseconds(timer) << "ms";
    finishPending(this);
}

// The date-time ends in its milliseconds, which the reader of entries does not know: what is
// written here does not read back as it is. Sync clients expect this form.
QString PendingMsgs::encodeCallSyncMsgs(const CallInfo &callInfo)
{
    QString entry = QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:");
    entry += callInfo.type;
    entry += QLatin1String("\r\nTEL:");
    entry += callInfo.number;
    entry += QLatin1String("\r\nDURATION:");
    entry += QString::number(callInfo.duration);
    entry += QLatin1String("\r\nCALL-DATETIME:");
    appendStampWithMilliseconds(callInfo.dateTime, entry);
    entry += QLatin1String("\r\nEND:VCALLHISTENTRY\r\n");
    return entry;
}

QList<SyncSmsInfo> PendingMsgs::syncSmsInfo() { return smsResults; }

QStringList PendingMsgs::callLogs() { return callResults; }

bool PendingMsgs::isError() { return errorOccured; }

// ---- writes

PendingStatus::PendingStatus(int count, SyncType syncType, QObject *parent)
    : QObject(parent)
    , syncType(syncType)
{
    qCDebug(lcPending)
        << "KorvaSyncIf::PendingStatus::PendingStatus(int, KorvaSyncIf::SyncType, QObject*)";
    idsList.reserve(count);
    for (int i = 0; i < count; ++i) {
        idsList.append(-1);
        if (syncType == SmsSync)
            statusList.append(SmsNoError);
        else
            callStatusList.append(CallNoError);
    }
    storageIf = adapterOfPool();
}

PendingStatus::~PendingStatus()
{
    qCDebug(lcPending) << "virtual KorvaSyncIf::PendingStatus::~PendingStatus()";
}

void PendingStatus::setStatusIds(QList<int> refIds, QList<SMSSyncError> errors)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingStatus::setStatusIds(QList<int>, "
                          "QList<KorvaSyncIf::SMSSyncError>)";
    setEntries(statusList, refIds, errors);
}

void PendingStatus::setStatusCallIds(QList<int> refIds, QList<CallSyncError> errors)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingStatus::setStatusCallIds(QList<int>, "
                          "QList<KorvaSyncIf::CallSyncError>)";
    setEntries(callStatusList, refIds, errors);
}

void PendingStatus::setZeroMessagesPassedError()
{
    qCWarning(lcPending) << "Empty list to be processed";
    statusList.append(SmsZeroMessagesPassed);
    idsList.append(-1);
    errorOccured = true;
}

void PendingStatus::modify(const QList<SmsInfo> &smsInfos)
{
    qCDebug(lcPending)
        << "void KorvaSyncIf::PendingStatus::modify(const QList<KorvaSyncIf::SmsInfo>&)";
    if (smsInfos.isEmpty()) {
        qCWarning(lcPending) << "Empty smsInfo List";
        errorOccured = true;
        return;
    }
    timer.start();
    connectSignalHandlers();
    errorOccured = !storageIf->modifySms(smsInfos);
}

void PendingStatus::store(const QList<CallInfo> &callInfos)
{
    if (callInfos.isEmpty()) {
        // Calls share the words of the messages; log readers count both under them.
        qCWarning(lcPending) << "Empty smsInfo List";
        errorOccured = true;
        return;
    }
    timer.start();
    connectSignalHandlers();
    errorOccured = !storageIf->storeCallLogMsgs(callInfos);
}

void PendingStatus::deleteIds(const QList<SmsInfo> &smsInfos)
{
    qCDebug(lcPending)
        << "void KorvaSyncIf::PendingStatus::deleteIds(const QList<KorvaSyncIf::SmsInfo>&)";
    if (smsInfos.isEmpty()) {
        qCWarning(lcPending) << "Empty ids list";
        errorOccured = true;
        return;
    }
    connect(storageIf, &SyncStorageIf::deletedIdsStatus, this, &PendingStatus::deletedIdsStatus);
    errorOccured = !storageIf->deleteSms(smsInfos);
}

void PendingStatus::connectSignalHandlers()
{
    connect(storageIf, qOverload<QList<int>, QList<int>>(&SyncStorageIf::eventsCommitted), this,
            &PendingStatus::eventsCommittedSlot);
    connect(storageIf, &SyncStorageIf::eventsCommitFailed, this,
            &PendingStatus::eventsCommitFailed);
    if (syncType == SmsSync)
        connect(storageIf, &SyncStorageIf::error, this, &PendingStatus::errorIndexesNotProcessed);
}

void PendingStatus::disconnectSignalHandlers()
{
    disconnect(storageIf, qOverload<QList<int>, QList<int>>(&SyncStorageIf::eventsCommitted), this,
               &PendingStatus::eventsCommittedSlot);
    disconnect(storageIf, &SyncStorageIf::eventsCommitFailed, this,
               &PendingStatus::eventsCommitFailed);
    if (syncType == SmsSync)
        disconnect(storageIf, &SyncStorageIf::error, this,
                   &PendingStatus::errorIndexesNotProcessed);
}

void PendingStatus::eventsCommittedSlot(QList<int> refIds, QList<int> dbIds)
{
    qCDebug(lcPending)
        << "void KorvaSyncIf::PendingStatus::eventsCommittedSlot(QList<int>, QList<int>)";
    disconnectSignalHandlers();
    for (int i = 0; i < refIds.size() && i < idsList.size(); ++i) {
        if (i >= dbIds.size()) {
            qCWarning(lcPending) << "The store reported" << dbIds.size() << "ids for"
                                 << refIds.size() << "items";
            break;
        }
        if (dbIds.at(i) != -1) {
            setEntry(idsList, refIds.at(i), dbIds.at(i));
        } else {
            errorOccured = true;
            // Calls included, whose list of this kind is empty: a sync client learns of a
            // call that was not stored from isError().
            setEntry(statusList, refIds.at(i), SmsDatabaseError);
        }
    }
    qCCritical(lcPending) << "Time taken by PendingStatus to write/modify" << dbIds.size()
                          << "msgs is" << elapsedMilliseconds(timer) << "ms";
    finishPending(this);
}

void PendingStatus::eventsCommitFailed(QList<int> refIds)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingStatus::eventsCommitFailed(QList<int>)";
    disconnectSignalHandlers();
    errorOccured = true;
    for (const int refId : qAsConst(refIds)) {
        if (refId < statusList.size())
            setEntry(statusList, refId, SmsDatabaseError);
    }
    finishPending(this);
}

// Only notes the fault: the adapter still reports on the other items, and that finishes the
// request.
void PendingStatus::errorIndexesNotProcessed(QList<int> idxs, ErrorCause errCause)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingStatus::errorIndexesNotProcessed(QList<int>, "
                          "KorvaSyncIf::ErrorCause)"
                       << int(errCause);
    for (const int idx : qAsConst(idxs)) {
        if (idx >= statusList.size()) {
            qCWarning(lcPending) << "Received error for idx " << idx << "is out of range";
        } else if (errCause == GroupIdNotFound) {
            qCWarning(lcPending) << "Group Id not found for the message at idx" << idx
                                 << "setting database error";
            setEntry(statusList, idx, SmsDatabaseError);
        }
    }
}

void PendingStatus::deletedIdsStatus(QList<int> ids, QList<bool> deletedIdsStatus)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingStatus::deletedIdsStatus(QList<int>, "
                          "QList<bool>)"
                       << deletedIdsStatus.size();
    disconnect(storageIf, &SyncStorageIf::deletedIdsStatus, this, &PendingStatus::deletedIdsStatus);
    for (int i = 0; i < ids.size() && i < deletedIdsStatus.size(); ++i) {
        const int refId = ids.at(i);
        if (refId >= statusList.size()) {
            qCWarning(lcPending) << "Oops .. An invalid ref Id" << refId;
        } else if (!deletedIdsStatus.at(i)) {
            qCWarning(lcPending) << "Deletion for db Id @ idx" << refId << "failed";
            setEntry(statusList, refId, SmsDeleteFailed);
        }
    }
    finishPending(this);
}

QList<SMSSyncError> PendingStatus::status() { return statusList; }

QList<CallSyncError> PendingStatus::statusCallMsgs() { return callStatusList; }

bool PendingStatus::isError() { return errorOccured; }

PendingIds::PendingIds(int count, QObject *parent)
    : PendingStatus(count, SmsSync, parent)
{
    qCDebug(lcPending) << "KorvaSyncIf::PendingIds::PendingIds(int, QObject*)";
}

PendingIds::~PendingIds()
{
    qCDebug(lcPending) << "virtual KorvaSyncIf::PendingIds::~PendingIds()";
}

void PendingIds::store(const QList<SmsInfo> &smsInfos)
{
    qCDebug(lcPending) << "void KorvaSyncIf::PendingIds::store(const QList<KorvaSyncIf::SmsInfo>&)";
    if (smsInfos.isEmpty()) {
        qCWarning(lcPending) << "Empty list :: setting errorOccured";
        errorOccured = true;
        return;
    }
    timer.start();
    connectSignalHandlers();
    errorOccured = !storageIf->storeSms(smsInfos);
}

QList<int> PendingIds::ids() { return idsList; }

} // namespace KorvaSyncIf

#include "korvasync/moc_pendingids.cpp"
#include "korvasync/moc_pendingmsgs.cpp"
#include "korvasync/moc_pendingstatus.cpp"
