// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "boundedcall.h"
#include "interrupt.h"
#include "troublewatch.h"

#include <store/storeupgrade.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <chrono>
#include <optional>
#include <type_traits>

//! Waiting for the library's pending objects.
namespace PendingWait {

//! For requests that only their own end, the time or a signal ends.
inline std::optional<Answer> waitOn(const void *) { return std::nullopt; }

//! Starts a request, waits for its pending object and destroys that if it does not do so
//! itself.
//! \param start     calls the library and gives the pending object
//! \param collect   reads the results, which live no longer than the slots of finished()
//! \param givesUp   asked now and then; an answer ends the waiting, as a signal does
template <typename Start, typename Collect, typename GivesUp>
Answer waitFor(BoundedCall::Kind kind, std::chrono::milliseconds timeout, const Start &start,
               const Collect &collect, const GivesUp &givesUp)
{
    using Pending = std::remove_pointer_t<decltype(start())>;
    constexpr std::chrono::milliseconds pollInterval(20);
    std::optional<BoundedCall> call(std::in_place, kind, timeout);
    const QPointer<Pending> pending(start());
    std::optional<Answer> answer;
    if (pending->isError()) { // nothing will signal
        answer = Answer::Refused;
    } else {
        QEventLoop loop;
        QObject::connect(pending, &Pending::finished, &loop, [&] {
            collect(pending);
            answer = Answer::Finished;
            loop.quit();
        });
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
        QTimer poll;
        QElapsedTimer sinceSignal;
        QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
            call.emplace(kind, timeout);             // what the loop does next may wait as well
            if (CommHistory::isStoreBeingUpgraded()) // which takes as long as the store is large
                limit.start(timeout);
            if (Interrupt::signalNumber() != 0 && !sinceSignal.isValid())
                sinceSignal.start();
            if (!answer && sinceSignal.isValid()
                && sinceSignal.hasExpired(BoundedCall::grace().count()))
                answer = Answer::Interrupted;
            if (!answer)
                answer = givesUp(pending);
            if (answer)
                loop.quit();
        });
        poll.start(pollInterval);
        limit.start(timeout);
        loop.exec();
    }
    if (answer != Answer::Finished && pending) {
        collect(pending);
        delete pending;
    }
    return answer.value_or(Answer::TimedOut);
}

//! Waits for a read, which the store's own trouble ends as well.
//! \param watch  made before the read began
template <typename Start, typename Collect>
Answer waitForRead(std::chrono::milliseconds timeout, const Start &start, const Collect &collect,
                   const TroubleWatch &watch = TroubleWatch())
{
    // A read that fails after its start is told by the store's warning alone.
    return waitFor(BoundedCall::Read, timeout, start, collect, [&](auto) -> std::optional<Answer> {
        if (watch.hasTrouble())
            return Answer::Refused;
        return std::nullopt;
    });
}

} // namespace PendingWait
