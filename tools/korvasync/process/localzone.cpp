// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "localzone.h"

#include <ctime>

namespace LocalZone {

QTimeZone rememberAndLeave()
{
    QTimeZone zone(QTimeZone::systemTimeZoneId());
    if (!zone.isValid()) // a TZ that Qt has no name for: keep at least today's distance
        zone = QTimeZone(QDateTime::currentDateTime().offsetFromUtc());
    qputenv("TZ", "UTC");
    tzset();
    return zone;
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

} // namespace LocalZone
