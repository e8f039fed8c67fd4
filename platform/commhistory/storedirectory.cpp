// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectory_p.h"

#include "logging_p.h"
#include "storeconnection_p.h"
#include "storelock_p.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CommHistory {

namespace {

constexpr char MarkerName[] = "korvasync-store";
constexpr char NewDatabaseName[] = "db.new";
constexpr char LockName[] = "lock";
// Raised with every change of the ontology: the database library would bring a store in
// silence to the ontology of the program that opens it, an older one's too.
constexpr char Format[] = "1";

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
    case StoreProblem::Busy:
        return QStringLiteral("The store in %1 is kept busy by another process; end that "
                              "process or try again later.");
    case StoreProblem::Damaged:
        return QStringLiteral("The database of the store in %1 cannot be opened; see that its disk "
                              "has room. If it has, the database is damaged: restore the "
                              "directory from a backup.");
    case StoreProblem::ReadFailed:
        return QStringLiteral("The store in %1 cannot be read; check the disk, or restore the "
                              "directory from a backup.");
    case StoreProblem::WriteFailed:
        return QStringLiteral("The store in %1 cannot be written; check its permissions and "
                              "the free space of its disk, and repeat what was not stored.");
    }
    return QString();
}

//! Whether nothing is there but the remains of an interrupted creation, which begins with
//! the lock.
bool isEmpty(const QDir &directory)
{
    const auto filters = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const QStringList names = directory.entryList(filters);
    return names.isEmpty()
        || (names.contains(QLatin1String(LockName))
            && std::all_of(names.cbegin(), names.cend(), [](const QString &name) {
                   return name == QLatin1String(LockName) || name == QLatin1String(NewDatabaseName)
                       || name.startsWith(QLatin1String(MarkerName)); // of an unfinished marker
               }));
}

//! Closes one file or directory to other users; true when it is closed.
bool close(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status;
    if (::stat(name.constData(), &status) != 0)
        return false;
    return (status.st_mode & OthersMask) == 0
        || ::chmod(name.constData(), status.st_mode & S_IRWXU) == 0;
}

void syncDirectory(const QString &path)
{
    const int directory = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (directory < 0)
        return;
    ::fsync(directory);
    ::close(directory);
}

} // namespace

void warnAbout(StoreProblem problem, const QString &directory)
{
    qCWarning(lcStore).noquote() << sentence(problem).arg(QDir::toNativeSeparators(directory));
}

QString StoreDirectory::filePath(const char *name) const
{
    return m_path + QLatin1Char('/') + QLatin1String(name);
}

StoreProblem StoreDirectory::check() const
{
    struct stat status;
    if (::stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return errno == ENOENT ? StoreProblem::Absent : StoreProblem::NoAccess;
    if (!S_ISDIR(status.st_mode))
        return StoreProblem::NotAStore;
    if (::access(QFile::encodeName(m_path).constData(), R_OK | X_OK) != 0)
        return StoreProblem::NoAccess;
    if (QFileInfo::exists(filePath(MarkerName)))
        return checkMarker();
    return isEmpty(QDir(m_path)) ? StoreProblem::Absent : StoreProblem::NotAStore;
}

StoreProblem StoreDirectory::checkMarker() const
{
    QFile marker(filePath(MarkerName));
    if (!marker.open(QIODevice::ReadOnly))
        return StoreProblem::NoAccess;
    if (marker.read(64).trimmed() != Format)
        return StoreProblem::UnknownFormat;
    if (QFileInfo::exists(databasePath()))
        return StoreConnection::checkFiles(databasePath());
    return QFileInfo::exists(filePath(NewDatabaseName)) ? StoreProblem::None
                                                        : StoreProblem::LostDatabase;
}

bool StoreDirectory::claim(StoreLock &lock) const
{
    if (!QDir().mkpath(QFileInfo(m_path).absolutePath()))
        return false;
    if (::mkdir(QFile::encodeName(m_path).constData(), S_IRWXU) != 0 && errno != EEXIST)
        return false;
    return close(m_path) && lock.open(filePath(LockName));
}

void StoreDirectory::makePrivate() const
{
    close(m_path);
    const auto filters = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QDirIterator entry(m_path, filters, QDirIterator::Subdirectories);
    while (entry.hasNext())
        close(entry.next());
}

StoreProblem StoreDirectory::create() const
{
    const QString database = filePath(NewDatabaseName);
    if (!QDir(database).removeRecursively()
        || ::mkdir(QFile::encodeName(database).constData(), S_IRWXU) != 0)
        return StoreProblem::WriteFailed;
    if (!StoreConnection::createDatabase(database)) {
        QDir(database).removeRecursively();
        return StoreProblem::WriteFailed;
    }
    QSaveFile marker(filePath(MarkerName));
    if (!marker.open(QIODevice::WriteOnly) || marker.write(Format) < 0 || marker.write("\n") < 0
        || !marker.commit())
        return StoreProblem::WriteFailed;
    return finishCreation();
}

StoreProblem StoreDirectory::finishCreation() const
{
    if (!QFileInfo::exists(databasePath())
        && !QDir().rename(filePath(NewDatabaseName), databasePath()))
        return StoreProblem::WriteFailed;
    syncDirectory(m_path);
    return StoreProblem::None;
}

} // namespace CommHistory
