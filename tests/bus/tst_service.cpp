// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The service for other programs: started by the bus when it is called, where no modem daemon
// is, and called as no sane program would.

#include "bustesting.h"
#include "senderservice.h"
#include "storetesting.h"

#include <QtCore/QDir>
#include <QtCore/QXmlStreamReader>
#include <QtDBus/QDBusConnectionInterface>

using SenderService::answer;
using SenderService::call;
using SenderService::vMessage;
using StoreTesting::Patience;

namespace {

//! Of the service's process; 0 when it does not run.
uint servicePid()
{
    const QDBusReply<uint> pid =
        QDBusConnection::sessionBus().interface()->servicePid(SenderService::BusName);
    return pid.isValid() ? pid.value() : 0;
}

//! The methods of org.korvasync.SendSms1 and their arguments in an introspection document.
QStringList callsOf(const QString &document)
{
    QStringList calls;
    QXmlStreamReader xml(document);
    bool isInside = false;
    while (!xml.atEnd()) {
        xml.readNext();
        const auto attribute = [&](const char *name) {
            return xml.attributes().value(QLatin1String(name)).toString();
        };
        if (xml.name() == QLatin1String("interface"))
            isInside = xml.isStartElement()
                && attribute("name") == QLatin1String("org.korvasync.SendSms1");
        else if (isInside && xml.isStartElement() && xml.name() == QLatin1String("arg"))
            calls += QStringList{attribute("name"), attribute("type"), attribute("direction")}.join(
                QLatin1Char(' '));
        else if (isInside && xml.isStartElement())
            calls += attribute("name");
    }
    return calls;
}

bool hasEnded(uint pid) { return !QDir(QStringLiteral("/proc/%1").arg(pid)).exists(); }

} // namespace

class TestService : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void isStartedByACallAndEndsWhenIdle();
    void tellsWhatCannotBeSent_data();
    void tellsWhatCannotBeSent();
    void hasTheInterfaceThatIsInstalled();
    void keepsALongTextWhole();
    void servesAThousandQueuedCalls();
    void seesTheMessageOfAVanishedCallerThrough();
};

void TestService::initTestCase() { QVERIFY(StoreTesting::makeStore()); }

void TestService::isStartedByACallAndEndsWhenIdle()
{
    QCOMPARE(servicePid(), 0U);
    const QString first = QStringLiteral("first");
    const QList<int> result = answer(call(vMessage(first)));
    const uint pid = servicePid(); // at once, before it ends
    QVERIFY(pid != 0);
    QCOMPARE(result, (QList<int>{StoreTesting::idIn(StoreTesting::Outbox, first), 0}));
    QVERIFY(result.first() > 0);
    QTRY_VERIFY_WITH_TIMEOUT(hasEnded(pid), Patience);
    QCOMPARE(servicePid(), 0U);
    const QString second = QStringLiteral("second");
    const QList<int> secondResult = answer(call(vMessage(second)));
    QCOMPARE(secondResult, (QList<int>{StoreTesting::idIn(StoreTesting::Outbox, second), 0}));
    QVERIFY(servicePid() != pid);
}

void TestService::tellsWhatCannotBeSent_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("errorCause");
    QTest::newRow("nothing") << QString() << 2;
    QTest::newRow("no message") << QStringLiteral("Hello") << 2;
    QTest::newRow("no text") << vMessage(QString()) << 2;
    QTest::newRow("no number") << vMessage(QStringLiteral("Hello"), QString()) << 3;
    QTest::newRow("zero in the text") // the bus library cuts there
        << vMessage(QStringLiteral("Hello") + QChar() + QStringLiteral("there")) << 2;
    QTest::newRow("1 MiB that is no message") << QString(1 << 20, QLatin1Char('a')) << 2;
}

void TestService::tellsWhatCannotBeSent()
{
    QFETCH(QString, text);
    QFETCH(int, errorCause);
    QCOMPARE(answer(call(text)), (QList<int>{-1, errorCause}));
}

void TestService::hasTheInterfaceThatIsInstalled()
{
    const QStringList expected{
        QStringLiteral("SendSms"),
        QStringLiteral("vMessage s in"),
        QStringLiteral("id i out"),
        QStringLiteral("errorCause i out"),
    };
    QFile file(QStringLiteral(INTERFACE_FILE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(callsOf(QString::fromUtf8(file.readAll())), expected);
    QCOMPARE(callsOf(SenderService::introspection()), expected);
}

void TestService::keepsALongTextWhole()
{
    const QString text = QStringLiteral("абвгдежз").repeated(1 << 16);
    QCOMPARE(text.toUtf8().size(), 1 << 20);
    QVERIFY(!answer(call(vMessage(text))).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(StoreTesting::idIn(StoreTesting::Outbox, text) > 0, Patience);
}

void TestService::servesAThousandQueuedCalls()
{
    QList<QDBusPendingCall> calls;
    for (int i = 0; i < 1000; ++i)
        calls += call(i % 2 == 0 ? vMessage(QStringLiteral("Hello"), QString()) : QString());
    for (int i = 0; i < calls.size(); ++i)
        QCOMPARE(answer(calls.at(i)), (QList<int>{-1, i % 2 == 0 ? 3 : 2}));
}

void TestService::seesTheMessageOfAVanishedCallerThrough()
{
    const QString text = QStringLiteral("of a caller that vanishes");
    const QString name = QStringLiteral("vanishing");
    {
        const QDBusConnection bus =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        call(vMessage(text), bus);
        BusTesting::roundTrip(bus); // the bus has got the call
    }
    QDBusConnection::disconnectFromBus(name);
    QTRY_VERIFY_WITH_TIMEOUT(StoreTesting::idIn(StoreTesting::Outbox, text) > 0, Patience);
    const QString next = QStringLiteral("of the next caller");
    const QList<int> result = answer(call(vMessage(next)));
    QCOMPARE(result, (QList<int>{StoreTesting::idIn(StoreTesting::Outbox, next), 0}));
}

//! The buses hand the environment on to the service that they start.
int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    qputenv("XDG_DATA_HOME", ACTIVATION_DATA); // with dbus-1/services in it
    const PrivateBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");
    const PrivateBus sessionBus("DBUS_SESSION_BUS_ADDRESS");
    QCoreApplication application(argc, argv);
    TestService test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_service.moc"
