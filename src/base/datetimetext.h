// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

// The fixed date-time texts of vMessages and call-history entries, read and written by
// hand: with Qt's patterns one date costs many times what the rest of a message does.
// They give what QDateTime::fromString() and toString() give for the same pattern, but for
// two things: a UTC stamp never passes through local time, where those of the hour that a
// DST change skips would get lost; and signs, which Qt takes in places that differ by
// version, match nothing.

namespace KorvaSyncIf {

//! "yyyyMMddThhmmssZ" as UTC; null when the text does not match.
QDateTime readUtcStamp(QStringView text);
QDateTime readUtcStamp(QLatin1String text);
//! "yyyyMMddThhmmss" as local time; null when the text does not match or names a time that
//! a DST change skips.
QDateTime readLocalStamp(QStringView text);
//! "dd.MM.yyyy hh:mm:ss" as local time; null as for readLocalStamp().
QDateTime readLocalDate(const QString &text);

//! The time, converted to UTC, as "yyyyMMddThhmmssZ"; empty when Qt's conversion gives an
//! invalid time. It gives a valid one for a local time that a DST change skips.
QString utcStamp(const QDateTime &time);
//! Appends the time in its own zone as "yyyyMMddThhmmss" and its milliseconds, 0 to 999
//! without leading zeros; nothing when it is invalid.
void appendStampWithMilliseconds(const QDateTime &time, QString &text);

//! The time as Qt::TextDate has it, in its own zone; empty when it is invalid.
QString textDate(const QDateTime &time);

//! The same clock reading and date, as UTC.
QDateTime relabelledAsUtc(const QDateTime &time);

//! Seconds since 1970-01-01 UTC; 4294967295 for an invalid time and for any that 32 bits
//! without sign do not hold.
uint epochSeconds(const QDateTime &time);

} // namespace KorvaSyncIf
