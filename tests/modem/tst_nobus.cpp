// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "modemtesting.h"

using namespace ModemTesting;

class TestNoBus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tellsAMissingBus();
};

void TestNoBus::tellsAMissingBus()
{
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QCOMPARE(outcome.text(), QStringLiteral("There is no system bus."));
    QCOMPARE(StoreTesting::read(Outbox).size(), 1);
}

int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QCoreApplication application(argc, argv);
    TestNoBus test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_nobus.moc"
