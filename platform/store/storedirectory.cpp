// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectory.h"

#include "logging.h"
#include "owndirectory.h"
#include "storeconnection.h"
#include "storelock.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CommHistory {

namespace {

using Entry = OwnDirectory::Entry;

constexpr char MarkerName[] = "korvasync-store";
constexpr char NewMarkerName[] = "korvasync-store.new";
constexpr char DatabaseName[] = "db";
constexpr char NewDatabaseName[] = "db.new";
constexpr char LockName[] = "lock";
// Raised with every change of the ontology: the database library would bring a store in
// silence to the ontology of the program that opens it, an older one's too.
constexpr char MarkerLine[] = "1\n";

constexpr mode_t OthersMask = S_IRWXG | S_IRWXO;

QString sentence(StoreProblem problem)
{
    switch (problem) {
    case StoreProblem::None:
        break;
    case StoreProblem::Absent:
        return QStringLiteral("There is no store in %1 yet; add something first, or name the "
                              "directory of another store.");
    case StoreProblem::NotAStore:
        return QStringLiteral("The directory %1 is not a store and not empty; name an empty "
                              "directory or that of a store.");
    case StoreProblem::UnknownFormat:
        return QStringLiteral("The store in %1 has a format that this version does not know; "
                              "use the version that made it, or a newer one.");
    case StoreProblem::LostDatabase:
        return QStringLiteral("The store in %1 has lost its database; restore the directory "
                              "from a backup, or name another one.");
    case StoreProblem::NoAccess:
        return QStringLiteral("The store in %1 cannot be accessed; check its owner, its "
                              "permissions and that its disk is there and writable.");
    case StoreProblem::OtherOwner:
        return QStringLiteral("The store in %1 belongs to another user, or the link to it does; "
                              "work as its owner, or name a directory of your own.");
    case StoreProblem::ForeignFiles:
        return QStringLiteral("The store in %1 holds a link, a pipe or another user's file; "
                              "take it out, or restore the directory from a backup.");
    case StoreProblem::Replaced:
        return QStringLiteral("The store in %1 was moved or replaced while it was in use; see "
                              "which one is there now, and repeat what it does not hold.");
    case StoreProblem::Busy:
        return QStringLiteral("The store in %1 is kept busy by another process; end that "
                              "process or try again later.");
    case StoreProblem::Damaged:
        return QStringLiteral("The database of the store in %1 cannot be opened; see that its disk "
                              "has room. If it has, the database is damaged: restore the "
                              "directory from a backup.");
    case StoreProblem::OutOfIds:
        return QStringLiteral("The store in %1 has no ids left, or its counter of them is damaged; "
                              "restore the directory from a backup, or add to another one.");
    case StoreProblem::NoThread:
        return QStringLiteral("The system gives no thread to work on the store in %1; end other "
                              "programs, or raise the limit of processes.");
    case StoreProblem::ReadFailed:
        return QStringLiteral("The store in %1 cannot be read; check the disk, or restore the "
                              "directory from a backup.");
    case StoreProblem::WriteFailed:
        return QStringLiteral("The store in %1 cannot be written; check its permissions and "
                              "the free space of its disk, and repeat what was not stored.");
    }
    return QString();
}

bool areOwn(const QVector<Entry> &entries)
{
    return std::all_of(entries.cbegin(), entries.cend(),
                       [](const Entry &entry) { return entry.isOwn(); });
}

bool contains(const QVector<Entry> &entries, const char *name)
{
    return std::any_of(entries.cbegin(), entries.cend(),
                       [name](const Entry &entry) { return entry.name == name; });
}

//! Whether a directory holds nothing but files that the database library makes, or has become
//! that of a store meanwhile.
bool isDatabase(const OwnDirectory &directory)
{
    if (directory.state() == OwnDirectory::State::Absent)
        return true;
    QVector<Entry> files;
    return directory.state() == OwnDirectory::State::Open && directory.list(&files) && areOwn(files)
        && std::all_of(files.cbegin(), files.cend(), [](const Entry &file) {
               return S_ISREG(file.status.st_mode) && StoreConnection::isDatabaseFile(file.name);
           });
}

//! Whether nothing is there but what an interrupted creation leaves, which begins with the
//! lock.
bool isEmpty(const OwnDirectory &directory, const QVector<Entry> &entries)
{
    const auto isLeftOver = [&](const Entry &entry) {
        if (entry.name == NewDatabaseName)
            return isDatabase(OwnDirectory(directory, NewDatabaseName));
        return S_ISREG(entry.status.st_mode)
            && (entry.name == LockName || entry.name.startsWith(MarkerName));
    };
    return entries.isEmpty()
        || (contains(entries, LockName) && areOwn(entries)
            && std::all_of(entries.cbegin(), entries.cend(), isLeftOver));
}

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
    ::unlinkat(directory.descriptor(), NewMarkerName, 0);
    const int file = ::openat(directory.descriptor(), NewMarkerName,
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    constexpr ssize_t size = sizeof(MarkerLine) - 1;
    const bool isWritten = ::write(file, MarkerLine, size) == size && ::fsync(file) == 0;
    return ::close(file) == 0 && isWritten
        && ::renameat(directory.descriptor(), NewMarkerName, directory.descriptor(), MarkerName)
        == 0;
}

} // namespace

void warnAbout(StoreProblem problem, const QString &directory)
{
    qCWarning(lcStore).noquote() << sentence(problem).arg(QDir::toNativeSeparators(directory));
}

QByteArray StoreDirectory::encodedPath() const { return QFile::encodeName(m_path); }

StoreProblem StoreDirectory::check() const
{
    const OwnDirectory directory(encodedPath());
    switch (directory.state()) {
    case OwnDirectory::State::Absent:
        return StoreProblem::Absent;
    case OwnDirectory::State::NotADirectory:
        return StoreProblem::NotAStore;
    case OwnDirectory::State::OtherOwner:
        return StoreProblem::OtherOwner;
    case OwnDirectory::State::NoAccess:
        return StoreProblem::NoAccess;
    case OwnDirectory::State::Open:
        break;
    }
    QVector<Entry> entries;
    if (!directory.list(&entries))
        return StoreProblem::NoAccess;
    if (!contains(entries, MarkerName))
        return isEmpty(directory, entries) ? StoreProblem::Absent : StoreProblem::NotAStore;
    if (!areOwn(entries))
        return StoreProblem::ForeignFiles;
    return checkMarker(directory);
}

StoreProblem StoreDirectory::checkMarker(const OwnDirectory &directory) const
{
    constexpr std::size_t most = 64;
    std::array<char, most> bytes;
    const int marker =
        ::openat(directory.descriptor(), MarkerName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (marker < 0)
        return StoreProblem::NoAccess;
    const ssize_t size = ::read(marker, bytes.data(), bytes.size());
    ::close(marker);
    if (size < 0)
        return StoreProblem::ReadFailed;
    if (QByteArray(bytes.data(), int(size)).trimmed() != QByteArray(MarkerLine).trimmed())
        return StoreProblem::UnknownFormat;
    // In this order, since another process may just give the one the name of the other.
    const OwnDirectory complete(directory, NewDatabaseName);
    const OwnDirectory database(directory, DatabaseName);
    const bool isNamed = database.state() != OwnDirectory::State::Absent;
    if (!isNamed && complete.state() != OwnDirectory::State::Open)
        return StoreProblem::LostDatabase;
    const OwnDirectory &found = isNamed ? database : complete;
    QVector<Entry> files;
    if (found.state() != OwnDirectory::State::Open || !found.list(&files))
        return StoreProblem::NoAccess;
    return areOwn(files) ? StoreConnection::checkFiles(files) : StoreProblem::ForeignFiles;
}

StoreProblem StoreDirectory::claim(StoreLock &lock) const
{
    const QByteArray path = encodedPath();
    makeParents(path);
    if (::mkdir(path.constData(), S_IRWXU) != 0 && errno != EEXIST)
        return StoreProblem::NoAccess;
    const OwnDirectory directory(path);
    if (directory.state() == OwnDirectory::State::OtherOwner)
        return StoreProblem::OtherOwner;
    const bool isOpen = directory.state() == OwnDirectory::State::Open && directory.makePrivate()
        && lock.open(directory, path + '/' + LockName);
    return isOpen ? StoreProblem::None : StoreProblem::NoAccess;
}

void StoreDirectory::makePrivate() const { closeToOthers(OwnDirectory(encodedPath())); }

StoreProblem StoreDirectory::create() const
{
    const OwnDirectory directory(encodedPath());
    const QString database = m_path + QLatin1Char('/') + QLatin1String(NewDatabaseName);
    if (!directory.remove(NewDatabaseName)
        || ::mkdirat(directory.descriptor(), NewDatabaseName, S_IRWXU) != 0)
        return StoreProblem::WriteFailed;
    // The database library takes some failed writes for done; only a second look tells.
    if (!StoreConnection::createDatabase(database) || !StoreConnection::isWhole(database)
        || !OwnDirectory(directory, NewDatabaseName).sync() || !writeMarker(directory)) {
        directory.remove(NewDatabaseName);
        return StoreProblem::WriteFailed;
    }
    return finishCreation();
}

StoreProblem StoreDirectory::finishCreation() const
{
    const OwnDirectory directory(encodedPath());
    if (OwnDirectory(directory, DatabaseName).state() != OwnDirectory::State::Absent)
        return StoreProblem::None;
    const bool isDone =
        ::renameat(directory.descriptor(), NewDatabaseName, directory.descriptor(), DatabaseName)
            == 0
        && ::fsync(directory.descriptor()) == 0;
    return isDone ? StoreProblem::None : StoreProblem::WriteFailed;
}

} // namespace CommHistory
