// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "eventrow_p.h"
#include "historyreader.h"

#include <libtracker-sparql/tracker-sparql.h>

#include <QtCore/QHash>

#include <string>

namespace CommHistory {

//! The conditions of a HistorySelection in a query. Every number that comes from outside is bound:
//! as a number, since the database compares a bare parameter as if it were a text, for which no
//! index of numbers serves.
class SelectionQuery
{
public:
    explicit SelectionQuery(const HistorySelection &selection);

    //! What belongs into the pattern of the query, beside the fields of the event and ?time.
    //! \param format  of the store; one of the first has no keys of parties
    std::string pattern(int format) const;
    //! Binds everything but ~lowest and ~highest, the bounds of the own time.
    void bind(TrackerSparqlStatement *statement) const;
    qint64 lowest() const { return m_lowest; }
    qint64 highest() const { return m_highest; }

    //! Whether the party is the wanted one, where the query alone cannot tell.
    bool accepts(const QString &remoteUid);

private:
    HistorySelection m_selection;
    qint64 m_partyKey;
    qint64 m_lowest;
    qint64 m_highest;
    QHash<QString, bool> m_known; // spellings of parties
};

} // namespace CommHistory
