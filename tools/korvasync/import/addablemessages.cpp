// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addablemessages.h"

#include "formats/smselement.h"
#include "model/folder.h"
#include "process/text.h"

using namespace KorvaSyncIf;

static Fingerprint atAnyTime(const NewMessage &item, int folder)
{
    return Fingerprint::atAnyTime(folder, item.number(), item.message.body);
}

AddableMessages::AddableMessages(const Invocation &invocation, const SettlingRules &rules,
                                 DuplicateIndex &index, Equals equals)
    : index(index)
    , equals(equals)
    , rules(rules)
    , store(invocation.global.timeout)
    , writer(invocation.location, store)
{
}

Answer AddableMessages::readStore()
{
    return store.forEach(Folder::all(), QDateTime(), [this](const StoredMessage &message) {
        writer.noteStored(message.id);
        if (equals == AreFound)
            index.addStored(Fingerprint::of(message),
                            Fingerprint::ofLossyExport(message.folder, message.number, message.time,
                                                       message.body),
                            message.id);
        if (looksAtAnyTime()) {
            index.addStored(Fingerprint::atAnyTime(message.folder, message.number, message.body),
                            message.id);
        }
    });
}

Answer AddableMessages::add(QList<NewMessage> &messages)
{
    const Answer answer = writer.add(messages);
    for (const NewMessage &message : std::as_const(messages)) {
        if (message.id != -1 && equals == AreFound)
            index.addStored(message.fingerprint, message.exported, message.id);
        if (message.id != -1 && looksAtAnyTime())
            index.addStored(atAnyTime(message, message.message.parentId), message.id);
    }
    return answer;
}

Judged<NewMessage> AddableMessages::judge(const InputItem &item) const
{
    Judged<NewMessage> judged;
    switch (item.kind) {
    case InputItem::Message:
        return judge(ParsedMessage::parse(item.bytes));
    case InputItem::AndroidSms:
        judged = judge(SmsElement::parse(item.bytes));
        if (judged.refusal == Refusal::SmsParse)
            judged.detail = Text::reason("not a whole sms element");
        if (judged.hasOwnTime) {
            judged.alternative =
                Fingerprint::ofExport(judged.item.message.parentId, judged.item.number(),
                                      judged.item.message.time, judged.item.message.body);
        } else if (judged.item.message.parentId == LocInbox) {
            judged.alternative = atAnyTime(judged.item, LocMyFolder); // which Android lacks
        }
        return judged;
    case InputItem::AndroidMms:
        judged.refusal = Refusal::MmsNotSupported;
        break;
    case InputItem::CallEntry:
    case InputItem::AndroidCall:
        judged.refusal = Refusal::ForeignObject;
        judged.detail = Text::reason("a call, which korvasync calls add takes");
        break;
    case InputItem::ForeignObject:
        judged.refusal = Refusal::ForeignObject;
        judged.detail = Text::reason("not a text message but an object that begins with %1")
                            .arg(item.firstLine());
        break;
    case InputItem::CutFile:
        judged.refusal = Refusal::SmsParse;
        break;
    }
    return judged;
}

Judged<NewMessage> AddableMessages::judge(const std::optional<ParsedMessage> &parsed) const
{
    Judged<NewMessage> judged;
    if (!parsed) {
        judged.refusal = Refusal::SmsParse;
        return judged;
    }
    const SettledMessage settled = settle(*parsed, rules);
    judged.refusal = settled.refusal;
    if (settled.refusal == Refusal::ForeignObject)
        judged.detail = Text::reason("an e-mail, not a text message");
    judged.item.message = settled.message;
    judged.item.fingerprint = Fingerprint::of(settled.message.parentId, judged.item.number(),
                                              settled.message.time, settled.message.body);
    judged.item.exported = Fingerprint::ofLossyExport(
        settled.message.parentId, judged.item.number(), settled.message.time, settled.message.body);
    if (looksAtAnyTime()) {
        judged.atAnyTime = atAnyTime(judged.item, settled.message.parentId);
        judged.hasOwnTime = settled.hasOwnTime;
    }
    return judged;
}
