// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "adding.h"
#include "model/settling.h"
#include "store/duplicateindex.h"
#include "store/messagewriter.h"

//! Messages as a part of what "korvasync add" adds; see AddableItems.
class AddableMessages
{
public:
    //! Messages that equal one of the store.
    enum Equals {
        AreFound, //!< in the index, which takes a few bytes for each message of the store
        AreAdded  //!< like all others, and the index stays empty
    };

    AddableMessages(const Invocation &invocation, const SettlingRules &rules, DuplicateIndex &index,
                    Equals equals);

    Answer readStore();
    Judged<NewMessage> judge(const InputItem &item) const;
    Answer probe() { return store.probe(); }
    Answer add(QList<NewMessage> &messages);

private:
    Judged<NewMessage> judge(const std::optional<ParsedMessage> &parsed) const;
    //! An item that got the time of the clock had another one when it was added before.
    bool looksAtAnyTime() const { return rules.badTimeIsNow && equals == AreFound; }

    DuplicateIndex &index;
    const Equals equals;
    const SettlingRules rules;
    MessageStore store;
    MessageWriter writer;
};
