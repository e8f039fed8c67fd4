// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>
#include <korvasync/pendingsmsid.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace CommHistory {
class Event;
}
class PendingMessage;
class SendSmsInterfacePrivate;

//! Sends text messages given as vMessages (IrMC 1.1, section 9.9), one at a time.
//!
//! A message counts as sent when the store has it. The object learns that on the D-Bus session bus,
//! from the signal "eventsAdded" of the interface "com.quelt.commhistory", whoever sends the
//! signal. It compares number and text exactly; the last outgoing message that matches gives the
//! id.
//!
//! Only the first bytes of a vMessage are parsed: as many as it has UTF-16 units. A vMessage that
//! is not ASCII has more bytes in UTF-8. Append a line end for each of those.
//!
//! Take a fresh object for each message. On an object that has been used before:
//! - A vMessage without a recipient's number goes to the recipient of an earlier one.
//! - Once one message was seen, the next announcement of any message finishes each later send. Its
//!   id() is -1 if the announcement is of another message, and its time limit has no effect.
//! - The time limits of earlier messages go on. If one of them ends while a message is being sent,
//!   the object stops watching: that message gets NotSeen, or, once a message was seen, no
//!   finished().
class KORVASYNC_EXPORT SendSmsInterface : public QObject
{
    Q_OBJECT
public:
    //! Registers the object on the session bus under the path "/SendSmsInterface", where it exports
    //! its adaptors. A failure is only logged. The first use of the bus in a process blocks until
    //! the bus has answered.
    explicit SendSmsInterface(QObject *parent = nullptr);
    ~SendSmsInterface() override;

    //! Sends one message. Returns at once; the time limit is 2,000 ms.
    //! \param vMessage  whole; its text and its first recipient's number are used
    //! \return never null; a child of this object, see PendingSmsId
    //! \par Failure  See PendingSmsId::ErrorCause. A message that the modem refuses is no error of
    //! its own: it is stored as failed, or NotSeen comes.
    PendingSmsId *sendSms(const QString &vMessage);

private Q_SLOTS:
    void eventsAdded(const QList<CommHistory::Event> &events);
    void msgSent(const PendingMessage *msg);
    void timeOut();

private:
    bool subscribe();
    bool unsubscribe();

    SendSmsInterfacePrivate *d;
};
