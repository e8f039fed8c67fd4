// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sqlitestore.h"

#include "harness.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Bench {

namespace {

constexpr char Schema[] =
    "PRAGMA journal_mode = WAL;"
    "PRAGMA synchronous = FULL;"
    "CREATE TABLE IF NOT EXISTS conversation ("
    " id INTEGER PRIMARY KEY, localUid TEXT, remoteUid TEXT, UNIQUE (remoteUid, localUid));"
    "CREATE TABLE IF NOT EXISTS event ("
    " id INTEGER PRIMARY KEY, type INTEGER, startTime INTEGER, endTime INTEGER,"
    " lastModified INTEGER, direction INTEGER, status INTEGER, isRead INTEGER,"
    " isMissedCall INTEGER, folder INTEGER, conversationId INTEGER REFERENCES conversation,"
    " localUid TEXT, remoteUid TEXT, text TEXT, token TEXT, encoding TEXT, characterSet TEXT,"
    " language TEXT);"
    "CREATE INDEX IF NOT EXISTS byFolder ON event (folder, endTime);"
    "CREATE INDEX IF NOT EXISTS byModification ON event (folder, lastModified);"
    "CREATE INDEX IF NOT EXISTS byType ON event (type, startTime);";

constexpr int Message = 2;
constexpr int Call = 3;

void bind(sqlite3_stmt *statement, int column, std::string_view text)
{
    sqlite3_bind_text(statement, column, text.data(), int(text.size()), SQLITE_STATIC);
}

std::string textOf(sqlite3_stmt *statement, int column)
{
    return std::string(reinterpret_cast<const char *>(sqlite3_column_text(statement, column)),
                       std::size_t(sqlite3_column_bytes(statement, column)));
}

} // namespace

SqliteStore::SqliteStore(const std::string &folder)
{
    sqlite3 *database = nullptr;
    const int result = sqlite3_open((folder + "/sqlite.db").c_str(), &database);
    m_database.reset(database);
    check(result == SQLITE_OK, "SQLite opens");
    run(Schema);
    m_insert = prepare("INSERT INTO event VALUES"
                       " (NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, '', '', '', '')");
    m_findConversation =
        prepare("SELECT id FROM conversation WHERE remoteUid = ? AND localUid = ?");
    m_addConversation = prepare("INSERT INTO conversation VALUES (NULL, ?, ?)");
}

void SqliteStore::run(const char *text)
{
    check(sqlite3_exec(m_database.get(), text, nullptr, nullptr, nullptr) == SQLITE_OK, text);
}

SqliteStore::Statement SqliteStore::prepare(const char *text)
{
    sqlite3_stmt *statement = nullptr;
    check(sqlite3_prepare_v2(m_database.get(), text, -1, &statement, nullptr) == SQLITE_OK, text);
    return Statement(statement);
}

std::int64_t SqliteStore::conversation(const std::string &number)
{
    const std::string remote = number.substr(number.size() - 7);
    sqlite3_stmt *const find = m_findConversation.get();
    bind(find, 1, remote);
    bind(find, 2, Account);
    const bool isKnown = sqlite3_step(find) == SQLITE_ROW;
    const std::int64_t known = isKnown ? sqlite3_column_int64(find, 0) : 0;
    sqlite3_reset(find);
    if (isKnown)
        return known;
    sqlite3_stmt *const add = m_addConversation.get();
    bind(add, 1, Account);
    bind(add, 2, remote);
    check(sqlite3_step(add) == SQLITE_DONE, "SQLite adds a conversation");
    sqlite3_reset(add);
    return sqlite3_last_insert_rowid(m_database.get());
}

void SqliteStore::insert(const Record &record, int type, std::int64_t conversation)
{
    sqlite3_stmt *const s = m_insert.get();
    const std::array<std::int64_t, 10> integers = {type,
                                                   record.time * 1000,
                                                   record.time * 1000,
                                                   record.time * 1000,
                                                   record.isSent() ? 2 : 1,
                                                   record.isSent() ? 2 : 0,
                                                   1,
                                                   0,
                                                   type == Message ? record.folder : 0,
                                                   conversation};
    int column = 0;
    for (const std::int64_t integer : integers)
        sqlite3_bind_int64(s, ++column, integer);
    bind(s, ++column, Account);
    bind(s, ++column, record.number);
    if (type == Message)
        bind(s, ++column, record.body);
    else
        bind(s, ++column, "");
    check(sqlite3_step(s) == SQLITE_DONE, "SQLite adds an event");
    sqlite3_reset(s);
}

void SqliteStore::addMessages(const std::vector<Record> &records, int first, int end)
{
    run("BEGIN IMMEDIATE");
    for (int i = first; i < end; ++i) {
        const Record &record = records[std::size_t(i)];
        insert(record, Message, conversation(record.number));
    }
    run("COMMIT");
}

void SqliteStore::addCalls(const std::vector<Record> &records, int first, int end)
{
    run("BEGIN IMMEDIATE");
    for (int i = first; i < end; ++i)
        insert(records[std::size_t(i)], Call, -1);
    run("COMMIT");
}

void SqliteStore::remove(const std::vector<int> &ids)
{
    const Statement remove = prepare("DELETE FROM event WHERE id = ?");
    for (std::size_t first = 0; first < ids.size(); first += TransactionSize) {
        run("BEGIN IMMEDIATE");
        for (std::size_t i = first; i < std::min(ids.size(), first + TransactionSize); ++i) {
            sqlite3_bind_int(remove.get(), 1, ids[i]);
            check(sqlite3_step(remove.get()) == SQLITE_DONE, "SQLite deletes");
            sqlite3_reset(remove.get());
        }
        run("COMMIT");
    }
}

std::vector<std::string> SqliteStore::readFolder(int folder)
{
    const Statement reading = prepare("SELECT * FROM event WHERE folder = ? AND type = 2"
                                      " ORDER BY endTime, id");
    sqlite3_bind_int(reading.get(), 1, folder);
    std::vector<std::string> texts;
    while (sqlite3_step(reading.get()) == SQLITE_ROW) {
        const std::int64_t time = sqlite3_column_int64(reading.get(), 3) / 1000;
        Record record{folder, textOf(reading.get(), 12), time, textOf(reading.get(), 13),
                      makeStamp(time)};
        std::string text;
        text.reserve(512);
        appendVMessage(record, text);
        text.shrink_to_fit();
        texts.push_back(std::move(text));
    }
    return texts;
}

int SqliteStore::readCalls()
{
    const Statement reading =
        prepare("SELECT * FROM event WHERE type = 3 ORDER BY startTime DESC, id DESC");
    std::vector<std::string> texts;
    while (sqlite3_step(reading.get()) == SQLITE_ROW) {
        std::string text = "BEGIN:VCALLHISTENTRY\r\nTYPE:";
        text += sqlite3_column_int(reading.get(), 5) == 1 ? "incoming" : "outgoing";
        text += "\r\nTEL:";
        text += textOf(reading.get(), 12);
        text += "\r\nDURATION:0\r\nCALL-DATETIME:";
        text += makeStamp(sqlite3_column_int64(reading.get(), 3) / 1000);
        text += "\r\nEND:VCALLHISTENTRY\r\n";
        texts.push_back(std::move(text));
    }
    return int(texts.size());
}

int SqliteStore::countModified(int folder, std::int64_t since)
{
    const Statement reading = prepare("SELECT * FROM event WHERE folder = ? AND lastModified > ?");
    sqlite3_bind_int(reading.get(), 1, folder);
    sqlite3_bind_int64(reading.get(), 2, since);
    int rows = 0;
    while (sqlite3_step(reading.get()) == SQLITE_ROW)
        ++rows;
    return rows;
}

} // namespace Bench
