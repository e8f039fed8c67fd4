// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputpaths.h"

#include "filename.h"

#include <QtCore/QByteArrayList>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

bool isMessageFile(const std::string &path)
{
    static const QByteArrayList suffixes{"vmg", "vmsg", "txt", "xml"};
    const size_t dot = path.find_last_of("./");
    return dot != path.npos && path[dot] == '.'
        && suffixes.contains(QByteArray::fromStdString(path.substr(dot + 1)).toLower());
}

struct Found
{
    std::string path;
    bool isFolder;
};

// Qt passes over names that are no text.
void appendFolder(const fs::path &path, QStringList &files)
{
    std::error_code error;
    std::vector<Found> all;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown; // what an entry is, which is passed over then
        if (entry->is_symlink(unknown))
            continue;
        const bool isFolder = entry->is_directory(unknown);
        if (isFolder || (entry->is_regular_file(unknown) && isMessageFile(entry->path().native())))
            all.push_back({entry->path().native(), isFolder});
    }
    if (error)
        files += FileName::decode(QByteArray::fromStdString(path.native()));
    std::sort(all.begin(), all.end(),
              [](const Found &a, const Found &b) { return a.path < b.path; });
    for (const Found &found : all) {
        if (found.isFolder)
            appendFolder(found.path, files);
        else
            files += FileName::decode(QByteArray::fromStdString(found.path));
    }
}

} // namespace

QStringList messageFiles(const QStringList &arguments)
{
    QStringList files;
    for (const QString &argument : arguments) {
        const fs::path path(FileName::encode(argument).toStdString());
        std::error_code error;
        if (argument != QLatin1String("-") && fs::is_directory(path, error))
            appendFolder(path, files);
        else
            files += argument;
    }
    return files;
}
