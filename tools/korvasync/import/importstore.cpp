// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "importstore.h"

#include "model/folder.h"
#include "shared/text.h"

ImportStore::ImportStore(const Invocation &invocation, const ItemJudge &judge, Equals equals)
    : m_location(invocation.location)
    , m_judge(judge)
    , m_equals(equals)
    , m_messages(judge.accepts(ItemJudge::Messages)
                     ? std::make_optional<MessageStore>(invocation.global.timeout)
                     : std::nullopt)
    , m_messageWriter(m_messages ? std::make_optional<MessageWriter>(m_location, *m_messages)
                                 : std::nullopt)
    , m_calls(invocation.global.timeout)
    , m_callWriter(m_location, m_calls, index)
{
}

Answer ImportStore::open() { return m_messages ? m_messages->probe() : readCalls(); }

void ImportStore::setEmpty()
{
    m_messagesRead.growToAll();
    m_callsAreRead = true;
}

Answer ImportStore::readAround(const NewItem &item)
{
    if (item.isCall)
        return m_callsAreRead ? Answer::Finished : readCalls();
    QList<TimeCoverage::Span> spans;
    if (!item.second)
        spans = m_messagesRead.growToAll();
    else if (const auto span = m_messagesRead.grow(*item.second))
        spans.append(*span);
    Answer answer = Answer::Finished;
    for (auto span = spans.cbegin(); span != spans.cend() && answer == Answer::Finished; ++span)
        answer = readMessages(*span);
    return answer;
}

Answer ImportStore::readMessages(TimeCoverage::Span span)
{
    KorvaSyncIf::HistoryFilter filter;
    filter.from = span.from();
    filter.to = span.to();
    return m_messages->forEach(filter, [this](const StoredMessage &message) {
        for (const Fingerprint &fingerprint :
             m_judge.fingerprintsOf(message.folder, message.number, message.time, message.body))
            index.addStored(fingerprint, message.id);
    });
}

Answer ImportStore::readCalls()
{
    m_callsAreRead = true;
    const CallStore::Read read = m_calls.calls();
    for (const Call &call : read.calls)
        index.addStored(Fingerprint::of(call), Fingerprint::ofLossyExport(call), NewCall::NoId);
    return read.answer;
}

Answer ImportStore::probe() { return m_messages ? m_messages->probe() : m_calls.probe(); }

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
    Answer answer = newMessages.isEmpty() ? Answer::Finished : m_messageWriter->add(newMessages);
    if (!newCalls.isEmpty() && answer == Answer::Finished) {
        answer = m_callWriter.add(newCalls);
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
    if (!message || message->id == -1 || m_equals == AreAdded)
        return;
    for (const Fingerprint &fingerprint : item.stored)
        index.addStored(fingerprint, message->id);
}
