// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "process/exitcode.h"
#include "process/standardoutput.h"
#include "shared/rejectreason.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

//! What became of one item of the input.
struct ItemResult
{
    enum Status { Added, Present, Missing, Changed, Unchanged, Deleted, Refused, Failed };

    int ref = 0;    //!< reference index: position in the whole input
    QString source; //!< file:line; empty for items that come from no file
    Status status = Refused;
    int id = -1; //!< database id, -1 = none
    RejectReason rejectReason = RejectReason::None;
    Reason detail; //!< instead of the words of the reject reason

    Reason reason() const { return detail.isEmpty() ? reasonOf(rejectReason) : detail; }
};

//! Prints the results of a writing command, one a line, then their sum.
class Results
{
public:
    //! \param done  what the command does to an item when all goes well
    //! \param isForetold  nothing is done, which a deletion says to people
    Results(StandardOutput &output, ItemResult::Status done, bool asJson, bool isForetold = false);

    void report(const ItemResult &result);
    //! Counts it without a line of its own.
    void note(const ItemResult &result);
    //! Names on stderr what was not even looked at, which is no item. The summary counts it.
    void notePassedOver(const QStringList &paths);
    //! \param isWhole  all of the input was read
    void printSummary(bool isWhole = true);
    //! One warning for each reason for which items were not done.
    void warnOfRefusals() const;

    int count() const { return m_read; }
    ExitCode exitCode() const;

private:
    int total(ItemResult::Status status) const { return m_totals.value(status); }
    QString wordFor(ItemResult::Status status) const;
    QString sumOf(ItemResult::Status status) const;

    StandardOutput &m_output;
    const ItemResult::Status m_done;
    const bool m_asJson;
    const bool m_isForetold;
    int m_read = 0;
    int m_passedOver = 0;
    QMap<int, int> m_totals; // by ItemResult::Status
    QMap<RejectReason, int> m_refusals;
};
