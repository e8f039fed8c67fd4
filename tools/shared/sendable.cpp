// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendable.h"

#include "number.h"

#include <korvasync/vmessageencoder.h>

using namespace KorvaSyncIf;

static RejectReason rejectReasonOf(const ParsedMessage &parsed, const QStringList &parties)
{
    if (const RejectReason rejectReason = parsed.rejectReasonOfType();
        rejectReason != RejectReason::None)
        return rejectReason;
    if (parties.isEmpty())
        return RejectReason::SmsNoNumber;
    return parties.size() > 1 ? RejectReason::TooManyRecipients : RejectReason::None;
}

SendableMessage normaliseToSend(const ParsedMessage &parsed)
{
    // A message goes to nobody whom it does not name as receiver.
    const QStringList parties = Number::parties(parsed.recipients);
    QString body = parsed.body;
    body.remove(QLatin1Char('\r')); // messages have bare line feeds
    SendableMessage sendable;
    sendable.rejectReason = rejectReasonOf(parsed, parties);
    sendable.message.parentId = LocSent;
    sendable.message.toNumber = parties.value(0);
    sendable.message.readStatus = QStringLiteral("READ");
    sendable.message.time = QDateTime::currentDateTimeUtc();
    sendable.message.body = ParsedMessage::comparable(body).toString(); // no mark goes out
    return sendable;
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
