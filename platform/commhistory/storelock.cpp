// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storelock_p.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>

#include <fcntl.h>
#include <unistd.h>

namespace CommHistory {

namespace {

constexpr int PatienceMsecs = 30000;

// Who wants the lock waits for the turn first and keeps it while waiting for the lock. So
// the holder, who needs the turn again for its next transaction, comes after the others.
enum Byte : off_t { TurnByte = 0, LockByte = 1 };

bool setByte(int file, Byte byte, short type)
{
    struct flock range = {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    // Locks of the open file, not of the process: closing another descriptor keeps them.
    return fcntl(file, F_OFD_SETLK, &range) == 0;
}

bool waitForByte(int file, Byte byte, const QDeadlineTimer &deadline)
{
    while (!setByte(file, byte, F_WRLCK)) {
        if (deadline.hasExpired())
            return false;
        QThread::usleep(500);
    }
    return true;
}

} // namespace

StoreLock::~StoreLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

bool StoreLock::open(const QString &path)
{
    if (m_file < 0)
        m_file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    return m_file >= 0;
}

bool StoreLock::acquire()
{
    const QDeadlineTimer deadline(PatienceMsecs);
    if (!waitForByte(m_file, TurnByte, deadline))
        return false;
    const bool held = waitForByte(m_file, LockByte, deadline);
    setByte(m_file, TurnByte, F_UNLCK);
    return held;
}

void StoreLock::release() { setByte(m_file, LockByte, F_UNLCK); }

} // namespace CommHistory
