// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historypass_p.h"

#include "eventquery_p.h"
#include "selectionquery_p.h"

#include <store/storeconnection.h>

#include <limits>

namespace CommHistory {

namespace {

//! Goes on behind the last event of the portion before, by its place in the order. So no query
//! stays open between two portions, and writers need not wait.
class SelectionPass : public HistoryPass
{
public:
    explicit SelectionPass(const HistorySelection &selection)
        : m_query(selection)
        , m_portion(selection.portion)
        , m_remaining(selection.limit < 0 ? std::numeric_limits<qint64>::max() : selection.limit)
        , m_lowest(m_query.lowest())
        , m_highest(m_query.highest())
        , m_newestFirst(selection.newestFirst)
        , m_lastId(m_newestFirst ? std::numeric_limits<int>::max()
                                 : std::numeric_limits<int>::min())
    {
    }

protected:
    HistoryPortion read(StoreConnection &connection) override
    {
        HistoryPortion portion;
        TrackerSparqlStatement *const statement = connection.statement(text(connection.format()));
        if (statement) {
            m_query.bind(statement);
            tracker_sparql_statement_bind_int(statement, "lowest", m_lowest);
            tracker_sparql_statement_bind_int(statement, "highest", m_highest);
            tracker_sparql_statement_bind_int(statement, "last", m_lastId);
        }
        const auto cursor = connection.execute(statement);
        const qint64 wanted = qMin<qint64>(m_portion, m_remaining);
        auto step = StoreConnection::Step::Row;
        while (portion.entries.size() < wanted
               && (step = connection.next(cursor.get())) == StoreConnection::Step::Row) {
            HistoryEntry entry = readEntry(cursor.get());
            if (m_query.accepts(entry.remoteUid))
                portion.entries.append(std::move(entry));
        }
        if (step == StoreConnection::Step::Failed)
            return readFailure(connection);
        m_remaining -= portion.entries.size();
        portion.isLast = step == StoreConnection::Step::End || m_remaining == 0;
        if (!portion.isLast)
            goOnBehind(portion.entries.last());
        return portion;
    }

private:
    std::string text(int format) const
    {
        // Of the events at the bound where the portion begins, those behind the last one.
        const std::string behind =
            m_newestFirst ? "?time != ?highest || ?id < ?last" : "?time != ?lowest || ?id > ?last";
        const std::string rest = ownTimePattern(format) + changePattern(format)
            + m_query.pattern(format) + " BIND (xsd:integer(~last) AS ?last) FILTER (" + behind
            + ")";
        return selectEvents("?event", rest,
                            m_newestFirst ? "ORDER BY DESC(?time) DESC(?id)" : "ORDER BY ?time ?id",
                            EntryVariables);
    }

    void goOnBehind(const HistoryEntry &entry)
    {
        (m_newestFirst ? m_highest : m_lowest) = entry.time;
        m_lastId = entry.id;
    }

    SelectionQuery m_query;
    int m_portion;
    qint64 m_remaining;
    qint64 m_lowest; // own time
    qint64 m_highest;
    bool m_newestFirst;
    int m_lastId;
};

} // namespace

std::unique_ptr<HistoryPass> newSelectionPass(const HistorySelection &selection)
{
    return std::make_unique<SelectionPass>(selection);
}

} // namespace CommHistory
