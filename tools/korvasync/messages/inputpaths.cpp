// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputpaths.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <filesystem>
#include <system_error>

namespace {

bool isMessageFile(const QString &name)
{
    static const QStringList suffixes{QStringLiteral("vmg"), QStringLiteral("vmsg"),
                                      QStringLiteral("txt"), QStringLiteral("xml")};
    return suffixes.contains(QFileInfo(name).suffix().toLower());
}

// Qt passes over names that are no text in the locale's character set. They cannot be opened
// by the name given here, so that each is told as unreadable instead of being left out.
void appendNamesThatAreNoText(const QString &path, QStringList &files)
{
    std::error_code error;
    const std::filesystem::directory_iterator folder(QFile::encodeName(path).toStdString(), error);
    for (const auto &entry : folder) {
        const QByteArray name = QByteArray::fromStdString(entry.path().filename().string());
        const QString text = QFile::decodeName(name);
        if (QFile::encodeName(text) != name && (entry.is_directory(error) || isMessageFile(text)))
            files += path + QLatin1Char('/') + text;
    }
}

void appendFolder(const QString &path, QStringList &files)
{
    const QDir folder(path);
    if (!folder.isReadable()) {
        files += path;
        return;
    }
    appendNamesThatAreNoText(path, files);
    const auto filters =
        QDir::Dirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks;
    for (const QFileInfo &entry : folder.entryInfoList(filters, QDir::Name)) {
        if (entry.isDir())
            appendFolder(entry.filePath(), files);
        else if (isMessageFile(entry.fileName()))
            files += entry.filePath();
    }
}

} // namespace

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
