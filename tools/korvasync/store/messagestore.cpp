// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagestore.h"

#include "messages/folder.h"

using namespace KorvaSyncIf;

static MessageStore::Written await(PendingStatus *pending, std::chrono::milliseconds timeout)
{
    MessageStore::Written written;
    written.answer =
        PendingWait::waitFor(pending, timeout, [&] { written.status = pending->status(); });
    return written;
}

MessageStore::MessageStore(std::chrono::milliseconds timeout)
    : timeout(timeout)
{
}

MessageStore::Read MessageStore::await(PendingMsgs *pending)
{
    Read read;
    read.answer =
        PendingWait::waitForRead(pending, timeout, [&] { read.messages = pending->syncSmsInfo(); });
    return read;
}

Answer MessageStore::probe()
{
    const QDateTime farAhead(QDate(9999, 1, 1), QTime(0, 0), Qt::UTC);
    return messages(farAhead, LocInbox).answer;
}

MessageStore::Read MessageStore::messages(const QDateTime &since, LocationId folder)
{
    return await(facade.messages(since, folder));
}

MessageStore::Read MessageStore::modifiedMessages(const QDateTime &since, LocationId folder)
{
    return await(facade.modifiedMessages(since, folder));
}

SyncSmsInfo MessageStore::message(int id)
{
    const SyncSmsInfo record = facade.message(id);
    return record.parentId == Folder::None ? SyncSmsInfo() : record;
}

MessageStore::Written MessageStore::add(QList<SyncSmsInfo> messages)
{
    Written written;
    PendingIds *pending = facade.addNewMessages(messages);
    const auto collect = [&] {
        written.status = pending->status();
        written.ids = pending->ids();
    };
    // Where the conversations of new numbers could not be made, the status shows it and
    // finished() never comes.
    written.answer =
        PendingWait::waitFor(pending, timeout, collect, [&]() -> std::optional<Answer> {
            if (pending->status().contains(SmsDatabaseError))
                return Answer::Refused;
            return std::nullopt;
        });
    return written;
}

MessageStore::Written MessageStore::modify(const SyncSmsInfo &message)
{
    return ::await(facade.modifyMessages({message}), timeout);
}

MessageStore::Written MessageStore::remove(const QList<int> &ids)
{
    return ::await(facade.deleteMessages(ids), timeout);
}
