// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mailtext.h"

#include <algorithm>

namespace MailText {

static bool isPlain(const QString &name)
{
    constexpr int longest = 60; // keeps the line below 78 characters
    return name.size() <= longest && !name.contains(QLatin1String("=?"))
        && std::all_of(name.cbegin(), name.cend(),
                       [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7F; });
}

static QByteArray encodedWords(const QString &text)
{
    constexpr decltype(QByteArray().size()) mostBytes = 45; // a word has at most 75 characters
    const auto continuesCharacter = [](char c) { return (c & 0xC0) == 0x80; };
    QByteArray words;
    for (QByteArray left = text.toUtf8(); !left.isEmpty();) {
        auto size = qMin(left.size(), mostBytes);
        while (size < left.size() && continuesCharacter(left.at(size)))
            --size;
        words +=
            (words.isEmpty() ? "=?utf-8?B?" : "\n =?utf-8?B?") + left.left(size).toBase64() + "?=";
        left.remove(0, size);
    }
    return words;
}

QByteArray phrase(const QString &name)
{
    if (!isPlain(name))
        return encodedWords(name);
    QByteArray quoted = name.toLatin1();
    return '"' + quoted.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

QByteArray headerText(const QString &text)
{
    return isPlain(text) ? text.toLatin1() : encodedWords(text);
}

QByteArray quotedPrintable(const QString &text)
{
    constexpr int longestLine = 76;
    const QByteArray utf8 = text.toUtf8();
    QByteArray encoded;
    encoded.reserve(utf8.size());
    decltype(encoded.size()) lineStart = 0;
    for (decltype(utf8.size()) i = 0; i < utf8.size(); ++i) {
        const char c = utf8.at(i);
        if (c == '\n') {
            encoded += c;
            lineStart = encoded.size();
            continue;
        }
        const bool endsLine = i + 1 == utf8.size() || utf8.at(i + 1) == '\n';
        // Every one, since a soft break can bring any to the beginning of a line.
        const bool separates = c == 'F' && utf8.mid(i, 5) == "From ";
        const bool plain =
            c == ' ' || c == '\t' ? !endsLine : c > ' ' && c < 0x7F && c != '=' && !separates;
        const int size = plain ? 1 : 3;
        const int softBreak = endsLine ? 0 : 1;
        if (encoded.size() - lineStart + size + softBreak > longestLine) {
            encoded += "=\n";
            lineStart = encoded.size();
        }
        if (plain)
            encoded += c;
        else
            encoded += '=' + QByteArray(1, c).toHex().toUpper();
    }
    return encoded;
}

} // namespace MailText
