// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storeplace.h"

#include <QtCore/QString>

namespace CommHistory {

class StoreConnection;
class StoreLock;

//! Copies all that a store of an older format holds into a new database, in portions. Goes on where
//! it was broken off if the new one holds something; whether both hold the same then, their
//! contents tell. It is given from above, as the store does not know what an event has.
using HistoryCopier = bool (*)(StoreConnection &old, StoreConnection &fresh);

//! What is done in the folder of a store, which StorePlace has looked at: claiming it, making
//! the store and closing it to others.
class StoreDirectory
{
public:
    explicit StoreDirectory(const StorePlace &place)
        : m_place(place)
    {
    }

    const StorePlace &place() const { return m_place; }
    QString databasePath() const;
    //! Of the database that is being made.
    QString newDatabasePath() const;

    //! Makes the folder when it is absent, closes it to other users and opens the lock.
    [[nodiscard]] StoreProblem claim(StoreLock &lock) const;
    //! Closes what is there to other users, as far as the system lets us.
    void makePrivate() const;
    //! Makes a store where the place is absent. The lock must be held.
    [[nodiscard]] StoreProblem create(StoreLock &lock) const;
    //! Gives a store of an older format a new database beside the old one, and then its place. The
    //! old one stays as it is until the new one has been read. The lock must be held.
    [[nodiscard]] StoreProblem upgrade(StoreLock &lock, int format, HistoryCopier copy) const;
    //! Brings an interrupted creation or upgrade to its end. The lock must be held.
    //! \param format  that the marker names
    [[nodiscard]] StoreProblem finish(StoreLock &lock, int format) const;

private:
    [[nodiscard]] bool copyDatabase(StoreLock &lock, int format, HistoryCopier copy) const;

    StorePlace m_place;
};

} // namespace CommHistory
