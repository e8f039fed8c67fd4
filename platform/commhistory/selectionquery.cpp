// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "selectionquery_p.h"

#include "historykeys_p.h"
#include "phonenumber.h"

#include <limits>

namespace CommHistory {

namespace {

//! The parameter of a number, as a number.
std::string bound(const std::string &parameter)
{
    return " BIND (xsd:integer(~" + parameter + ") AS ?" + parameter + ")";
}

std::string folderParameter(int index) { return "folder" + std::to_string(index); }

//! The sum keeps a condition from the index that is not to be used.
std::string typeCondition(Event::EventType type, bool byIndex)
{
    return (byIndex ? "?type = " : "?type + 0 = ") + std::to_string(int(type));
}

} // namespace

SelectionQuery::SelectionQuery(const HistorySelection &selection)
    : m_selection(selection)
    , m_partyKey(selection.party.isEmpty() ? 0 : partyKeyOf(selection.party))
    , m_lowest(toStoredTime(selection.from))
    , m_highest(selection.to.isValid() ? toStoredTime(selection.to) - 1
                                       : std::numeric_limits<qint64>::max())
{
}

std::string SelectionQuery::pattern(int format) const
{
    const bool byParty = !m_selection.party.isEmpty() && format > 1;
    const int folderCount = int(m_selection.folders.size());
    const bool byFolder = !byParty && folderCount == 1;
    std::string pattern = bound("lowest") + bound("highest");
    std::string filter = typeCondition(m_selection.type, !byParty && !byFolder)
        + " && ?time >= ?lowest && ?time <= ?highest";
    if (byParty) {
        pattern += " ?event kv:partyKey ?partyKey ." + bound("party");
        filter += " && ?partyKey = ?party";
    }
    for (int i = 0; i < folderCount; ++i)
        pattern += bound(folderParameter(i));
    if (byFolder) {
        filter += " && ?folder = ?folder0";
    } else if (folderCount > 0) {
        filter += " && ?folder + 0 IN (?folder0";
        for (int i = 1; i < folderCount; ++i)
            filter += ", ?" + folderParameter(i);
        filter += ")";
    }
    if (m_selection.conversation != -1) {
        pattern += bound("conversation");
        filter += " && ?conversationId = ?conversation";
    }
    if (m_selection.modifiedSince.isValid()) {
        pattern += bound("modified");
        filter += " && ?lastModified > ?modified";
    }
    if (m_selection.unreadOnly)
        filter += " && ?isRead = false";
    return pattern + " FILTER (" + filter + ")";
}

void SelectionQuery::bind(TrackerSparqlStatement *statement) const
{
    for (int i = 0; i < m_selection.folders.size(); ++i)
        tracker_sparql_statement_bind_int(statement, folderParameter(i).c_str(),
                                          m_selection.folders.at(i));
    tracker_sparql_statement_bind_int(statement, "party", m_partyKey);
    tracker_sparql_statement_bind_int(statement, "conversation", m_selection.conversation);
    tracker_sparql_statement_bind_int(statement, "modified",
                                      toStoredTime(m_selection.modifiedSince));
}

bool SelectionQuery::accepts(const QString &remoteUid)
{
    if (m_selection.party.isEmpty())
        return true;
    auto known = m_known.find(remoteUid);
    if (known == m_known.end())
        known = m_known.insert(remoteUid,
                               partyKeyOf(remoteUid) == m_partyKey
                                   && (m_selection.partyMatch == HistorySelection::SameEnding
                                       || isSameParty(m_selection.party, remoteUid)));
    return known.value();
}

} // namespace CommHistory
