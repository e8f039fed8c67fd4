// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "bustesting.h"
#include "scriptedmodem.h"
#include "storetesting.h"

// What the tests of sending through a scripted modem share.

//! Runs the test class, a ModemTest, on a session bus, a system bus and a store of its own.
#define MODEM_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        const QTemporaryDir directory;                                                             \
        qputenv("KORVASYNC_STORE",                                                                 \
                QFile::encodeName(directory.filePath(QStringLiteral("store"))));                   \
        const PrivateBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");                                     \
        const PrivateBus sessionBus("DBUS_SESSION_BUS_ADDRESS");                                   \
        QCoreApplication application(argc, argv);                                                  \
        TestClass test(systemBus);                                                                 \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

class ModemTest : public QObject
{
public:
    //! \param systemBus  which modem daemons are on
    explicit ModemTest(const PrivateBus &systemBus)
        : systemBus(systemBus)
    {
    }

protected:
    const PrivateBus &systemBus;
};
