// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addableitems.h"

#include "process/text.h"

namespace {

template <typename New>
Judged<NewItem> asItem(const Judged<New> &judged, std::optional<New> NewItem::*content)
{
    NewItem item;
    item.fingerprint = judged.item.fingerprint;
    item.exported = judged.item.exported;
    item.*content = judged.item;
    return {item,
            judged.refusal,
            judged.detail,
            judged.answer,
            judged.alternative,
            judged.atAnyTime,
            judged.hasOwnTime};
}

template <typename New>
QList<New> contentOf(const QList<NewItem> &items, std::optional<New> NewItem::*content)
{
    QList<New> all;
    for (const NewItem &item : items) {
        if (item.*content)
            all += *(item.*content);
    }
    return all;
}

//! Gives the items what became of their messages or calls.
template <typename New>
void settle(QList<NewItem> &items, std::optional<New> NewItem::*content, const QList<New> &added)
{
    auto next = added.cbegin();
    for (NewItem &item : items) {
        if (!(item.*content))
            continue;
        item.id = next->id;
        item.trouble = next->trouble;
        ++next;
    }
}

} // namespace

AddableItems::AddableItems(const Invocation &invocation, const SettlingRules &rules,
                           DuplicateIndex &index, AddableMessages::Equals equals,
                           CallEntries callEntries)
    : index(index)
    , location(invocation.location)
    , messages(invocation, rules, index, equals)
    , calls(invocation, rules.localZone, index)
    , callEntries(callEntries)
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
    const bool isCall = item.kind == InputItem::AndroidCall
        || (item.kind == InputItem::CallEntry && callEntries == AreTaken);
    if (!isCall)
        return asItem(messages.judge(item), &NewItem::message);
    Judged<NewCall> judged = calls.judge(item);
    judged.answer = readCalls();
    return asItem(judged, &NewItem::call);
}

Answer AddableItems::add(QList<NewItem> &items)
{
    QList<NewMessage> newMessages = contentOf(items, &NewItem::message);
    QList<NewCall> newCalls = contentOf(items, &NewItem::call);
    Answer answer = newMessages.isEmpty() ? Answer::Finished : messages.add(newMessages);
    if (!newCalls.isEmpty() && answer == Answer::Finished) {
        answer = calls.add(newCalls);
    } else {
        for (NewCall &call : newCalls)
            call.trouble = Text::reason("not tried, as the store did not take the messages");
    }
    settle(items, &NewItem::message, newMessages);
    settle(items, &NewItem::call, newCalls);
    return answer;
}
