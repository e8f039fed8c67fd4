// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "qsparqlresult.h"

#include "qsparqlresult_p.h"

QSparqlResult::QSparqlResult(QSparqlResultPrivate *d)
    : d(d)
{
}

QSparqlResult::~QSparqlResult() = default;

void QSparqlResult::waitForFinished() { }

bool QSparqlResult::hasError() const { return d->hasError; }

bool QSparqlResult::next()
{
    if (d->row < d->rows.size())
        ++d->row;
    return d->row < d->rows.size();
}

QSparqlBinding QSparqlResult::binding(int column) const
{
    const bool isThere = column == 0 && d->row >= 0 && d->row < d->rows.size();
    return isThere ? QSparqlBinding(QStringLiteral("comm"), d->rows.at(d->row)) : QSparqlBinding();
}
