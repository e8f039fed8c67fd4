// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "systembus_p.h"

#include <bus/busprobe.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>

namespace {

bool hasAnswered = false; // from then on the bus library has the bus open

//! The one under way, for all who wait.
QPointer<QDBusPendingCallWatcher> &greeting()
{
    static QPointer<QDBusPendingCallWatcher> one;
    return one;
}

//! Where the bus library finds the bus as well.
QString address()
{
    const QString chosen = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return chosen.isEmpty() ? QStringLiteral("unix:path=/var/run/dbus/system_bus_socket") : chosen;
}

QDBusConnection probe()
{
    return BusProbe::connection(QStringLiteral("korvasync-system-bus-probe"), address());
}

void take(const QDBusError &error)
{
    hasAnswered = !BusProbe::isUnanswered(error);
    if (hasAnswered)
        QDBusConnection::disconnectFromPeer(probe().name());
}

QDBusPendingCallWatcher *greet(const QDBusConnection &bus)
{
    auto *answer = new QDBusPendingCallWatcher(
        bus.asyncCall(BusProbe::greeting(), SystemBus::Limit), QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer] {
        answer->deleteLater();
        greeting().clear();
        take(answer->error());
    });
    return answer;
}

QString problemOfOpened()
{
    if (!hasAnswered)
        return SystemBus::doesNotAnswer();
    return QDBusConnection::systemBus().isConnected() ? QString()
                                                      : QStringLiteral("There is no system bus.");
}

} // namespace

void SystemBus::open(const QObject *context,
                     const std::function<void(const QString &problem)> &next)
{
    if (hasAnswered)
        return next(problemOfOpened());
    if (!greeting()) {
        const QDBusConnection bus = probe();
        if (!bus.isConnected())
            return next(QStringLiteral("There is no system bus."));
        greeting() = greet(bus);
    }
    QObject::connect(greeting(), &QDBusPendingCallWatcher::finished, context,
                     [next] { next(problemOfOpened()); });
}

QString SystemBus::doesNotAnswer() { return QStringLiteral("The system bus does not answer."); }
