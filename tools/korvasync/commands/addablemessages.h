// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "adding.h"
#include "messages/messagereader.h"
#include "messages/settling.h"
#include "store/messagewriter.h"

//! Messages as what "korvasync add" adds; see Adding.
class AddableMessages
{
public:
    using Reader = MessageReader;
    using New = NewMessage;
    static constexpr Refusal notStored = Refusal::SmsStore;

    AddableMessages(const Invocation &invocation, const SettlingRules &rules);

    Answer readStore();
    Judged<NewMessage> judge(const QByteArray &vMessage) const;
    static Refusal judgeFile(const QByteArray &start);
    Answer add(QList<NewMessage> &messages) { return writer.add(messages); }

    DuplicateIndex index;

private:
    const SettlingRules rules;
    MessageStore store;
    MessageWriter writer;
};
