// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/pendingsmsid.h>

#include <QtCore/QPointer>
#include <QtCore/QString>

class MessagingIf;

//! The message being sent and what is known of it.
class SendSmsInterfacePrivate
{
public:
    SendSmsInterfacePrivate();

    //! Takes text and number of the vMessage; what it does not have stays as it was.
    bool parseVMessage(const QString &vMessage);
    //! Whether the latest send was handed over and has not run into its time limit.
    bool isSending() const { return pending && !pending->isError(); }

    QString body;
    QString number;
    MessagingIf *messaging = nullptr; // child of the SendSmsInterface, made by the first send
    QPointer<PendingSmsId> pending;   // of the latest send
    bool subscribed = false;          // to announcements; to unsubscribe recalls no queued one
    bool sentEventSeen = false;       // never cleared, see SendSmsInterface::eventsAdded()
};
