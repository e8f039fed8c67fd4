// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "parsedmessage.h"

#include "number.h"

#include <vmessage/vmessageparser.h>

// None of these comes back from the store: the encoder drops carriage returns, the store
// cannot hold a zero, and the library takes a mark in front for a byte order mark.
QString ParsedMessage::storable(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.remove(QChar(QChar::Null));
    while (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    return text;
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
        parsed.status = QString::fromUtf8(header->status);
        parsed.box = QString::fromUtf8(header->box);
        parsed.type = QString::fromUtf8(header->type);
        parsed.messageType = QString::fromUtf8(header->messageType);
        parsed.headerTime = QString::fromUtf8(header->dateTime);
    }
    if (const VMessageOriginator *originator = parser.originator(message))
        parsed.originator = Number::asMeant(QString::fromUtf8(originator->telephone));
    if (const VMessageRecipient *recipient = parser.recipients(message)) {
        parsed.recipient = Number::asMeant(QString::fromUtf8(recipient->telephone));
        parsed.recipients = recipient->count;
    }
    if (const VMessageBody *body = parser.body(message)) {
        parsed.bodyTime = QString::fromUtf8(body->date);
        parsed.body = storable(QString::fromUtf8(body->text, body->length));
    }
    return parsed;
}
