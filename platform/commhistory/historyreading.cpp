// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyreading_p.h"

#include <store/storeconnection.h>

#include <array>
#include <string_view>

namespace CommHistory {

namespace {

// The folders whose messages go by their end time: the inbox and the user's own folders.
constexpr int Inbox = 4098;
constexpr int LastSystemFolder = 4103;

//! A query for whole events.
//! \param subject  the event: a variable or a parameter
//! \param rest     filters within the pattern
//! \param order    what follows the pattern
std::string selectEvents(const char *subject, const char *rest, const char *order)
{
    std::string text = "SELECT ?id ?type ?direction ?status ?isRead ?isMissedCall ?folder"
                       " ?conversationId ?startTime ?endTime ?lastModified";
    std::string pattern;
    for (const TextField &field : TextFields) {
        const std::string variable = std::string(" ?") + (field.name + sizeof("kv:") - 1);
        text += variable;
        pattern += std::string(" ; ") + field.name + variable;
    }
    return text + " FROM <" KORVASYNC_GRAPH "> { " + subject
        + " kv:id ?id ; kv:type ?type ; kv:direction ?direction ; kv:status ?status ;"
          " kv:isRead ?isRead ; kv:isMissedCall ?isMissedCall ; kv:folder ?folder ;"
          " kv:conversationId ?conversationId ; kv:startTime ?startTime ; kv:endTime ?endTime ;"
          " kv:lastModified ?lastModified"
        + pattern + " . " + rest + " } " + order;
}

//! Reads a row that selectEvents() asked for.
EventRow readRow(TrackerSparqlCursor *cursor)
{
    int column = 0;
    const auto integer = [&] { return tracker_sparql_cursor_get_integer(cursor, column++); };
    const auto boolean = [&] { return bool(tracker_sparql_cursor_get_boolean(cursor, column++)); };
    EventRow row;
    row.id = int(integer());
    row.type = quint8(integer());
    row.direction = quint8(integer());
    row.status = quint8(integer());
    row.isRead = boolean();
    row.isMissedCall = boolean();
    row.parentId = int(integer());
    row.groupId = int(integer());
    row.startTime = integer();
    row.endTime = integer();
    row.lastModified = integer();
    std::array<std::string_view, std::size(TextFields)> texts;
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
const char *callFilter(CallEvent::CallType type)
{
    switch (type) {
    case CallEvent::AllCalls:
        break;
    case CallEvent::OutgoingCall:
        return "FILTER (?direction = 2)";
    case CallEvent::MissedCall:
        return "FILTER (?direction = 1 && ?isMissedCall = true)";
    case CallEvent::IncomingCall:
        return "FILTER (?direction = 1 && ?isMissedCall = false)";
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
    const bool byEnd = filter.parentId == Inbox || filter.parentId > LastSystemFolder;
    const std::string ownTime = byEnd ? "?endTime" : "?startTime";
    // The database compares a bare parameter as if it were a text, for which no index of numbers
    // serves. The sum keeps it from the index of the folders where that does not help: it knows
    // nothing of modifications.
    const std::string condition = filter.lastModified
        ? "?folder + 0 = ?wanted && ?lastModified > ?since"
        : "?folder = ?wanted && " + ownTime + " >= ?since";
    const std::string rest = "BIND (xsd:integer(~folder) AS ?wanted) BIND (xsd:integer(~since) AS"
                             " ?since) FILTER (?type = 2 && "
        + condition + ")";
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
    const std::string rest =
        std::string("FILTER (?type = 3 && ?startTime >= ~since) ") + callFilter(type);
    TrackerSparqlStatement *statement = connection.statement(
        selectEvents("?event", rest.c_str(), "ORDER BY DESC(?startTime) DESC(?id)"));
    if (statement)
        tracker_sparql_statement_bind_int(statement, "since", toStoredTime(since));
    return readRows(connection, statement, rows);
}

} // namespace CommHistory
