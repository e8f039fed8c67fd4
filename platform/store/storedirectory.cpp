// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectory.h"

#include "owndirectory.h"
#include "storeconnection.h"
#include "storefiles.h"
#include "storelock.h"
#include "storeupgrade.h"

#include <algorithm>
#include <atomic>
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

std::atomic<bool> isUpgrading{false};

//! Tells others of an upgrade as long as it lives.
class UpgradeMark
{
public:
    UpgradeMark() { isUpgrading = true; }
    ~UpgradeMark() { isUpgrading = false; }

private:
    Q_DISABLE_COPY(UpgradeMark)
};

//! Writes the whole marker or, where that fails, none.
bool writeMarker(const OwnDirectory &directory)
{
    // What is left of another one may be a second name of some other file.
    ::unlinkat(directory.descriptor(), StoreFiles::NewMarker, 0);
    const int file = ::openat(directory.descriptor(), StoreFiles::NewMarker,
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    const QByteArray line = QByteArray::number(StoreFiles::Format) + '\n';
    const bool isWritten = ::write(file, line.constData(), std::size_t(line.size())) == line.size()
        && ::fsync(file) == 0;
    return ::close(file) == 0 && isWritten
        && ::renameat(directory.descriptor(), StoreFiles::NewMarker, directory.descriptor(),
                      StoreFiles::Marker)
        == 0;
}

//! What a database that was made holds when it is opened once more.
std::optional<StoreConnection::Contents> newContents(const StoreDirectory &directory,
                                                     StoreLock &lock)
{
    const auto connection = StoreConnection::openNew(directory, lock);
    return connection ? connection->contents() : std::nullopt;
}

//! Whether it is there, and nothing in it leads elsewhere.
bool holdsOwnFiles(const OwnDirectory &directory)
{
    QVector<Entry> files;
    return directory.state() == OwnDirectory::State::Open && directory.list(&files)
        && std::all_of(files.cbegin(), files.cend(),
                       [](const Entry &file) { return file.isOwn(); });
}

//! An empty folder for a new database.
bool makeNewFolder(const OwnDirectory &directory)
{
    return directory.remove(StoreFiles::NewDatabase)
        && ::mkdirat(directory.descriptor(), StoreFiles::NewDatabase, S_IRWXU) == 0;
}

bool rename(const OwnDirectory &directory, const char *from, const char *to)
{
    return ::renameat(directory.descriptor(), from, directory.descriptor(), to) == 0
        && ::fsync(directory.descriptor()) == 0;
}

} // namespace

QString StoreDirectory::databasePath() const
{
    return m_place.path() + QLatin1Char('/') + QLatin1String(StoreFiles::Database);
}

QString StoreDirectory::newDatabasePath() const
{
    return m_place.path() + QLatin1Char('/') + QLatin1String(StoreFiles::NewDatabase);
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

StoreProblem StoreDirectory::create(StoreLock &lock) const
{
    const OwnDirectory directory(m_place.encodedPath());
    const QString database = newDatabasePath();
    if (!makeNewFolder(directory))
        return StoreProblem::WriteFailed;
    // The database library takes some failed writes for done; only a second look tells.
    if (!StoreConnection::createDatabase(database) || !newContents(*this, lock)
        || !OwnDirectory(directory, StoreFiles::NewDatabase).sync() || !writeMarker(directory)) {
        directory.remove(StoreFiles::NewDatabase);
        return StoreProblem::WriteFailed;
    }
    return finish(lock, StoreFiles::Format);
}

bool isStoreBeingUpgraded() { return isUpgrading; }

StoreProblem StoreDirectory::upgrade(StoreLock &lock, int format, HistoryCopier copy) const
{
    const UpgradeMark mark;
    const OwnDirectory directory(m_place.encodedPath());
    // One that was broken off goes on, lest a time limit that is too short for it keep it from ever
    // coming to its end. The old database may have been written since: then it does not agree.
    const bool isBegun = holdsOwnFiles(OwnDirectory(directory, StoreFiles::NewDatabase))
        && StoreConnection::probeFiles(newDatabasePath()) == StoreProblem::None;
    const bool isCopied = (isBegun && copyDatabase(lock, format, copy))
        || (makeNewFolder(directory) && StoreConnection::createDatabase(newDatabasePath())
            && copyDatabase(lock, format, copy));
    if (!isCopied || !OwnDirectory(directory, StoreFiles::NewDatabase).sync()
        || !writeMarker(directory)) {
        directory.remove(StoreFiles::NewDatabase);
        return StoreProblem::NotUpgraded;
    }
    return finish(lock, StoreFiles::Format);
}

//! Copies what is in the old database and not in the new one yet. True when the new one, opened
//! once more, holds all of it.
bool StoreDirectory::copyDatabase(StoreLock &lock, int format, HistoryCopier copy) const
{
    std::optional<StoreConnection::Contents> all;
    {
        const auto old =
            StoreConnection::open(*this, lock, StoreConnection::Mode::ReadOnly, format);
        const auto fresh = StoreConnection::openNew(*this, lock);
        if (!old || !fresh || !copy || !copy(*old, *fresh))
            return false;
        all = old->contents();
    }
    return all && newContents(*this, lock) == all;
}

StoreProblem StoreDirectory::finish(StoreLock &lock, int format) const
{
    const OwnDirectory directory(m_place.encodedPath());
    const bool hasOld =
        OwnDirectory(directory, StoreFiles::Database).state() != OwnDirectory::State::Absent;
    const bool hasNew =
        OwnDirectory(directory, StoreFiles::NewDatabase).state() == OwnDirectory::State::Open;
    if (hasOld && format != StoreFiles::Format)
        return StoreProblem::None; // what a broken-off upgrade made is no store's
    if (hasNew && hasOld) {
        // The marker must not come to the disk later than the names.
        if (!newContents(*this, lock))
            return StoreProblem::Damaged;
        if (!directory.remove(StoreFiles::OldDatabase) || ::fsync(directory.descriptor()) != 0
            || !rename(directory, StoreFiles::Database, StoreFiles::OldDatabase))
            return StoreProblem::WriteFailed;
    }
    if (hasNew && !rename(directory, StoreFiles::NewDatabase, StoreFiles::Database))
        return StoreProblem::WriteFailed;
    return directory.remove(StoreFiles::OldDatabase) ? StoreProblem::None
                                                     : StoreProblem::WriteFailed;
}

} // namespace CommHistory
