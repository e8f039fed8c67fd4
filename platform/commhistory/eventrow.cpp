// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventrow_p.h"

#include "storedtext_p.h"

namespace CommHistory {

qint64 toStoredTime(const QDateTime &time)
{
    return time.isValid() ? time.toMSecsSinceEpoch() : NoTime;
}

QDateTime fromStoredTime(qint64 msecs)
{
    return msecs == NoTime ? QDateTime() : QDateTime::fromMSecsSinceEpoch(msecs);
}

EventRow toRow(const Event &event)
{
    EventRow row;
    row.startTime = toStoredTime(event.startTime());
    row.endTime = toStoredTime(event.endTime());
    row.lastModified = toStoredTime(event.lastModified());
    row.id = event.id();
    row.parentId = event.parentId();
    row.groupId = event.groupId();
    row.type = quint8(event.type());
    row.direction = quint8(event.direction());
    row.status = quint8(event.status());
    row.isRead = event.isRead();
    row.isMissedCall = event.isMissedCall();
    for (const TextField &field : TextFields)
        row.texts.append(toStoredText((event.*field.get)())).append('\0');
    row.texts.chop(1);
    return row;
}

Event fromRow(const EventRow &row)
{
    Event event;
    event.setId(row.id);
    event.setType(Event::EventType(row.type));
    event.setStartTime(fromStoredTime(row.startTime));
    event.setEndTime(fromStoredTime(row.endTime));
    event.setLastModified(fromStoredTime(row.lastModified));
    event.setDirection(Event::Direction(row.direction));
    event.setStatus(Event::Status(row.status));
    event.setIsRead(row.isRead);
    event.setIsMissedCall(row.isMissedCall);
    event.setParentId(row.parentId);
    event.setGroupId(row.groupId);
    const QList<QByteArray> texts = row.texts.split('\0');
    int column = 0;
    for (const TextField &field : TextFields)
        (event.*field.set)(fromStoredText(texts.at(column++)));
    return event;
}

} // namespace CommHistory
