// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/callsyncinterface.h>

#include "callsyncinterface_p.h"
#include "datetimetext_p.h"
#include "logging_p.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"

#include <QtCore/QDebug>

namespace KorvaSyncIf {

CallSyncInterface::CallSyncInterface(QObject *parent)
    : QObject(parent)
    , d(new CallSyncInterfacePrivate)
{
    qCDebug(lcFacade) << "KorvaSyncIf::CallSyncInterface::CallSyncInterface(QObject*)";
}

// As with the messages' facade, every adapter goes, also those of others.
CallSyncInterface::~CallSyncInterface()
{
    qCDebug(lcFacade) << "virtual KorvaSyncIf::CallSyncInterface::~CallSyncInterface()"
                      << "Destroyed";
    SyncStorageIfManager::getInstance()->deleteAll();
    delete d;
    d = nullptr;
}

PendingStatus *CallSyncInterface::addNewCalls(const QList<QString> &entries)
{
    qCDebug(lcFacade) << "KorvaSyncIf::PendingStatus* "
                         "KorvaSyncIf::CallSyncInterface::addNewCalls(const QList<QString>&)";
    QList<CallInfo> calls;
    calls.reserve(entries.size());
    QList<int> failedIndexes;
    QList<CallSyncError> errors;
    for (int i = 0; i < entries.size(); ++i) {
        CallInfo call = d->parseCallSyncMsg(entries.at(i));
        if (d->lastError == CallNoError) {
            call.id = i;
            calls.append(call);
        } else {
            qCWarning(lcFacade) << "idx " << i << "with error " << int(d->lastError)
                                << "stored in PendingStatus";
            failedIndexes.append(i);
            errors.append(d->lastError);
        }
    }
    PendingStatus *const pending = new PendingStatus(int(entries.size()), CallSync, this);
    if (!failedIndexes.isEmpty())
        pending->setStatusCallIds(failedIndexes, errors);
    pending->store(calls);
    return pending;
}

bool CallSyncInterface::deleteAllCalls()
{
    qCDebug(lcFacade) << "bool KorvaSyncIf::CallSyncInterface::deleteAllCalls()";
    return SyncStorageIfManager::getInstance()->syncStorageIf()->deleteAllCallLogMsgs();
}

PendingMsgs *CallSyncInterface::calls(CallType type, const QDateTime &since)
{
    qCDebug(lcFacade) << "KorvaSyncIf::PendingMsgs* "
                         "KorvaSyncIf::CallSyncInterface::calls(KorvaSyncIf::CallType, const "
                         "QDateTime&)";
    QString typeText;
    switch (type) {
    case IncomingCall:
        typeText = CallSyncInterfacePrivate::incoming;
        break;
    case OutgoingCall:
        typeText = CallSyncInterfacePrivate::outgoing;
        break;
    case MissedCall:
        typeText = CallSyncInterfacePrivate::missed;
        break;
    }
    PendingMsgs *const pending = new PendingMsgs(this);
    pending->callMessages(since, typeText);
    return pending;
}

// ---- call-history entries

const QString CallSyncInterfacePrivate::incoming = QStringLiteral("incoming");
const QString CallSyncInterfacePrivate::outgoing = QStringLiteral("outgoing");
const QString CallSyncInterfacePrivate::missed = QStringLiteral("missed");

namespace {

const QLatin1String entryName("VCALLHISTENTRY");

// A first line of three and more pieces passes unchecked: clients that put the version of
// the format there are served.
bool isFirstLine(const QStringList &pieces)
{
    if (pieces.size() < 2)
        return false;
    return pieces.size() > 2
        || (pieces.at(0) == QLatin1String("BEGIN") && pieces.at(1) == entryName);
}

//! Reads the clock reading as local time, whatever zone letter stands behind it.
QDateTime callTime(const QString &value)
{
    auto zoneLetter = value.indexOf(QLatin1Char('Z'));
    if (zoneLetter < 1)
        zoneLetter = value.indexOf(QLatin1Char('z'));
    return readLocalStamp(zoneLetter < 1 ? value : value.left(zoneLetter));
}

} // namespace

CallSyncInterfacePrivate::CallSyncInterfacePrivate()
{
    qCDebug(lcFacade) << "KorvaSyncIf::CallSyncInterfacePrivate::CallSyncInterfacePrivate()";
}

CallInfo CallSyncInterfacePrivate::parseCallSyncMsg(const QString &entry)
{
    lastError = CallNoError;
    CallInfo call;
    const QString crlf = QStringLiteral("\r\n");
    const QString separator = entry.contains(crlf) ? crlf : QStringLiteral("\n");
    const QStringList lines = entry.split(separator, Qt::SkipEmptyParts);
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList pieces = lines.at(i).split(QLatin1Char(':'));
        if (!(i == 0 ? isFirstLine(pieces) : applyLine(pieces, call))) {
            lastError = CallParseError;
            break;
        }
    }
    return call;
}

// A good END line ends nothing, and of a name that comes twice the later value counts.
bool CallSyncInterfacePrivate::applyLine(const QStringList &pieces, CallInfo &call)
{
    if (pieces.size() > 2)
        return false;
    const QString &name = pieces.at(0);
    const QString value = pieces.value(1, QStringLiteral(""));
    if (name == QLatin1String("TYPE")) {
        if (value != incoming && value != outgoing && value != missed)
            return false;
        call.type = value;
    } else if (name == QLatin1String("TEL")) {
        call.number = value;
    } else if (name == QLatin1String("DURATION")) {
        call.duration = value.toInt();
    } else if (name == QLatin1String("CALL-DATETIME")) {
        call.dateTime = callTime(value);
    } else {
        return name == QLatin1String("END") && value == entryName;
    }
    return true;
}

} // namespace KorvaSyncIf

#include "korvasync/moc_callsyncinterface.cpp"
