// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectory.h"

#include "owndirectory.h"
#include "storeconnection.h"
#include "storefiles.h"
#include "storelock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CommHistory {

namespace {

using Entry = OwnDirectory::Entry;

constexpr mode_t OthersMask = S_IRWXG | S_IRWXO;

//! Closes what is in a directory, and the directory itself, to other users as far as the
//! system lets us.
void closeToOthers(const OwnDirectory &directory)
{
    QVector<Entry> entries;
    if (directory.state() != OwnDirectory::State::Open || !directory.list(&entries))
        return;
    directory.makePrivate();
    for (const Entry &entry : std::as_const(entries)) {
        if (!entry.isOwn())
            continue;
        if (S_ISDIR(entry.status.st_mode))
            closeToOthers(OwnDirectory(directory, entry.name.constData()));
        else if (entry.status.st_mode & OthersMask)
            ::fchmodat(directory.descriptor(), entry.name.constData(),
                       entry.status.st_mode & S_IRWXU, 0);
    }
}

//! Writes the whole marker or, where that fails, none.
bool writeMarker(const OwnDirectory &directory)
{
    // What is left of another one may be a second name of some other file.
    ::unlinkat(directory.descriptor(), StoreFiles::NewMarker, 0);
    const int file = ::openat(directory.descriptor(), StoreFiles::NewMarker,
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    constexpr ssize_t size = sizeof(StoreFiles::FormatLine) - 1;
    const bool isWritten =
        ::write(file, StoreFiles::FormatLine, size) == size && ::fsync(file) == 0;
    return ::close(file) == 0 && isWritten
        && ::renameat(directory.descriptor(), StoreFiles::NewMarker, directory.descriptor(),
                      StoreFiles::Marker)
        == 0;
}

} // namespace

QString StoreDirectory::databasePath() const
{
    return m_place.path() + QLatin1Char('/') + QLatin1String(StoreFiles::Database);
}

StoreProblem StoreDirectory::claim(StoreLock &lock) const
{
    m_place.makeFolder();
    const QByteArray path = m_place.encodedPath();
    const OwnDirectory directory(path);
    if (directory.state() == OwnDirectory::State::OtherOwner)
        return StoreProblem::OtherOwner;
    const bool isOpen = directory.state() == OwnDirectory::State::Open && directory.makePrivate()
        && lock.open(directory, path + '/' + StoreFiles::Lock);
    return isOpen ? StoreProblem::None : StoreProblem::NoAccess;
}

void StoreDirectory::makePrivate() const { closeToOthers(OwnDirectory(m_place.encodedPath())); }

StoreProblem StoreDirectory::create() const
{
    const OwnDirectory directory(m_place.encodedPath());
    const QString database =
        m_place.path() + QLatin1Char('/') + QLatin1String(StoreFiles::NewDatabase);
    if (!directory.remove(StoreFiles::NewDatabase)
        || ::mkdirat(directory.descriptor(), StoreFiles::NewDatabase, S_IRWXU) != 0)
        return StoreProblem::WriteFailed;
    // The database library takes some failed writes for done; only a second look tells.
    if (!StoreConnection::createDatabase(database) || !StoreConnection::isWhole(database)
        || !OwnDirectory(directory, StoreFiles::NewDatabase).sync() || !writeMarker(directory)) {
        directory.remove(StoreFiles::NewDatabase);
        return StoreProblem::WriteFailed;
    }
    return finishCreation();
}

StoreProblem StoreDirectory::finishCreation() const
{
    const OwnDirectory directory(m_place.encodedPath());
    if (OwnDirectory(directory, StoreFiles::Database).state() != OwnDirectory::State::Absent)
        return StoreProblem::None;
    const bool isDone = ::renameat(directory.descriptor(), StoreFiles::NewDatabase,
                                   directory.descriptor(), StoreFiles::Database)
            == 0
        && ::fsync(directory.descriptor()) == 0;
    return isDone ? StoreProblem::None : StoreProblem::WriteFailed;
}

} // namespace CommHistory
