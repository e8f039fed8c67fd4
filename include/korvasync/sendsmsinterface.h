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

//! Sends text messages given as vMessages (IrMC 1.1, section 9.9), one at a time, and watches
//! the store for each: D-Bus session bus, signal "eventsAdded" of the interface
//! "com.quelt.commhistory", from any sender.
//!
//! The object stands on the session bus under the path "/SendSmsInterface" and exports its
//! adaptors there. Two things to know: the first bytes of the vMessage that are read are as
//! many as it has UTF-16 units, so callers with other than ASCII texts lengthen it behind its
//! end with line ends; and an object that has once seen its message finishes every later
//! send with the next announcement of any message, so callers that want certainty take a
//! fresh object for each message.
class KORVASYNC_EXPORT SendSmsInterface : public QObject
{
    Q_OBJECT
public:
    explicit SendSmsInterface(QObject *parent = nullptr);
    ~SendSmsInterface() override;

    //! Never null; a child of this object.
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
