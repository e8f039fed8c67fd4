// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "eventrow_p.h"
#include "historyreader.h"

#include <libtracker-sparql/tracker-sparql.h>

#include <string>

namespace CommHistory {

//! A query for whole events.
//! \param subject  the event: a variable or a parameter
//! \param rest     filters within the pattern
//! \param order    what follows the pattern
//! \param more     variables whose values stand behind the fields of the event
std::string selectEvents(const char *subject, const std::string &rest, const std::string &order,
                         const char *more = "");

//! The fields of a row that selectEvents() asked for.
EventRow readRow(TrackerSparqlCursor *cursor);

//! Patterns that give ?time, the own time of an event, and ?change. A store of the first format
//! keeps neither: the time is made of the fields, and no change has a number.
std::string ownTimePattern(int format);
std::string changePattern(int format);

//! What readEntry() needs as \a more.
inline constexpr char EntryVariables[] = " ?time ?change";
HistoryEntry readEntry(TrackerSparqlCursor *cursor);

} // namespace CommHistory
