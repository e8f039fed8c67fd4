// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datetext.h"

#include <vmessage/messagetime.h>

#include <QtCore/QStringView>
#include <QtCore/QVarLengthArray>

#include <algorithm>
#include <optional>
#include <string_view>

namespace DateText {

namespace {

using Characters = QVarLengthArray<char, 64>;

//! What the spellings of dates are made of; nothing when a character is no part of any.
Characters asciiOf(QStringView text)
{
    Characters characters;
    for (const QChar c : text) {
        if (c.unicode() > 0x7F)
            return Characters();
        characters.append(c.toLatin1());
    }
    return characters;
}

std::string_view viewOf(const Characters &characters)
{
    return {characters.constData(), static_cast<size_t>(characters.size())};
}

constexpr qint64 FarthestSeconds = 100000000000; // from 1970, or from now

QDateTime countedFrom1970(const QString &digits)
{
    bool isNumber = false;
    const qint64 seconds = digits.toLongLong(&isNumber);
    if (!isNumber || seconds < -FarthestSeconds || seconds > FarthestSeconds)
        return QDateTime();
    return QDateTime::fromMSecsSinceEpoch(seconds * 1000, Qt::UTC);
}

//! How many seconds ago "30m", "12h", "7d" or "2w" is; nothing for any other text.
std::optional<qint64> secondsAgo(const QString &text)
{
    struct Unit
    {
        char letter;
        qint64 seconds;
    };
    constexpr Unit units[] = {{'m', 60}, {'h', 3600}, {'d', 86400}, {'w', qint64(7) * 86400}};
    const QString digits = text.chopped(text.isEmpty() ? 0 : 1);
    const bool isCount = std::all_of(digits.cbegin(), digits.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    bool isNumber = false;
    const qint64 count = digits.toLongLong(&isNumber); // what is too long is none
    for (const Unit &unit : units) {
        if (isCount && isNumber && text.endsWith(QLatin1Char(unit.letter))
            && count <= FarthestSeconds / unit.seconds)
            return count * unit.seconds;
    }
    return std::nullopt;
}

QDateTime midnight(const QDateTime &now, int daysAgo, const QTimeZone &local)
{
    const QDate today = now.addSecs(local.offsetFromUtc(now)).date();
    return MessageTime::toUtc(today.addDays(-daysAgo), QTime(0, 0), local);
}

} // namespace

QDateTime readMessageTime(const QString &text, const QTimeZone &local)
{
    const Characters characters = asciiOf(QStringView(text).trimmed());
    return MessageTime::read(viewOf(characters), local);
}

QDateTime readOption(const QString &text, const QTimeZone &local, const QDateTime &now,
                     Rounding rounding)
{
    if (text.startsWith(QLatin1Char('@')))
        return countedFrom1970(text.mid(1));
    if (text == QLatin1String("today") || text == QLatin1String("yesterday"))
        return midnight(now, text == QLatin1String("today") ? 0 : 1, local);
    if (const auto seconds = secondsAgo(text))
        return now.addSecs(-*seconds);
    constexpr int yearLength = 4;
    const bool isDay = text.size() == 10;
    const Characters characters = asciiOf(isDay ? text + QLatin1String("T00:00:00") : text);
    // Of all spellings, that of RFC 3339 alone has its first hyphen there.
    const bool beginsWithYear = text.indexOf(QLatin1Char('-')) == yearLength;
    const auto date = DateSpellings::readDate(viewOf(characters));
    if (!date || text.size() < 10 || !beginsWithYear)
        return QDateTime();
    if (!isDay && !date->offset) // RFC 3339 always names its zone
        return QDateTime();
    return MessageTime::toUtc(*date, local)
        .addSecs(date->hasFraction && rounding == RoundUp ? 1 : 0);
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

QString writeIn(const QTimeZone &zone, const QDateTime &time)
{
    if (!time.isValid())
        return QString();
    const int offset = zone.offsetFromUtc(time);
    const QString shown =
        time.toUTC().addSecs(offset).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    const auto twoDigits = [](int number) {
        return QString::number(number).rightJustified(2, QLatin1Char('0'));
    };
    const int size = qAbs(offset); // a rule of POSIX can have more than a day
    QStringList parts{twoDigits(size / 3600), twoDigits(size / 60 % 60)};
    if (size % 60 != 0) // only in old or odd zones
        parts += twoDigits(size % 60);
    return shown + QLatin1Char(offset < 0 ? '-' : '+') + parts.join(QLatin1Char(':'));
}

} // namespace DateText
