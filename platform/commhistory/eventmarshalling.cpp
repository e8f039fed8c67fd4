// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventmarshalling.h"

#include <limits>

using CommHistory::Event;
using CommHistory::MessagePart;

namespace {

constexpr qint64 NoTime = std::numeric_limits<qint64>::min();

qint64 toMsecs(const QDateTime &time) { return time.isValid() ? time.toMSecsSinceEpoch() : NoTime; }

QDateTime toTime(qint64 msecs)
{
    return msecs == NoTime ? QDateTime() : QDateTime::fromMSecsSinceEpoch(msecs);
}

template <typename T>
T read(const QDBusArgument &argument)
{
    T value{};
    argument >> value;
    return value;
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const MessagePart &part)
{
    argument.beginStructure();
    argument << part.contentId << part.contentType << part.path << part.plainText << part.size
             << part.contentLocation;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MessagePart &part)
{
    argument.beginStructure();
    argument >> part.contentId >> part.contentType >> part.path >> part.plainText >> part.size
        >> part.contentLocation;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Event &event)
{
    argument.beginStructure();
    argument << event.id() << int(event.type()) << toMsecs(event.startTime())
             << toMsecs(event.endTime()) << int(event.direction()) << event.isRead()
             << event.isMissedCall() << int(event.status()) << event.localUid() << event.remoteUid()
             << event.parentId() << event.groupId() << event.freeText() << event.messageToken()
             << event.encoding() << event.characterSet() << event.language()
             << toMsecs(event.lastModified()) << event.messageParts() << event.contacts();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Event &event)
{
    argument.beginStructure();
    event.setId(read<int>(argument));
    event.setType(Event::EventType(read<int>(argument)));
    event.setStartTime(toTime(read<qint64>(argument)));
    event.setEndTime(toTime(read<qint64>(argument)));
    event.setDirection(Event::Direction(read<int>(argument)));
    event.setIsRead(read<bool>(argument));
    event.setIsMissedCall(read<bool>(argument));
    event.setStatus(Event::Status(read<int>(argument)));
    event.setLocalUid(read<QString>(argument));
    event.setRemoteUid(read<QString>(argument));
    event.setParentId(read<int>(argument));
    event.setGroupId(read<int>(argument));
    event.setFreeText(read<QString>(argument));
    event.setMessageToken(read<QString>(argument));
    event.setEncoding(read<QString>(argument));
    event.setCharacterSet(read<QString>(argument));
    event.setLanguage(read<QString>(argument));
    event.setLastModified(toTime(read<qint64>(argument)));
    event.setMessageParts(read<QList<MessagePart>>(argument));
    event.setContacts(read<QList<Event::Contact>>(argument));
    argument.endStructure();
    return argument;
}
