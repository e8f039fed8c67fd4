// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagebus.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtDBus/QDBusMessage>

namespace {

// Where the bus library finds the buses as well.

QString sessionAddress()
{
    QString chosen = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!chosen.isEmpty())
        return chosen;
    const QByteArray ofUser = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    if (!QFile::exists(QFile::decodeName(ofUser)))
        return QStringLiteral("autolaunch:");
    return QStringLiteral("unix:path=") + QString::fromLatin1(ofUser.toPercentEncoding("/", "~"));
}

QString systemAddress()
{
    const QString chosen = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return chosen.isEmpty() ? QStringLiteral("unix:path=/var/run/dbus/system_bus_socket") : chosen;
}

QDBusMessage questionToBus(const char *method)
{
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
}

//! What a bus answers, if only by refusing it, as it does when it got an earlier one late.
QDBusMessage hello() { return questionToBus("Hello"); }

} // namespace

// Neither is ever destroyed: the store's thread still announces when the process ends.

MessageBus &MessageBus::session()
{
    static auto *const bus = new MessageBus("korvasync-session-bus-probe",
                                            &QDBusConnection::sessionBus, &sessionAddress);
    return *bus;
}

MessageBus &MessageBus::system()
{
    static auto *const bus =
        new MessageBus("korvasync-system-bus-probe", &QDBusConnection::systemBus, &systemAddress);
    return *bus;
}

MessageBus::MessageBus(const char *probeName, Connection connection, Address address)
    : m_probeName(QString::fromLatin1(probeName))
    , m_connection(connection)
    , m_address(address)
{
}

//! Kept until the bus answers, as a silent bus has room for a few callers only. Not connected when
//! there is no bus.
QDBusConnection MessageBus::probe() const
{
    QDBusConnection earlier(m_probeName);
    if (earlier.isConnected())
        return earlier;
    QDBusConnection::disconnectFromPeer(m_probeName);
    return QDBusConnection::connectToPeer(m_address(), m_probeName);
}

void MessageBus::take(const QDBusError &error)
{
    if (isUnanswered(error))
        return;
    m_hasAnswered = true;
    QDBusConnection::disconnectFromPeer(m_probeName);
}

MessageBus::State MessageBus::stateOfAnswered() const
{
    return m_connection().isConnected() ? State::Open : State::Absent;
}

bool MessageBus::isOpen() const { return m_hasAnswered && stateOfAnswered() == State::Open; }

MessageBus::State MessageBus::open(int limitMsecs)
{
    if (!m_hasAnswered) {
        const QDBusConnection bus = probe();
        take(bus.call(hello(), QDBus::Block, limitMsecs));
        if (!m_hasAnswered)
            return bus.isConnected() ? State::Silent : State::Absent;
    }
    return stateOfAnswered();
}

void MessageBus::open(int limitMsecs, const QObject *context,
                      const std::function<void(State)> &next)
{
    if (m_hasAnswered)
        return next(stateOfAnswered());
    if (!m_greeting) {
        const QDBusConnection bus = probe();
        if (!bus.isConnected())
            return next(State::Absent);
        m_greeting = greet(bus, limitMsecs);
    }
    QObject::connect(m_greeting, &QDBusPendingCallWatcher::finished, context,
                     [this, next] { next(m_hasAnswered ? stateOfAnswered() : State::Silent); });
}

QDBusPendingCallWatcher *MessageBus::greet(const QDBusConnection &bus, int limitMsecs)
{
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(hello(), limitMsecs),
                                               QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [this, answer] {
        answer->deleteLater();
        m_greeting.clear();
        take(answer->error());
    });
    return answer;
}

MessageBus::State MessageBus::flush(int limitMsecs)
{
    const QDBusConnection bus = m_connection();
    if (!isUnanswered(bus.call(questionToBus("GetId"), QDBus::Block, limitMsecs)))
        return State::Open;
    return bus.isConnected() ? State::Silent : State::Absent;
}

bool MessageBus::isUnanswered(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected:
        return true;
    default:
        return false;
    }
}
