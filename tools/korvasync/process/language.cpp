// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "language.h"

#include <QtCore/QTranslator>

#include <algorithm>

namespace Language {

// Of a locale such as de_AT.UTF-8@euro
static const QString &delimiters()
{
    static const QString characters = QStringLiteral("_.@");
    return characters;
}

static QString languageOf(const QString &locale)
{
    const auto end = std::find_if(locale.cbegin(), locale.cend(),
                                  [](QChar c) { return delimiters().contains(c); });
    return locale.left(static_cast<int>(end - locale.cbegin()));
}

static bool namesNoLanguage(const QString &locale)
{
    const QString language = languageOf(locale);
    return language.isEmpty() || language == QLatin1String("C")
        || language == QLatin1String("POSIX");
}

QStringList wanted()
{
    QString locale;
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (locale.isEmpty())
            locale = qEnvironmentVariable(variable);
    }
    if (namesNoLanguage(locale))
        return QStringList();
    const QStringList languages =
        qEnvironmentVariable("LANGUAGE").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    return languages.isEmpty() ? QStringList{locale} : languages;
}

bool load(QTranslator &translator, const QStringList &locales)
{
    for (const QString &locale : locales) {
        if (namesNoLanguage(locale) || languageOf(locale) == QLatin1String("en"))
            return false;
        if (translator.load(QLatin1String("korvasync_") + locale, QStringLiteral(":/translations"),
                            delimiters()))
            return true;
    }
    return false;
}

} // namespace Language
