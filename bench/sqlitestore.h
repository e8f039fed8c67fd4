// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "records.h"

#include <sqlite3.h>

#include <memory>

namespace Bench {

//! The peer: plain SQLite with a table of the same columns and the indexes that the rows
//! need. Each write is one transaction that is on the disk when it returns.
class SqliteStore
{
public:
    static constexpr int TransactionSize = 1000;

    explicit SqliteStore(const std::string &folder);

    void addMessages(const std::vector<Record> &records, int first, int end);
    void addCalls(const std::vector<Record> &records, int first, int end);
    void remove(const std::vector<int> &ids);
    //! The rows in the form that the library gives them in.
    std::vector<std::string> readFolder(int folder);
    int readCalls();
    //! How many of a folder were modified after a time.
    int countModified(int folder, std::int64_t since);

private:
    struct Close
    {
        void operator()(sqlite3 *database) const { sqlite3_close(database); }
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    void run(const char *text);
    Statement prepare(const char *text);
    std::int64_t conversation(const std::string &number);
    void insert(const Record &record, int type, std::int64_t conversation);

    std::unique_ptr<sqlite3, Close> m_database;
    Statement m_insert;
    Statement m_findConversation;
    Statement m_addConversation;
};

} // namespace Bench
