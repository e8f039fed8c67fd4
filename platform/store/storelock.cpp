// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storelock.h"

#include "owndirectory.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QThread>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace CommHistory {

namespace {

// Who wants the lock waits for the turn first and keeps it while waiting for the lock. So
// the holder, who needs the turn again for its next transaction, comes after the others.
enum Byte : off_t { TurnByte = 0, LockByte = 1 };

enum class Outcome { Done, Taken, Failed };

Outcome setByte(int file, Byte byte, short type)
{
    struct flock range = {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    // Locks of the open file, not of the process: closing another descriptor keeps them.
    if (fcntl(file, F_OFD_SETLK, &range) == 0)
        return Outcome::Done;
    return errno == EAGAIN || errno == EACCES ? Outcome::Taken : Outcome::Failed;
}

bool waitForByte(int file, Byte byte, const QDeadlineTimer &deadline)
{
    Outcome outcome = setByte(file, byte, F_WRLCK);
    while (outcome == Outcome::Taken && !deadline.hasExpired()) {
        QThread::usleep(500);
        outcome = setByte(file, byte, F_WRLCK);
    }
    return outcome == Outcome::Done;
}

} // namespace

StoreLock::~StoreLock() { close(); }

void StoreLock::close()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}

bool StoreLock::open(const OwnDirectory &directory, const QByteArray &path)
{
    close();
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    m_file = ::openat(directory.descriptor(), name.constData(),
                      O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    m_place = FilePlace(path, m_file);
    return m_file >= 0;
}

bool StoreLock::acquire(int patienceMsecs)
{
    const QDeadlineTimer deadline(patienceMsecs);
    if (!waitForByte(m_file, TurnByte, deadline))
        return false;
    const bool held = waitForByte(m_file, LockByte, deadline);
    setByte(m_file, TurnByte, F_UNLCK);
    return held;
}

void StoreLock::release() { setByte(m_file, LockByte, F_UNLCK); }

} // namespace CommHistory
