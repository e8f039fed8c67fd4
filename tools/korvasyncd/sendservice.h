// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/sendsmsinterface.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <chrono>
#include <optional>

//! Serves the calls of other programs one after the other, each with a fresh sender, since
//! one that has seen its message waits for no other. A message that equals one whose outcome
//! is not known yet waits for that, as it would be answered with the other's.
class SendService : public QObject
{
    Q_OBJECT
public:
    explicit SendService(std::chrono::milliseconds idleTime);

    //! Takes the bus name. \return false when another one has it, or there is no bus
    bool start();
    //! Answers the call when its turn has come.
    void add(const QString &vMessage, const QDBusMessage &call);
    //! Gives the bus name back, sends nothing more and ends when it is known and stored what
    //! became of the messages that are on their way.
    void finish();

Q_SIGNALS:
    //! Nothing is left to do, and the bus name is given back.
    void ended();

private:
    using NumberAndText = QPair<QString, QString>;
    struct Request
    {
        int serial;
        QString vMessage;
        NumberAndText content;
        QDBusMessage call;
    };

    void serveNext();
    void serve(const Request &request);
    void answer(SendSmsInterface *sender, PendingSmsId *pending);
    void stopWaiting(int serial);
    void rest();
    void endWhenIdle();
    void refuse(const QDBusMessage &call, const QString &reason);
    bool equalsOneUnderWay(const Request &request) const;

    QDBusConnection m_bus;
    SendSmsInterface m_object; //!< holds the path on the bus and sends nothing
    QTimer m_idleTimer;
    QList<Request> m_requests;                  //!< that wait
    std::optional<QDBusMessage> m_served;       //!< the call that is being served
    QHash<QObject *, NumberAndText> m_underWay; //!< messages whose outcome is not known yet
    int m_lastSerial = 0;
    bool m_isFinishing = false;
};
