// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "zonename.h"

#include "shared/text.h"
#include "suggestion.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace ZoneName {

// "EET-2EEST,M3.5.0/3,M10.5.0/4"; hours up to 24, those at which the clock is put up to 167.
static bool isRule(const QByteArray &name)
{
    const QString word = QStringLiteral("(?:[A-Za-z]{3,}|<[A-Za-z0-9+-]{3,}>)");
    const QString minutes = QStringLiteral("(?::[0-5]?[0-9]){0,2}");
    const QString distance = QStringLiteral("[+-]?(?:[01]?[0-9]|2[0-4])") + minutes;
    const QString clock = QStringLiteral("[+-]?(?:1[0-5][0-9]|16[0-7]|[0-9]{1,2})") + minutes;
    const QString dayOfYear = QStringLiteral("(?:36[0-5]|3[0-5][0-9]|[12]?[0-9]{1,2})");
    const QString day =
        QStringLiteral(",(?:M(?:1[0-2]|[1-9])\\.[1-5]\\.[0-6]|J?%1)(?:/%2)?").arg(dayOfYear, clock);
    static const QRegularExpression rule(
        QStringLiteral("\\A%1%2(?:%1(?:%2)?(?:%3%3)?)?\\z").arg(word, distance, day));
    constexpr int longest = 255;
    return name.size() <= longest && rule.match(QString::fromLatin1(name)).hasMatch();
}

static bool isFile(const QByteArray &name)
{
    QByteArray folder = qgetenv("TZDIR");
    if (folder.isEmpty())
        folder = "/usr/share/zoneinfo";
    const QString path = QFile::decodeName(name.startsWith('/') ? name : folder + '/' + name);
    if (!QFileInfo(path).isFile()) // a pipe would wait
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == "TZif";
}

QTimeZone zone(const QByteArray &name)
{
    const bool isPath = name.isEmpty() || name.startsWith('/');
    const bool isName = !isPath
        && (isFile(name) || isRule(name) || QTimeZone::availableTimeZoneIds().contains(name));
    return isName ? QTimeZone(name) : QTimeZone();
}

bool isKnownToTheSystem(const QByteArray &name)
{
    return name.isEmpty() || isFile(name) || isRule(name) || name == "UTC"
        || name == "/etc/localtime"; // which mean it where there are no files
}

static QString nearest(const QString &name)
{
    QStringList names;
    QStringList places; // without the region
    for (const QByteArray &id : QTimeZone::availableTimeZoneIds()) {
        names += QString::fromLatin1(id);
        places += names.constLast().section(QLatin1Char('/'), -1);
    }
    const QString found = Suggestion::nearest(name, names);
    return found.isEmpty() ? names.value(places.indexOf(Suggestion::nearest(name, places))) : found;
}

QString complaint(const QString &place, const QString &name)
{
    const QString sentence = Text::tr("%1 names no time zone: %2").arg(place, name);
    const QString meant = nearest(name);
    return meant.isEmpty() ? Text::tr("%1; name one such as Europe/Helsinki").arg(sentence)
                           : Suggestion::added(sentence, meant, {meant});
}

} // namespace ZoneName
