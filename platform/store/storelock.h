// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "fileplace.h"

namespace CommHistory {

class OwnDirectory;

//! The lock that spans the processes of one store. Waiting writers take turns, so that
//! one that writes a lot lets the others in between its transactions. A process that dies
//! loses the lock.
class StoreLock
{
public:
    StoreLock() = default;
    ~StoreLock();

    //! How long a writer waits for the others.
    static constexpr int PatienceMsecs = 30000;

    //! Makes the lock file when it is absent. False when that is impossible.
    //! \param path  by which other processes find it
    [[nodiscard]] bool open(const OwnDirectory &directory, const QByteArray &path);

    //! False when the file that was opened is no longer the one that other processes open:
    //! the store was removed, moved or replaced.
    bool isInPlace() const { return m_place.isStillThere(); }

    //! Waits for the lock. False when another process kept it.
    [[nodiscard]] bool acquire(int patienceMsecs);
    void release();

private:
    Q_DISABLE_COPY(StoreLock)
    void close();

    FilePlace m_place;
    int m_file = -1;
};

//! Holds the lock as long as it lives.
class StoreLockHolder
{
public:
    explicit StoreLockHolder(StoreLock &lock, int patienceMsecs = StoreLock::PatienceMsecs)
        : m_lock(lock)
        , m_held(lock.acquire(patienceMsecs))
    {
    }
    ~StoreLockHolder()
    {
        if (m_held)
            m_lock.release();
    }

    bool isHeld() const { return m_held; }

private:
    Q_DISABLE_COPY(StoreLockHolder)
    StoreLock &m_lock;
    bool m_held;
};

} // namespace CommHistory
