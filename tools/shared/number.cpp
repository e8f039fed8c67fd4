// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "number.h"

#include <QtCore/QSet>

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

bool isSoughtByEnd(const QString &comparable)
{
    constexpr int longest = 63;
    const QLatin1String signs("\\'[](){}|*+?");
    return comparable.size() <= longest
        && std::none_of(comparable.cbegin(), comparable.cend(),
                        [&](QChar c) { return signs.contains(c); });
}

QString significantDigits(const QString &number)
{
    QString digits = digitsOf(number);
    while (digits.startsWith(QLatin1Char('0')))
        digits.remove(0, 1);
    return digits;
}

static bool isSeparator(QChar c)
{
    return c == QLatin1Char('~') || c == QLatin1Char(';') || c == QLatin1Char(',');
}

// Behind a sign that makes the phone wait there may be a code, which is shorter.
static bool isOneOfSeveral(const QString &number)
{
    constexpr int shortest = 5;
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    const auto isPart = [&](QChar c) { return isDigit(c) || QLatin1String("+ ()./-").contains(c); };
    const auto firstDigit = std::find_if(number.cbegin(), number.cend(), isDigit);
    return number.cend() - firstDigit >= shortest
        && std::all_of(number.cbegin(), number.cend(), isPart);
}

QStringList joined(const QString &number)
{
    if (number.isEmpty() || isSeparator(number.front())
        || std::none_of(number.cbegin(), number.cend(), isSeparator))
        return {number};
    QStringList numbers;
    const QChar *const end = number.cend();
    for (const QChar *begin = number.cbegin(); begin != end;) {
        const QChar *const separator = std::find_if(begin, end, isSeparator);
        numbers += QString(begin, int(separator - begin));
        if (!isOneOfSeveral(numbers.last()))
            return {number};
        begin = std::find_if_not(separator, end, isSeparator);
    }
    return numbers.size() > 1 ? numbers : QStringList{number};
}

static bool isSeen(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
    case QChar::Other_Format:
        return false;
    default:
        return true;
    }
}

// There must be something to see in it. A control character would break out of its line in our
// own form.
static bool isNumber(const QString &text)
{
    bool isSomethingSeen = false;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i).category() == QChar::Other_Control)
            return false;
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size();
        isSomethingSeen = isSomethingSeen
            || isSeen(isPair ? QChar::surrogateToUcs4(text.at(i), text.at(i + 1))
                             : text.at(i).unicode());
        if (isPair)
            ++i;
    }
    return isSomethingSeen;
}

QStringList parties(const QStringList &numbers)
{
    QStringList parties;
    QSet<QString> known;
    for (const QString &several : numbers) {
        for (const QString &one : joined(several)) {
            const QString number = one.trimmed();
            const QString key = comparable(number);
            if (!isNumber(one) || known.contains(key))
                continue;
            known.insert(key);
            parties += number;
        }
    }
    return parties;
}

QString asMeant(const QString &number)
{
    if (std::all_of(number.cbegin(), number.cend(), [](QChar c) { return c.unicode() < 0x80; }))
        return number;
    const QByteArray bytes = number.toLatin1();
    const QString meant = QString::fromUtf8(bytes);
    return QString::fromLatin1(bytes) == number && meant.toUtf8() == bytes ? meant : number;
}

QString asStored(const QString &number) { return QString::fromLatin1(number.toUtf8()); }

} // namespace Number
