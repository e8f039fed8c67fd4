// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a file that a person adds, in any of its forms.

#include "fuzzing.h"
#include "memoryfile.h"

#include <formats/callelement.h>
#include <formats/callentry.h>
#include <formats/smselement.h>
#include <input/itemreader.h>
#include <model/normalising.h>
#include <shared/number.h>
#include <shared/parsedmessage.h>
#include <shared/rejectreason.h>

#include <korvasync/vmessageencoder.h>

#include <vector>

namespace {

using Items = std::vector<InputItem>;

Items itemsOf(const QByteArray &file, ItemReader::Form form = ItemReader::AnyForm)
{
    const MemoryFile input(file);
    ItemReader reader(input.path(), form);
    Items items;
    while (auto item = reader.next())
        items.push_back(*item);
    require(reader.error().isEmpty());
    return items;
}

QDateTime now() { return QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC); }

// What goes into the store, in the library's own form, comes out the same.
void normaliseAndReadBack(const std::optional<ParsedMessage> &parsed)
{
    if (!parsed)
        return;
    NormalisingRules rules;
    rules.folder = KorvaSyncIf::LocInbox;
    rules.localZone = QTimeZone::utc();
    rules.now = now();
    const NormalisedMessage normalised = normalise(*parsed, rules);
    if (normalised.rejectReason != RejectReason::None)
        return;
    const QString written = KorvaSyncIf::VMessageEncoder().encode(normalised.message).vMessage;
    const auto again = ParsedMessage::parse(written.toUtf8());
    require(again.has_value());
    const NormalisedMessage stored = normalise(*again, rules);
    require(stored.rejectReason == RejectReason::None);
    require(stored.message.parentId == normalised.message.parentId);
    // What reading makes good in a number is the library's own doing, which is left out here.
    require(stored.message.fromNumber == Number::asMeant(normalised.message.fromNumber));
    require(stored.message.toNumber == Number::asMeant(normalised.message.toNumber));
    require(stored.message.readStatus == normalised.message.readStatus);
    require(stored.message.time
            == normalised.message.time.addMSecs(-normalised.message.time.time().msec()));
    require(ParsedMessage::withLineFeeds(stored.message.body)
            == ParsedMessage::withLineFeeds(normalised.message.body));
}

void judge(const InputItem &item)
{
    switch (item.kind) {
    case InputItem::Message:
        normaliseAndReadBack(ParsedMessage::parse(item.bytes));
        break;
    case InputItem::CallEntry:
        CallEntry::parse(item.bytes, QTimeZone::utc(), now());
        break;
    case InputItem::AndroidSms:
        normaliseAndReadBack(SmsElement::parse(item.bytes));
        break;
    case InputItem::AndroidCall:
        CallElement::parse(item.bytes, now());
        break;
    case InputItem::AndroidMms:
    case InputItem::ForeignObject:
    case InputItem::CutFile:
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    const QByteArray reason =
        reasonLine(QStringLiteral("input:1"), RejectReason::SmsParse, QStringLiteral("cut"))
        + "\r\n";
    quint64 line = 0;
    for (const InputItem &item : itemsOf(bytes)) {
        require(item.line >= line);
        line = item.line;
        judge(item);
        if (item.kind == InputItem::CutFile)
            continue;
        require(!item.bytes.isEmpty());
        // As it stands among the rejects, behind its reason, the item is found again.
        const Items again = itemsOf(reason + item.bytes + "\r\n");
        require(!again.empty() && again.front().kind == item.kind && again.front().line == 2);
    }
    itemsOf(bytes, ItemReader::TextObjects);
    itemsOf(bytes, ItemReader::AndroidXml);
    return 0;
}
