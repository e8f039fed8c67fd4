// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"
#include "modemtesting.h"

using namespace ModemTesting;

class TestUnwritableStore : public QObject
{
    Q_OBJECT
public:
    explicit TestUnwritableStore(const PrivateBus &systemBus)
        : stack(ModemStack::Daemon::Ofono, systemBus)
    {
    }

private Q_SLOTS:
    void warnsButTellsNoError();

private:
    ModemStack stack;
};

void TestUnwritableStore::warnsButTellsNoError()
{
    QVERIFY(stack.provide());
    // A directory that is no store.
    const QString store = qEnvironmentVariable("KORVASYNC_STORE");
    QVERIFY(QDir().mkpath(store + QStringLiteral("/other")));
    MessageLog log;
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QString());
    QCOMPARE(stack.takeMessages().size(), 1);
    QCOMPARE(log.linesFrom(QtWarningMsg, QStringLiteral("A message ")),
             QStringList(QStringLiteral("A message could not be added to the history.")));
}

MODEM_TEST_MAIN(TestUnwritableStore)
#include "tst_unwritablestore.moc"
