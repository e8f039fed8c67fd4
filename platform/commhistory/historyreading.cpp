// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyreading_p.h"

#include "eventquery_p.h"
#include "historykeys_p.h"

#include <store/storeconnection.h>

#include <string>

namespace CommHistory {

namespace {

//! A condition of a query: that a variable has one of the numbers that Event names.
std::string equals(const char *variable, int number)
{
    return std::string(variable) + " = " + std::to_string(number);
}

//! The part of a query that gives ?time, the own time of an event. A store of the first format does
//! not keep it.
std::string ownTime(const StoreConnection &connection, const char *field)
{
    if (connection.format() == 1)
        return std::string("BIND (") + field + " AS ?time) ";
    return "?event kv:time ?time . ";
}

bool readRows(StoreConnection &connection, TrackerSparqlStatement *statement,
              QVector<EventRow> *rows)
{
    const auto cursor = connection.execute(statement);
    QVector<EventRow> read;
    auto step = connection.next(cursor.get());
    for (; step == StoreConnection::Step::Row; step = connection.next(cursor.get()))
        read.append(readRow(cursor.get()));
    if (step == StoreConnection::Step::Failed) {
        connection.warnAbout(StoreProblem::ReadFailed);
        return false;
    }
    rows->swap(read);
    return true;
}

//! The part of a call query that tells the kinds apart.
std::string callFilter(CallEvent::CallType type)
{
    const std::string inbound = equals("?direction", Event::Inbound);
    switch (type) {
    case CallEvent::AllCalls:
        break;
    case CallEvent::OutgoingCall:
        return "FILTER (" + equals("?direction", Event::Outbound) + ")";
    case CallEvent::MissedCall:
        return "FILTER (" + inbound + " && ?isMissedCall = true)";
    case CallEvent::IncomingCall:
        return "FILTER (" + inbound + " && ?isMissedCall = false)";
    }
    return "";
}

} // namespace

bool readEvent(StoreConnection &connection, int id, QVector<EventRow> *rows)
{
    static const std::string text = selectEvents("~event", "", "");
    TrackerSparqlStatement *statement = connection.statement(text);
    if (statement)
        tracker_sparql_statement_bind_string(statement, "event", eventUri(id).constData());
    return readRows(connection, statement, rows);
}

bool readMessages(StoreConnection &connection, const SyncSMSFilter &filter, QVector<EventRow> *rows)
{
    // All were modified since the beginning.
    const bool isByModification = filter.lastModified && filter.time.isValid();
    // The database compares a bare parameter as if it were a text, for which no index of numbers
    // serves. The sums keep it from the index that does not help.
    const std::string condition = isByModification
        ? "?folder + 0 = ?wanted && ?lastModified > ?since"
        : "?folder = ?wanted && ?time >= ?since";
    const std::string rest =
        ownTime(connection, goesByEnd(filter.parentId) ? "?endTime" : "?startTime")
        + "BIND (xsd:integer(~folder) AS ?wanted) BIND (xsd:integer(~since) AS ?since) FILTER ("
        + equals("?type + 0", Event::SmsEvent) + " && " + condition + ")";

    TrackerSparqlStatement *statement =
        connection.statement(selectEvents("?event", rest, "ORDER BY ?time ?id"));
    if (statement) {
        tracker_sparql_statement_bind_int(statement, "folder", filter.parentId);
        tracker_sparql_statement_bind_int(statement, "since", toStoredTime(filter.time));
    }
    return readRows(connection, statement, rows);
}

bool readCalls(StoreConnection &connection, CallEvent::CallType type, const QDateTime &since,
               QVector<EventRow> *rows)
{
    const std::string rest = ownTime(connection, "?startTime")
        + "BIND (xsd:integer(~since) AS ?since) FILTER (" + equals("?type", Event::CallEvent)
        + " && ?time >= ?since) " + callFilter(type);
    TrackerSparqlStatement *statement =
        connection.statement(selectEvents("?event", rest, "ORDER BY DESC(?time) DESC(?id)"));
    if (statement)
        tracker_sparql_statement_bind_int(statement, "since", toStoredTime(since));
    return readRows(connection, statement, rows);
}

} // namespace CommHistory
