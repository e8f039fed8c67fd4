// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storelocation.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

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

StoreLocation::State StoreLocation::state()
{
    struct stat status;
    const QString marker = folder + QLatin1String("/korvasync-store");
    if (stat(QFile::encodeName(marker).constData(), &status) == 0)
        return Present;
    if (errno != ENOENT) {
        error = QString::fromLocal8Bit(std::strerror(errno));
        return Unreachable;
    }
    const QDir directory(folder);
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    if (directory.exists() && !directory.isReadable()) {
        error = QString::fromLocal8Bit(std::strerror(EACCES));
        return Unreachable;
    }
    // A lock without a marker is left by a first write that came to nothing.
    return directory.isEmpty(everything) || directory.exists(QStringLiteral("lock")) ? Absent
                                                                                     : OtherFolder;
}

void StoreLocation::select() const { qputenv(environmentVariable, QFile::encodeName(folder)); }
