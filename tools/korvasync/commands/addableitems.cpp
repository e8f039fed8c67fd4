// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addableitems.h"

namespace {

template <typename New>
Judged<NewItem> asItem(const Judged<New> &judged)
{
    return {{judged.item.fingerprint, -1, QString(), judged.item},
            judged.refusal,
            judged.detail,
            judged.answer};
}

template <typename New>
QList<New> contentOf(const QList<NewItem> &items)
{
    QList<New> all;
    for (const NewItem &item : items) {
        if (const New *one = std::get_if<New>(&item.content))
            all += *one;
    }
    return all;
}

//! Gives the items what became of their messages or calls.
template <typename New>
void settle(QList<NewItem> &items, const QList<New> &added)
{
    auto next = added.cbegin();
    for (NewItem &item : items) {
        if (!std::holds_alternative<New>(item.content))
            continue;
        item.id = next->id;
        item.trouble = next->trouble;
        ++next;
    }
}

} // namespace

AddableItems::AddableItems(const Invocation &invocation, const SettlingRules &rules,
                           DuplicateIndex &index)
    : index(index)
    , location(invocation.location)
    , messages(invocation, rules, index)
    , calls(invocation, rules.localZone, index)
{
}

// Most files hold no calls, so the store's are read when the first one turns up.
Answer AddableItems::readCalls()
{
    if (callsAreRead)
        return Answer::Finished;
    callsAreRead = true;
    return location.state() == StoreLocation::Present ? calls.readStore() : Answer::Finished;
}

Judged<NewItem> AddableItems::judge(const InputItem &item)
{
    if (item.kind != InputItem::AndroidCall)
        return asItem(messages.judge(item));
    Judged<NewCall> judged = calls.judge(item);
    judged.answer = readCalls();
    return asItem(judged);
}

Answer AddableItems::add(QList<NewItem> &items)
{
    QList<NewMessage> newMessages = contentOf<NewMessage>(items);
    QList<NewCall> newCalls = contentOf<NewCall>(items);
    Answer answer = newMessages.isEmpty() ? Answer::Finished : messages.add(newMessages);
    if (!newCalls.isEmpty() && answer == Answer::Finished) {
        answer = calls.add(newCalls);
    } else {
        for (NewCall &call : newCalls)
            call.trouble = QStringLiteral("not tried, as the store did not take the messages");
    }
    settle(items, newMessages);
    settle(items, newCalls);
    return answer;
}
