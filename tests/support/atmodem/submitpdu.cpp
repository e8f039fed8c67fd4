// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "submitpdu.h"

#include <QtCore/QVector>

namespace {

constexpr int Escape = 0x1b;

//! Reads octets from the front; past the end they are zero and the reader is broken.
class Octets
{
public:
    explicit Octets(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    int next()
    {
        m_isBroken = m_isBroken || m_position >= m_bytes.size();
        return m_isBroken ? 0 : uchar(m_bytes.at(m_position++));
    }
    QByteArray take(int count)
    {
        QByteArray taken;
        for (int i = 0; i < count; ++i)
            taken.append(char(next()));
        return taken;
    }
    QByteArray rest() const { return m_bytes.mid(m_position); }
    bool isBroken() const { return m_isBroken; }

private:
    QByteArray m_bytes;
    int m_position = 0;
    bool m_isBroken = false;
};

//! The GSM 7-bit default alphabet of 3GPP TS 23.038; the escape stands for itself.
QString defaultAlphabet()
{
    return QStringLiteral(
        u"@£$¥èéùìòÇ\nØø\rÅåΔ_ΦΓΛΩΠΨΣΘΞ\u001bÆæßÉ !\"#¤%&'()*+,-./0123456789:;<=>?"
        u"¡ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§¿abcdefghijklmnopqrstuvwxyzäöñüà");
}

QChar extendedCharacter(int septet)
{
    switch (septet) {
    case 0x0a:
        return QLatin1Char('\f');
    case 0x14:
        return QLatin1Char('^');
    case 0x28:
        return QLatin1Char('{');
    case 0x29:
        return QLatin1Char('}');
    case 0x2f:
        return QLatin1Char('\\');
    case 0x3c:
        return QLatin1Char('[');
    case 0x3d:
        return QLatin1Char('~');
    case 0x3e:
        return QLatin1Char(']');
    case 0x40:
        return QLatin1Char('|');
    case 0x65:
        return QChar(0x20ac);
    }
    return QLatin1Char(' ');
}

QString decodeDigits(const QByteArray &octets, int count)
{
    QString digits;
    for (const char octet : octets) {
        digits += QChar('0' + (uchar(octet) & 0x0f));
        digits += QChar('0' + (uchar(octet) >> 4));
    }
    return digits.left(count);
}

//! \param first  the septet that the text begins with; septets before it hold the header
QString decodeSeptets(const QByteArray &octets, int first, int count)
{
    const QString alphabet = defaultAlphabet();
    QString text;
    bool isEscaped = false;
    for (int i = first; i < count; ++i) {
        const int bit = i * 7;
        int pair = uchar(octets.at(bit / 8));
        if (bit / 8 + 1 < octets.size())
            pair |= uchar(octets.at(bit / 8 + 1)) << 8;
        const int septet = (pair >> bit % 8) & 0x7f;
        if (septet == Escape && !isEscaped) {
            isEscaped = true;
            continue;
        }
        text += isEscaped ? extendedCharacter(septet) : alphabet.at(septet);
        isEscaped = false;
    }
    return text;
}

QString decodeUcs2(const QByteArray &octets)
{
    QString text;
    for (int i = 0; i + 1 < octets.size(); i += 2)
        text += QChar(uchar(octets.at(i)) << 8 | uchar(octets.at(i + 1)));
    return text;
}

void readHeader(const QByteArray &header, SubmitPdu *pdu)
{
    Octets octets(header);
    while (!octets.rest().isEmpty()) {
        const int element = octets.next();
        const QByteArray data = octets.take(octets.next());
        if ((element != 0x00 || data.size() != 3) && (element != 0x08 || data.size() != 4))
            continue;
        pdu->part = uchar(data.back());
        pdu->partCount = uchar(data.at(data.size() - 2));
        pdu->reference = uchar(data.at(data.size() - 3));
        if (element == 0x08)
            pdu->reference |= uchar(data.at(0)) << 8;
    }
}

} // namespace

std::optional<SubmitPdu> decodeSubmitPdu(const QByteArray &bytes)
{
    Octets octets(bytes);
    const int type = octets.next();
    const bool isSubmit = (type & 0x03) == 0x01;
    const bool hasHeader = type & 0x40;
    const int validityFormat = type >> 3 & 0x03;
    octets.next(); // message reference

    SubmitPdu pdu;
    const int digitCount = octets.next();
    const bool isInternational = (octets.next() & 0x70) == 0x10;
    pdu.number = decodeDigits(octets.take((digitCount + 1) / 2), digitCount);
    if (isInternational)
        pdu.number.prepend(QLatin1Char('+'));

    octets.next(); // protocol
    const int alphabet = octets.next() >> 2 & 0x03;
    octets.take(validityFormat == 0 ? 0 : validityFormat == 2 ? 1 : 7);

    const int length = octets.next(); // in septets or octets
    const bool isSevenBit = alphabet == 0;
    const QByteArray data = octets.take(isSevenBit ? (length * 7 + 7) / 8 : length);
    const int headerSize = hasHeader && !data.isEmpty() ? 1 + uchar(data.at(0)) : 0;
    if (!isSubmit || octets.isBroken() || headerSize > data.size())
        return std::nullopt;
    if (hasHeader)
        readHeader(data.mid(1, headerSize - 1), &pdu);
    if (isSevenBit)
        pdu.text = decodeSeptets(data, (headerSize * 8 + 6) / 7, length);
    else if (alphabet == 2)
        pdu.text = decodeUcs2(data.mid(headerSize));
    else
        return std::nullopt;
    return pdu;
}
