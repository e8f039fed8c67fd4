// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "number.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace Number {

static QString digitsOf(const QString &number)
{
    QString digits(number.size(), Qt::Uninitialized);
    auto end = digits.begin();
    for (const QChar c : number) {
        if (c.isDigit())
            *end++ = QChar('0' + c.digitValue());
    }
    digits.truncate(static_cast<int>(end - digits.begin()));
    return digits;
}

QString comparable(const QString &number)
{
    const bool isWord = std::any_of(number.cbegin(), number.cend(),
                                    [](QChar c) { return c.isLetter() || c.isSurrogate(); });
    if (isWord)
        return number.normalized(QString::NormalizationForm_C);
    const QString digits = digitsOf(number);
    constexpr int matchLength = 7; // as the store joins numbers to conversations
    return digits.isEmpty() ? number : digits.right(matchLength);
}

QString significantDigits(const QString &number)
{
    QString digits = digitsOf(number);
    while (digits.startsWith(QLatin1Char('0')))
        digits.remove(0, 1);
    return digits;
}

QStringList joined(const QString &number)
{
    // Behind a sign that makes the phone wait there may be a code, which is shorter.
    static const QRegularExpression several(
        QStringLiteral("^(?:[+ ()./-]*[0-9][+ ()./0-9-]{4,}[~;,]+)+[+ ()./-]*[0-9][+ ()./0-9-]{4,}"
                       "[~;,]*$"));
    static const QRegularExpression separators(QStringLiteral("[~;,]+"));
    QStringList numbers{number};
    const bool hasSeparator = std::any_of(number.cbegin(), number.cend(), [](QChar c) {
        return c == QLatin1Char('~') || c == QLatin1Char(';') || c == QLatin1Char(',');
    });
    if (hasSeparator && several.match(number).hasMatch()) {
        numbers = number.split(separators);
        numbers.removeAll(QString());
    }
    return numbers;
}

QString asMeant(const QString &number)
{
    if (std::all_of(number.cbegin(), number.cend(), [](QChar c) { return c.unicode() < 0x80; }))
        return number;
    const QByteArray bytes = number.toLatin1();
    const QString meant = QString::fromUtf8(bytes);
    return QString::fromLatin1(bytes) == number && meant.toUtf8() == bytes ? meant : number;
}

} // namespace Number
