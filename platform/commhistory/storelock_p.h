// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

namespace CommHistory {

//! The lock that spans the processes of one store. Waiting writers take turns, so that
//! one that writes a lot lets the others in between its transactions. A process that dies
//! loses the lock.
class StoreLock
{
public:
    StoreLock() = default;
    ~StoreLock();

    //! Makes the lock file when it is absent. False when that is impossible.
    bool open(const QString &path);

    //! Waits for the lock for at most 30 seconds. False when another process kept it.
    bool acquire();
    void release();

private:
    Q_DISABLE_COPY(StoreLock)
    int m_file = -1;
};

//! Holds the lock as long as it lives.
class StoreLockHolder
{
public:
    explicit StoreLockHolder(StoreLock &lock)
        : m_lock(lock)
        , m_held(lock.acquire())
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
