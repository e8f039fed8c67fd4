// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>
#include <korvasync/pendingids.h>
#include <korvasync/pendingmsgs.h>
#include <korvasync/pendingstatus.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>

namespace KorvaSyncIf {

class SMSSyncInterfacePrivate;

//! Reads and writes the phone's text messages as vMessages (IrMC 1.1, section 9.9).
//!
//! Each call but message() returns a pending object: never null, and a child of this object. Its
//! result comes later, from the event loop of the one thread that uses the library. PendingMsgs and
//! PendingStatus describe the life of a pending object.
//!
//! \par Order  Results of different requests may come in any order. A read that is started before
//! a write has finished may miss what is written.
//!
//! \par A new phone  A new phone has no store: the first write makes one. Until then each read is
//! an error, not an empty list, so that no client takes a lost store for a phone without messages.
//! For messages() and modifiedMessages(), PendingMsgs::isError() is true at once. message() returns
//! the id -1. The platform warns once in the log category korvasync.store. examples/pullandpush.cpp
//! shows what a client can do.
//!
//! \par Destruction  The pending objects go with the facade. So do the store adapters of the whole
//! process, even those that work for another facade; its pending objects then never finish.
class KORVASYNC_EXPORT SMSSyncInterface : public QObject
{
    Q_OBJECT
public:
    explicit SMSSyncInterface(QObject *parent = nullptr);
    ~SMSSyncInterface() override;

    //! Reads the messages of one folder, oldest first, equal times by database id.
    //! The call blocks while the store is being opened. If another process holds the store, that
    //! takes three seconds at most.
    //! \param since  lower bound of the message's time, inclusive; any time zone, compared in
    //!               milliseconds. Null = all messages, including those without a time.
    //! \param location  the folder; the id of any other folder may be cast to LocationId
    //! \par Failure  The store is absent or cannot be opened: isError() at once. The read fails
    //! later: finished() never comes.
    PendingMsgs *messages(const QDateTime &since, LocationId location);
    //! Reads the messages of one folder that were added or modified after a time. Their
    //! SyncSmsInfo::time and the times in their vMessages are those of the last modification.
    //! Deletions are not reported. Order, blocking and failures are those of messages().
    //! \param since  lower bound of the last modification, exclusive; any time zone, compared in
    //!               milliseconds. Null = all messages.
    PendingMsgs *modifiedMessages(const QDateTime &since, LocationId location);
    //! Reads one message by its database id. Blocks until the store has answered.
    //! \return the id -1, and a vMessage without number, time and text, if there is no message with
    //!         this id or the store cannot be read
    SyncSmsInfo message(int id);

    //! Adds messages. Conversations that do not exist are made. SyncSmsInfo::id is ignored.
    //! \param msgs  any number; never changed, although passed by reference
    //! \par Errors of items  SmsParseError, SmsDraftNotAllowed, SmsNoParentId, SmsNoVCard,
    //! SmsDatabaseError; for an empty list SmsZeroMessagesPassed.
    //! \par Failure  See PendingStatus. If the store fails, every item that was handed over gets
    //! SmsDatabaseError, although some may be stored: the store commits up to 1,000 items at a
    //! time. Read back before you add them again.
    PendingIds *addNewMessages(QList<SyncSmsInfo> &msgs);
    //! Replaces everything but the stored times of the messages that SyncSmsInfo::id names.
    //! \par Errors of items  SmsInvalidId for a negative id, and the errors of addNewMessages().
    //! \par Failure  See PendingStatus, and addNewMessages() for a store that fails. An id that
    //! does not exist is such a failure. A modification makes no conversations: if one party of the
    //! request has none, every item that was handed over gets SmsDatabaseError, although some may
    //! be modified. So give a message whose party may be new a request of its own.
    PendingStatus *modifyMessages(const QList<SyncSmsInfo> &msgs);
    //! Deletes messages.
    //! \param ids  database ids; one that does not exist gets SmsDeleteFailed
    //! \par Errors of items  SmsInvalidId for a negative id, SmsDeleteFailed; for an empty list
    //! SmsZeroMessagesPassed. Failed deletions do not set PendingStatus::isError().
    PendingStatus *deleteMessages(const QList<int> &ids);

private:
    SMSSyncInterfacePrivate *d;
};

} // namespace KorvaSyncIf
