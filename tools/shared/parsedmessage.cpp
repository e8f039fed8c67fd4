// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "parsedmessage.h"

#include "number.h"

#include <vmessage/vmessageparser.h>

RejectReason ParsedMessage::rejectReasonOfType() const
{
    if (type.compare(QLatin1String("INET"), Qt::CaseInsensitive) == 0)
        return RejectReason::ForeignObject;
    if (type.compare(QLatin1String("MMS"), Qt::CaseInsensitive) == 0)
        return RejectReason::MmsNotSupported;
    return RejectReason::None;
}

QString ParsedMessage::withLineFeeds(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

QStringView ParsedMessage::comparable(QStringView text)
{
    while (text.startsWith(QChar(QChar::ByteOrderMark)))
        text = text.mid(1);
    return text;
}

template <typename Party>
static QStringList numbersOf(const Party &party)
{
    QStringList numbers;
    for (int i = 0; i < party.count; ++i)
        numbers += Number::asMeant(QString::fromUtf8(party.telephones[i]));
    return numbers;
}

std::optional<ParsedMessage> ParsedMessage::parse(const QByteArray &vMessage)
{
    VMessageParser parser;
    const VMessage *message =
        parser.parseVMessage(vMessage.constData(), static_cast<unsigned int>(vMessage.size()));
    if (!message)
        return std::nullopt;
    ParsedMessage parsed;
    if (const VMessageHeader *header = parser.header(message)) {
        parsed.folder = HeaderWords::folderOf(*header);
        parsed.readStatus = HeaderWords::readStatusOf(header->status);
        parsed.type = QString::fromUtf8(header->type);
        parsed.headerTime = QString::fromUtf8(header->dateTime);
    }
    if (const VMessageOriginator *originator = parser.originator(message))
        parsed.originators = numbersOf(*originator);
    if (const VMessageRecipient *recipient = parser.recipients(message))
        parsed.recipients = numbersOf(*recipient);
    if (const VMessageBody *body = parser.body(message)) {
        parsed.bodyTime = QString::fromUtf8(body->date);
        parsed.body = QString::fromUtf8(body->text, body->length);
        // Qt takes a byte order mark at the beginning away; what is shown and written keeps it.
        if (QByteArray::fromRawData(body->text, body->length).startsWith("\xEF\xBB\xBF"))
            parsed.body.prepend(QChar::ByteOrderMark);
    }
    return parsed;
}
