// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a file that a person adds, in any of its forms.

#include "fuzzing.h"
#include "memoryfile.h"

#include <formats/callelement.h>
#include <formats/callentry.h>
#include <formats/smselement.h>
#include <input/itemreader.h>
#include <model/settling.h>
#include <shared/number.h>
#include <shared/parsedmessage.h>
#include <shared/refusal.h>

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
void settleAndReadBack(const std::optional<ParsedMessage> &parsed)
{
    if (!parsed)
        return;
    SettlingRules rules;
    rules.folder = KorvaSyncIf::LocInbox;
    rules.localZone = QTimeZone::utc();
    rules.now = now();
    const SettledMessage settled = settle(*parsed, rules);
    if (settled.refusal != Refusal::None)
        return;
    const QString written = KorvaSyncIf::VMessageEncoder().encode(settled.message).vMessage;
    const auto again = ParsedMessage::parse(written.toUtf8());
    require(again.has_value());
    const SettledMessage stored = settle(*again, rules);
    require(stored.refusal == Refusal::None);
    require(stored.message.parentId == settled.message.parentId);
    // What reading makes good in a number is the library's own doing, which is left out here.
    require(stored.message.fromNumber == Number::asMeant(settled.message.fromNumber));
    require(stored.message.toNumber == Number::asMeant(settled.message.toNumber));
    require(stored.message.readStatus == settled.message.readStatus);
    require(stored.message.time
            == settled.message.time.addMSecs(-settled.message.time.time().msec()));
    require(ParsedMessage::withLineFeeds(stored.message.body)
            == ParsedMessage::withLineFeeds(settled.message.body));
}

void judge(const InputItem &item)
{
    switch (item.kind) {
    case InputItem::Message:
        settleAndReadBack(ParsedMessage::parse(item.bytes));
        break;
    case InputItem::CallEntry:
        CallEntry::parse(item.bytes, QTimeZone::utc(), now());
        break;
    case InputItem::AndroidSms:
        settleAndReadBack(SmsElement::parse(item.bytes));
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
        reasonLine(QStringLiteral("input:1"), Refusal::SmsParse, QStringLiteral("cut")) + "\r\n";
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
