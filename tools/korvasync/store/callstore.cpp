// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "callstore.h"

#include "formats/callentry.h"

#include <algorithm>

using namespace KorvaSyncIf;

CallStore::CallStore(std::chrono::milliseconds timeout)
    : m_timeout(timeout)
{
}

CallStore::Read CallStore::calls(CallType type, const QDateTime &since)
{
    Read read;
    QStringList entries; // newest first
    read.answer = PendingWait::waitForRead(
        m_timeout, [&] { return m_facade.calls(type, since); },
        [&](PendingMsgs *pending) { entries = pending->callLogs(); });
    read.calls.reserve(entries.size());
    std::transform(entries.crbegin(), entries.crend(), std::back_inserter(read.calls),
                   CallEntry::fromLibrary);
    return read;
}

Answer CallStore::probe()
{
    const QDateTime farAhead(QDate(9999, 1, 1), QTime(0, 0), Qt::UTC);
    return calls(AllCalls, farAhead).answer;
}

Answer CallStore::add(const QList<Call> &calls)
{
    QStringList entries;
    entries.reserve(calls.size());
    std::transform(calls.cbegin(), calls.cend(), std::back_inserter(entries),
                   CallEntry::forLibrary);
    return PendingWait::waitFor(
        BoundedCall::Write, m_timeout, [&] { return m_facade.addNewCalls(entries); },
        [](PendingStatus *) {}, PendingWait::waitOn);
}

bool CallStore::removeAll()
{
    const BoundedCall call(BoundedCall::Write, m_timeout);
    return m_facade.deleteAllCalls();
}
