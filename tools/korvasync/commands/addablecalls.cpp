// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addablecalls.h"

#include "calls/callentry.h"
#include "messages/datetext.h"

AddableCalls::AddableCalls(const Invocation &invocation)
    : localZone(invocation.global.localZone)
    , now(DateText::now())
    , store(invocation.global.timeout)
    , writer(invocation.location, store, index)
{
}

Answer AddableCalls::readStore()
{
    const CallStore::Read read = store.calls();
    for (const Call &call : read.calls)
        index.addStored(Fingerprint::of(call), NewCall::id);
    return read.answer;
}

Judged<NewCall> AddableCalls::judge(const QByteArray &entry) const
{
    const CallEntry::Parsed parsed = CallEntry::parse(entry, localZone, now);
    Judged<NewCall> judged;
    judged.refusal = parsed.refusal;
    judged.detail = parsed.detail;
    judged.item.call = parsed.call;
    judged.item.fingerprint = Fingerprint::of(parsed.call);
    return judged;
}
