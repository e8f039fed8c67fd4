// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "datetext.h"

#include <vmessage/messagetime.h>

#include <QtCore/QStringView>
#include <QtCore/QVarLengthArray>

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

} // namespace

QDateTime readMessageTime(const QString &text, const QTimeZone &local)
{
    const Characters characters = asciiOf(QStringView(text).trimmed());
    return MessageTime::read(viewOf(characters), local);
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

} // namespace DateText
