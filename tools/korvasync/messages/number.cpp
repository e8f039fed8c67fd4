// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "number.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace Number {

static QString digitsOf(const QString &number)
{
    QString digits;
    for (const QChar c : number) {
        if (c.isDigit())
            digits += QChar('0' + c.digitValue());
    }
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
    if (several.match(number).hasMatch()) {
        numbers = number.split(separators);
        numbers.removeAll(QString());
    }
    return numbers;
}

QString asMeant(const QString &number)
{
    const QByteArray bytes = number.toLatin1();
    const QString meant = QString::fromUtf8(bytes);
    return QString::fromLatin1(bytes) == number && meant.toUtf8() == bytes ? meant : number;
}

} // namespace Number
