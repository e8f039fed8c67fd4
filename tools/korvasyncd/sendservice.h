// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/sendsmsinterface.h>

#include <QtCore/QQueue>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <chrono>

//! Serves the calls of other programs one after the other, each with a fresh sender, since
//! one that has seen its message waits for no other.
class SendService : public QObject
{
    Q_OBJECT
public:
    explicit SendService(std::chrono::milliseconds idleTime);

    //! Takes the bus name. \return false when another one has it, or there is no bus
    bool start();
    //! Answers the call when its turn has come.
    void add(const QString &vMessage, const QDBusMessage &call);

Q_SIGNALS:
    //! Nothing has been asked for the idle time, and the bus name is given back.
    void idle();

private:
    struct Request
    {
        QString vMessage;
        QDBusMessage call;
    };

    void serveNext();
    void answer(SendSmsInterface *sender, PendingSmsId *pending);
    void end();

    QDBusConnection m_bus;
    SendSmsInterface m_object; //!< holds the path on the bus and sends nothing
    QTimer m_idleTimer;
    QQueue<Request> m_requests; //!< the first is being served
};
