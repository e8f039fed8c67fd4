// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagetime.h"

namespace MessageTime {

// Whatever the zone.
static bool isStandIn(const DateSpellings::Date &date)
{
    return date.year == 1970 && date.month == 1 && date.day == 1 && date.hour == 0
        && date.minute == 0 && date.second == 0;
}

QDateTime read(std::string_view text, const QTimeZone &local)
{
    if (const auto date = DateSpellings::readDate(text))
        return isStandIn(*date) ? QDateTime() : toUtc(*date, local);
    if (const auto seconds = DateSpellings::readCount(text))
        return QDateTime::fromMSecsSinceEpoch(*seconds * 1000, Qt::UTC);
    return QDateTime();
}

QDateTime toUtc(const DateSpellings::Date &date, const QTimeZone &local)
{
    const QDate day(date.year, date.month, date.day);
    const QTime time(date.hour, date.minute, date.second);
    if (!day.isValid())
        return QDateTime();
    if (!date.offset)
        return toUtc(day, time, local);
    return QDateTime(day, time, Qt::UTC).addSecs(-*date.offset);
}

QDateTime toUtc(QDate date, QTime time, const QTimeZone &zone)
{
    const QDateTime shown(date, time, Qt::UTC);
    if (!shown.isValid())
        return QDateTime();
    const int before = zone.offsetFromUtc(shown.addDays(-1));
    const int after = zone.offsetFromUtc(shown.addDays(1));
    QDateTime early = shown.addSecs(-before);
    if (before == after || zone.offsetFromUtc(early) == before)
        return early;
    const QDateTime late = shown.addSecs(-after);
    return zone.offsetFromUtc(late) == after ? late : early;
}

} // namespace MessageTime
