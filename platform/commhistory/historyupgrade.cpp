// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventquery_p.h"
#include "eventresource_p.h"
#include "historywriting_p.h"

#include <store/store.h>

#include <algorithm>
#include <functional>

namespace CommHistory {

namespace {

//! Adds what \a make makes of each row of a query of the old store, from the row \a first on. The
//! rows come in the order in which the database has them, as nobody writes meanwhile.
bool copyRows(StoreConnection &old, StoreConnection &fresh, const std::string &text, qint64 first,
              const std::function<GPointer<TrackerResource>(TrackerSparqlCursor *)> &make)
{
    const auto cursor = old.execute(old.statement(text + " OFFSET " + std::to_string(first)));
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

//! Nobody followed the changes of the old store, so the ids of its events number them.
bool setCounters(StoreConnection &fresh, const StoreConnection::Contents &old)
{
    return fresh.fill([&](TrackerBatch *batch) {
        const auto counters = newResource("urn:korvasync:ids", "kv:IdCounter");
        setNumber(counters.get(), "kv:lastEventId", old.lastEventId);
        setNumber(counters.get(), "kv:lastConversationId", old.lastConversationId);
        setNumber(counters.get(), "kv:lastChange", std::max<qint64>(old.lastEventId, 0));
        addTo(batch, counters.get());
        return true;
    });
}

bool copyHistory(StoreConnection &old, StoreConnection &fresh)
{
    const auto all = old.contents();
    const auto copied = fresh.contents();
    if (!all || !copied)
        return false;
    return copyRows(old, fresh,
                    "SELECT (xsd:integer(STRAFTER(STR(?channel), 'conversation:')) AS ?id) ?local"
                    " ?remote FROM <" KORVASYNC_GRAPH "> { ?channel a nmo:CommunicationChannel ;"
                    " nie:subject ?local ; nie:generator ?remote }",
                    copied->conversations,
                    [](TrackerSparqlCursor *cursor) {
                        return conversationResource(
                            int(tracker_sparql_cursor_get_integer(cursor, 0)),
                            tracker_sparql_cursor_get_string(cursor, 1, nullptr),
                            tracker_sparql_cursor_get_string(cursor, 2, nullptr));
                    })
        && copyRows(old, fresh, selectEvents("?event", "", ""), copied->events,
                    [](TrackerSparqlCursor *cursor) {
                        const EventRow row = readRow(cursor);
                        return eventResource(row, AllFields, row.id);
                    })
        && setCounters(fresh, *all);
}

//! Gives itself to the store when the library is loaded: the store, which is below, cannot ask.
[[maybe_unused]] const bool IsGiven = (Store::setHistoryCopier(copyHistory), true);

} // namespace

} // namespace CommHistory
