// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedmessage.h"

#include "datetext.h"
#include "shared/number.h"
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
        message.isRead = parsed->readStatus == HeaderWords::ReadStatus::Read;
        message.time = DateText::readMessageTime(parsed->headerTime, utc);
        message.number = (parsed->originators + parsed->recipients).value(0);
        message.body = parsed->body;
    }
    return message;
}

StoredMessage StoredMessage::fromItem(const KorvaSyncIf::HistoryItem &item)
{
    StoredMessage message;
    message.id = item.id;
    message.folder = item.folder;
    message.isRead = item.isRead;
    // A vMessage has whole seconds and no carriage returns.
    if (item.time.isValid())
        message.time = item.time.addMSecs(-item.time.time().msec());
    message.number = Number::asMeant(item.party);
    message.body = item.text;
    message.body.remove(QLatin1Char('\r'));
    message.token = item.token;
    return message;
}
