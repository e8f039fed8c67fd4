// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storelocation.h"

#include "process/text.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

static const char environmentVariable[] = "KORVASYNC_STORE";

StoreLocation::StoreLocation(const QString &chosen)
    : folder(chosen)
{
    if (folder.isEmpty())
        folder = QFile::decodeName(qgetenv(environmentVariable));
    if (folder.isEmpty()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
            + QLatin1String("/korvasync");
    }
}

static QFileInfoList entriesOf(const QDir &directory)
{
    return directory.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System
                                   | QDir::NoDotAndDotDot);
}

static bool isOwnFile(const QFileInfo &entry) { return entry.isFile() && !entry.isSymLink(); }

static bool isUnfinishedDatabase(const QFileInfo &entry)
{
    const QFileInfoList files = entriesOf(QDir(entry.filePath()));
    return entry.isDir() && !entry.isSymLink()
        && std::all_of(files.cbegin(), files.cend(), isOwnFile);
}

static bool isLeftOver(const QFileInfo &entry)
{
    const QString name = entry.fileName();
    if (name == QLatin1String("db.new"))
        return isUnfinishedDatabase(entry);
    return isOwnFile(entry)
        && (name == QLatin1String("lock") || name.startsWith(QLatin1String("korvasync-store")));
}

// A first write that came to nothing leaves an empty lock, and what it had begun, but no
// marker. Anything else is somebody's, and so is a link.
static bool isLeftByAFirstWrite(const QDir &directory)
{
    const QFileInfoList entries = entriesOf(directory);
    const QFileInfo lock(directory, QStringLiteral("lock"));
    return entries.isEmpty()
        || (lock.isFile() && lock.size() == 0
            && std::all_of(entries.cbegin(), entries.cend(), isLeftOver));
}

StoreLocation::State StoreLocation::state()
{
    const QByteArray path = QFile::encodeName(folder);
    struct stat status;
    const bool exists = stat(path.constData(), &status) == 0;
    if (!exists && errno == ENOENT && lstat(path.constData(), &status) == 0) {
        error = Text::ofSystemError(ENOENT).translated; // a link, perhaps to a disk that is away
        return Unreachable;
    }
    if (exists && S_ISDIR(status.st_mode) && status.st_uid != geteuid()) {
        error = Text::tr("it belongs to another user");
        return Unreachable;
    }
    const QString marker = folder + QLatin1String("/korvasync-store");
    if (stat(QFile::encodeName(marker).constData(), &status) == 0)
        return Present;
    if (errno != ENOENT) {
        error = Text::ofSystemError(errno).translated;
        return Unreachable;
    }
    const QDir directory(folder);
    if (directory.exists() && !directory.isReadable()) {
        error = Text::ofSystemError(EACCES).translated;
        return Unreachable;
    }
    return isLeftByAFirstWrite(directory) ? Absent : OtherFolder;
}

void StoreLocation::select() const { qputenv(environmentVariable, QFile::encodeName(folder)); }
