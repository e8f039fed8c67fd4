// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QTimeZone>

//! Times as message files, people and our own output spell them.
namespace DateText {

//! Reads the time of a message in any of the spellings that message files have. A text
//! that names no zone is meant in \a local.
//! \return in UTC; null for a text that is no time, also for the stand-ins that writers
//!         use for a missing one (19700000T000000Z, 01.01.1970 00:00:00)
QDateTime readMessageTime(const QString &text, const QTimeZone &local);

enum Rounding { RoundDown, RoundUp };

//! Reads a time of the command line: RFC 3339, a date (its midnight in \a local), @seconds since
//! 1970, or one that \a now decides: the midnight in \a local with which today or yesterday began,
//! or so many minutes, hours, days of 24 hours or weeks of seven such days ago (30m, 12h, 7d, 2w).
//! \param now       in UTC and whole seconds
//! \param rounding  of a fraction of a second
//! \return in UTC; null for any other text
QDateTime readOption(const QString &text, const QTimeZone &local, const QDateTime &now,
                     Rounding rounding = RoundUp);

//! The clock, in UTC and whole seconds.
QDateTime now();

//! Whether something can have happened then. A clock that was never set says 1980 or so; one
//! that is set wrong, some time to come.
bool isBelievable(const QDateTime &time, const QDateTime &now);

//! 2010-11-03T14:25:30Z; empty for a null time.
QString write(const QDateTime &time);

//! 2010-11-03 16:25:30+02:00, as the clocks of \a zone show it; empty for a null time.
QString writeIn(const QTimeZone &zone, const QDateTime &time);

} // namespace DateText
