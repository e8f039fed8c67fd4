// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storeplace.h"

#include <QtCore/QString>

namespace CommHistory {

class StoreLock;

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

    //! Makes the folder when it is absent, closes it to other users and opens the lock.
    StoreProblem claim(StoreLock &lock) const;
    //! Closes what is there to other users, as far as the system lets us.
    void makePrivate() const;
    //! Makes a store where the place is absent. The lock must be held.
    StoreProblem create() const;
    //! Brings an interrupted creation to its end. The lock must be held.
    StoreProblem finishCreation() const;

private:
    StorePlace m_place;
};

} // namespace CommHistory
