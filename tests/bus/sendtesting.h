// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "bustesting.h"
#include "eventloop.h"
#include "messagelog.h"
#include "scriptedmessaging.h"
#include "vmessagetext.h"

#include <korvasync/sendsmsinterface.h>

#include <commhistory/event.h>

#include <QtTest/QSignalSpy>

// What the tests of the sending service share.

namespace SendTesting {

using namespace BusTesting;

const QString Number = QStringLiteral("+15550100");

//! The store as another program on the session bus. Nothing here waits for a time, and the
//! event loop does not run, so that a test's two seconds cannot pass on a slow machine.
class History
{
public:
    History()
        : m_bus(
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("history")))
    {
        QDBusConnection::sessionBus();
        settle(); // a new connection delivers signals from the first turn of the event loop on
    }
    ~History() { QDBusConnection::disconnectFromBus(QStringLiteral("history")); }

    //! Returns when the service has got the signal.
    void announce(const QList<CommHistory::Event> &events,
                  const QString &path = QStringLiteral("/com/quelt/commhistory"))
    {
        send(announcement(events, path));
    }
    void send(const QDBusMessage &signal)
    {
        post(signal);
        deliver();
    }
    //! Returns when the signal has come to this process; deliver() hands it to the service.
    void post(const QList<CommHistory::Event> &events)
    {
        post(announcement(events, QStringLiteral("/com/quelt/commhistory")));
    }
    void deliver() { QCoreApplication::sendPostedEvents(); }
    QDBusConnection bus() const { return m_bus; }

private:
    Q_DISABLE_COPY(History)

    static QDBusMessage announcement(const QList<CommHistory::Event> &events, const QString &path)
    {
        return QDBusMessage::createSignal(path, QStringLiteral("com.quelt.commhistory"),
                                          QStringLiteral("eventsAdded"))
            << QVariant::fromValue(events);
    }
    void post(const QDBusMessage &signal)
    {
        roundTrip(QDBusConnection::sessionBus()); // the bus has got the subscription
        m_bus.send(signal);
        roundTrip(m_bus);
        roundTrip(QDBusConnection::sessionBus());
    }

    QDBusConnection m_bus;
};

inline QString vMessage(const QString &text, const QString &number = Number)
{
    VMessageText message;
    message.originator = QString();
    message.recipient = number;
    message.body = text;
    return message.text();
}

inline CommHistory::Event sentEvent(int id, const QString &text, const QString &number = Number)
{
    CommHistory::Event event;
    event.setId(id);
    event.setType(CommHistory::Event::SmsEvent);
    event.setDirection(CommHistory::Event::Outbound);
    event.setStatus(CommHistory::Event::SentStatus);
    event.setFreeText(text);
    event.setRemoteUid(number);
    return event;
}

//! A service with what it needs and what it does.
struct Sender
{
    //! Sends and takes down how often the result finishes.
    PendingSmsId *send(const QString &vMessage)
    {
        PendingSmsId *const pending = service.sendSms(vMessage);
        QObject::connect(pending, &PendingSmsId::finished, &service,
                         [this](PendingSmsId *finishedId) { finished.append(finishedId); });
        return pending;
    }
    //! Waits until that many of the service's timers have fired.
    bool waitForTimers(int count)
    {
        return QTest::qWaitFor(
            [=] {
                return log.linesFrom(QtDebugMsg, QStringLiteral("Events Added Disconnected")).size()
                    >= count;
            },
            Patience);
    }

    MessageLog log;
    ScriptedMessaging messaging;
    History history;
    SendSmsInterface service{nullptr};
    QList<PendingSmsId *> finished;
};

} // namespace SendTesting
