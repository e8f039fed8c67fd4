// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "qsparqlbinding.h"

#include <commhistory/storeconnection_p.h>

#include <QtCore/QVector>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>

//! What the store's thread answers to a query.
struct QSparqlAnswer
{
    QVector<QVector<QSparqlBinding>> rows;
    bool hasError = true;
};

//! A query on its way through the store's thread.
struct QSparqlRun
{
    static constexpr std::chrono::steady_clock::time_point NotStarted{};

    std::atomic<std::chrono::steady_clock::time_point> started{NotStarted};
    std::promise<QSparqlAnswer> answered;
    const CommHistory::GPointer<GCancellable> cancellable{g_cancellable_new()};
};

class QSparqlResultPrivate
{
public:
    explicit QSparqlResultPrivate(std::shared_ptr<QSparqlRun> run)
        : run(std::move(run))
        , answer(this->run->answered.get_future().share())
    {
    }

    std::shared_ptr<QSparqlRun> run;
    std::shared_future<QSparqlAnswer> answer;
    int row = -1; //!< the current one; before the first at the start
};
