// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/callsyncinterface.h>

#include "base/datetimetext.h"
#include "base/logging.h"
#include "callsyncinterface_p.h"
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

const QLatin1String EntryName("VCALLHISTENTRY");

//! What stands before the first colon of a line, and behind it.
struct Pieces
{
    explicit Pieces(QStringView line)
        : name(line)
    {
        const auto colon = line.indexOf(QLatin1Char(':'));
        if (colon < 0)
            return;
        name = line.left(colon);
        value = line.mid(colon + 1);
        hasMore = value.contains(QLatin1Char(':'));
    }

    QStringView name;
    QStringView value = u"";
    bool hasMore = false; // colons
};

// A first line of three and more pieces passes unchecked: clients that put the version of
// the format there are served.
bool isFirstLine(QStringView line)
{
    const Pieces pieces(line);
    return pieces.hasMore || (pieces.name == QLatin1String("BEGIN") && pieces.value == EntryName);
}

//! Reads the clock reading as local time, whatever zone letter stands behind it.
QDateTime callTime(QStringView value)
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
    const QStringView text = entry;
    const QStringView crlf = u"\r\n";
    const QStringView separator = text.contains(crlf) ? crlf : QStringView(u"\n");
    bool isFirst = true;
    for (qsizetype from = 0; from < text.size();) {
        const auto separated = text.indexOf(separator, from);
        const auto end = separated < 0 ? text.size() : separated;
        const QStringView line = text.mid(from, end - from);
        from = end + separator.size();
        if (line.isEmpty())
            continue;
        if (!(isFirst ? isFirstLine(line) : applyLine(line, call))) {
            lastError = CallParseError;
            break;
        }
        isFirst = false;
    }
    return call;
}

// A good END line ends nothing, and of a name that comes twice the later value counts.
bool CallSyncInterfacePrivate::applyLine(QStringView line, CallInfo &call)
{
    const Pieces pieces(line);
    if (pieces.hasMore)
        return false;
    const QStringView name = pieces.name;
    const QStringView value = pieces.value;
    if (name == QLatin1String("TYPE")) {
        if (value != incoming && value != outgoing && value != missed)
            return false;
        call.type = value.toString();
    } else if (name == QLatin1String("TEL")) {
        call.number = value.toString();
    } else if (name == QLatin1String("DURATION")) {
        call.duration = value.toInt();
    } else if (name == QLatin1String("CALL-DATETIME")) {
        call.dateTime = callTime(value);
    } else {
        return name == QLatin1String("END") && value == EntryName;
    }
    return true;
}

} // namespace KorvaSyncIf

#include "korvasync/moc_callsyncinterface.cpp"
