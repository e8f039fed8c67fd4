// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlresult.h"

#include "qsparqlresult_p.h"

#include <chrono>

QSparqlResult::QSparqlResult(QSparqlResultPrivate *d)
    : d(d)
{
}

QSparqlResult::~QSparqlResult() = default;

// A text with more than a number in it can make the fixed conversation query one that takes
// for ever; such a query ends without an answer.
void QSparqlResult::waitForFinished()
{
    constexpr std::chrono::seconds limit(5);
    d->started.wait();
    if (d->answer.wait_for(limit) == std::future_status::timeout)
        g_cancellable_cancel(d->run->cancellable.get());
    d->answer.wait();
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
