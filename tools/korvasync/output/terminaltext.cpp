// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "terminaltext.h"

QString terminalText(const QString &text)
{
    QString safe;
    safe.reserve(text.size());
    for (const QChar c : text) {
        const ushort code = c.unicode();
        const bool turnsWriting =
            (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
        if (code == '\n' || code == 0x2028 || code == 0x2029)
            safe += QChar(0x21B5); // a bent arrow
        else if (code < 0x20)
            safe += QChar(0x2400 + code); // the sign that stands for the control character
        else if ((code >= 0x7F && code < 0xA0) || turnsWriting)
            safe += QChar(QChar::ReplacementCharacter);
        else
            safe += c;
    }
    return safe;
}
