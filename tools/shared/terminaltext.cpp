// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "terminaltext.h"

#include <algorithm>

static bool turnsWriting(ushort code)
{
    return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E)
        || (code >= 0x2066 && code <= 0x2069);
}

static QChar visible(QChar c)
{
    const ushort code = c.unicode();
    if (code == '\n' || code == 0x2028 || code == 0x2029)
        return QChar(0x21B5); // a bent arrow
    if (code < 0x20)
        return QChar(0x2400 + code); // the sign that stands for the control character
    if ((code >= 0x7F && code < 0xA0) || turnsWriting(code))
        return QChar(QChar::ReplacementCharacter);
    return c;
}

bool isHarmless(QChar c) { return visible(c) == c; }

QString terminalText(QString text)
{
    if (!std::all_of(text.cbegin(), text.cend(), isHarmless))
        std::transform(text.cbegin(), text.cend(), text.begin(), visible);
    return text;
}

QByteArray terminalLines(const QByteArray &lines)
{
    QString text = QString::fromUtf8(lines);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    std::transform(text.cbegin(), text.cend(), text.begin(),
                   [](QChar c) { return c == QLatin1Char('\n') ? c : visible(c); });
    return text.toUtf8();
}
