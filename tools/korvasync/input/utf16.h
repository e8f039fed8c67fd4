// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>

//! Turns UTF-16 that comes in pieces, cut anywhere, into UTF-8.
class Utf16Converter
{
public:
    enum ByteOrder { LittleEndian, BigEndian };

    explicit Utf16Converter(ByteOrder order)
        : m_order(order)
    {
    }

    //! What can be told so far. A half of a surrogate pair without the other becomes U+FFFD.
    QByteArray convert(const QByteArray &piece);
    ByteOrder byteOrder() const { return m_order; }
    bool isWithinUnit() const { return !m_halfUnit.isEmpty(); } //!< after an odd count of bytes

    //! What is left at the end of the input. Half a unit is dropped.
    QByteArray finish();

private:
    void append(char16_t unit, QByteArray &utf8);

    ByteOrder m_order;
    QByteArray m_halfUnit;
    char16_t m_highSurrogate = 0;
};
