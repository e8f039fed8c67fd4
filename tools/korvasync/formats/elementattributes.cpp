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

constexpr NamedReference namedReferences[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

//! Reads the attributes of a start tag from left to right. A reader of XML by the book would stop
//! at what such tags hold, and takes the square of the time for many references or attributes.
class TagReader
{
public:
    explicit TagReader(const QString &tag)
        : tag(tag)
    {
    }

    //! \return false when the tag is not whole
    bool read(QHash<QString, QString> &values);

private:
    QChar next() const { return position < tag.size() ? tag.at(position) : QChar(); }
    bool take(char c);
    bool takeBlanks();
    QString takeName();
    std::optional<QString> takeValue();
    void takeReference(QString &value);

    const QString &tag;
    Size position = 0;
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
    return take('>') && position == tag.size();
}

bool TagReader::take(char c)
{
    const bool fits = next() == QLatin1Char(c);
    if (fits)
        ++position;
    return fits;
}

//! Commas between attributes count as blanks.
bool TagReader::takeBlanks()
{
    const Size start = position;
    while (next().isSpace() || next() == QLatin1Char(','))
        ++position;
    return position > start;
}

QString TagReader::takeName()
{
    const Size start = position;
    while (next().isLetterOrNumber() || QLatin1String("_-:.").contains(next()))
        ++position;
    return tag.mid(start, position - start);
}

std::optional<QString> TagReader::takeValue()
{
    const QChar quote = next();
    if (quote != QLatin1Char('"') && quote != QLatin1Char('\''))
        return std::nullopt;
    ++position;
    QString value;
    while (position < tag.size() && next() != quote) {
        const QChar c = next();
        if (c == QLatin1Char('&')) {
            takeReference(value);
        } else {
            const bool isHeld = c.isSurrogate() || XmlText::canHold(c.unicode());
            value += isHeld ? c : QChar(QChar::ReplacementCharacter);
            ++position;
        }
    }
    if (position == tag.size())
        return std::nullopt;
    ++position;
    return value;
}

void TagReader::takeReference(QString &value)
{
    for (const NamedReference &named : namedReferences) {
        const QLatin1String text(named.text);
        if (tag.mid(position, text.size()) == text) {
            value += QLatin1Char(named.character);
            position += text.size();
            return;
        }
    }
    const Reference reference = Reference::at(tag, position);
    position += reference.length;
    const Reference second = Reference::at(tag, position);
    if (reference.length == 0) {
        value += tag.at(position++);
    } else if (QChar::isHighSurrogate(reference.code) && QChar::isLowSurrogate(second.code)) {
        value += QChar(static_cast<ushort>(reference.code));
        value += QChar(static_cast<ushort>(second.code));
        position += second.length;
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
    return TagReader(text).read(attributes.values) ? std::optional(attributes) : std::nullopt;
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
