// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "itemjudge.h"

#include "formats/callelement.h"
#include "formats/callentry.h"
#include "formats/smselement.h"
#include "shared/text.h"

using namespace KorvaSyncIf;

bool ItemJudge::isCall(const InputItem &input) const
{
    return (input.kind == InputItem::AndroidCall && accepts(BackupCalls))
        || (input.kind == InputItem::CallEntry && accepts(CallEntries));
}

NewItem ItemJudge::judge(const InputItem &input) const
{
    NewItem item;
    item.bytes = input.bytes;
    switch (input.kind) {
    case InputItem::Message:
    case InputItem::AndroidSms:
    case InputItem::AndroidMms:
        takeMessage(input, item);
        break;
    case InputItem::CallEntry:
    case InputItem::AndroidCall:
        takeCall(input, item);
        break;
    case InputItem::ForeignObject:
        refuseObject(input, item);
        break;
    case InputItem::CutFile:
        item.refuse(noItem(), Text::reason("the file is cut off here, so some may be missing"));
        break;
    }
    if (input.isTooLong)
        item.result.detail = Text::reason("longer than 32 MiB, so not kept");
    return item;
}

void ItemJudge::takeMessage(const InputItem &input, NewItem &item) const
{
    if (!accepts(Messages)) {
        return item.refuse(RejectReason::ForeignObject,
                           Text::reason("a message, which korvasync add takes"));
    }
    if (input.kind == InputItem::AndroidMms)
        return item.refuse(RejectReason::MmsNotSupported);
    const bool isElement = input.kind == InputItem::AndroidSms;
    const std::optional<ParsedMessage> parsed =
        isElement ? SmsElement::parse(input.bytes) : ParsedMessage::parse(input.bytes);
    if (!parsed) {
        return item.refuse(RejectReason::SmsParse,
                           isElement ? Text::reason("not a whole sms element")
                                     : parseErrorIn(input.bytes, input.line));
    }
    const NormalisedMessage normalised = normalise(*parsed, m_rules);
    if (normalised.rejectReason == RejectReason::ForeignObject)
        return item.refuse(normalised.rejectReason, Text::reason("an e-mail, not a text message"));
    if (normalised.rejectReason != RejectReason::None)
        return item.refuse(normalised.rejectReason);
    identify(normalised, isElement, item);
}

//! \param isOfBackup  of Android, which holds less than a store
void ItemJudge::identify(const NormalisedMessage &normalised, bool isOfBackup, NewItem &item) const
{
    NewMessage added;
    added.message = normalised.message;
    const SmsInfo &message = normalised.message;
    const QString number = added.number();
    item.stored = fingerprintsOf(message.parentId, number, message.time, message.body);
    added.fingerprint = item.stored.first();
    item.content = added;
    if (normalised.hasOwnTime) {
        item.second = message.time.toSecsSinceEpoch();
        item.sought.append(item.stored.first());
        if (m_rules.badTimeIsNow)
            item.untimed = item.stored.last();
        if (isOfBackup)
            item.sought.append(
                Fingerprint::ofExport(message.parentId, number, message.time, message.body));
    } else {
        item.sought.append(item.stored.last());
        if (isOfBackup && message.parentId == LocInbox) // or what Android lacks
            item.sought.append(Fingerprint::atAnyTime(LocMyFolder, number, message.body));
    }
}

void ItemJudge::takeCall(const InputItem &input, NewItem &item) const
{
    if (!isCall(input)) {
        return item.refuse(RejectReason::ForeignObject,
                           Text::reason("a call, which korvasync calls add takes"));
    }
    const bool isElement = input.kind == InputItem::AndroidCall;
    const CallEntry::Parsed parsed = isElement
        ? CallElement::parse(input.bytes, m_rules.now)
        : CallEntry::parse(input.bytes, m_rules.localZone, m_rules.now);
    if (parsed.rejectReason != RejectReason::None)
        return item.refuse(parsed.rejectReason, parsed.detail);
    NewCall call;
    call.call = parsed.call;
    call.fingerprint = Fingerprint::of(parsed.call);
    item.sought.append(call.fingerprint);
    item.stored.append(call.fingerprint);
    if (isElement)
        item.sought.append(Fingerprint::ofExport(parsed.call));
    item.content = call;
    item.isCall = true;
}

void ItemJudge::refuseObject(const InputItem &input, NewItem &item) const
{
    const Reason reason = accepts(Messages)
        ? Text::reason("not a text message but an object that begins with %1")
        : Text::reason("no call but an object that begins with %1");
    item.refuse(RejectReason::ForeignObject, reason.arg(input.firstLine()));
}

NewItem::Fingerprints ItemJudge::fingerprintsOf(int folder, const QString &number,
                                                const QDateTime &time, const QString &body) const
{
    NewItem::Fingerprints all;
    all.append(Fingerprint::of(folder, number, time, body));
    if (const auto exported = Fingerprint::ofLossyExport(folder, number, time, body))
        all.append(*exported);
    if (m_rules.badTimeIsNow)
        all.append(Fingerprint::atAnyTime(folder, number, body));
    return all;
}
