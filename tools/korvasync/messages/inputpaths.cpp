// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputpaths.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

static void appendFolder(const QString &path, QStringList &files)
{
    const QDir folder(path);
    if (!folder.isReadable()) {
        files += path;
        return;
    }
    static const QStringList suffixes{QStringLiteral("vmg"), QStringLiteral("vmsg"),
                                      QStringLiteral("txt")};
    const auto filters =
        QDir::Dirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks;
    for (const QFileInfo &entry : folder.entryInfoList(filters, QDir::Name)) {
        if (entry.isDir())
            appendFolder(entry.filePath(), files);
        else if (suffixes.contains(entry.suffix().toLower()))
            files += entry.filePath();
    }
}

QStringList messageFiles(const QStringList &arguments)
{
    QStringList files;
    for (const QString &argument : arguments) {
        if (QFileInfo(argument).isDir())
            appendFolder(argument, files);
        else
            files += argument;
    }
    return files;
}
