// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "elementattributes.h"

#include "model/xmltext.h"

#include <algorithm>
#include <cctype>

namespace {

using Size = decltype(QString().size());

//! A numeric reference, such as &#55357; or &#xD83D;
struct Reference
{
    uint code = 0; // 0 = none
    Size length = 0;

    static Reference at(const QString &text, Size position);
};

Reference Reference::at(const QString &text, Size position)
{
    constexpr Size longest = 13;
    const QString head = text.mid(position, longest);
    const bool isHexadecimal = head.startsWith(QLatin1String("&#x"));
    const Size end = head.indexOf(QLatin1Char(';'));
    const Size start = isHexadecimal ? 3 : 2;
    if (!head.startsWith(QLatin1String("&#")) || end <= start)
        return {};
    const QString digits = head.mid(start, end - start);
    const bool areDigits = std::all_of(digits.cbegin(), digits.cend(), [](QChar c) {
        return std::isxdigit(c.unicode() < 0x80 ? c.unicode() : 0);
    });
    bool isNumber = false;
    const uint code = digits.toUInt(&isNumber, isHexadecimal ? 16 : 10);
    return areDigits && isNumber ? Reference{code, end + 1} : Reference{};
}

struct NamedReference
{
    const char *text;
    char character;
};

constexpr NamedReference NamedReferences[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

//! Reads the attributes of a start tag from left to right. A reader of XML by the book would stop
//! at what such tags hold, and takes the square of the time for many references or attributes.
class TagReader
{
public:
    explicit TagReader(const QString &tag)
        : m_tag(tag)
    {
    }

    //! \return false when the tag is not whole
    bool read(QHash<QString, QString> &values);

private:
    QChar next() const { return m_position < m_tag.size() ? m_tag.at(m_position) : QChar(); }
    bool take(char c);
    bool takeBlanks();
    QString takeName();
    std::optional<QString> takeValue();
    void takeReference(QString &value);

    const QString &m_tag;
    Size m_position = 0;
};

bool TagReader::read(QHash<QString, QString> &values)
{
    if (!take('<') || takeName().isEmpty())
        return false;
    while (takeBlanks() && next() != QLatin1Char('/') && next() != QLatin1Char('>')) {
        const QString name = takeName();
        takeBlanks();
        if (name.isEmpty() || values.contains(name) || !take('='))
            return false;
        takeBlanks();
        const auto value = takeValue();
        if (!value)
            return false;
        values.insert(name, *value);
    }
    take('/');
    return take('>') && m_position == m_tag.size();
}

bool TagReader::take(char c)
{
    const bool fits = next() == QLatin1Char(c);
    if (fits)
        ++m_position;
    return fits;
}

//! Commas between attributes count as blanks.
bool TagReader::takeBlanks()
{
    const Size start = m_position;
    while (next().isSpace() || next() == QLatin1Char(','))
        ++m_position;
    return m_position > start;
}

QString TagReader::takeName()
{
    const Size start = m_position;
    while (next().isLetterOrNumber() || QLatin1String("_-:.").contains(next()))
        ++m_position;
    return m_tag.mid(start, m_position - start);
}

std::optional<QString> TagReader::takeValue()
{
    const QChar quote = next();
    if (quote != QLatin1Char('"') && quote != QLatin1Char('\''))
        return std::nullopt;
    ++m_position;
    QString value;
    while (m_position < m_tag.size() && next() != quote) {
        const QChar c = next();
        if (c == QLatin1Char('&')) {
            takeReference(value);
        } else {
            const bool isHeld = c.isSurrogate() || XmlText::canHold(c.unicode());
            value += isHeld ? c : QChar(QChar::ReplacementCharacter);
            ++m_position;
        }
    }
    if (m_position == m_tag.size())
        return std::nullopt;
    ++m_position;
    return value;
}

void TagReader::takeReference(QString &value)
{
    for (const NamedReference &named : NamedReferences) {
        const QLatin1String text(named.text);
        if (m_tag.mid(m_position, text.size()) == text) {
            value += QLatin1Char(named.character);
            m_position += text.size();
            return;
        }
    }
    const Reference reference = Reference::at(m_tag, m_position);
    m_position += reference.length;
    const Reference second = Reference::at(m_tag, m_position);
    if (reference.length == 0) {
        value += m_tag.at(m_position++);
    } else if (QChar::isHighSurrogate(reference.code) && QChar::isLowSurrogate(second.code)) {
        value += QChar(static_cast<ushort>(reference.code));
        value += QChar(static_cast<ushort>(second.code));
        m_position += second.length;
    } else if (!XmlText::canHold(reference.code)) {
        value += QChar(QChar::ReplacementCharacter);
    } else {
        const uint code = reference.code;
        value += QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1);
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
    ElementAttributes attributes;
    const QString text = decoded(tag);
    return TagReader(text).read(attributes.m_values) ? std::optional(attributes) : std::nullopt;
}

std::optional<QString> ElementAttributes::text(const char *name) const
{
    const auto value = m_values.constFind(QLatin1String(name));
    return value == m_values.cend() ? std::nullopt : std::optional(*value);
}

QString ElementAttributes::value(const char *name) const
{
    const QString value = text(name).value_or(QString()).trimmed();
    return value == QLatin1String("null") ? QString() : value;
}
