// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "errorwords_p.h"

#include <algorithm>

namespace {

bool isPlain(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate: // of format characters too, which cannot be told by one half
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

QString onOneLine(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return !isPlain(c); }, QLatin1Char(' '));
    return text.simplified();
}

QString digitsOf(const QString &text)
{
    QString digits;
    for (const QChar c : text) {
        if (c.isDigit())
            digits += QChar('0' + c.digitValue());
    }
    return digits;
}

//! Also in another form, national or with separators.
bool repeatsNumber(const QString &words, const QString &number)
{
    constexpr int comparedDigits = 7;
    const QString digits = digitsOf(number).right(comparedDigits);
    return !digits.isEmpty() && digitsOf(words).contains(digits);
}

//! Also when it is a part of the text; a text of a few letters is part of many words.
bool repeatsText(const QString &words, const QString &text)
{
    constexpr int fewLetters = 3;
    constexpr int longEnough = 12;
    const int length = std::min(int(text.size()), longEnough);
    if (length <= fewLetters)
        return false;
    for (int at = 0; at + length <= words.size(); ++at) {
        if (text.contains(words.mid(at, length), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

QString wordsOf(const QDBusError &error, const OutgoingMessage &message)
{
    constexpr int most = 1000; // a number at the end of what is told may go on behind it
    constexpr int shortLine = 200;
    const QString words = onOneLine(error.message().left(most));
    const bool isPrivate =
        repeatsNumber(words, message.number) || repeatsText(words, onOneLine(message.text));
    return isPrivate || words.isEmpty() ? error.name() : words.left(shortLine);
}
