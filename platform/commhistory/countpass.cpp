// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historypass_p.h"

#include "eventquery_p.h"
#include "selectionquery_p.h"

#include <store/storeconnection.h>
#include <store/storedtext.h>

#include <QtCore/QMap>

namespace CommHistory {

namespace {

constexpr qint64 MsecsPerDay = 86400000;
constexpr qint64 JulianDayOf1970 = 2440588;

int yearOf(qint64 msecs)
{
    if (msecs == NoTime)
        return 0;
    const qint64 days = msecs / MsecsPerDay - (msecs % MsecsPerDay < 0 ? 1 : 0);
    return QDate::fromJulianDay(days + JulianDayOf1970).year();
}

QString textAt(TrackerSparqlCursor *cursor, int column)
{
    glong length = 0;
    const char *const bytes = tracker_sparql_cursor_get_string(cursor, column, &length);
    return fromStoredText(QByteArray::fromRawData(bytes, int(length)));
}

//! Counts the rows by itself: the database takes twice as long to group them.
class CountPass : public HistoryPass
{
public:
    CountPass(const HistorySelection &selection, HistoryReader::Key key)
        : m_query(selection)
        , m_key(key)
        , m_needsParty(key == HistoryReader::Party || !selection.party.isEmpty())
    {
    }

protected:
    HistoryPortion read(StoreConnection &connection) override
    {
        TrackerSparqlStatement *const statement = connection.statement(text(connection.format()));
        if (statement) {
            m_query.bind(statement);
            tracker_sparql_statement_bind_int(statement, "lowest", m_query.lowest());
            tracker_sparql_statement_bind_int(statement, "highest", m_query.highest());
        }
        const auto cursor = connection.execute(statement);
        auto step = connection.next(cursor.get());
        for (; step == StoreConnection::Step::Row; step = connection.next(cursor.get()))
            count(cursor.get());
        if (step == StoreConnection::Step::Failed)
            return readFailure(connection);
        tallies = (m_key == HistoryReader::Party) ? m_byParty.values() : m_byNumber.values();
        return {{}, HistoryReader::Done, true};
    }

private:
    std::string text(int format) const
    {
        return std::string("SELECT ?folder ?time ?isRead") + (m_needsParty ? " ?remoteUid" : "")
            + " FROM <" KORVASYNC_GRAPH "> { ?event kv:type ?type ; kv:folder ?folder ;"
              " kv:startTime ?startTime ; kv:endTime ?endTime ; kv:isRead ?isRead ;"
              " kv:remoteUid ?remoteUid ; kv:conversationId ?conversationId ;"
              " kv:lastModified ?lastModified ."
            + ownTimePattern(format) + m_query.pattern(format) + " }";
    }

    void count(TrackerSparqlCursor *cursor)
    {
        const QString party = m_needsParty ? textAt(cursor, 3) : QString();
        if (!m_query.accepts(party))
            return;
        const qint64 time = tracker_sparql_cursor_get_integer(cursor, 1);
        HistoryTally &tally = tallyOf(cursor, party, time);
        ++tally.count;
        tally.unread += tracker_sparql_cursor_get_boolean(cursor, 2) ? 0 : 1;
        if (time == NoTime)
            return;
        tally.first = qMin(tally.first == NoTime ? time : tally.first, time);
        tally.last = qMax(tally.last, time);
    }

    HistoryTally &tallyOf(TrackerSparqlCursor *cursor, const QString &party, qint64 time)
    {
        if (m_key == HistoryReader::Party) {
            HistoryTally &tally = m_byParty[party];
            tally.party = party;
            return tally;
        }
        const int number = m_key == HistoryReader::Year
            ? yearOf(time)
            : int(tracker_sparql_cursor_get_integer(cursor, 0));
        HistoryTally &tally = m_byNumber[number];
        tally.number = number;
        return tally;
    }

    SelectionQuery m_query;
    HistoryReader::Key m_key;
    bool m_needsParty;
    QMap<int, HistoryTally> m_byNumber;
    QMap<QString, HistoryTally> m_byParty;
};

} // namespace

std::unique_ptr<HistoryPass> newCountPass(const HistorySelection &selection, HistoryReader::Key key)
{
    return std::make_unique<CountPass>(selection, key);
}

} // namespace CommHistory
