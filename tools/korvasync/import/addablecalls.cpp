// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addablecalls.h"

#include "formats/callelement.h"
#include "model/datetext.h"
#include "process/text.h"

AddableCalls::AddableCalls(const Invocation &invocation, const QTimeZone &localZone,
                           DuplicateIndex &index)
    : index(index)
    , localZone(localZone)
    , now(DateText::now())
    , store(invocation.global.timeout)
    , writer(invocation.location, store, index)
{
}

Answer AddableCalls::readStore()
{
    const CallStore::Read read = store.calls();
    for (const Call &call : read.calls)
        index.addStored(Fingerprint::of(call), Fingerprint::ofLossyExport(call), NewCall::id);
    return read.answer;
}

CallEntry::Parsed AddableCalls::parse(const InputItem &item) const
{
    CallEntry::Parsed parsed;
    switch (item.kind) {
    case InputItem::CallEntry:
        return CallEntry::parse(item.bytes, localZone, now);
    case InputItem::AndroidCall:
        return CallElement::parse(item.bytes, now);
    case InputItem::Message:
    case InputItem::AndroidSms:
    case InputItem::AndroidMms:
        parsed.refusal = Refusal::ForeignObject;
        parsed.detail = Text::reason("a message, which korvasync add takes");
        break;
    case InputItem::ForeignObject:
        parsed.refusal = Refusal::ForeignObject;
        parsed.detail =
            Text::reason("no call but an object that begins with %1").arg(item.firstLine());
        break;
    case InputItem::CutFile:
        parsed.refusal = Refusal::CallParse;
        break;
    }
    return parsed;
}

Judged<NewCall> AddableCalls::judge(const InputItem &item) const
{
    const CallEntry::Parsed parsed = parse(item);
    Judged<NewCall> judged;
    judged.refusal = parsed.refusal;
    judged.detail = parsed.detail;
    judged.item.call = parsed.call;
    judged.item.fingerprint = Fingerprint::of(parsed.call);
    if (item.kind == InputItem::AndroidCall)
        judged.alternative = Fingerprint::ofExport(parsed.call);
    return judged;
}
