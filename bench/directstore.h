// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "records.h"

#include <libtracker-sparql/tracker-sparql.h>

#include <map>
#include <memory>

namespace Bench {

struct Unref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using Pointer = std::unique_ptr<T, Unref>;

//! The limit: the database of a store, used directly and without any promise of the
//! platform's - no lock, no flush to the disk, no report.
class DirectStore
{
public:
    static constexpr int TransactionSize = 1000;

    //! \param folder   of the store, which exists
    //! \param records  how many messages it has
    //! \param numbers  of how many parties
    DirectStore(const std::string &folder, int records, int numbers);

    //! Adds the messages from \a first to before \a end in one transaction, with the
    //! conversations that are new.
    void addMessages(const std::vector<Record> &records, int first, int end);
    void addCalls(const std::vector<Record> &records, int first, int end);
    void remove(const std::vector<int> &ids);

    //! Steps through the rows; their number.
    int readFolder(int folder);
    int readCalls();
    bool readOne(int id);
    //! The conversation query, in the text in which the library asks it.
    bool findConversation(const std::string &number);

private:
    TrackerSparqlStatement *statement(const std::string &text);
    int countRows(TrackerSparqlStatement *statement);
    int conversation(TrackerBatch *batch, const std::string &number);
    Pointer<TrackerResource> newEvent(const Record &record);
    void write(TrackerBatch *batch);

    Pointer<TrackerSparqlConnection> m_connection;
    std::map<std::string, Pointer<TrackerSparqlStatement>> m_statements;
    std::map<std::string, int> m_conversations;
    int m_lastId;
};

} // namespace Bench
