// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedmessage.h"

#include "datetext.h"
#include "shared/parsedmessage.h"

StoredMessage StoredMessage::fromRecord(const KorvaSyncIf::SyncSmsInfo &record)
{
    static const QTimeZone utc = QTimeZone::utc();
    StoredMessage message;
    message.id = record.id;
    message.folder = record.parentId;
    message.token = record.messageToken;
    message.vMessage = record.vMessage;
    if (const auto parsed = ParsedMessage::parse(record.vMessage.toUtf8())) {
        message.isRead = parsed->status == QLatin1String("READ");
        message.time = DateText::readMessageTime(parsed->headerTime, utc);
        message.number = (parsed->originators + parsed->recipients).value(0);
        message.body = parsed->body;
    }
    return message;
}
