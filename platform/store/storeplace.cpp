// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storeplace.h"

#include "logging.h"
#include "owndirectory.h"
#include "storefiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CommHistory {

namespace {

using Entry = OwnDirectory::Entry;

constexpr char EnvironmentVariable[] = "KORVASYNC_STORE";

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
    case StoreProblem::NotUpgraded:
        return QStringLiteral("The store in %1 is of an older version and could not be brought up "
                              "to date; see that its disk has room for it once more. It is as it "
                              "was, and can be read.");
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

auto entryNamed(const char *name, const QVector<Entry> &entries)
{
    return std::find_if(entries.cbegin(), entries.cend(),
                        [name](const Entry &entry) { return entry.name == name; });
}

bool isDatabaseFile(const Entry &entry)
{
    const auto isPrefix = [&](const char *file) { return entry.name.startsWith(file); };
    return S_ISREG(entry.status.st_mode)
        && (std::any_of(std::begin(StoreFiles::DatabaseFiles), std::end(StoreFiles::DatabaseFiles),
                        isPrefix)
            || std::any_of(std::begin(StoreFiles::OtherFiles), std::end(StoreFiles::OtherFiles),
                           isPrefix));
}

//! Whether a directory holds nothing but files that the database library makes, or has become
//! that of a store meanwhile.
bool isDatabase(const OwnDirectory &directory)
{
    if (directory.state() == OwnDirectory::State::Absent)
        return true;
    QVector<Entry> files;
    return directory.state() == OwnDirectory::State::Open && directory.list(&files) && areOwn(files)
        && std::all_of(files.cbegin(), files.cend(), isDatabaseFile);
}

//! A missing or empty file of the database would be taken for a fresh database.
StoreProblem checkFiles(const QVector<Entry> &files)
{
    for (const char *name : StoreFiles::DatabaseFiles) {
        const auto file = entryNamed(name, files);
        if (file == files.cend())
            return StoreProblem::LostDatabase;
        if (file->status.st_size == 0)
            return StoreProblem::Damaged;
    }
    return StoreProblem::None;
}

//! Whether nothing is there but what an interrupted creation leaves.
bool isEmpty(const OwnDirectory &directory, const QVector<Entry> &entries)
{
    const auto isLeftOver = [&](const Entry &entry) {
        if (entry.name == StoreFiles::NewDatabase)
            return isDatabase(OwnDirectory(directory, StoreFiles::NewDatabase));
        return S_ISREG(entry.status.st_mode)
            && (entry.name == StoreFiles::Lock || entry.name.startsWith(StoreFiles::Marker));
    };
    const auto lock = entryNamed(StoreFiles::Lock, entries);
    return entries.isEmpty()
        || (lock != entries.cend() && lock->status.st_size == 0 && areOwn(entries)
            && std::all_of(entries.cbegin(), entries.cend(), isLeftOver));
}

//! The number that a marker names; 0 when it is none that this version knows.
int formatIn(const QByteArray &marker)
{
    const QByteArray text = marker.trimmed();
    const int number = text.toInt();
    const bool isKnown = number >= StoreFiles::OldestFormat && number <= StoreFiles::Format
        && text == QByteArray::number(number);
    return isKnown ? number : 0;
}

//! What is wrong with a store, and not only with its folder.
StoreProblem checkMarked(const OwnDirectory &directory, int *format)
{
    constexpr std::size_t most = 64;
    std::array<char, most> bytes = {};
    const int marker =
        ::openat(directory.descriptor(), StoreFiles::Marker, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (marker < 0)
        return StoreProblem::NoAccess;
    const ssize_t size = ::read(marker, bytes.data(), bytes.size());
    ::close(marker);
    if (size < 0)
        return StoreProblem::ReadFailed;
    *format = formatIn(QByteArray(bytes.data(), int(size)));
    if (*format == 0)
        return StoreProblem::UnknownFormat;
    // In this order, since another process may just give the one the name of the other.
    const OwnDirectory complete(directory, StoreFiles::NewDatabase);
    const OwnDirectory database(directory, StoreFiles::Database);
    // An older one counts until the marker names the new one's format.
    const bool isNewer =
        *format == StoreFiles::Format && complete.state() == OwnDirectory::State::Open;
    const bool isNamed = database.state() != OwnDirectory::State::Absent && !isNewer;
    if (!isNamed && complete.state() != OwnDirectory::State::Open)
        return StoreProblem::LostDatabase;
    const OwnDirectory &found = isNamed ? database : complete;
    QVector<Entry> files;
    if (found.state() != OwnDirectory::State::Open || !found.list(&files))
        return StoreProblem::NoAccess;
    return areOwn(files) ? checkFiles(files) : StoreProblem::ForeignFiles;
}

//! Looked for after the list was read: the database gets its name after the marker, so one that is
//! being made meanwhile is not taken for something else.
bool hasMarker(const OwnDirectory &directory)
{
    struct stat status = {};
    return ::fstatat(directory.descriptor(), StoreFiles::Marker, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace

StorePlace::StorePlace(const QString &chosen)
    : m_path(chosen)
{
    if (m_path.isEmpty())
        m_path = QFile::decodeName(qgetenv(EnvironmentVariable));
    if (m_path.isEmpty()) {
        m_path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
            + QLatin1String("/korvasync");
    }
}

QByteArray StorePlace::encodedPath() const { return QFile::encodeName(m_path); }

StorePlace StorePlace::absolute() const
{
    return StorePlace(QDir::cleanPath(QDir::current().absoluteFilePath(m_path)));
}

StorePlace::Finding StorePlace::look() const
{
    const OwnDirectory directory(encodedPath());
    switch (directory.state()) {
    case OwnDirectory::State::Absent:
        return {StoreProblem::Absent};
    case OwnDirectory::State::NotADirectory:
        return {StoreProblem::NotAStore, directory.error()};
    case OwnDirectory::State::OtherOwner:
        return {StoreProblem::OtherOwner};
    case OwnDirectory::State::NoAccess:
        return {StoreProblem::NoAccess, directory.error()};
    case OwnDirectory::State::Open:
        break;
    }
    QVector<Entry> entries;
    if (!directory.list(&entries))
        return {StoreProblem::NoAccess, errno};
    if (!hasMarker(directory))
        return {isEmpty(directory, entries) ? StoreProblem::Absent : StoreProblem::NotAStore};
    Finding finding;
    finding.problem =
        areOwn(entries) ? checkMarked(directory, &finding.format) : StoreProblem::ForeignFiles;
    return finding;
}

bool StorePlace::makeFolder() const
{
    const QByteArray path = encodedPath();
    for (auto end = path.indexOf('/', 1); end > 0; end = path.indexOf('/', end + 1))
        ::mkdir(path.left(end).constData(), S_IRWXU);
    return ::mkdir(path.constData(), S_IRWXU) == 0;
}

void StorePlace::select() const { qputenv(EnvironmentVariable, encodedPath()); }

void StorePlace::warnAbout(StoreProblem problem) const
{
    qCWarning(lcStore).noquote() << sentence(problem).arg(QDir::toNativeSeparators(m_path));
}

} // namespace CommHistory
