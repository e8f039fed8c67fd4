// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "utf16.h"

#include <QtCore/QChar>

static void appendUtf8(char32_t point, QByteArray &utf8)
{
    const auto trailing = [&](int shift) {
        utf8 += static_cast<char>(0x80 | ((point >> shift) & 0x3F));
    };
    if (point < 0x80) {
        utf8 += static_cast<char>(point);
    } else if (point < 0x800) {
        utf8 += static_cast<char>(0xC0 | (point >> 6));
        trailing(0);
    } else if (point < 0x10000) {
        utf8 += static_cast<char>(0xE0 | (point >> 12));
        trailing(6);
        trailing(0);
    } else {
        utf8 += static_cast<char>(0xF0 | (point >> 18));
        trailing(12);
        trailing(6);
        trailing(0);
    }
}

void Utf16Converter::append(char16_t unit, QByteArray &utf8)
{
    if (m_highSurrogate && QChar::isLowSurrogate(unit)) {
        appendUtf8(QChar::surrogateToUcs4(m_highSurrogate, unit), utf8);
        m_highSurrogate = 0;
        return;
    }
    if (m_highSurrogate)
        appendUtf8(QChar::ReplacementCharacter, utf8);
    m_highSurrogate = QChar::isHighSurrogate(unit) ? unit : u'\0';
    if (QChar::isLowSurrogate(unit))
        appendUtf8(QChar::ReplacementCharacter, utf8);
    else if (!m_highSurrogate)
        appendUtf8(unit, utf8);
}

QByteArray Utf16Converter::convert(const QByteArray &piece)
{
    const QByteArray bytes = m_halfUnit + piece;
    QByteArray utf8;
    utf8.reserve(bytes.size());
    const auto whole = bytes.size() - bytes.size() % 2;
    for (int i = 0; i < whole; i += 2) {
        const auto first = static_cast<unsigned char>(bytes.at(i));
        const auto second = static_cast<unsigned char>(bytes.at(i + 1));
        append(static_cast<char16_t>(m_order == LittleEndian ? second << 8 | first
                                                             : first << 8 | second),
               utf8);
    }
    m_halfUnit = bytes.mid(whole);
    return utf8;
}

QByteArray Utf16Converter::finish()
{
    QByteArray utf8;
    if (m_highSurrogate)
        appendUtf8(QChar::ReplacementCharacter, utf8);
    m_highSurrogate = 0;
    m_halfUnit.clear();
    return utf8;
}
