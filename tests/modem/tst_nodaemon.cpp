// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "modemtesting.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

using namespace CommHistory;
using namespace ModemTesting;

//! Takes every call and answers none.
class SilentObject : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return QString(); }
    bool handleMessage(const QDBusMessage &, const QDBusConnection &) override { return true; }
};

class TestNoDaemon : public QObject
{
    Q_OBJECT
public:
    explicit TestNoDaemon(const PrivateBus &systemBus)
        : bus(QDBusConnection::connectToBus(systemBus.address(), QStringLiteral("silent")))
    {
    }

private Q_SLOTS:
    void cleanup() { removeMessages(); }
    void tellsAMissingDaemon();
    void tellsADaemonThatDoesNotAnswer_data();
    void tellsADaemonThatDoesNotAnswer();
    void tellsWhatIsNoNumber_data();
    void tellsWhatIsNoNumber();

private:
    void fails(const QString &number, const QString &problem);

    QDBusConnection bus;
};

void TestNoDaemon::fails(const QString &number, const QString &problem)
{
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(number, QStringLiteral("Hello"), true));
    QVERIFY(outcome.wait());
    QVERIFY(outcome.isError());
    QCOMPARE(outcome.text(), problem);
    const QList<Event> events = StoreTesting::read(Outbox);
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.first().remoteUid(), number);
    QCOMPARE(events.first().status(), Event::FailedStatus);
}

void TestNoDaemon::tellsAMissingDaemon()
{
    fails(QStringLiteral("+15550100"),
          QStringLiteral("There is no modem daemon, neither ModemManager nor oFono."));
}

void TestNoDaemon::tellsADaemonThatDoesNotAnswer_data()
{
    QTest::addColumn<QString>("busName");
    QTest::newRow("ModemManager") << QStringLiteral("org.freedesktop.ModemManager1");
    QTest::newRow("oFono") << QStringLiteral("org.ofono");
}

void TestNoDaemon::tellsADaemonThatDoesNotAnswer()
{
    QFETCH(QString, busName);
    SilentObject silent;
    QVERIFY(bus.registerVirtualObject(QStringLiteral("/"), &silent, QDBusConnection::SubPath));
    QVERIFY(bus.registerService(busName));
    fails(QStringLiteral("+15550100"), QStringLiteral("The modem daemon does not answer."));
    QVERIFY(bus.unregisterService(busName));
    bus.unregisterObject(QStringLiteral("/"));
}

void TestNoDaemon::tellsWhatIsNoNumber_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("nothing") << QString();
    QTest::newRow("a word") << QStringLiteral("Bank");
    QTest::newRow("a word with digits") << QStringLiteral("Bank24");
    QTest::newRow("two numbers") << QStringLiteral("5550100;5550101");
    QTest::newRow("a plus amid digits") << QStringLiteral("1+5550100");
}

void TestNoDaemon::tellsWhatIsNoNumber()
{
    QFETCH(QString, number);
    fails(number, QStringLiteral("The number cannot be dialled."));
}

MODEM_TEST_MAIN(TestNoDaemon)
#include "tst_nodaemon.moc"
