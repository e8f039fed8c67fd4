// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>

//! Follows the messages of this process, whichever MessagingIf sends them. It is for programs that
//! have the library send: the library tells neither why a message did not go out nor when it is
//! known what became of it. A phone's own platform need not have it.
class KORVAPLATFORM_EXPORT SendingMonitor : public QObject
{
    Q_OBJECT
public:
    static SendingMonitor *instance();

Q_SIGNALS:
    //! Within MessagingIf::sendSMS().
    //! \param message  its number among the messages of this process
    void begun(int message);
    //! Why the message was not sent, may not have been, or is not in the store: a sentence without
    //! number or text. The reason comes before the store has the message.
    void problemFound(int message, const QString &problem);
    //! It is known and, where that was asked for, stored what became of the message. The last
    //! signal, behind PendingMessage::finished().
    void ended(int message);
};
