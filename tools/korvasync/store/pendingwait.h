// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/pendingmsgs.h>

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <optional>

//! How a request ended.
enum class Answer {
    Finished,
    Refused,    //!< the store could not take it, or will never finish it
    TimedOut,   //!< no answer in time
    Interrupted //!< a signal came while only reading
};

//! Waiting for the library's pending objects.
namespace PendingWait {

//! Waits for a pending object and destroys it if it does not do so itself.
//! \param collect   reads the results, which live no longer than the slots of finished()
//! \param givesUp   asked now and then; an answer ends the waiting
template <typename Pending>
Answer waitFor(
    Pending *object, std::chrono::milliseconds timeout, const std::function<void()> &collect,
    const std::function<std::optional<Answer>()> &givesUp = [] { return std::nullopt; })
{
    constexpr std::chrono::milliseconds pollInterval(20);
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

//! Waits for a read, which a signal or the store's own trouble ends as well.
Answer waitForRead(KorvaSyncIf::PendingMsgs *pending, std::chrono::milliseconds timeout,
                   const std::function<void()> &collect);

} // namespace PendingWait
