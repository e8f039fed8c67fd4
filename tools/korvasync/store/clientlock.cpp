// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientlock.h"

#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/text.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

ClientLock::~ClientLock()
{
    if (m_hasMadeFolder && m_location.state() == StoreLocation::Absent)
        rmdir(QFile::encodeName(m_location.path()).constData()); // unless it holds something
    close();
}

void ClientLock::close()
{
    if (m_folder >= 0)
        ::close(m_folder);
    m_folder = -1;
}

bool ClientLock::open()
{
    close();
    if (m_location.makeFolder())
        m_hasMadeFolder = true;
    m_folder = ::open(QFile::encodeName(m_location.path()).constData(),
                      O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return m_folder >= 0;
}

// The one before may have taken the folder away.
bool ClientLock::isInPlace() const
{
    struct stat opened = {};
    struct stat found = {};
    return fstat(m_folder, &opened) == 0
        && stat(QFile::encodeName(m_location.path()).constData(), &found) == 0
        && opened.st_dev == found.st_dev && opened.st_ino == found.st_ino;
}

Answer ClientLock::take(std::chrono::milliseconds timeout)
{
    constexpr unsigned long pollMilliseconds = 20;
    const QDeadlineTimer deadline(timeout);
    if (!open())
        return Answer::Finished;
    while (true) {
        if (flock(m_folder, LOCK_EX | LOCK_NB) == 0) {
            if (isInPlace() || !open())
                return Answer::Finished;
            continue;
        }
        if (errno != EWOULDBLOCK) {
            Diagnostics::warn(Text::tr("clients that write at the same time cannot be told "
                                       "to wait here (%1); run one after the other")
                                  .arg(Text::ofSystemError(errno).translated));
            return Answer::Finished;
        }
        if (Interrupt::signalNumber() != 0)
            return Answer::Interrupted;
        if (deadline.hasExpired())
            return Answer::TimedOut;
        QThread::msleep(pollMilliseconds);
    }
}
