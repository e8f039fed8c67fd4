// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "qsparqlbinding.h"

#include <QtCore/QVector>

#include <future>

//! What the store's thread answers to a query.
struct QSparqlAnswer
{
    QVector<QVector<QSparqlBinding>> rows;
    bool hasError = true;
};

class QSparqlResultPrivate
{
public:
    explicit QSparqlResultPrivate(std::future<QSparqlAnswer> answer)
        : answer(answer.share())
    {
    }

    std::shared_future<QSparqlAnswer> answer;
    int row = -1; //!< the current one; before the first at the start
};
