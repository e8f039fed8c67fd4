// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callwriter.h"

#include <algorithm>

CallWriter::CallWriter(StoreLocation &location, CallStore &store, DuplicateIndex &index)
    : m_location(location)
    , m_store(store)
    , m_index(index)
{
}

Answer CallWriter::add(const QList<NewCall *> &calls)
{
    QList<Call> records;
    records.reserve(calls.size());
    for (NewCall *const call : calls) {
        records += call->call;
        call->trouble = Text::reason("the store did not take it");
    }
    const Answer written = m_store.add(records);
    if (written == Answer::TimedOut) { // it can still come
        for (NewCall *const call : calls)
            call->trouble = Text::reason("no answer in time; not stored so far");
    }
    if (m_location.state() != StoreLocation::Absent) // else it was not even made
        readBack(calls);
    const bool allStored = std::all_of(calls.cbegin(), calls.cend(),
                                       [](const NewCall *call) { return call->trouble.isEmpty(); });
    if (allStored)
        return Answer::Finished;
    return written == Answer::Finished ? Answer::Refused : written;
}

// What the store holds now and did not hold before is ours.
void CallWriter::readBack(const QList<NewCall *> &calls)
{
    QDateTime since = calls.first()->call.start;
    for (const NewCall *const call : calls)
        since = qMin(since, call->call.start);
    const CallStore::Read read = m_store.calls(CallStore::AllCalls, since);
    if (read.answer != Answer::Finished) {
        for (NewCall *const call : calls)
            call->trouble = Text::reason("not known, as the store cannot be read back");
        return;
    }
    QHash<Fingerprint, QStringList> numbers; // of equal calls, in the order of their adding
    for (const Call &call : read.calls)
        numbers[Fingerprint::of(call)] += call.number;
    for (NewCall *const call : calls) {
        const QStringList equal = numbers.value(call->fingerprint);
        const int before = m_index.storedCount(call->fingerprint);
        if (before >= equal.size())
            continue;
        m_index.addStored(call->fingerprint, NewCall::NoId);
        call->trouble = equal.at(before) == call->call.number
            ? Reason()
            : Text::reason("stored, but with another %1").arg(Text::reason("number"));
    }
}
