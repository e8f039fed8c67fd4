// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "elementattributes.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>

namespace {

using Size = decltype(QString().size());

bool isCharacter(uint code)
{
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code < 0xD800)
        || (code >= 0xE000 && code < 0xFFFE) || (code >= 0x10000 && code <= 0x10FFFF);
}

//! A numeric reference, such as &#55357; or &#xD83D;
struct Reference
{
    uint code = 0; // 0 = none
    Size length = 0;

    static Reference at(const QString &text, Size position);
};

Reference Reference::at(const QString &text, Size position)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\G&#(?:([0-9]{1,9})|x([0-9a-fA-F]{1,8}));"));
    const auto match = pattern.match(text, position);
    if (!match.hasMatch())
        return {};
    const bool isDecimal = !match.captured(1).isEmpty();
    const uint code =
        isDecimal ? match.captured(1).toUInt() : match.captured(2).toUInt(nullptr, 16);
    return {code, match.capturedLength()};
}

bool isNamedReference(const QString &text, Size position)
{
    static const QRegularExpression pattern(QStringLiteral("\\G&(?:amp|lt|gt|quot|apos);"));
    return pattern.match(text, position).hasMatch();
}

//! Rewrites a start tag so that a strict reader of XML takes it.
class Mending
{
public:
    explicit Mending(const QString &tag)
        : tag(tag)
    {
    }

    QString mended();

private:
    void takeOutside(QChar c);
    void takeInValue(QChar c);
    void takeReference();

    void appendCharacter(uint code)
    {
        xml += isCharacter(code) ? QStringLiteral("&#%1;").arg(code)
                                 : QString(QChar(QChar::ReplacementCharacter));
    }

    const QString &tag;
    Size position = 0; // behind the character in hand
    QChar quote;       // of the value, null outside
    QString xml;
};

QString Mending::mended()
{
    xml.reserve(tag.size() + tag.size() / 8);
    while (position < tag.size()) {
        const QChar c = tag.at(position++);
        if (quote.isNull())
            takeOutside(c);
        else
            takeInValue(c);
    }
    if (xml.endsWith(QLatin1Char('>')) && !xml.endsWith(QLatin1String("/>")))
        xml.insert(xml.size() - 1, QLatin1Char('/'));
    return xml;
}

void Mending::takeOutside(QChar c)
{
    if (c == QLatin1Char('"') || c == QLatin1Char('\''))
        quote = c;
    xml += c == QLatin1Char(',') ? QChar(QLatin1Char(' ')) : c;
}

void Mending::takeInValue(QChar c)
{
    const ushort code = c.unicode();
    if (c == quote) {
        quote = QChar();
        xml += c;
    } else if (code == '&') {
        takeReference();
    } else if (code == '<') {
        xml += QLatin1String("&lt;");
    } else if (code == '\t' || code == '\n' || code == '\r') { // else read as blanks
        appendCharacter(code);
    } else {
        xml += c.isSurrogate() || isCharacter(code) ? c : QChar(QChar::ReplacementCharacter);
    }
}

void Mending::takeReference()
{
    const Size start = position - 1;
    const Reference reference = Reference::at(tag, start);
    if (reference.length == 0) {
        xml += isNamedReference(tag, start) ? QLatin1String("&") : QLatin1String("&amp;");
        return;
    }
    position = start + reference.length;
    const Reference second = Reference::at(tag, position);
    if (QChar::isHighSurrogate(reference.code) && QChar::isLowSurrogate(second.code)) {
        position += second.length;
        appendCharacter(QChar::surrogateToUcs4(static_cast<ushort>(reference.code),
                                               static_cast<ushort>(second.code)));
    } else {
        appendCharacter(reference.code);
    }
}

QString decoded(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes.constData(), static_cast<int>(bytes.size()));
    return text.toUtf8() == bytes ? text : QString::fromLatin1(bytes);
}

} // namespace

std::optional<ElementAttributes> ElementAttributes::parse(const QByteArray &tag)
{
    const QString text = decoded(tag);
    QXmlStreamReader reader(Mending(text).mended());
    reader.setNamespaceProcessing(false);
    ElementAttributes attributes;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        for (const QXmlStreamAttribute &attribute : reader.attributes())
            attributes.values.insert(attribute.name().toString(), attribute.value().toString());
    }
    return reader.hasError() ? std::nullopt : std::optional(attributes);
}

std::optional<QString> ElementAttributes::text(const char *name) const
{
    const auto value = values.constFind(QLatin1String(name));
    return value == values.cend() ? std::nullopt : std::optional(*value);
}

QString ElementAttributes::value(const char *name) const
{
    const QString value = text(name).value_or(QString()).trimmed();
    return value == QLatin1String("null") ? QString() : value;
}
