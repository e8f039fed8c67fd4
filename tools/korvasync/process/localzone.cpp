// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "localzone.h"

#include "zonename.h"

#include <QtCore/QByteArrayList>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <ctime>

namespace {

constexpr time_t Day = 86400;
constexpr time_t FirstMessages = 631152000; // 1990, before which no message is believed
constexpr time_t LastRules = 2145916800;    // 2038, up to which zones spell their changes out

// The C library alone knows the zone that the programs of this system go by.
int distanceAt(time_t seconds)
{
    tm shown = {};
    localtime_r(&seconds, &shown);
    return static_cast<int>(shown.tm_gmtoff);
}

bool agreesWithTheSystem(const QTimeZone &zone)
{
    if (!zone.isValid())
        return false;
    for (time_t seconds = FirstMessages; seconds < LastRules; seconds += 10 * Day) {
        const QDateTime time = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
        if (zone.offsetFromUtc(time) != distanceAt(seconds))
            return false;
    }
    return true;
}

QByteArray valueOfTz()
{
    const QByteArray value = qgetenv("TZ");
    return value.startsWith(':') ? value.mid(1) : value;
}

// What TZ, or the system's link, may mean: a name, a file below the folder of all zones, a
// rule, or nothing, which is UTC.
QByteArrayList likelyNames()
{
    const QByteArray name = qEnvironmentVariableIsSet("TZ") ? valueOfTz() : "/etc/localtime";
    QByteArrayList names{name};
    const QString file = QFileInfo(QFile::decodeName(name)).canonicalFilePath();
    const QLatin1String folder("/zoneinfo/");
    const auto at = file.indexOf(folder);
    if (at >= 0)
        names += QFile::encodeName(file.mid(at + folder.size()));
    return names << "UTC";
}

QTimeZone find(const QByteArrayList &names)
{
    for (const QByteArray &name : names) {
        const QTimeZone zone = ZoneName::zone(name);
        if (agreesWithTheSystem(zone))
            return zone;
    }
    return QTimeZone();
}

} // namespace

namespace LocalZone {

static void leave()
{
    qputenv("TZ", "UTC");
    tzset();
}

Found rememberAndLeave()
{
    const QByteArray name = valueOfTz();
    if (!ZoneName::isKnownToTheSystem(name)) { // so Qt must not see it: it may never come to an end
        leave();
        return {QTimeZone::utc(), true, QString::fromUtf8(name)};
    }
    tzset();
    Found found{find(likelyNames()), true, QString()};
    const QTimeZone distance(distanceAt(std::time(nullptr)));
    if (!found.zone.isValid() && agreesWithTheSystem(distance))
        found.zone = distance;
    if (!found.zone.isValid()) // a copy of a zone's file, say
        found.zone = find(QTimeZone::availableTimeZoneIds());
    if (!found.zone.isValid())
        found = {distance, false, QString()};
    if (!found.zone.isValid()) // farther from UTC than Qt can tell
        found = {QTimeZone::utc(), true, QString::fromUtf8(name)};
    leave();
    return found;
}

} // namespace LocalZone
