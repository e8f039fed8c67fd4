// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "datespellings.h"

#include <platformexport.h>

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

#include <string_view>

// From the dates of message files to instants, which are in UTC.
namespace MessageTime {

//! Reads the time of a message in any spelling of DateSpellings, or as a count of seconds or
//! milliseconds since 1970.
//! \param text   without blanks at its ends
//! \param local  the zone of a date that names none
//! \return null for a text that is no time, also for the stand-ins that writers use for a missing
//!         one (19700000T000000Z, 01.01.1970 00:00:00)
KORVAPLATFORM_EXPORT QDateTime read(std::string_view text, const QTimeZone &local);

//! The instant of a date; null if the calendar has no such day.
//! \param local  the zone of a date that names none
KORVAPLATFORM_EXPORT QDateTime toUtc(const DateSpellings::Date &date, const QTimeZone &local);

//! The instant at which the clocks of \a zone show the given time: the first one where they show it
//! twice; where they skip it, what the clock would show had it not been put forward. Alike under
//! every version of Qt.
KORVAPLATFORM_EXPORT QDateTime toUtc(QDate date, QTime time, const QTimeZone &zone);

} // namespace MessageTime
