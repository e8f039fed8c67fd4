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

//! Reads and writes the phone's text messages as vMessages.
//!
//! Every call but message() returns at once, with a pending object that is a child of this
//! object; its result comes on a later turn of the event loop of the one thread that uses
//! the library. Destroying any facade drops every store adapter of the process, also one
//! that works for another facade, whose pending objects then never finish.
class KORVASYNC_EXPORT SMSSyncInterface : public QObject
{
    Q_OBJECT
public:
    explicit SMSSyncInterface(QObject *parent = nullptr);
    ~SMSSyncInterface() override;

    //! The messages of one folder since a time, oldest first.
    //! Waits while the store is being opened, three seconds at most for another process that
    //! holds it; then isError() is true.
    //! \param since  lower bound, included, any time zone; null = all
    PendingMsgs *messages(const QDateTime &since, LocationId location);
    //! The messages of one folder that were added or changed after a time. They carry the
    //! time of the modification as their time.
    PendingMsgs *modifiedMessages(const QDateTime &since, LocationId location);
    //! One message by its database id; waits for the store. An unknown id gives a
    //! SyncSmsInfo with id -1.
    SyncSmsInfo message(int id);

    //! Adds messages. Not changed although passed by reference.
    //! Per item: SmsParseError, SmsDraftNotAllowed, SmsNoParentId, SmsNoVCard,
    //! SmsDatabaseError; for an empty list SmsZeroMessagesPassed.
    PendingIds *addNewMessages(QList<SyncSmsInfo> &msgs);
    //! Replaces the messages with the given database ids, all but their stored times. A
    //! new number needs a conversation that exists; hand over one message a call when that
    //! is not sure, since a call that has one without gives up others with it.
    //! Per item: SmsInvalidId, the errors of addNewMessages().
    PendingStatus *modifyMessages(const QList<SyncSmsInfo> &msgs);
    //! Deletes messages by database id. Per item: SmsInvalidId, SmsDeleteFailed.
    PendingStatus *deleteMessages(const QList<int> &ids);

private:
    SMSSyncInterfacePrivate *d;
};

} // namespace KorvaSyncIf
