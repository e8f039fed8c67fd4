// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventquery_p.h"

#include "folder.h"

#include <store/storeconnection.h>

#include <array>
#include <string_view>

namespace CommHistory {

std::string selectEvents(const char *subject, const std::string &rest, const std::string &order,
                         const char *more)
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
    return "SELECT" + variables + more + " FROM <" KORVASYNC_GRAPH "> { " + subject + pattern
        + " . " + rest + " } " + order;
}

std::string ownTimePattern(int format)
{
    if (format > 1)
        return " ?event kv:time ?time .";
    const std::string inbox = std::to_string(InboxFolder);
    const std::string lastSystem = std::to_string(LastSystemFolder);
    const std::string sms = std::to_string(Event::SmsEvent);
    return " BIND (IF(?type = " + sms + " && (?folder = " + inbox + " || ?folder > " + lastSystem
        + "), ?endTime, ?startTime) AS ?time)";
}

std::string changePattern(int format)
{
    return format > 1 ? " ?event kv:change ?change ." : " BIND (0 AS ?change)";
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

HistoryEntry readEntry(TrackerSparqlCursor *cursor)
{
    EventRow row = readRow(cursor);
    HistoryEntry entry;
    entry.startTime = row.startTime;
    entry.endTime = row.endTime;
    entry.time = tracker_sparql_cursor_get_integer(cursor, FieldCount);
    entry.change = tracker_sparql_cursor_get_integer(cursor, FieldCount + 1);
    row.startTime = row.endTime = row.lastModified = NoTime; // local time is dear
    const Event event = fromRow(row);
    entry.id = event.id();
    entry.type = event.type();
    entry.folder = event.parentId();
    entry.direction = event.direction();
    entry.status = event.status();
    entry.isRead = event.isRead();
    entry.isMissedCall = event.isMissedCall();
    entry.conversation = event.groupId();
    entry.remoteUid = event.remoteUid();
    entry.text = event.freeText();
    entry.token = event.messageToken();
    entry.encoding = event.encoding();
    entry.characterSet = event.characterSet();
    entry.language = event.language();
    return entry;
}

} // namespace CommHistory
