// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "terminaltext.h"

#include <algorithm>

static QChar safe(QChar c)
{
    const ushort code = c.unicode();
    const bool turnsWriting =
        (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    if (code == '\n' || code == 0x2028 || code == 0x2029)
        return QChar(0x21B5); // a bent arrow
    if (code < 0x20)
        return QChar(0x2400 + code); // the sign that stands for the control character
    if ((code >= 0x7F && code < 0xA0) || turnsWriting)
        return QChar(QChar::ReplacementCharacter);
    return c;
}

QString terminalText(QString text)
{
    const bool isSafe =
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return safe(c) == c; });
    if (!isSafe)
        std::transform(text.cbegin(), text.cend(), text.begin(), safe);
    return text;
}
