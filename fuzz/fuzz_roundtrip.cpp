// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a message of the store: what the encoder writes of it, the decoder reads again.

#include "fuzzing.h"

#include <korvasync/vmessageencoder.h>
#include <smssyncinterface_p.h>

#include <cstring>

using namespace KorvaSyncIf;

namespace {

// One byte for folder, read status and the number's length; 8 for the time; the number; the
// rest is the text.
SmsInfo messageOf(QByteArray bytes)
{
    constexpr LocationId folders[] = {LocInbox, LocOutbox, LocSent, LocMyFolder};
    constexpr qint64 firstSecond = -62135596800; // of the years that four digits hold
    constexpr qint64 lastSecond = 253402300799;
    constexpr int fixedPart = 9;
    bytes = bytes.leftJustified(fixedPart + 1, '0');

    SmsInfo message;
    const auto choice = static_cast<unsigned char>(bytes.at(0));
    message.parentId = folders[choice % 4];
    message.readStatus = QLatin1String(choice & 4 ? "READ" : "UNREAD");
    quint64 time = 0;
    std::memcpy(&time, bytes.constData() + 1, sizeof time);
    message.time = QDateTime::fromSecsSinceEpoch(
        firstSecond + qint64(time % quint64(lastSecond - firstSecond + 1)), Qt::UTC);
    const int digits = 1 + choice / 8;
    QString number;
    for (const char byte : bytes.mid(fixedPart, digits))
        number += QLatin1Char(static_cast<char>('!' + static_cast<unsigned char>(byte) % 94));
    const bool outbound = message.parentId == LocOutbox || message.parentId == LocSent;
    (outbound ? message.toNumber : message.fromNumber) = number;
    message.messageToken = QStringLiteral("token");
    message.body = QString::fromUtf8(bytes.mid(fixedPart + digits));
    return message;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    const SmsInfo message = messageOf(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    QMap<int, SMSSyncError> errors;
    const QList<SmsInfo> records = SMSSyncInterfacePrivate().parseAllVMessages(
        {VMessageEncoder().encode(message)}, errors, false);
    require(errors.isEmpty() && records.size() == 1);
    const SmsInfo &record = records.first();
    QString text = message.body;
    text.remove(QLatin1Char('\r'));
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    require(record.body == text);
    require(record.parentId == message.parentId);
    require(record.fromNumber == message.fromNumber && record.toNumber == message.toNumber);
    require(record.time == message.time);
    require(record.readStatus == message.readStatus);
    require(record.messageToken == message.messageToken);
    return 0;
}
