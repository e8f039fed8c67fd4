// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "modemtesting.h"

#include <QtCore/QPointer>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusVirtualObject>

using namespace CommHistory;
using namespace ModemTesting;

//! Owns bus names, takes every call and answers none.
class SilentDaemon : public QDBusVirtualObject
{
public:
    SilentDaemon(QDBusConnection bus, const QStringList &names)
        : m_bus(std::move(bus))
        , m_names(names)
    {
        m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        for (const QString &name : m_names)
            m_bus.registerService(name);
    }
    ~SilentDaemon() override
    {
        for (const QString &name : std::as_const(m_names))
            m_bus.unregisterService(name);
        m_bus.unregisterObject(QStringLiteral("/"));
    }

    QString introspect(const QString &) const override { return QString(); }
    bool handleMessage(const QDBusMessage &call, const QDBusConnection &) override
    {
        calls.append(call.member());
        return true;
    }

    QStringList calls;

private:
    Q_DISABLE_COPY(SilentDaemon)

    QDBusConnection m_bus;
    const QStringList m_names;
};

const QString ModemManager = QStringLiteral("org.freedesktop.ModemManager1");
const QString Ofono = QStringLiteral("org.ofono");
const QString NoDaemon =
    QStringLiteral("There is no modem daemon, neither ModemManager nor oFono.");

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
    void twoSendsWaitForOneAnswerOfTheBus();
    void tellsAMissingDaemon();
    void tellsADaemonThatDoesNotAnswer_data();
    void tellsADaemonThatDoesNotAnswer();
    void choosesTheDaemon_data();
    void choosesTheDaemon();
    void tellsWhatIsNoNumber_data();
    void tellsWhatIsNoNumber();
    void tellsQueuedReceivers();
    void tellsQueuedReceiversBeforeHastenedDeletions();
    void bearsASlotThatDeletesTheSender();

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

//! The first of all tests, since the bus is not open yet. The bus answers the first send while this
//! thread is at something else, so that the answer is there, but not told of, when the second
//! one begins. A question of its own would go down with the connection, and it would never end.
void TestNoDaemon::twoSendsWaitForOneAnswerOfTheBus()
{
    const auto waitForTheBus = [this] {
        const QDBusMessage question = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        for (int i = 0; i < 100; ++i) // to open a connection takes some exchanges
            bus.call(question);
    };
    qsizetype questions = 0;
    const auto countQuestions = [&questions] {
        questions =
            QCoreApplication::instance()->findChildren<const QDBusPendingCallWatcher *>().size();
    };
    MessagingIf messaging{QString()};
    const auto send = [&messaging] {
        return messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), false);
    };
    Outcome first(send());
    QMetaObject::invokeMethod(this, waitForTheBus, Qt::QueuedConnection);
    Outcome second(send());
    QMetaObject::invokeMethod(this, countQuestions, Qt::QueuedConnection);
    QVERIFY(first.wait());
    QCOMPARE(first.text(), NoDaemon);
    QVERIFY(questions <= 1); // none where a test before has opened the bus
    QVERIFY(second.wait());
    QCOMPARE(second.text(), NoDaemon);
}

void TestNoDaemon::tellsAMissingDaemon() { fails(QStringLiteral("+15550100"), NoDaemon); }

void TestNoDaemon::tellsADaemonThatDoesNotAnswer_data()
{
    QTest::addColumn<QString>("busName");
    QTest::newRow("ModemManager") << ModemManager;
    QTest::newRow("oFono") << Ofono;
}

void TestNoDaemon::tellsADaemonThatDoesNotAnswer()
{
    QFETCH(QString, busName);
    const SilentDaemon daemon(bus, {busName});
    fails(QStringLiteral("+15550100"), QStringLiteral("The modem daemon does not answer."));
}

void TestNoDaemon::choosesTheDaemon_data()
{
    QTest::addColumn<QStringList>("busNames");
    QTest::addColumn<QString>("modemPath");
    QTest::addColumn<QString>("firstCall");
    const QString ofModemManager = QStringLiteral("GetManagedObjects");
    const QString ofOfono = QStringLiteral("GetModems");
    QTest::newRow("both") << QStringList{ModemManager, Ofono} << QString() << ofModemManager;
    QTest::newRow("oFono only") << QStringList{Ofono} << QString() << ofOfono;
    QTest::newRow("oFono's modem")
        << QStringList{ModemManager, Ofono} << QStringLiteral("/modem_0") << ofOfono;
    QTest::newRow("ModemManager's modem")
        << QStringList{ModemManager, Ofono}
        << QStringLiteral("/org/freedesktop/ModemManager1/Modem/0") << ofModemManager;
}

void TestNoDaemon::choosesTheDaemon()
{
    QFETCH(QStringList, busNames);
    QFETCH(QString, modemPath);
    QFETCH(QString, firstCall);
    const SilentDaemon daemon(bus, busNames);
    MessagingIf(modemPath).sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), false);
    QTRY_VERIFY(!daemon.calls.isEmpty());
    QCOMPARE(daemon.calls.first(), firstCall);
}

void TestNoDaemon::tellsWhatIsNoNumber_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("nothing") << QString();
    QTest::newRow("a word") << QStringLiteral("Bank");
    QTest::newRow("a word with digits") << QStringLiteral("Bank24");
    QTest::newRow("two numbers") << QStringLiteral("5550100;5550101");
    QTest::newRow("21 digits") << QStringLiteral("+155501001555010015550");
    QTest::newRow("a plus amid digits") << QStringLiteral("1+5550100");
}

void TestNoDaemon::tellsWhatIsNoNumber()
{
    QFETCH(QString, number);
    fails(number, QStringLiteral("The number cannot be dialled."));
}

void TestNoDaemon::tellsQueuedReceivers()
{
    MessagingIf messaging{QString()};
    PendingMessage *message =
        messaging.sendSMS(QStringLiteral("Bank"), QStringLiteral("Hello"), true);
    QVERIFY(!message->isError());
    const QPointer<PendingMessage> guard(message);
    QString text;
    const auto receive = [&] { text = guard ? guard->errorText() : QStringLiteral("deleted"); };
    connect(message, &PendingMessage::finished, this, receive, Qt::QueuedConnection);
    QTRY_VERIFY(!text.isEmpty());
    QCOMPARE(text, QStringLiteral("The number cannot be dialled."));
    QTRY_VERIFY(!guard);
}

void TestNoDaemon::tellsQueuedReceiversBeforeHastenedDeletions()
{
    MessagingIf messaging{QString()};
    const QPointer<PendingMessage> message =
        messaging.sendSMS(QStringLiteral("Bank"), QStringLiteral("Hello"), true);
    bool wasThere = false;
    QEventLoop loop;
    connect(
        message, &PendingMessage::finished, this, [&] { wasThere = !message.isNull(); },
        Qt::QueuedConnection);
    connect(message, &PendingMessage::finished, &loop, &QEventLoop::quit);
    loop.exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!message);
    QVERIFY(wasThere);
}

void TestNoDaemon::bearsASlotThatDeletesTheSender()
{
    auto *messaging = new MessagingIf(QString());
    PendingMessage *message =
        messaging->sendSMS(QStringLiteral("Bank"), QStringLiteral("Hello"), true);
    QSignalSpy deleted(messaging, &QObject::destroyed);
    connect(message, &PendingMessage::finished, this, [messaging] { delete messaging; });
    QVERIFY(deleted.wait(StoreTesting::Patience));
}

MODEM_TEST_MAIN(TestNoDaemon)
#include "tst_nodaemon.moc"
