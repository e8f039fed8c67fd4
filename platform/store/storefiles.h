// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

namespace CommHistory {

//! What lies in the folder of a store:
//!
//!     korvasync-store   the marker; holds the number of the format
//!     db/               the database
//!     lock              see StoreLock; always empty
//!
//! A new database is built in db.new; then the marker is written, then db.new becomes db.
//! So a creation that was interrupted is told from a store that lost its database: without
//! a marker there was nothing yet, with a marker db.new is complete and has been read once.
//!
//! A store of an older format gets its new database in the same way. As long as the marker
//! names the older one, db counts and db.new does not; from then on db.new counts, and db is
//! moved to db.old and removed.
namespace StoreFiles {

inline constexpr char Marker[] = "korvasync-store";
inline constexpr char NewMarker[] = "korvasync-store.new";
inline constexpr char Database[] = "db";
inline constexpr char NewDatabase[] = "db.new";
inline constexpr char OldDatabase[] = "db.old";
inline constexpr char Lock[] = "lock";

//! Raised with every change of the ontology: the database library would bring a store in
//! silence to the ontology of the program that opens it, an older one's too.
inline constexpr int Format = 2;
inline constexpr int OldestFormat = 1; //!< that is read, and brought up to date

//! The database library keeps each graph in a file of its own. A transaction reaches the
//! main file first: what a crash can leave is an unused name, never an event without one.
inline constexpr const char *DatabaseFiles[] = {"meta.db", "urn%3Akorvasync%3Ahistory.db"};
//! What else it makes beside them; logs and journals have the names of these files, and more.
inline constexpr char OntologyCache[] = "ontologies.gvdb";
inline constexpr const char *OtherFiles[] = {OntologyCache, ".meta.isrunning"};

} // namespace StoreFiles

} // namespace CommHistory
