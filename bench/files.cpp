// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What the client's rows work on, and their limits.

#include "directstore.h"
#include "rows.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace Bench {

namespace {

std::string name(int index, const char *ending)
{
    std::string digits = std::to_string(index);
    digits.insert(0, 6 - digits.size(), '0');
    return digits + ending;
}

void write(const std::filesystem::path &path, const std::string &text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    check(bool(file.flush()), "file written");
}

void writeMessage(const std::filesystem::path &folder, int index, const Record &record)
{
    std::string text;
    appendVMessage(record, text);
    write(folder / name(index, ".vmg"), text);
}

void writeCard(const std::filesystem::path &folder, int index, const Record &record)
{
    const std::string id = name(index, "");
    write(folder / (id + ".vcf"),
          "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + id + "\r\nFN:" + id + "\r\nTEL:" + record.number
              + "\r\nNOTE:" + record.body + "\r\nREV:" + record.stamp + "\r\nEND:VCARD\r\n");
}

void writeMail(const std::filesystem::path &folder, int index, const Record &record)
{
    write(folder / "cur" / (name(index, "") + ":2,S"),
          "From: <" + record.number
              + "@example.org>\nSubject: message\nDate: "
                "Wed, 01 Jan 2020 00:00:00 +0000\nMessage-ID: <"
              + name(index, "") + "@example.org>\nContent-Type: text/plain; charset=UTF-8\n\n"
              + record.body + "\n");
}

//! Reads every file of the folder, by name; the number of bytes.
std::size_t readAll(const std::string &folder)
{
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::size_t length = 0;
    for (const std::filesystem::path &path : paths) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        length += text.str().size();
    }
    return length;
}

} // namespace

void makeFiles(const Turn &turn)
{
    const std::filesystem::path folder(turn.folder);
    const auto writeFile = turn.who == "mbsync" ? writeMail
        : turn.who == "vdirsyncer"              ? writeCard
                                                : writeMessage;
    if (turn.who == "mbsync") {
        for (const char *part : {"cur", "new", "tmp"})
            std::filesystem::create_directories(folder / part);
    }
    std::filesystem::create_directories(folder);
    int index = 0;
    for (const Record &record : makeRecords(turn.count, turn.numbers))
        writeFile(folder, index++, record);
}

void makeOneFile(const Turn &turn)
{
    std::filesystem::create_directories(turn.folder);
    std::string text;
    for (const Record &record : makeRecords(turn.count, turn.numbers))
        appendVMessage(record, text);
    write(std::filesystem::path(turn.folder) / "all.vmg", text);
}

void readFiles(const Turn &turn)
{
    turn.report(seconds([&] { check(readAll(turn.folder) > 0, "files"); }));
}

//! \a turn.folder holds the files in "files" and an empty store in "store".
void readAndAddFiles(const Turn &turn)
{
    const std::vector<Record> records = makeRecords(turn.count, turn.numbers);
    DirectStore store(turn.folder + "/store", 0, 0);
    turn.report(seconds([&] {
        check(readAll(turn.folder + "/files") > 0, "files");
        for (int first = 0; first < turn.count; first += DirectStore::TransactionSize)
            store.addMessages(records, first,
                              std::min(turn.count, first + DirectStore::TransactionSize));
    }));
}

} // namespace Bench
