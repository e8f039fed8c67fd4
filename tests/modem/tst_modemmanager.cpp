// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagingtests.h"

using namespace CommHistory;
using namespace ModemTesting;

class TestModemManager : public MessagingTests
{
    Q_OBJECT
public:
    explicit TestModemManager(const PrivateBus &systemBus)
        : MessagingTests(ModemStack::Daemon::ModemManager, systemBus)
    {
    }

private Q_SLOTS:
    void sendsEmojiWhole();
    void tellsARefusal();
    void doesNotKnowWhenTheModemGoes();
};

void TestModemManager::sendsEmojiWhole() { sendsWhole(QStringLiteral("a😀").repeated(50)); }

void TestModemManager::tellsARefusal()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("refuse"));
    fails(QStringLiteral("The message was refused: Unknown message error: 21"));
}

void TestModemManager::doesNotKnowWhenTheModemGoes()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("hang-up"));
    fails(QStringLiteral("The modem daemon reports: Serial port is now closed"), false);
}

MODEM_TEST_MAIN(TestModemManager)
#include "tst_modemmanager.moc"
