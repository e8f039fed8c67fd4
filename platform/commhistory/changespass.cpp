// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historypass_p.h"

#include "eventquery_p.h"

#include <store/storeconnection.h>

#include <algorithm>
#include <iterator>

namespace CommHistory {

namespace {

//! The last numbers that the store has given.
struct Counters
{
    qint64 change = 0;
    int eventId = 0;
};

bool readCounters(StoreConnection &connection, Counters *counters)
{
    const auto cursor = connection.execute(
        connection.statement("SELECT ?change ?id FROM <" KORVASYNC_GRAPH "> { <urn:korvasync:ids>"
                             " kv:lastChange ?change ; kv:lastEventId ?id }"));
    if (connection.next(cursor.get()) != StoreConnection::Step::Row)
        return false;
    counters->change = tracker_sparql_cursor_get_integer(cursor.get(), 0);
    counters->eventId = int(tracker_sparql_cursor_get_integer(cursor.get(), 1));
    return true;
}

HistoryEntry readTombstone(TrackerSparqlCursor *cursor)
{
    HistoryEntry entry;
    entry.id = int(tracker_sparql_cursor_get_integer(cursor, 0));
    entry.type = Event::EventType(tracker_sparql_cursor_get_integer(cursor, 1));
    entry.change = tracker_sparql_cursor_get_integer(cursor, 2);
    entry.isRemoved = true;
    return entry;
}

//! Changes after one, in order.
struct Changes
{
    QList<HistoryEntry> entries;
    bool isWhole = false; //!< there were no more of them
};

bool readChanges(StoreConnection &connection, const std::string &text, qint64 since, int count,
                 HistoryEntry (*readRow)(TrackerSparqlCursor *), Changes *changes)
{
    TrackerSparqlStatement *const statement = connection.statement(text);
    if (statement)
        tracker_sparql_statement_bind_int(statement, "since", since);
    const auto cursor = connection.execute(statement);
    auto step = StoreConnection::Step::Row;
    while (changes->entries.size() < count
           && (step = connection.next(cursor.get())) == StoreConnection::Step::Row)
        changes->entries.append(readRow(cursor.get()));
    changes->isWhole = step == StoreConnection::Step::End;
    return step != StoreConnection::Step::Failed;
}

bool isBefore(const HistoryEntry &a, const HistoryEntry &b) { return a.change < b.change; }

//! Others may write between any two queries, so each portion ends at a change up to which all that
//! was read is complete. The read ends with a look that finds no event any more.
class ChangesPass : public HistoryPass
{
public:
    ChangesPass(const HistoryPosition &since, int portion)
        : m_since(since)
        , m_portion(portion)
        , m_reached(since.change)
    {
    }

protected:
    HistoryPortion read(StoreConnection &connection) override
    {
        Counters counters;
        Changes events;
        Changes tombstones;
        if (!readCounters(connection, &counters))
            return readFailure(connection);
        if (m_since.change == HistoryPosition::latest().change) {
            position = {connection.identity(), counters.change, counters.eventId};
            return {{}, HistoryReader::Done, true};
        }
        const bool isKnown = m_since.store.isEmpty()
            || (m_since.store == connection.identity() && m_since.change <= counters.change
                && m_since.lastId <= counters.eventId);
        if (!isKnown)
            return failure(HistoryReader::UnknownPosition);
        if (m_begun < 0)
            m_begun = counters.change;
        if (!readEvents(connection, &events) || !readTombstones(connection, &tombstones))
            return readFailure(connection);

        qint64 end = events.isWhole ? qMax(counters.change, m_reached) : 0;
        if (!events.entries.isEmpty())
            end = qMax(end, events.entries.last().change);
        if (!tombstones.isWhole)
            end = qMin(end, tombstones.entries.last().change);
        HistoryPortion portion;
        portion.entries = merged(events.entries, tombstones.entries, end);
        portion.isLast = events.isWhole && tombstones.isWhole && events.entries.isEmpty()
            && portion.entries.size() <= m_portion;
        if (portion.entries.size() > m_portion) {
            portion.entries = portion.entries.mid(0, m_portion);
            end = portion.entries.last().change;
        }
        m_reached = end;
        position = {connection.identity(), m_reached, counters.eventId};
        return portion;
    }

private:
    bool readEvents(StoreConnection &connection, Changes *changes) const
    {
        static const std::string text =
            selectEvents("?event",
                         "?event kv:time ?time ; kv:change ?change ."
                         " BIND (xsd:integer(~since) AS ?since) FILTER (?change > ?since)",
                         "ORDER BY ?change", EntryVariables);
        return readChanges(connection, text, m_reached, m_portion, readEntry, changes);
    }

    bool readTombstones(StoreConnection &connection, Changes *changes) const
    {
        static const std::string text =
            "SELECT ?id ?type ?change FROM <" KORVASYNC_GRAPH "> { ?tombstone kv:deletedId ?id ;"
            " kv:deletedType ?type ; kv:deletedChange ?change ."
            " BIND (xsd:integer(~since) AS ?since) FILTER (?change > ?since) } ORDER BY ?change";
        const qint64 since = m_since.store.isEmpty() ? qMax(m_reached, m_begun) : m_reached;
        return readChanges(connection, text, since, m_portion, readTombstone, changes);
    }

    QList<HistoryEntry> merged(const QList<HistoryEntry> &events,
                               const QList<HistoryEntry> &tombstones, qint64 end) const
    {
        QList<HistoryEntry> all;
        std::merge(events.cbegin(), events.cend(), tombstones.cbegin(), tombstones.cend(),
                   std::back_inserter(all), isBefore);
        const auto isLeftOut = [&](const HistoryEntry &entry) {
            // What came and went before this read began is known to nobody.
            const bool isUnknown = entry.id > m_since.lastId && entry.change <= m_begun;
            return entry.change > end || (entry.isRemoved && isUnknown);
        };
        QList<HistoryEntry> told;
        std::remove_copy_if(all.cbegin(), all.cend(), std::back_inserter(told), isLeftOut);
        return told;
    }

    HistoryPosition m_since;
    int m_portion;
    qint64 m_reached;
    qint64 m_begun = -1; // the last change when the read began
};

} // namespace

std::unique_ptr<HistoryPass> newChangesPass(const HistoryPosition &since, int portion)
{
    return std::make_unique<ChangesPass>(since, portion);
}

} // namespace CommHistory
