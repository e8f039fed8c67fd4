// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

namespace CommHistory {

class OwnDirectory;
class StoreLock;

//! Why a store cannot be used; each has one sentence for the user.
enum class StoreProblem {
    None,
    Absent,        //!< there is no directory, or an empty one
    NotAStore,     //!< the directory holds something else
    UnknownFormat, //!< the marker names a format that this version does not know
    LostDatabase,  //!< there is a marker but no database
    NoAccess,      //!< the system does not let this user in
    OtherOwner,    //!< the directory, or the link to it, is another user's
    ForeignFiles,  //!< a link or another user's file is in the directory
    Replaced,      //!< it was moved or replaced while it was open
    Busy,          //!< another process kept the lock
    Damaged,       //!< the database cannot be opened
    OutOfIds,      //!< the counter of ids is at its end, or damaged
    NoThread,      //!< the system gives the process no thread to work on the store
    ReadFailed,
    WriteFailed
};

//! Writes the problem's one sentence, which says what to do, as a warning to the category
//! "korvasync.store". It names the directory, never a number or a text from the store.
void warnAbout(StoreProblem problem, const QString &directory);

//! The directory of a store:
//!
//!     korvasync-store   the marker; holds the number of the format
//!     db/               the database
//!     lock              see StoreLock
//!
//! A new database is built in db.new; then the marker is written, then db.new becomes db.
//! So a creation that was interrupted is told from a store that lost its database: without
//! a marker there was nothing yet, with a marker db.new is complete and has been read once.
//!
//! The directory and all that is in it belong to this user, and nothing in it is a link: what
//! another user could lead elsewhere is refused before anything is opened, made or removed.
class StoreDirectory
{
public:
    explicit StoreDirectory(const QString &path)
        : m_path(path)
    {
    }

    QString path() const { return m_path; }
    QString databasePath() const { return m_path + QLatin1String("/db"); }

    //! Whether there is a store and what is wrong with it. Changes nothing.
    StoreProblem check() const;
    //! Makes the directory when it is absent, closes it to other users and opens the lock.
    StoreProblem claim(StoreLock &lock) const;
    //! Closes what is there to other users, as far as the system lets us.
    void makePrivate() const;
    //! Makes a store of a directory where check() says Absent. The lock must be held.
    StoreProblem create() const;
    //! Brings an interrupted creation to its end. The lock must be held.
    StoreProblem finishCreation() const;

private:
    QByteArray encodedPath() const;
    StoreProblem checkMarker(const OwnDirectory &directory) const;

    QString m_path;
};

} // namespace CommHistory
