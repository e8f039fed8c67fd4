// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "inputpaths.h"

#include "filename.h"
#include "shared/interrupt.h"

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

enum Kind { MessageFile, Folder, AnythingElse };

struct Found
{
    std::string path;
    Kind kind;
};

Kind kindOf(const fs::directory_entry &entry)
{
    std::error_code unknown; // what it is, so it cannot be read
    if (entry.is_symlink(unknown))
        return AnythingElse;
    if (entry.is_directory(unknown))
        return Folder;
    return entry.is_regular_file(unknown) && isMessageFile(entry.path().native()) ? MessageFile
                                                                                  : AnythingElse;
}

QString textOf(const std::string &path)
{
    return FileName::decode(QByteArray::fromStdString(path));
}

// Qt passes over names that are no text.
void appendFolder(const fs::path &path, InputPaths &paths)
{
    std::error_code error;
    std::vector<Found> all;
    const auto goesOn = [] { return Interrupt::signalNumber() == 0; };
    for (fs::directory_iterator entry(path, error), end; !error && entry != end && goesOn();
         entry.increment(error))
        all.push_back({entry->path().native(), kindOf(*entry)});
    if (error)
        paths.files += textOf(path.native());
    std::sort(all.begin(), all.end(),
              [](const Found &a, const Found &b) { return a.path < b.path; });
    for (const Found &found : all) {
        if (!goesOn())
            return;
        switch (found.kind) {
        case MessageFile:
            paths.files += textOf(found.path);
            break;
        case Folder:
            appendFolder(found.path, paths);
            break;
        case AnythingElse:
            paths.passedOver += textOf(found.path);
            break;
        }
    }
}

} // namespace

InputPaths messageFiles(const QStringList &arguments)
{
    InputPaths paths;
    for (const QString &argument : arguments) {
        const fs::path path(FileName::encode(argument).toStdString());
        std::error_code error;
        if (argument != QLatin1String("-") && fs::is_directory(path, error))
            appendFolder(path, paths);
        else
            paths.files += argument;
    }
    return paths;
}
