// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendable.h"

#include <korvasync/vmessageencoder.h>

using namespace KorvaSyncIf;

SettledMessage settleToSend(ParsedMessage message)
{
    message.box = QStringLiteral("SENT");
    message.headerTime.clear();
    message.bodyTime.clear();
    message.originators.clear(); // a message goes to nobody whom it does not name as receiver
    message.body.remove(QLatin1Char('\r')); // messages have bare line feeds
    message.body = ParsedMessage::comparable(message.body).toString(); // no mark goes out
    SettlingRules rules;
    rules.badTimeIsNow = true;
    rules.markRead = true;
    rules.localZone = QTimeZone::utc();
    rules.now = QDateTime::currentDateTimeUtc();
    return settle(message, rules);
}

bool isCarriedWhole(const SmsInfo &message)
{
    if (message.body.contains(QChar(QChar::Null)))
        return false;
    const auto parsed = ParsedMessage::parse(VMessageEncoder().encode(message).vMessage.toUtf8());
    return parsed && parsed->recipients == QStringList{message.toNumber}
    && parsed->body == message.body;
}

QString sendable(const SmsInfo &message)
{
    const QString vMessage = VMessageEncoder().encode(message).vMessage;
    const auto missing = vMessage.toUtf8().size() - vMessage.size();
    return vMessage + QString(int(missing), QLatin1Char('\n'));
}
