// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historymapping.h"

#include "base/folders.h"

#include <korvasync/historyinterface.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <limits>

using CommHistory::Event;
using CommHistory::HistoryEntry;
using CommHistory::HistoryPosition;
using CommHistory::HistoryReader;
using CommHistory::HistorySelection;
using CommHistory::HistoryTally;

namespace KorvaSyncIf {

namespace {

constexpr char CursorForm[] = "1";

//! Drafts stand in the store as inbound, though their number is the recipient's.
HistoryItem::Direction directionOf(const HistoryEntry &entry)
{
    if (entry.type == Event::SmsEvent)
        return isOutboundFolder(entry.folder) ? HistoryItem::Direction::Outbound
                                              : HistoryItem::Direction::Inbound;
    switch (entry.direction) {
    case Event::Inbound:
        return HistoryItem::Direction::Inbound;
    case Event::Outbound:
        return HistoryItem::Direction::Outbound;
    case Event::UnknownDirection:
        break;
    }
    return HistoryItem::Direction::Unknown;
}

QDateTime toTime(qint64 msecs)
{
    return msecs == CommHistory::NoTime ? QDateTime()
                                        : QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC);
}

//! In seconds; 0 when a time is missing, or the end lies before the start.
int durationOf(const HistoryEntry &entry)
{
    if (entry.startTime == CommHistory::NoTime || entry.endTime <= entry.startTime)
        return 0;
    const qint64 seconds = (entry.endTime - entry.startTime) / 1000;
    return int(std::min<qint64>(seconds, std::numeric_limits<int>::max()));
}

HistoryItem::Status statusOf(Event::Status status)
{
    switch (status) {
    case Event::SendingStatus:
        return HistoryItem::Status::Sending;
    case Event::SentStatus:
        return HistoryItem::Status::Sent;
    case Event::FailedStatus:
        return HistoryItem::Status::Failed;
    case Event::UnknownStatus:
        break;
    }
    return HistoryItem::Status::Unknown;
}

} // namespace

SmsInfo HistoryItem::toSmsInfo() const
{
    SmsInfo info;
    info.id = id;
    info.parentId = folder;
    info.groupId = conversation;
    const bool isReceived = folder == LocInbox || folder >= LocMyFolder;
    (isReceived ? info.fromNumber : info.toNumber) = party;
    info.body = text;
    info.time = time;
    info.readStatus = isRead ? QStringLiteral("READ") : QStringLiteral("UNREAD");
    info.charset = charset;
    info.encoding = encoding;
    info.language = language;
    info.messageToken = token;
    return info;
}

std::optional<HistorySelection> HistoryMapping::toSelection(const HistoryFilter &filter)
{
    const bool isMessages = filter.kind == HistoryItem::Kind::Message;
    const bool isValid = filter.folders.size() <= HistoryFilter::MaxFolders
        && (isMessages || filter.folders.isEmpty()) && filter.limit >= HistoryFilter::NoLimit
        && filter.portion >= 1 && filter.portion <= HistoryFilter::MaxPortion
        && filter.conversation >= -1;
    if (!isValid)
        return std::nullopt;
    HistorySelection selection;
    selection.type = isMessages ? Event::SmsEvent : Event::CallEvent;
    selection.folders = filter.folders;
    selection.party = filter.party;
    selection.partyMatch = filter.partyMatch == HistoryFilter::PartyMatch::SameEnding
        ? HistorySelection::SameEnding
        : HistorySelection::SameNumber;
    selection.conversation = filter.conversation;
    selection.from = filter.from;
    selection.to = filter.to;
    selection.modifiedSince = filter.modifiedSince;
    selection.unreadOnly = filter.unreadOnly;
    selection.newestFirst = filter.order == HistoryFilter::Order::NewestFirst;
    selection.limit = filter.limit;
    selection.portion = filter.portion;
    return selection;
}

HistoryItem HistoryMapping::toItem(const HistoryEntry &entry)
{
    HistoryItem item;
    item.id = entry.id;
    item.change = entry.change;
    const bool isCall = entry.type == Event::CallEvent;
    item.kind = isCall ? HistoryItem::Kind::Call : HistoryItem::Kind::Message;
    if (entry.isRemoved)
        return item;
    item.folder = entry.folder;
    item.direction = directionOf(entry);
    item.status = statusOf(entry.status);
    item.isRead = entry.isRead;
    item.isMissed = entry.isMissedCall;
    item.conversation = entry.conversation;
    item.party = entry.remoteUid;
    item.time = toTime(entry.time);
    item.duration = isCall ? durationOf(entry) : 0;
    item.text = entry.text;
    item.token = entry.token;
    item.charset = entry.characterSet;
    item.encoding = entry.encoding;
    item.language = entry.language;
    return item;
}

HistoryCount HistoryMapping::toCount(const HistoryTally &tally)
{
    HistoryCount count;
    count.number = tally.number;
    count.party = tally.party;
    count.count = tally.count;
    count.unread = tally.unread;
    count.first = toTime(tally.first);
    count.last = toTime(tally.last);
    return count;
}

HistoryError HistoryMapping::toError(HistoryReader::Result result)
{
    switch (result) {
    case HistoryReader::Done:
        break;
    case HistoryReader::NoStore:
        return HistoryError::StoreUnavailable;
    case HistoryReader::ReadFailed:
        return HistoryError::ReadFailed;
    case HistoryReader::UnknownPosition:
        return HistoryError::UnknownCursor;
    }
    return HistoryError::None;
}

QString HistoryMapping::toCursor(const HistoryPosition &position)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(QLatin1String(CursorForm), QString::fromLatin1(position.store),
             QString::number(position.change), QString::number(position.lastId));
}

std::optional<HistoryPosition> HistoryMapping::toPosition(const QString &cursor)
{
    if (cursor.isEmpty())
        return HistoryPosition();
    if (cursor == HistoryInterface::now())
        return HistoryPosition::latest();
    const QStringList parts = cursor.split(QLatin1Char('.'));
    if (parts.size() != 4 || parts.at(0) != QLatin1String(CursorForm) || parts.at(1).isEmpty())
        return std::nullopt;
    HistoryPosition position;
    bool isChange = false;
    bool isId = false;
    position.store = parts.at(1).toLatin1();
    position.change = parts.at(2).toLongLong(&isChange);
    position.lastId = parts.at(3).toInt(&isId);
    if (!isChange || !isId || position.change < 0 || position.lastId < 0)
        return std::nullopt;
    return position;
}

} // namespace KorvaSyncIf
