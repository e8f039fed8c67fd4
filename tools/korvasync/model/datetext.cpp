// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datetext.h"

#include "process/localzone.h"

#include <array>
#include <optional>

namespace DateText {

namespace {

//! Takes a text apart from the left; a step that does not fit takes nothing.
class Scanner
{
public:
    explicit Scanner(const QString &text)
        : text(text)
    {
    }

    bool atEnd() const { return position == text.size(); }
    QChar next() const { return atEnd() ? QChar() : text.at(position); }

    bool take(QLatin1String literal)
    {
        const bool fits = QStringView(text).mid(position).startsWith(literal, Qt::CaseInsensitive);
        if (fits)
            position += literal.size();
        return fits;
    }

    bool take(QChar character)
    {
        const bool fits = next() == character && !atEnd();
        if (fits)
            ++position;
        return fits;
    }

    bool takeBlanks()
    {
        const auto start = position;
        while (next() == QLatin1Char(' '))
            ++position;
        return position > start;
    }

    //! A number of least to most digits; all of them are taken.
    std::optional<int> number(int least, int most)
    {
        int value = 0;
        int digits = 0;
        while (digits < most && isDigit(next())) {
            value = value * 10 + (next().unicode() - '0');
            ++position;
            ++digits;
        }
        if (digits >= least)
            return value;
        position -= digits;
        return std::nullopt;
    }

    //! The English month or its three letters, 1 to 12.
    std::optional<int> monthName()
    {
        static constexpr std::array<const char *, 12> names{
            "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
        for (size_t i = 0; i < names.size(); ++i) {
            if (take(QLatin1String(names[i])))
                return static_cast<int>(i) + 1;
        }
        return std::nullopt;
    }

    static bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

private:
    const QString text;
    decltype(QString().size()) position = 0;
};

struct Reading
{
    QDate date;
    QTime time;
    std::optional<int> offset; // seconds east of UTC; none = local
    bool hasFraction = false;  // of a second, which the time is without
};

// hh:mm[:ss[.fraction]], hours 0 to 24: some programs count them from 1 to 24, and their 24
// is the first hour of the day.
bool takeClock(Scanner &scanner, Reading &reading, QChar separator = QLatin1Char(':'))
{
    const auto hour = scanner.number(1, 2);
    if (!hour || *hour > 24 || !scanner.take(separator))
        return false;
    const auto minute = scanner.number(1, 2);
    if (!minute)
        return false;
    int second = 0;
    if (scanner.take(separator)) {
        const auto seconds = scanner.number(1, 2);
        if (!seconds)
            return false;
        second = *seconds == 60 ? 59 : *seconds; // a leap second has no place of its own
        if (scanner.take(QLatin1Char('.'))) {
            const auto fraction = scanner.number(1, 9);
            if (!fraction)
                return false;
            reading.hasFraction = *fraction > 0;
        }
    }
    reading.time = QTime(*hour % 24, *minute, second);
    return reading.time.isValid();
}

// Nothing, Z, GMT, UTC, UT, or a distance such as +0900 or -05:30.
bool takeZone(Scanner &scanner, Reading &reading)
{
    scanner.takeBlanks();
    if (scanner.atEnd())
        return true;
    for (const char *utc : {"Z", "GMT", "UTC", "UT"}) {
        if (scanner.take(QLatin1String(utc))) {
            reading.offset = 0;
            scanner.takeBlanks();
            return scanner.atEnd();
        }
    }
    const int sign = scanner.take(QLatin1Char('-')) ? -1 : 1;
    if (sign == 1 && !scanner.take(QLatin1Char('+')))
        return false;
    const auto hours = scanner.number(2, 2);
    scanner.take(QLatin1Char(':'));
    const auto minutes = scanner.number(2, 2);
    if (!hours || !minutes || *hours > 23 || *minutes > 59)
        return false;
    reading.offset = sign * (*hours * 3600 + *minutes * 60);
    scanner.takeBlanks();
    return scanner.atEnd();
}

// 20101103T142530Z
std::optional<Reading> readCompact(Scanner scanner)
{
    Reading reading;
    const auto year = scanner.number(4, 4);
    const auto month = scanner.number(2, 2);
    const auto day = scanner.number(2, 2);
    if (!year || !month || !day || !scanner.take(QLatin1Char('T')))
        return std::nullopt;
    const auto hour = scanner.number(2, 2);
    const auto minute = scanner.number(2, 2);
    const auto second = scanner.number(2, 2);
    if (!hour || *hour > 24 || !minute || !second)
        return std::nullopt;
    reading.date = QDate(*year, *month, *day);
    reading.time = QTime(*hour % 24, *minute, *second);
    return takeZone(scanner, reading) ? std::optional(reading) : std::nullopt;
}

// 03.11.2010 14:25:30 and 03-11-2010 14:25:30
std::optional<Reading> readDayFirst(Scanner scanner)
{
    Reading reading;
    const auto day = scanner.number(1, 2);
    const QChar separator = scanner.next();
    if (!day || !QLatin1String(".-").contains(separator) || !scanner.take(separator))
        return std::nullopt;
    const auto month = scanner.number(1, 2);
    if (!month || !scanner.take(separator))
        return std::nullopt;
    const auto year = scanner.number(4, 4);
    if (!year || !scanner.takeBlanks() || !takeClock(scanner, reading))
        return std::nullopt;
    reading.date = QDate(*year, *month, *day);
    return takeZone(scanner, reading) ? std::optional(reading) : std::nullopt;
}

// 2010/11/03 14:25:30, 2010-11-03T14:25:30, 2010.11.3.14.25.30, each with a zone or without
std::optional<Reading> readYearFirst(Scanner scanner)
{
    Reading reading;
    const auto year = scanner.number(4, 4);
    const QChar separator = scanner.next();
    if (!year || !QLatin1String("/-.").contains(separator) || !scanner.take(separator))
        return std::nullopt;
    const auto month = scanner.number(1, 2);
    if (!month || !scanner.take(separator))
        return std::nullopt;
    const auto day = scanner.number(1, 2);
    if (!day)
        return std::nullopt;
    const bool dotted = scanner.take(QLatin1Char('.'));
    if (!dotted && !scanner.take(QLatin1Char('T')) && !scanner.takeBlanks())
        return std::nullopt;
    if (!takeClock(scanner, reading, QLatin1Char(dotted ? '.' : ':')))
        return std::nullopt;
    reading.date = QDate(*year, *month, *day);
    return takeZone(scanner, reading) ? std::optional(reading) : std::nullopt;
}

// 02:25PM, 2010 Nov 03
std::optional<Reading> readTwelveHours(Scanner scanner)
{
    Reading reading;
    const auto hour = scanner.number(1, 2);
    if (!hour || *hour < 1 || *hour > 12 || !scanner.take(QLatin1Char(':')))
        return std::nullopt;
    const auto minute = scanner.number(2, 2);
    scanner.takeBlanks();
    const bool afternoon = scanner.take(QLatin1String("PM"));
    if (!minute || (!afternoon && !scanner.take(QLatin1String("AM"))))
        return std::nullopt;
    scanner.take(QLatin1Char(','));
    scanner.takeBlanks();
    const auto year = scanner.number(4, 4);
    scanner.takeBlanks();
    const auto month = scanner.monthName();
    scanner.takeBlanks();
    const auto day = scanner.number(1, 2);
    if (!year || !month || !day)
        return std::nullopt;
    reading.date = QDate(*year, *month, *day);
    reading.time = QTime(*hour % 12 + (afternoon ? 12 : 0), *minute);
    return takeZone(scanner, reading) ? std::optional(reading) : std::nullopt;
}

// Wed, 03 Nov 2010 14:25:30 +0900
std::optional<Reading> readMail(Scanner scanner)
{
    for (const char *day : {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"})
        scanner.take(QLatin1String(day));
    scanner.take(QLatin1Char(','));
    scanner.takeBlanks();
    Reading reading;
    const auto day = scanner.number(1, 2);
    scanner.takeBlanks();
    const auto month = scanner.monthName();
    scanner.takeBlanks();
    const auto year = scanner.number(4, 4);
    if (!day || !month || !year || !scanner.takeBlanks() || !takeClock(scanner, reading))
        return std::nullopt;
    reading.date = QDate(*year, *month, *day);
    return takeZone(scanner, reading) ? std::optional(reading) : std::nullopt;
}

// Digits alone count from 1970: seconds up to the year 5138, above that milliseconds.
QDateTime readCount(const QString &text)
{
    bool isNumber = false;
    const qint64 count = text.toLongLong(&isNumber);
    constexpr qint64 secondsEnd = 100000000000;
    const qint64 seconds = count < secondsEnd ? count : count / 1000;
    if (!isNumber || seconds <= 0 || seconds >= secondsEnd || !Scanner::isDigit(text.at(0)))
        return QDateTime();
    return QDateTime::fromMSecsSinceEpoch(seconds * 1000, Qt::UTC);
}

QDateTime toUtc(const Reading &reading, const QTimeZone &local)
{
    if (!reading.date.isValid() || !reading.time.isValid())
        return QDateTime();
    if (!reading.offset)
        return LocalZone::toUtc(reading.date, reading.time, local);
    return QDateTime(reading.date, reading.time, Qt::UTC).addSecs(-*reading.offset);
}

} // namespace

QDateTime readMessageTime(const QString &text, const QTimeZone &local)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return QDateTime();
    const Scanner scanner(trimmed);
    for (const auto read : {readCompact, readDayFirst, readYearFirst, readTwelveHours, readMail}) {
        if (const auto reading = read(scanner)) {
            const bool standIn = reading->date == QDate(1970, 1, 1) && reading->time == QTime(0, 0);
            return standIn ? QDateTime() : toUtc(*reading, local);
        }
    }
    return readCount(trimmed);
}

QDateTime readOption(const QString &text, const QTimeZone &local, Rounding rounding)
{
    if (text.startsWith(QLatin1Char('@'))) {
        bool isNumber = false;
        const qint64 seconds = text.mid(1).toLongLong(&isNumber);
        constexpr qint64 limit = 100000000000;
        if (!isNumber || seconds < -limit || seconds > limit)
            return QDateTime();
        return QDateTime::fromMSecsSinceEpoch(seconds * 1000, Qt::UTC);
    }
    const bool isDate = text.size() == 10;
    const QString upper = text.toUpper(); // RFC 3339 has the letters in either case
    const auto reading =
        readYearFirst(Scanner(isDate ? upper + QLatin1String("T00:00:00") : upper));
    if (!reading || text.size() < 10 || text.at(4) != QLatin1Char('-'))
        return QDateTime();
    if (!isDate && !reading->offset) // RFC 3339 always names its zone
        return QDateTime();
    return toUtc(*reading, local).addSecs(reading->hasFraction && rounding == RoundUp ? 1 : 0);
}

QDateTime now()
{
    return QDateTime::fromMSecsSinceEpoch(QDateTime::currentSecsSinceEpoch() * 1000, Qt::UTC);
}

bool isBelievable(const QDateTime &time, const QDateTime &now)
{
    return time.isValid() && time.date().year() >= 1990 && time <= now.addDays(1);
}

QString write(const QDateTime &time)
{
    return time.isValid() ? time.toUTC().toString(QStringLiteral("yyyy-MM-ddThh:mm:ssZ"))
                          : QString();
}

} // namespace DateText
