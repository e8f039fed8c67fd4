// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "addablecalls.h"
#include "addablemessages.h"

//! A message or a call on its way into the store.
struct NewItem
{
    Fingerprint fingerprint;
    std::optional<Fingerprint> exported; //!< as Fingerprint::ofLossyExport() has it
    int id = -1;
    Reason trouble;                    //!< why it is not stored; empty = it is
    std::optional<NewMessage> message; //!< either this
    std::optional<NewCall> call;       //!< or this
};

//! What "korvasync add" adds: messages, and the calls of Android backups; see Adding.
class AddableItems
{
public:
    using New = NewItem;
    static constexpr Refusal noItem = Refusal::SmsParse;

    enum CallEntries { AreForeign, AreTaken };

    AddableItems(const Invocation &invocation, const SettlingRules &rules, DuplicateIndex &index,
                 AddableMessages::Equals equals, CallEntries callEntries = AreForeign);

    Answer readStore() { return messages.readStore(); }
    Judged<NewItem> judge(const InputItem &item);
    Answer probe() { return messages.probe(); }
    Answer add(QList<NewItem> &items);
    static Refusal notStored(const NewItem &item)
    {
        return item.call ? Refusal::CallStore : Refusal::SmsStore;
    }

    DuplicateIndex &index;

private:
    Answer readCalls();

    StoreLocation &location;
    AddableMessages messages;
    AddableCalls calls;
    const CallEntries callEntries;
    bool callsAreRead = false;
};
