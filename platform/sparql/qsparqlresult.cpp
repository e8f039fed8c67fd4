// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlresult.h"

#include "qsparqlresult_p.h"

QSparqlResult::QSparqlResult(QSparqlResultPrivate *d)
    : d(d)
{
}

QSparqlResult::~QSparqlResult() = default;

// A text with more than a number in it can make the fixed conversation query one that takes
// for ever; such a query ends without an answer. Nothing wakes the caller before the answer, since
// that takes longer than most answers.
void QSparqlResult::waitForFinished()
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::seconds limit(5);
    Clock::time_point deadline = Clock::now() + limit;
    while (d->answer.wait_until(deadline) == std::future_status::timeout) {
        const Clock::time_point started = d->run->started;
        if (started == QSparqlRun::NotStarted) { // requests before it take their time
            deadline = Clock::now() + limit;
            continue;
        }
        deadline = started + limit;
        if (Clock::now() >= deadline) {
            g_cancellable_cancel(d->run->cancellable.get());
            d->answer.wait();
        }
    }
}

bool QSparqlResult::hasError() const { return d->answer.get().hasError; }

bool QSparqlResult::next()
{
    const QSparqlAnswer &answer = d->answer.get();
    if (answer.hasError || d->row == answer.rows.size())
        return false;
    return ++d->row < answer.rows.size();
}

QSparqlBinding QSparqlResult::binding(int column) const
{
    return d->answer.get().rows.value(d->row).value(column);
}
