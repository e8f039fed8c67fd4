// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "shared/answer.h"
#include "storelocation.h"

#include <chrono>

//! Makes the clients that write to one store wait for each other, from the look at what is there
//! to the last write, so that none stores what another is about to store, none deletes what another
//! has changed, and none takes another's message for the one that it sent. It is a lock on
//! the store's folder. Other programs that write through the library do not know of it: what they
//! store meanwhile can be stored twice.
class ClientLock
{
public:
    explicit ClientLock(StoreLocation &location)
        : m_location(location)
    {
    }
    //! Releases the lock, and removes a folder that was made for it and got no store.
    ~ClientLock();

    //! Waits for the lock. A folder that cannot be opened is not locked, and the store
    //! itself says what is wrong.
    Answer take(std::chrono::milliseconds timeout);

private:
    ClientLock(const ClientLock &) = delete;
    ClientLock &operator=(const ClientLock &) = delete;

    [[nodiscard]] bool open();
    bool isInPlace() const;
    void close();

    StoreLocation &m_location;
    int m_folder = -1;
    bool m_hasMadeFolder = false;
};
