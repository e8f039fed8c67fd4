// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "servicetests.h"

class TestServiceModemManager : public ServiceTests
{
    Q_OBJECT
public:
    explicit TestServiceModemManager(const PrivateBus &systemBus)
        : ServiceTests(ModemStack::Daemon::ModemManager, systemBus)
    {
    }

private Q_SLOTS:
    void sendsEmojiWhole() { sendsWhole(QStringLiteral("😀").repeated(70)); }
};

MODEM_TEST_MAIN(TestServiceModemManager)
#include "tst_servicemodemmanager.moc"
