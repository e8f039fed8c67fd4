// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "importstore.h"

#include "model/folder.h"
#include "shared/text.h"

ImportStore::ImportStore(const Invocation &invocation, const ItemJudge &judge, Equals equals)
    : location(invocation.location)
    , judge(judge)
    , equals(equals)
    , messages(judge.accepts(ItemJudge::Messages)
                   ? std::make_optional<MessageStore>(invocation.global.timeout)
                   : std::nullopt)
    , messageWriter(messages ? std::make_optional<MessageWriter>(location, *messages)
                             : std::nullopt)
    , calls(invocation.global.timeout)
    , callWriter(location, calls, index)
{
}

Answer ImportStore::read() { return messages ? readMessages() : readCalls(); }

Answer ImportStore::readMessages()
{
    return messages->forEach(Folder::all(), QDateTime(), [this](const StoredMessage &message) {
        messageWriter->noteStored(message.id);
        if (equals == AreAdded)
            return;
        for (const Fingerprint &fingerprint :
             judge.fingerprintsOf(message.folder, message.number, message.time, message.body))
            index.addStored(fingerprint, message.id);
    });
}

Answer ImportStore::readCallsOnce()
{
    if (callsAreRead || location.state() != StoreLocation::Present) {
        callsAreRead = true;
        return Answer::Finished;
    }
    return readCalls();
}

Answer ImportStore::readCalls()
{
    callsAreRead = true;
    const CallStore::Read read = calls.calls();
    for (const Call &call : read.calls)
        index.addStored(Fingerprint::of(call), Fingerprint::ofLossyExport(call), NewCall::id);
    return read.answer;
}

Answer ImportStore::probe() { return messages ? messages->probe() : calls.probe(); }

Answer ImportStore::add(std::vector<NewItem> &items)
{
    QList<NewMessage *> newMessages;
    QList<NewCall *> newCalls;
    for (NewItem &item : items) {
        if (auto *const message = std::get_if<NewMessage>(&item.content))
            newMessages += message;
        else if (auto *const call = std::get_if<NewCall>(&item.content))
            newCalls += call;
    }
    Answer answer = newMessages.isEmpty() ? Answer::Finished : messageWriter->add(newMessages);
    if (!newCalls.isEmpty() && answer == Answer::Finished) {
        answer = callWriter.add(newCalls);
    } else {
        for (NewCall *const call : std::as_const(newCalls))
            call->trouble = Text::reason("not tried, as the store did not take the messages");
    }
    for (const NewItem &item : items)
        enter(item);
    return answer;
}

// The writer of calls has entered them.
void ImportStore::enter(const NewItem &item)
{
    const auto *const message = std::get_if<NewMessage>(&item.content);
    if (!message || message->id == -1 || equals == AreAdded)
        return;
    for (const Fingerprint &fingerprint : item.stored)
        index.addStored(fingerprint, message->id);
}
