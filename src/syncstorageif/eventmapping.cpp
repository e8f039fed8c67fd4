// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "syncstorageif_p.h"

#include "base/datetimetext.h"
#include "base/folders.h"
#include "base/logging.h"

#include <commhistory/phonenumber.h>

#include <QtCore/QDebug>

using CommHistory::Event;

namespace KorvaSyncIf {

namespace {

bool isInboxOrUserFolder(int parentId) { return parentId == LocInbox || parentId >= LocMyFolder; }

} // namespace

QString cellularAccountUid()
{
    return QStringLiteral("/org/freedesktop/Telepathy/Account/ring/tel/ring");
}

bool SyncStorageIfPrivate::isOutboundEvent(const SmsInfo &info)
{
    return isOutboundFolder(info.parentId);
}

QString SyncStorageIfPrivate::getRemoteId(const SmsInfo &info)
{
    return isOutboundEvent(info) ? info.toNumber : info.fromNumber;
}

QString SyncStorageIfPrivate::normalizedNumber(const QString &number)
{
    QString normalized =
        CommHistory::normalizePhoneNumber(number, CommHistory::NormalizeFlagRemovePunctuation);
    if (normalized.isEmpty())
        return number;
    const int matchLength = CommHistory::phoneNumberMatchLength();
    if (matchLength < normalized.size())
        normalized = normalized.right(matchLength);
    qCDebug(lcAdapter) << "normalized phn number" << normalized << "phone number match length"
                       << matchLength;
    return normalized;
}

void SyncStorageIfPrivate::constructSmsEvent(const SmsInfo &info, Event &event, bool forModify)
{
    event.setType(Event::SmsEvent);
    if (forModify)
        event.setId(info.id);
    event.setParentId(info.parentId);
    event.setLocalUid(cellularAccountUid());
    event.setRemoteUid(getRemoteId(info));
    event.setGroupId(info.groupId);
    event.setMessageToken(info.messageToken);
    event.setIsRead(info.readStatus == QLatin1String("READ"));
    // Narrower than isOutboundEvent(): the messaging application stores a draft as inbound,
    // though its number is the recipient's.
    if (info.parentId == LocSent || info.parentId == LocOutbox) {
        event.setDirection(Event::Outbound);
        event.setStatus(info.parentId == LocSent ? Event::SentStatus : Event::SendingStatus);
    } else {
        event.setDirection(Event::Inbound);
    }
    // A modification leaves the stored times as they are.
    if (!forModify) {
        event.setStartTime(info.time);
        event.setEndTime(info.time);
    }
    event.setFreeText(info.body);
    event.setEncoding(info.encoding);
}

void SyncStorageIfPrivate::fillSmsInfo(const Event &event, SmsInfo &info, bool useModifiedTime)
{
    qCDebug(lcAdapter) << "void KorvaSyncIf::SyncStorageIfPrivate::fillSmsInfo(const "
                          "CommHistory::Event&, KorvaSyncIf::SmsInfo&, bool)"
                       << useModifiedTime;
    qCDebug(lcAdapter) << "filling smsinfo from received event: id" << event.id()
                       << "whose parentid : " << event.parentId() << " remoteId"
                       << event.remoteUid() << "read : " << event.isRead()
                       << "start/endTime:  " << event.startTime() << event.endTime()
                       << "modified Time : " << event.lastModified()
                       << "messageToken : " << event.messageToken();
    const int parentId = event.parentId();
    const bool received = isInboxOrUserFolder(parentId);
    if (received)
        info.fromNumber = event.remoteUid();
    else
        info.toNumber = event.remoteUid();
    info.body = event.freeText();
    info.readStatus = event.isRead() ? QStringLiteral("READ") : QStringLiteral("UNREAD");
    const QDateTime time = useModifiedTime ? event.lastModified()
        : received                         ? event.endTime()
                                           : event.startTime();
    info.time = time.toUTC();
    info.id = event.id();
    info.parentId = parentId;
    info.charset = event.characterSet();
    info.encoding = event.encoding();
    info.language = event.language();
    info.messageToken = event.messageToken();
}

void SyncStorageIfPrivate::constructCallEvent(const CallInfo &call, Event &event)
{
    event.setType(Event::CallEvent);
    if (call.type == QLatin1String("incoming")) {
        event.setDirection(Event::Inbound);
    } else if (call.type == QLatin1String("missed")) {
        event.setDirection(Event::Inbound);
        event.setIsMissedCall(true);
    } else {
        event.setDirection(Event::Outbound);
    }
    // Sync clients reckon the start in the same way: whole seconds without sign.
    const uint start = epochSeconds(call.dateTime) - uint(call.duration);
    event.setStartTime(QDateTime::fromSecsSinceEpoch(start));
    event.setEndTime(call.dateTime);
    event.setRemoteUid(call.number);
}

CallInfo SyncStorageIfPrivate::callInfo(const Event &event)
{
    CallInfo call;
    if (event.direction() == Event::Inbound)
        call.type = event.isMissedCall() ? QStringLiteral("missed") : QStringLiteral("incoming");
    else if (event.direction() == Event::Outbound)
        call.type = QStringLiteral("outgoing");
    // Outgoing calls come back with their start although they are given by their end: the
    // sync client shows when the owner dialled.
    call.dateTime = event.direction() == Event::Inbound ? event.endTime() : event.startTime();
    call.duration = int(epochSeconds(event.endTime()) - epochSeconds(event.startTime()));
    call.number = event.remoteUid();
    return call;
}

QList<Event> SyncStorageIfPrivate::constructEventList(const QList<SmsInfo> &list, bool forModify)
{
    const char *const signature =
        "QList<CommHistory::Event> KorvaSyncIf::SyncStorageIfPrivate::constructEventList(const "
        "QList<KorvaSyncIf::SmsInfo>&, bool)";
    qCDebug(lcAdapter) << signature;
    refIds.clear();
    refIds.reserve(list.size());
    QList<Event> events;
    events.reserve(list.size());
    for (const SmsInfo &info : list) {
        Event event;
        constructSmsEvent(info, event, forModify);
        events.append(event);
        refIds.append(info.refId);
    }
    qCDebug(lcAdapter) << "Returning from" << signature;
    return events;
}

QList<Event> SyncStorageIfPrivate::constructCallEventList(const QList<CallInfo> &list)
{
    qCDebug(lcAdapter) << "QList<CommHistory::Event> "
                          "KorvaSyncIf::SyncStorageIfPrivate::constructCallEventList(const "
                          "QList<KorvaSyncIf::CallInfo>&)";
    refIds.clear();
    refIds.reserve(list.size());
    QList<Event> events;
    events.reserve(list.size());
    for (const CallInfo &call : list) {
        Event event;
        constructCallEvent(call, event);
        events.append(event);
        refIds.append(call.id);
    }
    return events;
}

} // namespace KorvaSyncIf
