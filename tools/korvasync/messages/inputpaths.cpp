// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputpaths.h"

#include "filename.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

bool isMessageFile(const QString &name)
{
    static const QStringList suffixes{QStringLiteral("vmg"), QStringLiteral("vmsg"),
                                      QStringLiteral("txt"), QStringLiteral("xml")};
    return suffixes.contains(QFileInfo(name).suffix().toLower());
}

// Qt passes over names that are no text.
void appendFolder(const fs::path &path, QStringList &files)
{
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error))
        entries.push_back(*entry);
    if (error)
        files += FileName::decode(QByteArray::fromStdString(path.native()));
    std::sort(entries.begin(), entries.end());
    for (const fs::directory_entry &entry : entries) {
        const QString name = FileName::decode(QByteArray::fromStdString(entry.path().native()));
        if (entry.is_symlink(error))
            continue;
        if (entry.is_directory(error))
            appendFolder(entry.path(), files);
        else if (entry.is_regular_file(error) && isMessageFile(name))
            files += name;
    }
}

} // namespace

QStringList messageFiles(const QStringList &arguments)
{
    QStringList files;
    for (const QString &argument : arguments) {
        const fs::path path(FileName::encode(argument).toStdString());
        std::error_code error;
        if (fs::is_directory(path, error))
            appendFolder(path, files);
        else
            files += argument;
    }
    return files;
}
