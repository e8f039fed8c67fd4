// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagestore.h"

#include "historyrequest.h"
#include "model/folder.h"

using namespace KorvaSyncIf;

namespace {

template <typename Start>
MessageStore::Read waitForRead(std::chrono::milliseconds timeout, const Start &start,
                               const TroubleWatch &watch = TroubleWatch())
{
    MessageStore::Read read;
    read.answer = PendingWait::waitForRead(
        timeout, start, [&](PendingMsgs *msgs) { read.messages = msgs->syncSmsInfo(); }, watch);
    return read;
}

template <typename Start>
MessageStore::Written write(std::chrono::milliseconds timeout, const Start &start)
{
    MessageStore::Written written;
    written.answer = PendingWait::waitFor(
        BoundedCall::Write, timeout, start,
        [&](PendingStatus *status) { written.status = status->status(); }, PendingWait::waitOn);
    return written;
}

} // namespace

MessageStore::MessageStore(std::chrono::milliseconds timeout)
    : m_timeout(timeout)
{
}

Answer MessageStore::probe()
{
    const QDateTime farAhead(QDate(9999, 1, 1), QTime(0, 0), Qt::UTC);
    return messages(farAhead, LocInbox).answer;
}

MessageStore::Read MessageStore::messages(const QDateTime &since, LocationId folder)
{
    return waitForRead(m_timeout, [&] { return m_facade.messages(since, folder); });
}

Answer MessageStore::forEach(const HistoryFilter &filter,
                             const std::function<void(const StoredMessage &)> &take) const
{
    return HistoryRequest::forEach(m_timeout, filter, [&](const HistoryItem &item) {
        take(StoredMessage::fromItem(item));
        return true;
    });
}

SyncSmsInfo MessageStore::message(int id)
{
    const BoundedCall call(BoundedCall::Read, m_timeout);
    const SyncSmsInfo record = m_facade.message(id);
    return record.parentId == Folder::None ? SyncSmsInfo() : record;
}

MessageStore::Written MessageStore::add(QList<SyncSmsInfo> messages)
{
    Written written;
    // Where the conversations of new numbers could not be made, the status shows it and
    // finished() never comes.
    const auto givesUp = [](PendingIds *pending) -> std::optional<Answer> {
        if (pending->status().contains(SmsDatabaseError))
            return Answer::Refused;
        return std::nullopt;
    };
    written.answer = PendingWait::waitFor(
        BoundedCall::Write, m_timeout, [&] { return m_facade.addNewMessages(messages); },
        [&](PendingIds *pending) {
            written.status = pending->status();
            written.ids = pending->ids();
        },
        givesUp);
    return written;
}

MessageStore::Written MessageStore::modify(const QList<SyncSmsInfo> &messages)
{
    return write(m_timeout, [&] { return m_facade.modifyMessages(messages); });
}

MessageStore::Written MessageStore::remove(const QList<int> &ids)
{
    return write(m_timeout, [&] { return m_facade.deleteMessages(ids); });
}
