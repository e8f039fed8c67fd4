// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>

//! Follows the messages of this process, whichever MessagingIf sends them. It serves programs that
//! send through the library, which reports neither why a message did not go out nor when its
//! outcome is known. A phone's own platform need not have it.
//!
//! Order for each message: begun(), problemFound() any number of times, ended() once.
class KORVAPLATFORM_EXPORT SendingMonitor : public QObject
{
    Q_OBJECT
public:
    //! The only object of the process; never null, not owned by the caller.
    static SendingMonitor *instance();

Q_SIGNALS:
    //! A message is to be sent. Emitted inside MessagingIf::sendSMS().
    //! \param message  its number among the messages of this process
    void begun(int message);
    //! Why the message was not sent, may not have been, or is not in the store: a sentence without
    //! number or text. The reason comes before the store has the message.
    void problemFound(int message, const QString &problem);
    //! The outcome is known and, where that was asked for, stored; or it will never be known.
    //! Emitted after PendingMessage::finished().
    void ended(int message);
};
