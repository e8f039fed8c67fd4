// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendtests.h"

class TestSendOfono : public SendTests
{
    Q_OBJECT
public:
    explicit TestSendOfono(const PrivateBus &systemBus)
        : SendTests(ModemStack::Daemon::Ofono, systemBus,
                    {"The message was refused.", "The modem has gone."})
    {
    }

private Q_SLOTS:
    void tellsThatEmojiAreNotSent();
};

//! This version of the daemon knows no characters beyond 16 bits.
void TestSendOfono::tellsThatEmojiAreNotSent()
{
    QVERIFY(stack.provide());
    const QString text = QStringLiteral("😀").repeated(70);
    const Outcome outcome = run({QStringLiteral("send"), QStringLiteral("+15550100"), text});
    QCOMPARE(outcome.exitCode, 8);
    QVERIFY(outcome.errors.endsWith(": oFono cannot send emoji.\n"));
    const QList<QJsonObject> outbox = listed(QStringLiteral("outbox"));
    QCOMPARE(outbox.size(), 1);
    QCOMPARE(outbox.first().value(QLatin1String("body")).toString(), text);
}

MODEM_TEST_MAIN(TestSendOfono)
#include "tst_sendofono.moc"
