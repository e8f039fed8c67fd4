// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datetimetext_p.h"

#include <limits>

namespace KorvaSyncIf {

namespace {

//! The number that \a count digits give, -1 when one of them is none.
int digits(const QChar *text, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const ushort c = text[i].unicode();
        if (c < '0' || c > '9')
            return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}

//! Invalid when a part is no number; QDate itself would take the year -1.
QDate dateOf(int year, int month, int day) { return year > 0 ? QDate(year, month, day) : QDate(); }

void appendDigits(int value, int count, QString &text)
{
    const auto start = text.size();
    text.resize(start + count);
    QChar *const out = text.data() + start;
    for (int i = count - 1; i >= 0; --i) {
        out[i] = QLatin1Char(char('0' + value % 10));
        value /= 10;
    }
}

struct DateAndTime
{
    QDate date;
    QTime time;
    bool isValid() const { return date.isValid() && time.isValid(); }
};

//! The 15 characters "yyyyMMddThhmmss".
DateAndTime readStamp(const QChar *text)
{
    if (text[8] != QLatin1Char('T'))
        return {};
    return {dateOf(digits(text, 4), digits(text + 4, 2), digits(text + 6, 2)),
            QTime(digits(text + 9, 2), digits(text + 11, 2), digits(text + 13, 2))};
}

//! Null for a time that does not exist in the local zone.
QDateTime localTime(const DateAndTime &value)
{
    if (!value.isValid())
        return QDateTime();
    const QDateTime result(value.date, value.time);
    return result.isValid() && result.time() == value.time ? result : QDateTime();
}

void appendStamp(const QDate &date, const QTime &time, QString &text)
{
    appendDigits(date.year(), 4, text);
    appendDigits(date.month(), 2, text);
    appendDigits(date.day(), 2, text);
    text += QLatin1Char('T');
    appendDigits(time.hour(), 2, text);
    appendDigits(time.minute(), 2, text);
    appendDigits(time.second(), 2, text);
}

bool hasFourDigitYear(const QDate &date) { return date.year() >= 0 && date.year() <= 9999; }

constexpr int stampLength = 15;

} // namespace

QDateTime readUtcStamp(const QString &text)
{
    if (text.size() != stampLength + 1 || text.at(stampLength) != QLatin1Char('Z'))
        return QDateTime();
    const DateAndTime value = readStamp(text.constData());
    return value.isValid() ? QDateTime(value.date, value.time, Qt::UTC) : QDateTime();
}

QDateTime readLocalStamp(const QString &text)
{
    return text.size() == stampLength ? localTime(readStamp(text.constData())) : QDateTime();
}

QDateTime readLocalDate(const QString &text)
{
    if (text.size() != 19)
        return QDateTime();
    const QChar *const c = text.constData();
    if (c[2] != QLatin1Char('.') || c[5] != QLatin1Char('.') || c[10] != QLatin1Char(' ')
        || c[13] != QLatin1Char(':') || c[16] != QLatin1Char(':'))
        return QDateTime();
    return localTime({dateOf(digits(c + 6, 4), digits(c + 3, 2), digits(c, 2)),
                      QTime(digits(c + 11, 2), digits(c + 14, 2), digits(c + 17, 2))});
}

void appendUtcStamp(const QDateTime &time, QString &text)
{
    if (!time.isValid())
        return;
    const QDateTime utc = time.toUTC();
    const QDate date = utc.date();
    if (hasFourDigitYear(date)) {
        appendStamp(date, utc.time(), text);
        text += QLatin1Char('Z');
    } else {
        text += utc.toString(QStringLiteral("yyyyMMddThhmmssZ"));
    }
}

void appendStampWithMilliseconds(const QDateTime &time, QString &text)
{
    if (!time.isValid())
        return;
    const QDate date = time.date();
    if (hasFourDigitYear(date))
        appendStamp(date, time.time(), text);
    else
        text += time.toString(QStringLiteral("yyyyMMddThhmmss"));
    text += QString::number(time.time().msec());
}

QDateTime relabelledAsUtc(const QDateTime &time)
{
    return QDateTime(time.date(), time.time(), Qt::UTC);
}

uint epochSeconds(const QDateTime &time)
{
    constexpr uint none = std::numeric_limits<uint>::max();
    if (!time.isValid())
        return none;
    const qint64 seconds = time.toSecsSinceEpoch();
    return seconds >= 0 && seconds <= qint64(none) ? uint(seconds) : none;
}

} // namespace KorvaSyncIf
