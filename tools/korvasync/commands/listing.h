// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "options/command.h"
#include "shared/answer.h"

#include <korvasync/historyitem.h>

#include <QtCore/QTimeZone>

#include <functional>

//! Which messages or calls are to be listed: what their commands have in common. The store answers
//! for all but the condition.
struct Listing
{
    using Take = std::function<void(const KorvaSyncIf::HistoryItem &)>;

    KorvaSyncIf::HistoryFilter filter;
    QTimeZone zone; //!< of dates
    //! The client's own; empty = none.
    std::function<bool(const KorvaSyncIf::HistoryItem &)> condition;

    //! Takes --since, --until, --assume-tz, --number and --number-tail. What is wrong is told on
    //! stderr.
    bool takeFilter(const Invocation &invocation);
    //! The same and --limit.
    bool takeOptions(const Invocation &invocation);

    //! Hands out the items one by one, oldest first.
    Answer read(const Invocation &invocation, const Take &take) const;
    //! Prints how many they are.
    Answer printCount(const Invocation &invocation) const;

private:
    bool takeParty(const Invocation &invocation);
    KorvaSyncIf::HistoryFilter newestFirst() const;
    bool isWanted(const KorvaSyncIf::HistoryItem &item) const;
    Answer readAll(const Invocation &invocation, const Take &take) const;
    Answer readNewest(const Invocation &invocation, const Take &take) const;
    Answer count(const Invocation &invocation, qint64 *count) const;

    int m_limit = KorvaSyncIf::HistoryFilter::NoLimit;
};
