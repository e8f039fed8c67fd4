// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busprobe.h"

QDBusConnection BusProbe::connection(const QString &name, const QString &address)
{
    QDBusConnection earlier(name);
    if (earlier.isConnected())
        return earlier;
    QDBusConnection::disconnectFromPeer(name);
    return QDBusConnection::connectToPeer(address, name);
}

QDBusMessage BusProbe::greeting()
{
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("Hello"));
}

bool BusProbe::isUnanswered(const QDBusError &error)
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
