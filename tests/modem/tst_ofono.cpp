// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagingtests.h"

using namespace CommHistory;
using namespace ModemTesting;

class TestOfono : public MessagingTests
{
    Q_OBJECT
public:
    explicit TestOfono(const PrivateBus &systemBus)
        : MessagingTests(ModemStack::Daemon::Ofono, systemBus)
    {
    }

private Q_SLOTS:
    void tellsThatEmojiAreNotSent();
    void tellsARefusal();
    void tellsASwitchedOffModem();
    void tellsFlightMode();
    void doesNotKnowWhenTheModemGoes();
};

//! This version of the daemon knows no characters beyond 16 bits, and says so.
void TestOfono::tellsThatEmojiAreNotSent()
{
    QVERIFY(stack.provide());
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("a😀"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QStringLiteral("oFono cannot send emoji."));
    QCOMPARE(StoreTesting::read(Outbox).value(0).freeText(), QStringLiteral("a😀"));
}

void TestOfono::tellsARefusal()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("refuse"));
    fails(QStringLiteral("The message was refused."));
}

void TestOfono::tellsASwitchedOffModem()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.setModemProperty(QStringLiteral("Powered"), false));
    fails(QStringLiteral("The modem is switched off."));
}

void TestOfono::tellsFlightMode()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.setModemProperty(QStringLiteral("Online"), false));
    fails(QStringLiteral("The modem is in flight mode."));
}

void TestOfono::doesNotKnowWhenTheModemGoes()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("hang-up"));
    fails(QStringLiteral("The modem has gone."), false);
}

MODEM_TEST_MAIN(TestOfono)
#include "tst_ofono.moc"
