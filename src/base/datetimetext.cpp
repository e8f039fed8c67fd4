// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datetimetext.h"

#include "qtversion.h"

#include <algorithm>
#include <array>
#include <limits>

namespace KorvaSyncIf {

namespace {

ushort codeOf(QChar c) { return c.unicode(); }
ushort codeOf(char c) { return uchar(c); }

//! The number that \a count digits give, -1 when one of them is none.
template <typename Char>
int digits(const Char *text, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const ushort c = codeOf(text[i]);
        if (c < '0' || c > '9')
            return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}

//! Invalid when a part is no number; QDate itself would take the year -1.
QDate dateOf(int year, int month, int day) { return year > 0 ? QDate(year, month, day) : QDate(); }

//! Writes \a count digits; the place behind them.
QChar *writeDigits(int value, int count, QChar *out)
{
    for (int i = count - 1; i >= 0; --i) {
        out[i] = QLatin1Char(char('0' + value % 10));
        value /= 10;
    }
    return out + count;
}

struct DateAndTime
{
    QDate date;
    QTime time;
    bool isValid() const { return date.isValid() && time.isValid(); }
};

//! The 15 characters "yyyyMMddThhmmss".
template <typename Char>
DateAndTime readStamp(const Char *text)
{
    if (codeOf(text[8]) != 'T')
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

constexpr int StampLength = 15;

//! Writes the 15 characters "yyyyMMddThhmmss".
void writeStamp(const QDate &date, const QTime &time, QChar *out)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    out = writeDigits(year, 4, out);
    out = writeDigits(month, 2, out);
    out = writeDigits(day, 2, out);
    *out++ = QLatin1Char('T');
    out = writeDigits(time.hour(), 2, out);
    out = writeDigits(time.minute(), 2, out);
    writeDigits(time.second(), 2, out);
}

//! By the number of the day, which needs no calendar.
bool hasFourDigitYear(const QDate &date)
{
    constexpr qint64 first = 1721426; // 0001-01-01
    constexpr qint64 last = 5373484;  // 9999-12-31
    return date.toJulianDay() >= first && date.toJulianDay() <= last;
}

template <typename Text>
QDateTime readUtcStampOf(Text text)
{
    if (text.size() != StampLength + 1 || codeOf(text.data()[StampLength]) != 'Z')
        return QDateTime();
    const DateAndTime value = readStamp(text.data());
    return value.isValid() ? QDateTime(value.date, value.time, Qt::UTC) : QDateTime();
}

} // namespace

QDateTime readUtcStamp(QStringView text) { return readUtcStampOf(text); }

QDateTime readUtcStamp(QLatin1String text) { return readUtcStampOf(text); }

QDateTime readLocalStamp(QStringView text)
{
    return text.size() == StampLength ? localTime(readStamp(text.data())) : QDateTime();
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

QString utcStamp(const QDateTime &time)
{
    const QDateTime utc = time.toUTC();
    if (!utc.isValid())
        return QString();
    const QDate date = utc.date();
    if (!hasFourDigitYear(date))
        return utc.toString(QStringLiteral("yyyyMMddThhmmssZ"));
    QString text(StampLength + 1, Qt::Uninitialized);
    writeStamp(date, utc.time(), text.data());
    text.data()[StampLength] = QLatin1Char('Z');
    return text;
}

void appendStampWithMilliseconds(const QDateTime &time, QString &text)
{
    if (!time.isValid())
        return;
    const QDate date = time.date();
    if (hasFourDigitYear(date)) {
        const auto start = text.size();
        text.resize(start + StampLength);
        writeStamp(date, time.time(), text.data() + start);
    } else {
        text += time.toString(QStringLiteral("yyyyMMddThhmmss"));
    }
    text += QString::number(time.time().msec());
}

// "Sun Feb 1 2026" with the clock reading before the year and "GMT" at the end. Other zones
// are rare here, and Qt 5 takes the names from the user's language.
QString textDate(const QDateTime &time)
{
    const QDate date = time.date();
    if (!TextDateIsEnglish || !time.isValid() || time.timeSpec() != Qt::UTC
        || !hasFourDigitYear(date))
        return time.toString(Qt::TextDate);
    constexpr QStringView days = u"MonTueWedThuFriSatSun";
    constexpr QStringView months = u"JanFebMarAprMayJunJulAugSepOctNovDec";
    constexpr qsizetype nameLength = 3;
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    const QTime clock = time.time();
    std::array<QChar, 28> text;
    QChar *out = text.data();
    const QStringView dayName = days.mid((date.dayOfWeek() - 1) * nameLength, nameLength);
    out = std::copy(dayName.begin(), dayName.end(), out);
    *out++ = QLatin1Char(' ');
    const QStringView monthName = months.mid((month - 1) * nameLength, nameLength);
    out = std::copy(monthName.begin(), monthName.end(), out);
    *out++ = QLatin1Char(' ');
    out = writeDigits(day, day < 10 ? 1 : 2, out);
    *out++ = QLatin1Char(' ');
    out = writeDigits(clock.hour(), 2, out);
    *out++ = QLatin1Char(':');
    out = writeDigits(clock.minute(), 2, out);
    *out++ = QLatin1Char(':');
    out = writeDigits(clock.second(), 2, out);
    *out++ = QLatin1Char(' ');
    out = writeDigits(year, 4, out);
    constexpr QStringView zone = u" GMT";
    out = std::copy(zone.begin(), zone.end(), out);
    return QString(text.data(), int(out - text.data()));
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
