// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storelocation.h"

#include "language/text.h"

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

// A first write that came to nothing leaves an empty lock, and what it had begun, but no
// marker. Anything else is somebody's, and so is a link.
static bool isLeftByAFirstWrite(const QDir &directory)
{
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const QFileInfoList entries = directory.entryInfoList(everything);
    const QFileInfo lock(directory, QStringLiteral("lock"));
    return entries.isEmpty()
        || (lock.isFile() && lock.size() == 0
            && std::all_of(entries.cbegin(), entries.cend(), [](const QFileInfo &entry) {
                   const QString name = entry.fileName();
                   return !entry.isSymLink()
                       && (name == QLatin1String("lock") || name == QLatin1String("db.new")
                           || name.startsWith(QLatin1String("korvasync-store")));
               }));
}

StoreLocation::State StoreLocation::state()
{
    struct stat status;
    if (stat(QFile::encodeName(folder).constData(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid != geteuid()) {
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
