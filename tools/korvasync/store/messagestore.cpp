// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagestore.h"

#include "messages/folder.h"
#include "process/diagnostics.h"
#include "process/interrupt.h"

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

using namespace KorvaSyncIf;

namespace {

constexpr std::chrono::milliseconds pollInterval(20);

//! Waits for a pending object and destroys it if it does not do so itself.
//! \param collect   reads the results, which live no longer than the slots of finished()
//! \param givesUp   asked now and then; an answer ends the waiting
template <typename Pending>
Answer waitFor(Pending *object, std::chrono::milliseconds timeout,
               const std::function<void()> &collect,
               const std::function<std::optional<Answer>()> &givesUp)
{
    const QPointer<Pending> pending(object);
    std::optional<Answer> answer;
    if (pending->isError()) { // nothing will signal
        answer = Answer::Refused;
    } else {
        QEventLoop loop;
        QObject::connect(object, &Pending::finished, &loop, [&] {
            collect();
            answer = Answer::Finished;
            loop.quit();
        });
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
            if (!answer && (answer = givesUp()))
                loop.quit();
        });
        poll.start(pollInterval);
        QTimer::singleShot(timeout, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (answer != Answer::Finished && pending) {
        collect();
        delete pending;
    }
    return answer.value_or(Answer::TimedOut);
}

std::optional<Answer> never() { return std::nullopt; }

MessageStore::Written await(PendingStatus *pending, std::chrono::milliseconds timeout)
{
    MessageStore::Written written;
    written.answer = waitFor(
        pending, timeout, [&] { written.status = pending->status(); }, never);
    return written;
}

} // namespace

MessageStore::MessageStore(std::chrono::milliseconds timeout)
    : timeout(timeout)
{
}

MessageStore::Read MessageStore::await(PendingMsgs *pending)
{
    Read read;
    const int troublesBefore = Diagnostics::storeTroubleCount();
    const auto collect = [&] { read.messages = pending->syncSmsInfo(); };
    // A read that fails after its start is told by the store's warning alone.
    read.answer = waitFor(pending, timeout, collect, [&]() -> std::optional<Answer> {
        if (Interrupt::signalNumber() != 0)
            return Answer::Interrupted;
        if (Diagnostics::storeTroubleCount() != troublesBefore)
            return Answer::Refused;
        return std::nullopt;
    });
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
    written.answer = waitFor(pending, timeout, collect, [&]() -> std::optional<Answer> {
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
