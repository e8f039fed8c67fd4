// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventrow_p.h"

#include <store/storedtext.h>

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
    // Local time is dear (where TZ is not set, the C library asks for the file of the zone each
    // time), and most messages start and end at once.
    const QDateTime start = fromStoredTime(row.startTime);
    event.setStartTime(start);
    event.setEndTime(row.endTime == row.startTime ? start : fromStoredTime(row.endTime));
    if (row.lastModified != NoTime)
        event.setLastModified(QDateTime::fromMSecsSinceEpoch(row.lastModified, Qt::UTC));
    event.setDirection(Event::Direction(row.direction));
    event.setStatus(Event::Status(row.status));
    event.setIsRead(row.isRead);
    event.setIsMissedCall(row.isMissedCall);
    event.setParentId(row.parentId);
    event.setGroupId(row.groupId);
    int from = 0;
    for (const TextField &field : TextFields) {
        const auto end = row.texts.indexOf('\0', from);
        const int size = int(end < 0 ? row.texts.size() : end) - from;
        (event
         .*field.set)(fromStoredText(QByteArray::fromRawData(row.texts.constData() + from, size)));
        from += size + 1;
    }
    return event;
}

} // namespace CommHistory
