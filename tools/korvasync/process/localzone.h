// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>
#include <QtCore/QTimeZone>

//! The person's time zone. Everything that this process writes is in UTC; only texts
//! without a zone, in message files and on the command line, are meant in the person's.
namespace LocalZone {

struct Found
{
    QTimeZone zone;
    bool isExact; //!< false: no known zone has the system's times; today's distance stands in
    QString unknownName; //!< what TZ holds when the system knows no such zone and goes by UTC
};

//! Finds the zone that the C library goes by and puts the process on UTC. To be called before
//! anything else of Qt looks at the zone.
Found rememberAndLeave();

} // namespace LocalZone
