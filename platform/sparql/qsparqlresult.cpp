// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlresult.h"

#include "qsparqlresult_p.h"

QSparqlResult::QSparqlResult(QSparqlResultPrivate *d)
    : d(d)
{
}

QSparqlResult::~QSparqlResult() = default;

void QSparqlResult::waitForFinished() { d->answer.wait(); }

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
