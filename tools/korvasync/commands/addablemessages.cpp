// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addablemessages.h"

#include "messages/folder.h"

using namespace KorvaSyncIf;

AddableMessages::AddableMessages(const Invocation &invocation, const SettlingRules &rules)
    : rules(rules)
    , store(invocation.global.timeout)
    , writer(invocation.location, store, index)
{
}

Answer AddableMessages::readStore()
{
    for (const LocationId folder : Folder::all()) {
        const MessageStore::Read read = store.messages(QDateTime(), folder);
        if (read.answer != Answer::Finished)
            return read.answer;
        for (const SyncSmsInfo &record : read.messages)
            index.addStored(Fingerprint::of(StoredMessage::fromRecord(record)), record.id);
    }
    return Answer::Finished;
}

Judged<NewMessage> AddableMessages::judge(const QByteArray &vMessage) const
{
    Judged<NewMessage> judged;
    const auto parsed = ParsedMessage::parse(vMessage);
    if (!parsed) {
        judged.refusal = Refusal::SmsParse;
        return judged;
    }
    const SettledMessage settled = settle(*parsed, rules);
    judged.refusal = settled.refusal;
    judged.item.message = settled.message;
    judged.item.fingerprint = Fingerprint::of(settled.message.parentId, judged.item.number(),
                                              settled.message.time, settled.message.body);
    return judged;
}

Refusal AddableMessages::judgeFile(const QByteArray &start)
{
    for (const char *other : {"BEGIN:VMESSAGE", "BEGIN:BMSG", "BEGIN:VNOTE", "BEGIN:VCALENDAR"}) {
        if (start.toUpper().startsWith(other))
            return Refusal::ForeignObject;
    }
    return Refusal::SmsParse;
}
