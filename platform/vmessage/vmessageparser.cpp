// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "vmessageparser.h"

#include "datelines.h"
#include "textdecoding.h"
#include "vmessagediagnosis.h"
#include "vmessagelines.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace VMessageLines;

class VMessage
{
public:
    // The input. Texts stay in their places and get their zero there, over the line end
    // or the separator behind them.
    std::string bytes;
    std::string convertedText; // the message text, where it needs more room than it has
    VMessageHeader header = {};
    std::optional<VMessageOriginator> originator;
    std::optional<VMessageRecipient> recipient;
    std::vector<const char *> originatorTelephones;
    std::vector<const char *> recipientTelephones;
    std::optional<VMessageBody> body;
};

namespace {

struct Property
{
    std::string_view name;
    std::string_view parameters;
    std::string_view value; // blanks at its ends included
};

struct Parameters
{
    std::string_view encoding;
    std::string_view charset;
    std::string_view language;
};

struct HeaderField
{
    std::string_view name;
    const char *VMessageHeader::*field;
};

constexpr HeaderField HeaderFields[] = {
    {"X-IRMC-STATUS", &VMessageHeader::status},
    {"X-IRMC-BOX", &VMessageHeader::box},
    {"X-IRMC-TYPE", &VMessageHeader::type},
    {"X-TYPE", &VMessageHeader::type},
    {"X-MESSAGE-TYPE", &VMessageHeader::messageType},
    {"X-BOX", &VMessageHeader::box},
    {"X-READ", &VMessageHeader::status},
    {"X-MESSAGE-STATUS", &VMessageHeader::status},
};

std::optional<Property> splitProperty(std::string_view line)
{
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const std::string_view head = line.substr(0, colon);
    const size_t nameLength = std::min(head.find(';'), head.size());
    return Property{trimmed(head.substr(0, nameLength)),
                    head.substr(std::min(nameLength + 1, head.size())), line.substr(colon + 1)};
}

// The property that carries a message text. Two converters leave out the semicolon behind
// its name: SubjectENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:
std::optional<Property> splitTextProperty(std::string_view line)
{
    for (std::string_view name : {"X-SMS", "TEXT", "Subject"}) {
        if (!startsWith(line, name))
            continue;
        std::optional<Property> property = splitProperty(line);
        if (!property || property->name.size() == name.size())
            return property;
        const std::string_view glued = property->name.substr(name.size());
        if (!startsWith(glued, "ENCODING=") && !startsWith(glued, "CHARSET="))
            return std::nullopt;
        property->name = line.substr(0, name.size());
        property->parameters = line.substr(name.size(), line.find(':') - name.size());
        return property;
    }
    return std::nullopt;
}

// Sets the parameter that `text`, such as CHARSET=UTF-8, names; the first one counts.
bool readParameter(std::string_view text, Parameters *parameters)
{
    const size_t equal = text.find('=');
    if (equal == std::string_view::npos)
        return false;
    const std::string_view name = trimmed(text.substr(0, equal));
    std::string_view *parameter = equals(name, "ENCODING") ? &parameters->encoding
        : equals(name, "CHARSET")                          ? &parameters->charset
        : equals(name, "LANGUAGE")                         ? &parameters->language
                                                           : nullptr;
    if (parameter && parameter->empty())
        *parameter = trimmed(text.substr(equal + 1));
    return parameter;
}

void readParameters(std::string_view list, Parameters *parameters)
{
    while (!list.empty()) {
        const size_t length = std::min(list.find(';'), list.size());
        const std::string_view item = trimmed(list.substr(0, length));
        list.remove_prefix(std::min(length + 1, list.size()));
        // vCard 2.1 lets an encoding stand without its name.
        const bool bareEncoding = equals(item, "QUOTED-PRINTABLE") || equals(item, "BASE64");
        if (bareEncoding && parameters->encoding.empty())
            parameters->encoding = item;
        else
            readParameter(item, parameters);
    }
}

bool isMakersDate(std::string_view name)
{
    return name.size() > 5 && startsWith(name, "X-") && equals(name.substr(name.size() - 3), "-DT");
}

// Whether the line may be one of the fields that stand above the text of a body.
bool isBodyField(std::string_view line)
{
    const std::optional<Property> property = splitProperty(line);
    Parameters ignored;
    if (!property)
        return trimmed(line).find(' ') == std::string_view::npos && readParameter(line, &ignored);
    // DateSent is when the network took the message; the Date line says when it came.
    return startsWith(line, "X-") || equals(property->name, "FROMTEL")
        || equals(property->name, "DateOrigin") || equals(property->name, "DateSent");
}

bool isBlankLine(const Line &line) { return trimmed(line.text).empty(); }

std::string_view withoutLineEnd(std::string_view text)
{
    if (text.empty() || text.back() != '\n')
        return text;
    text.remove_suffix(1);
    if (!text.empty() && text.back() == '\r')
        text.remove_suffix(1);
    return text;
}

// Sent messages often have an empty card above the one that counts, so the first card with
// a number is taken, and the first of all where none has one.
template <typename Party>
void addParty(const char *name, const char *telephone, std::optional<Party> *party,
              std::vector<const char *> *telephones)
{
    if (telephone)
        telephones->push_back(telephone);
    if (!*party || (!(*party)->telephone && telephone))
        *party = Party{name, telephone, nullptr, 0};
    (*party)->telephones = telephones->data();
    (*party)->count = int(telephones->size());
}

// Fills a message from its bytes, line by line from the first to the last.
class Reader
{
public:
    explicit Reader(VMessage *message)
        : m_message(*message)
        , m_rest(message->bytes)
    {
    }

    bool read();

private:
    bool findBegin();
    Line nextLine();
    void readHeaderField(const Property &property);
    void readCard();
    Line unfolded(Line line);
    void addCard(const char *name, const char *telephone);
    bool readBody();
    std::string_view readBodyFields(std::string_view content, Parameters *parameters);
    void readBodyField(std::string_view line, Parameters *parameters);
    void decodeText(std::string_view text, const Parameters &parameters);

    char *writable(const char *position)
    {
        return m_message.bytes.data() + (position - m_message.bytes.data());
    }
    const char *keep(std::string_view text);
    const char *keepFilled(std::string_view text) { return text.empty() ? nullptr : keep(text); }

    VMessage &m_message;
    std::string_view m_rest;            // not read yet
    bool m_crLf = true;                 // all lines so far end in CR LF
    unsigned m_depth = 0;               // open envelopes
    const char *m_dateOrigin = nullptr; // stands in where there is no other date
    Parameters m_inherited;             // the first ones named above the body
};

bool Reader::read()
{
    if (!findBegin())
        return false;
    bool lacksBegin = false; // END:VBODY came before any BEGIN:VBODY: the text would be lost
    while (!m_rest.empty()) {
        const Line line = nextLine();
        switch (keyword(line.text)) {
        case Keyword::BeginVBody:
            return readBody();
        case Keyword::EndVMsg:
            return !lacksBegin;
        case Keyword::BeginVMsg:
            return false;
        case Keyword::BeginVEnv:
            ++m_depth;
            break;
        case Keyword::EndVEnv:
            m_depth -= m_depth > 0;
            break;
        case Keyword::BeginVCard:
            readCard();
            break;
        case Keyword::EndVBody:
            lacksBegin = true;
            break;
        case Keyword::EndVCard:
            break;
        case Keyword::None:
            if (const std::optional<Property> property = splitProperty(line.text)) {
                readParameters(property->parameters, &m_inherited);
                readHeaderField(*property);
            }
        }
    }
    return false;
}

bool Reader::findBegin()
{
    while (!m_rest.empty()) {
        const Line line = readLine(m_rest);
        m_rest = line.rest;
        m_crLf = line.end != LineEnd::Lf;
        if (keyword(line.text) == Keyword::BeginVMsg)
            return true;
    }
    return false;
}

Line Reader::nextLine()
{
    const Line line = readLine(m_rest);
    m_rest = line.rest;
    m_crLf = m_crLf && line.end != LineEnd::Lf;
    return line;
}

const char *Reader::keep(std::string_view text)
{
    *writable(text.data() + text.size()) = '\0';
    return text.data();
}

void Reader::readHeaderField(const Property &property)
{
    const std::string_view value = trimmed(property.value);
    for (const HeaderField &known : HeaderFields) {
        if (!equals(property.name, known.name))
            continue;
        const char *&field = m_message.header.*known.field;
        if (!field || !*field)
            field = keep(value);
        return;
    }
    if (isMakersDate(property.name) && !m_message.header.dateTime)
        m_message.header.dateTime = keepFilled(value);
    else if (equals(property.name, "FROMTEL") && !value.empty())
        addCard(nullptr, keep(value));
    else if (equals(property.name, "DateOrigin"))
        m_dateOrigin = keepFilled(value);
}

void Reader::readCard()
{
    const char *name = nullptr;
    const char *telephone = nullptr;
    while (!m_rest.empty()) {
        const std::string_view here = m_rest;
        const Line line = nextLine();
        const Keyword word = keyword(line.text);
        if (word != Keyword::None) {
            if (word != Keyword::EndVCard)
                m_rest = here; // END:VCARD is missing
            break;
        }
        const std::optional<Property> property = splitProperty(unfolded(line).text);
        if (!property)
            continue;
        readParameters(property->parameters, &m_inherited);
        const std::string_view ungrouped = property->name.substr(property->name.rfind('.') + 1);
        const std::string_view value = trimmed(property->value);
        if (equals(ungrouped, "N") && !name)
            name = keepFilled(value);
        else if ((equals(ungrouped, "TEL") || equals(ungrouped, "FROMTEL")) && !telephone)
            telephone = keepFilled(value);
    }
    addCard(name, telephone);
}

// Moves the continuation lines, which begin with a blank, up to the end of their first.
Line Reader::unfolded(Line line)
{
    while (!m_rest.empty() && (m_rest.front() == ' ' || m_rest.front() == '\t')) {
        const std::string_view more = nextLine().text.substr(1);
        std::copy(more.begin(), more.end(), writable(line.text.data() + line.text.size()));
        line.text = {line.text.data(), line.text.size() + more.size()};
    }
    return line;
}

void Reader::addCard(const char *name, const char *telephone)
{
    if (m_depth == 0)
        addParty(name, telephone, &m_message.originator, &m_message.originatorTelephones);
    else
        addParty(name, telephone, &m_message.recipient, &m_message.recipientTelephones);
}

bool Reader::readBody()
{
    const char *const bodyEnd = findBodyEnd(m_rest, isOwnText(m_rest, m_crLf));
    if (!bodyEnd)
        return false;

    std::string_view content = withoutLineEnd(m_rest.substr(0, size_t(bodyEnd - m_rest.data())));
    // Some programs write a blank line after every line, the last one of the text included.
    if (isBlankLine(readLine(content)))
        content = withoutLineEnd(content);

    m_message.body = VMessageBody{};
    Parameters parameters;
    const std::string_view text = readBodyFields(content, &parameters);
    decodeText(text, parameters);
    m_message.body->encoding = keepFilled(parameters.encoding);
    m_message.body->charset =
        keepFilled(parameters.charset.empty() ? m_inherited.charset : parameters.charset);
    m_message.body->language =
        keepFilled(parameters.language.empty() ? m_inherited.language : parameters.language);
    if (!m_message.header.dateTime)
        m_message.header.dateTime = m_message.body->date ? m_message.body->date : m_dateOrigin;
    return m_message.body->text;
}

// Reads what stands above the message text and hands out the text, not yet decoded. Some
// programs put fields there: above a property that holds the text, or above a Date line. In any
// other body, what looks like a field is the text.
std::string_view Reader::readBodyFields(std::string_view content, Parameters *parameters)
{
    std::optional<Property> property; // that holds the text
    std::string_view bareText = content;
    bool isDated = false;
    for (std::string_view unread = content; !unread.empty() && !property;) {
        const Line line = readLine(unread);
        unread = line.rest;
        property = splitTextProperty(line.text);
        const auto date = isDated ? std::nullopt : DateLines::dateOf(line.text);
        isDated = isDated || (date && !date->empty());
        const bool isFirst = line.text.data() == bareText.data();
        if (date && (isFirst || !date->empty())) // an empty one tells nothing of what is above it
            bareText = unread;
        else if (!date && !property && !isBodyField(line.text) && !isBlankLine(line))
            break;
    }
    const char *const fieldsEnd = property ? property->name.data() : bareText.data();
    const char *const textEnd = content.data() + content.size();
    while (content.data() < fieldsEnd) {
        const Line line = readLine(content);
        content = line.rest;
        readBodyField(line.text, parameters);
    }
    if (property) {
        readParameters(property->parameters, parameters);
        m_message.body->property = keep(property->name);
        return {property->value.data(), size_t(textEnd - property->value.data())};
    }
    while (!bareText.empty() && isBlankLine(readLine(bareText)))
        bareText = readLine(bareText).rest;
    return bareText;
}

void Reader::readBodyField(std::string_view line, Parameters *parameters)
{
    const auto date = m_message.body->date ? std::nullopt : DateLines::dateOf(line);
    if (date)
        m_message.body->date = keepFilled(*date);
    else if (const std::optional<Property> property = splitProperty(line))
        readHeaderField(*property);
    else
        readParameter(line, parameters);
}

void Reader::decodeText(std::string_view text, const Parameters &parameters)
{
    char *begin = writable(text.data());
    size_t length = text.size();
    if (equals(parameters.encoding, "QUOTED-PRINTABLE"))
        length = TextDecoding::decodeQuotedPrintable(begin, length);
    else if ((equals(parameters.encoding, "BASE64") || equals(parameters.encoding, "B"))
             && TextDecoding::isBase64(text))
        length = TextDecoding::decodeBase64(begin, length);

    // A character set that the body names is believed, one named further up only where the
    // bytes are no UTF-8.
    const std::string_view bytes(begin, length);
    const auto convertFrom = [&](std::string_view charset) {
        return TextDecoding::convertToUtf8(bytes, std::string(charset), &m_message.convertedText);
    };
    const bool named = !parameters.charset.empty() && !equals(parameters.charset, "UTF-8");
    bool converted = named && convertFrom(parameters.charset);
    if (!converted && !TextDecoding::isUtf8(bytes)) {
        converted = true;
        if (m_inherited.charset.empty() || !convertFrom(m_inherited.charset))
            m_message.convertedText = TextDecoding::repairedUtf8(bytes);
    }
    if (converted) {
        begin = m_message.convertedText.data();
        length = m_message.convertedText.size();
    }

    length = TextDecoding::unifyLineEnds(begin, length);
    begin[length] = '\0';
    if (length <= size_t(std::numeric_limits<int>::max())) {
        m_message.body->text = begin;
        m_message.body->length = int(length);
    }
}

} // namespace

class VMessageParserPrivate
{
public:
    std::optional<VMessage> message;
    VMessageProblem problem;
};

VMessageParser::VMessageParser()
    : d(new VMessageParserPrivate)
{
}

VMessageParser::~VMessageParser() = default;

const VMessage *VMessageParser::parseVMessage(const char *data, unsigned int length)
{
    while (length > 0 && data[length - 1] == '\0')
        --length;
    VMessage &message = d->message.emplace();
    message.bytes.assign(data, length);
    const bool isWhole = Reader(&message).read();
    d->problem = isWhole ? VMessageProblem() : VMessageDiagnosis::diagnose({data, length});
    return isWhole ? &message : nullptr;
}

VMessageProblem VMessageParser::problem() const { return d->problem; }

const VMessageHeader *VMessageParser::header(const VMessage *message)
{
    return message ? &message->header : nullptr;
}

const VMessageOriginator *VMessageParser::originator(const VMessage *message)
{
    return message && message->originator ? &*message->originator : nullptr;
}

const VMessageRecipient *VMessageParser::recipients(const VMessage *message)
{
    return message && message->recipient ? &*message->recipient : nullptr;
}

const VMessageBody *VMessageParser::body(const VMessage *message)
{
    return message && message->body ? &*message->body : nullptr;
}
