// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a message that a client reads, and as the text of one.

#include "fuzzing.h"

#include <korvasync/vmessagedecoder.h>
#include <korvasync/vmessageencoder.h>

using namespace KorvaSyncIf;

using Problem = VMessageDecoder::Problem;

namespace {

bool isFolder(int folder)
{
    return folder == 0 || folder == LocInbox || folder == LocOutbox || folder == LocDrafts
        || folder == LocSent || folder == LocMyFolder;
}

void checkItem(const VMessageDecoder &decoder, const HistoryItem &item)
{
    require(item.id == -1 && item.kind == HistoryItem::Kind::Message);
    require(isFolder(item.folder));
    require((item.folder == 0) == (item.direction == HistoryItem::Direction::Unknown));
    require(item.time.isNull() || (item.time.isValid() && item.time.timeSpec() == Qt::UTC));
    const QStringList numbers = decoder.originators() + decoder.recipients();
    require(item.party.isEmpty() ? numbers.isEmpty() : numbers.contains(item.party));
    require(!item.text.contains(QLatin1Char('\r')));
}

void checkBytes(const QByteArray &bytes)
{
    VMessageDecoder decoder;
    decoder.setLocalZone(QTimeZone::utc());
    HistoryItem item;
    const bool isMessage = decoder.decode(bytes, &item);
    const Problem problem = decoder.problem();
    require(isMessage == (problem.kind == Problem::None));
    require(isMessage == (problem.line == 0));
    require(problem.line >= 0 && problem.line <= 1 + bytes.count('\n'));
    if (!isMessage)
        return;
    checkItem(decoder, item);
    HistoryItem untouched;
    untouched.id = 1;
    require(!decoder.decode(bytes + "\r\n" + bytes, &untouched) && untouched.id == 1);
    require(decoder.problem().kind == Problem::SecondMessage);
}

void checkText(const QByteArray &bytes)
{
    SmsInfo message;
    message.parentId = LocInbox;
    message.fromNumber = QStringLiteral("+15550100");
    message.readStatus = QStringLiteral("READ");
    message.time = QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);
    message.body = QString::fromUtf8(bytes).remove(QLatin1Char('\r'));
    VMessageDecoder decoder;
    HistoryItem item;
    require(decoder.decode(VMessageEncoder().encode(message).vMessage.toUtf8(), &item));
    require(item.folder == LocInbox && item.isRead && item.party == message.fromNumber);
    require(item.time == message.time && item.text == message.body);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    checkBytes(bytes);
    checkText(bytes);
    return 0;
}
