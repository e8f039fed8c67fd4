// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventrow_p.h"

#include <store/storedtext.h>

namespace CommHistory {

// In both directions: local time is dear (where TZ is not set, the C library asks for the file of
// the zone each time), and most events start and end at once.

EventRow numbersOf(const Event &event)
{
    EventRow row;
    forEachNumber([&](const auto &field) {
        const auto value = (event.*field.get)();
        if constexpr (!std::is_same_v<decltype(value), const QDateTime>)
            row.*field.inRow = std::decay_t<decltype(row.*field.inRow)>(value);
    });
    const QDateTime start = event.startTime();
    const QDateTime end = event.endTime();
    row.startTime = toStoredTime(start);
    row.endTime = end == start ? row.startTime : toStoredTime(end);
    row.lastModified = toStoredTime(event.lastModified());
    return row;
}

EventRow toRow(const Event &event)
{
    EventRow row = numbersOf(event);
    forEachText([&](const TextField &field) {
        row.texts.append(toStoredText((event.*field.get)())).append('\0');
    });
    row.texts.chop(1);
    return row;
}

Event fromRow(const EventRow &row)
{
    Event event;
    forEachNumber([&](const auto &field) {
        using Value = decltype((event.*field.get)());
        if constexpr (!std::is_same_v<Value, QDateTime>)
            (event.*field.set)(Value(row.*field.inRow));
    });
    const QDateTime start = fromStoredTime(row.startTime);
    event.setStartTime(start);
    event.setEndTime(row.endTime == row.startTime ? start : fromStoredTime(row.endTime));
    if (row.lastModified != NoTime)
        event.setLastModified(QDateTime::fromMSecsSinceEpoch(row.lastModified, Qt::UTC));
    int from = 0;
    forEachText([&](const TextField &field) {
        const auto end = row.texts.indexOf('\0', from);
        const int size = int(end < 0 ? row.texts.size() : end) - from;
        (event
         .*field.set)(fromStoredText(QByteArray::fromRawData(row.texts.constData() + from, size)));
        from += size + 1;
    });
    return event;
}

} // namespace CommHistory
