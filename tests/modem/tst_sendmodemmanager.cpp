// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendtests.h"

class TestSendModemManager : public SendTests
{
    Q_OBJECT
public:
    explicit TestSendModemManager(const PrivateBus &systemBus)
        : SendTests(ModemStack::Daemon::ModemManager, systemBus,
                    {"The message was refused: Unknown message error: 21",
                     "The modem daemon reports: Serial port is now closed"})
    {
    }

private Q_SLOTS:
    void sendsEmojiWhole() { sendsWhole(QStringLiteral("😀").repeated(70)); }
};

MODEM_TEST_MAIN(TestSendModemManager)
#include "tst_sendmodemmanager.moc"
