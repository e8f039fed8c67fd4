// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "shared/answer.h"

#include <korvasync/historyinterface.h>

#include <chrono>
#include <functional>

//! Requests to the library's HistoryInterface, waited for. The time limit is that of one portion.
namespace HistoryRequest {

using Limit = std::chrono::milliseconds;

//! Hands out what passes the filter one by one, while the store reads on. Two portions are held at
//! most.
//! \param take  false ends the request, which counts as finished
Answer forEach(Limit limit, const KorvaSyncIf::HistoryFilter &filter,
               const std::function<bool(const KorvaSyncIf::HistoryItem &)> &take);

//! \param counts  set when the answer is Finished
Answer counts(Limit limit, const KorvaSyncIf::HistoryFilter &filter,
              KorvaSyncIf::HistoryCount::By by, QList<KorvaSyncIf::HistoryCount> *counts);

struct Changes
{
    Answer answer = Answer::Refused;
    bool isUnknownCursor = false;
    QString cursor; //!< to go on with; empty unless the answer is Finished
};

//! Hands out the changes since a cursor one by one.
//! \param take  false ends the request, which counts as finished, but has no cursor
Changes changes(Limit limit, const QString &cursor,
                const std::function<bool(const KorvaSyncIf::HistoryChange &)> &take);

} // namespace HistoryRequest
