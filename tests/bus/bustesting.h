// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "privatebus.h"

#include <QtCore/QCoreApplication>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtTest/QTest>

//! Runs the test class on a session bus of its own.
#define BUS_TEST_MAIN(TestClass)                                                                   \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        const PrivateBus bus("DBUS_SESSION_BUS_ADDRESS");                                          \
        QCoreApplication application(argc, argv);                                                  \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

namespace BusTesting {

constexpr int Patience = 10000; //!< milliseconds

//! The bus keeps the order: its answer comes behind what it took before.
inline void roundTrip(const QDBusConnection &bus)
{
    bus.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
}

} // namespace BusTesting
