// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QFile>

#include <fcntl.h>
#include <unistd.h>

//! Holds the lock of a store, as another process does that writes and does not come to an end.
//! The first byte of the file is the turn, which the next one who wants the lock takes.
class HeldStore
{
public:
    explicit HeldStore(const QString &store)
        : m_file(::open(QFile::encodeName(store + QStringLiteral("/lock")).constData(),
                        O_RDWR | O_CLOEXEC))
    {
        struct flock lock = byte(Lock, F_WRLCK);
        m_isHeld = ::fcntl(m_file, F_OFD_SETLKW, &lock) == 0;
    }
    ~HeldStore() { ::close(m_file); }

    bool isHeld() const { return m_isHeld; }
    //! Whether another one waits for the lock.
    bool isWaitedFor() const
    {
        struct flock turn = byte(Turn, F_WRLCK);
        return ::fcntl(m_file, F_OFD_GETLK, &turn) == 0 && turn.l_type != F_UNLCK;
    }

private:
    Q_DISABLE_COPY(HeldStore)
    enum : off_t { Turn = 0, Lock = 1 };
    static struct flock byte(off_t at, short type)
    {
        struct flock range = {};
        range.l_type = type;
        range.l_whence = SEEK_SET;
        range.l_start = at;
        range.l_len = 1;
        return range;
    }

    int m_file;
    bool m_isHeld;
};
