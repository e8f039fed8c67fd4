// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "historyreader.h"

#include <memory>

namespace CommHistory {

class StoreConnection;

struct HistoryPortion
{
    QList<HistoryEntry> entries;
    HistoryReader::Result result = HistoryReader::Done;
    bool isLast = false; //!< always when the result is a failure
};

//! One read of a HistoryReader. The store's thread calls next() for a portion at a time; the
//! reader looks at the rest once the last portion is there.
class HistoryPass
{
public:
    virtual ~HistoryPass() = default;

    //! Reads the next portion from the store of the first one. Another process, or this one, may
    //! have put another store in its place meanwhile.
    HistoryPortion next(StoreConnection *connection);

    HistoryPosition position;
    QList<HistoryTally> tallies;

protected:
    virtual HistoryPortion read(StoreConnection &connection) = 0;

    static HistoryPortion failure(HistoryReader::Result result);
    static HistoryPortion readFailure(StoreConnection &connection);

private:
    QByteArray m_store; // of the first portion
    bool m_isBegun = false;
};

std::unique_ptr<HistoryPass> newSelectionPass(const HistorySelection &selection);
std::unique_ptr<HistoryPass> newChangesPass(const HistoryPosition &since, int portion);
std::unique_ptr<HistoryPass> newCountPass(const HistorySelection &selection,
                                          HistoryReader::Key key);

} // namespace CommHistory
