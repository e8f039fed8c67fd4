// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyreading_p.h"

#include "historykeys_p.h"

#include <store/storeconnection.h>

#include <array>
#include <string>
#include <string_view>

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

std::string selectEvents(const char *subject, const std::string &rest, const std::string &order)
{
    std::string variables;
    std::string pattern;
    const auto add = [&](const char *name) {
        const std::string variable = std::string(" ?") + (name + sizeof("kv:") - 1);
        variables += variable;
        pattern += (pattern.empty() ? " " : " ; ") + (name + variable);
    };
    forEachNumber([&](const auto &field) { add(field.name); });
    forEachText([&](const TextField &field) { add(field.name); });
    return "SELECT" + variables + " FROM <" KORVASYNC_GRAPH "> { " + subject + pattern + " . "
        + rest + " } " + order;
}

EventRow readRow(TrackerSparqlCursor *cursor)
{
    int column = 0;
    EventRow row;
    forEachNumber([&](const auto &field) {
        auto &number = row.*field.inRow;
        if constexpr (std::is_same_v<decltype(number), bool &>)
            number = tracker_sparql_cursor_get_boolean(cursor, column++);
        else
            number =
                std::decay_t<decltype(number)>(tracker_sparql_cursor_get_integer(cursor, column++));
    });
    std::array<std::string_view, TextCount> texts;
    std::size_t size = texts.size() - 1; // the zero bytes between them
    for (std::string_view &text : texts) {
        glong length = 0;
        const char *const bytes = tracker_sparql_cursor_get_string(cursor, column++, &length);
        text = {bytes, std::size_t(length)};
        size += text.size();
    }
    row.texts.reserve(int(size)); // no more, since a folder's worth of rows stays
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0)
            row.texts.append('\0');
        row.texts.append(texts[i].data(), int(texts[i].size()));
    }
    return row;
}

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
