// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "platformexport.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace CommHistory {

//! Why a store cannot be used; each has one sentence for the user.
enum class StoreProblem {
    None,
    Absent,        //!< there is no folder, or an empty one: the first write makes the store
    NotAStore,     //!< the folder holds something else, or is none
    UnknownFormat, //!< the marker names a format that this version does not know
    LostDatabase,  //!< there is a marker but no database
    NoAccess,      //!< the system does not let this user in, or a link leads to nothing
    OtherOwner,    //!< the folder, or the link to it, is another user's
    ForeignFiles,  //!< a link or another user's file is in the folder
    Replaced,      //!< it was moved or replaced while it was open
    Busy,          //!< another process kept the lock
    Damaged,       //!< the database cannot be opened
    OutOfIds,      //!< the counter of ids is at its end, or damaged
    NoThread,      //!< the system gives the process no thread to work on the store
    NotUpgraded,   //!< an older store could not be brought up to date
    ReadFailed,
    WriteFailed
};

//! The folder of the store: where it is, what is there, and in which words its faults are told.
//! The store opens what it finds here, and the client looks here before it asks for anything, so
//! both see the same. StoreFiles tells what lies in the folder.
//!
//! The folder and all that is in it belong to this user, and nothing in it is a link: what
//! another user could lead elsewhere is refused before anything is opened, made or removed.
class KORVAPLATFORM_EXPORT StorePlace
{
public:
    struct Finding
    {
        StoreProblem problem = StoreProblem::None;
        //! Why the folder itself cannot be opened or listed, as errno has it; else 0.
        int systemError = 0;
        //! The number that the marker names, when there is a store.
        int format = 0;
    };

    //! \param chosen  the folder; empty = that of $KORVASYNC_STORE, else the data folder's
    //! korvasync
    explicit StorePlace(const QString &chosen = QString());

    //! As it was given: perhaps relative to the working directory.
    QString path() const { return m_path; }
    QByteArray encodedPath() const;
    //! The same place, wherever the process goes later.
    StorePlace absolute() const;

    //! Whether there is a store and what is wrong with it. Changes nothing and opens no file of
    //! the database.
    //!
    //! A folder counts as empty, and its store as absent, when it holds nothing but what an
    //! interrupted creation leaves: the empty lock, with which every creation begins, and beside
    //! it at most markers and a db.new of the database library's own files. A lock that holds
    //! something is another program's, and so is its folder.
    Finding look() const;

    //! Makes the folder and those above it, closed to other users. True when it was not there.
    bool makeFolder() const;

    //! Makes this the store's place in this process. The store looks once, at its first use.
    void select() const;

    //! Writes the problem's one sentence, which says what to do, as a warning to the category
    //! "korvasync.store". It names the folder, never a number or a text from the store.
    void warnAbout(StoreProblem problem) const;

private:
    QString m_path;
};

} // namespace CommHistory
