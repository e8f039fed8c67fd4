// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyreading_p.h"

#include "folder.h"

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

//! A query for whole events.
//! \param subject  the event: a variable or a parameter
//! \param rest     filters within the pattern
//! \param order    what follows the pattern
std::string selectEvents(const char *subject, const char *rest, const char *order)
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

//! Reads a row that selectEvents() asked for.
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
    // The messages of the inbox and of the user's own folders go by their end time.
    const bool byEnd = filter.parentId == InboxFolder || filter.parentId > LastSystemFolder;
    const std::string ownTime = byEnd ? "?endTime" : "?startTime";
    // The database compares a bare parameter as if it were a text, for which no index of numbers
    // serves. The sum keeps it from the index of the folders where that does not help: it knows
    // nothing of modifications.
    const std::string condition = filter.lastModified
        ? "?folder + 0 = ?wanted && ?lastModified > ?since"
        : "?folder = ?wanted && " + ownTime + " >= ?since";
    const std::string rest = "BIND (xsd:integer(~folder) AS ?wanted) BIND (xsd:integer(~since) AS"
                             " ?since) FILTER ("
        + equals("?type", Event::SmsEvent) + " && " + condition + ")";
    const std::string order = "ORDER BY " + ownTime + " ?id";

    TrackerSparqlStatement *statement =
        connection.statement(selectEvents("?event", rest.c_str(), order.c_str()));
    if (statement) {
        tracker_sparql_statement_bind_int(statement, "folder", filter.parentId);
        tracker_sparql_statement_bind_int(statement, "since", toStoredTime(filter.time));
    }
    return readRows(connection, statement, rows);
}

bool readCalls(StoreConnection &connection, CallEvent::CallType type, const QDateTime &since,
               QVector<EventRow> *rows)
{
    const std::string rest = "FILTER (" + equals("?type", Event::CallEvent)
        + " && ?startTime >= ~since) " + callFilter(type);
    TrackerSparqlStatement *statement = connection.statement(
        selectEvents("?event", rest.c_str(), "ORDER BY DESC(?startTime) DESC(?id)"));
    if (statement)
        tracker_sparql_statement_bind_int(statement, "since", toStoredTime(since));
    return readRows(connection, statement, rows);
}

} // namespace CommHistory
