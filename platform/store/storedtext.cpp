// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedtext.h"

namespace CommHistory {

namespace {

constexpr QChar Mark(0x1a);
constexpr int MarkedLength = 5; // the mark and its digits

bool isHalfPair(const QString &text, int at)
{
    const QChar c = text.at(at);
    if (c.isHighSurrogate())
        return at + 1 == text.size() || !text.at(at + 1).isLowSurrogate();
    return c.isLowSurrogate() && (at == 0 || !text.at(at - 1).isHighSurrogate());
}

bool needsMark(const QString &text, int at)
{
    constexpr QChar byteOrderMark(QChar::ByteOrderMark); // Qt drops it at the start of UTF-8
    const QChar c = text.at(at);
    return c.isNull() || c == Mark || isHalfPair(text, at) || (at == 0 && c == byteOrderMark);
}

} // namespace

QByteArray toStoredText(const QString &text)
{
    QString stored;
    int taken = 0; // everything before it is in stored
    for (int i = 0; i < text.size(); ++i) {
        if (!needsMark(text, i))
            continue;
        stored.append(QStringView(text).mid(taken, i - taken));
        stored.append(Mark);
        stored.append(
            QString::number(text.at(i).unicode(), 16).rightJustified(4, QLatin1Char('0')));
        taken = i + 1;
    }
    if (taken == 0)
        return text.toUtf8();
    stored.append(QStringView(text).mid(taken));
    return stored.toUtf8();
}

QString fromStoredText(const QByteArray &stored)
{
    if (stored.isEmpty()) // most of an event's texts are
        return QLatin1String("");
    QString marked = QString::fromUtf8(stored);
    auto at = marked.indexOf(Mark);
    if (at < 0)
        return marked;
    QString text;
    text.reserve(marked.size());
    decltype(at) taken = 0; // everything before it is in text
    for (; at >= 0; at = marked.indexOf(Mark, taken)) {
        text.append(QStringView(marked).mid(taken, at - taken));
        text.append(QChar(QStringView(marked).mid(at + 1, 4).toUShort(nullptr, 16)));
        taken = at + MarkedLength;
    }
    text.append(QStringView(marked).mid(taken));
    return text;
}

} // namespace CommHistory
