// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/historyitem.h>
#include <korvasync/korvasyncexport.h>
#include <korvasync/pendinghistory.h>

#include <QtCore/QObject>

namespace KorvaSyncIf {

//! Asks the phone's store for messages and calls, at a cost that follows the question.
//!
//! SMSSyncInterface and CallSyncInterface hand out whole folders and cannot tell what was deleted.
//! This interface filters, limits and counts in the store, hands out large results in portions,
//! and follows additions, changes and deletions. It reads only; the other two write.
//!
//! It needs a libkorvasync that was built with korvasync's own platform.
//!
//! \include newest.cpp
//!
//! Every call returns at once with a pending object that is a child of this object; everything
//! else happens on later turns of the event loop of the thread that made it. Any number of
//! requests may be under way; the store works on them in turns, a portion at a time. Destroying
//! the interface ends its requests, and touches nothing of other facades.
class KORVASYNC_EXPORT HistoryInterface : public QObject
{
    Q_OBJECT
public:
    explicit HistoryInterface(QObject *parent = nullptr);
    ~HistoryInterface() override;

    //! The items that pass the filter, in its order.
    //! \return never null; HistoryError::InvalidFilter at once for a filter out of its ranges
    PendingHistory *query(const HistoryFilter &filter);

    //! What was added, changed and deleted since a cursor was given.
    //! \param cursor   of PendingChanges::cursor(); empty = since the beginning, when every item
    //!                 counts as added and nothing as deleted; now() = nothing so far
    //! \param portion  the most changes handed out at once, 1..HistoryFilter::MaxPortion
    //! \return never null; HistoryError::UnknownCursor for one that this store never gave
    PendingChanges *changes(const QString &cursor, int portion = 500);

    //! The cursor of a client that follows what is to come, and has no use for what is there.
    static QString now();

    //! How many items pass the filter; its order, limit and portion have no meaning here.
    //! \return never null
    PendingCounts *counts(const HistoryFilter &filter, HistoryCount::By by);
};

} // namespace KorvaSyncIf
