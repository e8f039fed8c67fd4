// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventquery_p.h"
#include "eventresource_p.h"
#include "historywriting_p.h"

#include <store/storeupgrade.h>

#include <algorithm>
#include <functional>

namespace CommHistory {

namespace {

//! Adds what \a make makes of each row of a query of the old store.
bool copyRows(StoreConnection &old, StoreConnection &fresh, const std::string &text,
              const std::function<GPointer<TrackerResource>(TrackerSparqlCursor *)> &make)
{
    const auto cursor = old.execute(old.statement(text));
    auto step = StoreConnection::Step::Row;
    const auto fill = [&](TrackerBatch *batch) {
        for (int i = 0; i < MaxTransaction && step == StoreConnection::Step::Row; ++i) {
            step = old.next(cursor.get());
            if (step == StoreConnection::Step::Row)
                addTo(batch, make(cursor.get()).get());
        }
        return step != StoreConnection::Step::Failed;
    };
    while (step == StoreConnection::Step::Row) {
        if (!fresh.fill(fill))
            return false;
    }
    return true;
}

bool copyCounters(StoreConnection &old, StoreConnection &fresh, qint64 lastChange,
                  StoreConnection::Contents *contents)
{
    const std::optional<StoreConnection::Contents> before = old.contents();
    if (!before)
        return false;
    contents->lastEventId = before->lastEventId;
    contents->lastConversationId = before->lastConversationId;
    return fresh.fill([&](TrackerBatch *batch) {
        const auto counters = newResource("urn:korvasync:ids", "kv:IdCounter");
        setNumber(counters.get(), "kv:lastEventId", before->lastEventId);
        setNumber(counters.get(), "kv:lastConversationId", before->lastConversationId);
        setNumber(counters.get(), "kv:lastChange", lastChange);
        addTo(batch, counters.get());
        return true;
    });
}

} // namespace

std::optional<StoreConnection::Contents> copyHistory(StoreConnection &old, StoreConnection &fresh)
{
    StoreConnection::Contents contents;
    const bool hasConversations = copyRows(
        old, fresh,
        "SELECT (xsd:integer(STRAFTER(STR(?channel), 'conversation:')) AS ?id) ?local ?remote"
        " FROM <" KORVASYNC_GRAPH "> { ?channel a nmo:CommunicationChannel ; nie:subject ?local ;"
        " nie:generator ?remote }",
        [&](TrackerSparqlCursor *cursor) {
            ++contents.conversations;
            return conversationResource(int(tracker_sparql_cursor_get_integer(cursor, 0)),
                                        tracker_sparql_cursor_get_string(cursor, 1, nullptr),
                                        tracker_sparql_cursor_get_string(cursor, 2, nullptr));
        });
    // Nobody followed the changes of the old store, so its ids can number them.
    qint64 lastChange = 0;
    const bool hasEvents = hasConversations
        && copyRows(old, fresh, selectEvents("?event", "", ""), [&](TrackerSparqlCursor *cursor) {
                               const EventRow row = readRow(cursor);
                               ++contents.events;
                               lastChange = std::max<qint64>(lastChange, row.id);
                               return eventResource(row, AllFields, row.id);
                           });
    if (!hasEvents || !copyCounters(old, fresh, lastChange, &contents))
        return std::nullopt;
    return contents;
}

} // namespace CommHistory
