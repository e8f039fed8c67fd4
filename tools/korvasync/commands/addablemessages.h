// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "adding.h"
#include "messages/settling.h"
#include "store/messagewriter.h"

//! Messages as a part of what "korvasync add" adds; see AddableItems.
class AddableMessages
{
public:
    AddableMessages(const Invocation &invocation, const SettlingRules &rules,
                    DuplicateIndex &index);

    Answer readStore();
    Judged<NewMessage> judge(const InputItem &item) const;
    Answer add(QList<NewMessage> &messages) { return writer.add(messages); }

private:
    Judged<NewMessage> judge(const std::optional<ParsedMessage> &parsed) const;

    DuplicateIndex &index;
    const SettlingRules rules;
    MessageStore store;
    MessageWriter writer;
};
