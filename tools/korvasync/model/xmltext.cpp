// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "xmltext.h"

#include <algorithm>

namespace XmlText {

bool canHold(uint codePoint)
{
    return codePoint == '\t' || codePoint == '\n' || codePoint == '\r'
        || (codePoint >= 0x20 && codePoint < 0xD800) || (codePoint >= 0xE000 && codePoint < 0xFFFE)
        || (codePoint >= 0x10000 && codePoint <= 0x10FFFF);
}

bool canHold(const QString &text)
{
    // Most texts have nothing that needs a closer look.
    const bool isPlain = std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return (c.unicode() >= 0x20 && c.unicode() < 0xD800) || c == QLatin1Char('\n');
    });
    return isPlain || held(text) == text;
}

QString held(QString text, int *replaced)
{
    for (decltype(text.size()) i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (!canHold(c.unicode())) {
            text[i] = QChar(QChar::ReplacementCharacter);
            if (replaced)
                ++*replaced;
        }
    }
    return text;
}

} // namespace XmlText
