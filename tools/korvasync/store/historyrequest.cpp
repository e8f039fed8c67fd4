// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyrequest.h"

#include "shared/interrupt.h"

#include <store/storeupgrade.h>

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <optional>

using namespace KorvaSyncIf;

namespace HistoryRequest {

namespace {

//! Waits for a pending object, and ends it when it gives no answer or a signal comes.
template <typename Pending>
class Waiting
{
public:
    Waiting(Pending *pending, Limit limit)
        : m_pending(pending)
    {
        m_limit.setSingleShot(true);
        m_limit.setInterval(limit);
        QObject::connect(&m_limit, &QTimer::timeout, &m_loop, [this] { end(Answer::TimedOut); });
        QObject::connect(&m_poll, &QTimer::timeout, &m_loop, [this] {
            if (!isInterrupted() && CommHistory::isStoreBeingUpgraded())
                m_limit.start();
        });
        QObject::connect(pending, &Pending::finished, &m_loop, [this](Pending *done) {
            end(done->isError() ? Answer::Refused : Answer::Finished);
        });
    }

    Answer run()
    {
        constexpr std::chrono::milliseconds pollInterval(20);
        m_limit.start();
        m_poll.start(pollInterval);
        if (!m_answer)
            m_loop.exec();
        delete m_pending;
        return *m_answer;
    }

    //! Has every item of each portion taken, until \a take gives false.
    template <typename Item, typename Take>
    void takeFrom(void (Pending::*portion)(const QList<Item> &), const Take &take)
    {
        QObject::connect(m_pending, portion, &m_loop, [this, &take](const QList<Item> &items) {
            for (const Item &item : items) {
                if (m_answer || isInterrupted())
                    return;
                if (!take(item))
                    end(Answer::Finished);
            }
            m_limit.start(); // what the taking took is not the store's
        });
    }

private:
    bool isInterrupted()
    {
        const bool isSignalled = Interrupt::signalNumber() != 0;
        if (isSignalled)
            end(Answer::Interrupted);
        return isSignalled;
    }

    void end(Answer answer)
    {
        if (!m_answer)
            m_answer = answer;
        m_loop.quit();
    }

    QPointer<Pending> m_pending;
    std::optional<Answer> m_answer;
    QEventLoop m_loop;
    QTimer m_limit;
    QTimer m_poll;
};

} // namespace

Answer forEach(Limit limit, const HistoryFilter &filter,
               const std::function<bool(const HistoryItem &)> &take)
{
    HistoryInterface history;
    Waiting<PendingHistory> waiting(history.query(filter), limit);
    waiting.takeFrom(&PendingHistory::portion, take);
    return waiting.run();
}

Answer counts(Limit limit, const HistoryFilter &filter, HistoryCount::By by,
              QList<HistoryCount> *counts)
{
    HistoryInterface history;
    PendingCounts *const pending = history.counts(filter, by);
    QObject::connect(pending, &PendingCounts::finished, pending,
                     [counts](PendingCounts *done) { *counts = done->counts(); });
    return Waiting<PendingCounts>(pending, limit).run();
}

Changes changes(Limit limit, const QString &cursor,
                const std::function<bool(const HistoryChange &)> &take)
{
    HistoryInterface history;
    Changes changes;
    PendingChanges *const pending = history.changes(cursor);
    QObject::connect(pending, &PendingChanges::finished, pending,
                     [result = &changes](PendingChanges *done) {
                         result->isUnknownCursor = done->error() == HistoryError::UnknownCursor;
                         result->cursor = done->cursor();
                     });
    Waiting<PendingChanges> waiting(pending, limit);
    waiting.takeFrom(&PendingChanges::portion, take);
    changes.answer = waiting.run();
    return changes;
}

} // namespace HistoryRequest
