// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// A bus that takes callers and answers nobody keeps no program waiting for ever.

#include "bustesting.h"
#include "messagelog.h"
#include "storetesting.h"
#include "vmessagetext.h"

#include <commhistory/eventmarshalling.h>
#include <messaging/messagingif.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtDBus/QDBusMetaType>

#include <csignal>

using StoreTesting::Patience;

namespace {

constexpr int Outbox = 4099;
const QString Silent = QStringLiteral("The system bus does not answer.");
const QStringList SendHello{QStringLiteral("send"), QStringLiteral("+15550100"),
                            QStringLiteral("Hello")};

//! What became of a message that is sent from this process.
QString outcomeOfSending()
{
    MessagingIf messaging{QString()};
    PendingMessage *const message =
        messaging.sendSMS(QStringLiteral("+15550100"), QStringLiteral("Hello"), true);
    QSignalSpy finished(message, &PendingMessage::finished);
    QString text = QStringLiteral("never finished");
    QObject::connect(message, &PendingMessage::finished, message,
                     [&text](const PendingMessage *done) { text = done->errorText(); });
    finished.wait(Patience);
    return text;
}

} // namespace

class TestSilentBus : public QObject
{
    Q_OBJECT
public:
    TestSilentBus(PrivateBus &systemBus, PrivateBus &sessionBus)
        : systemBus(systemBus)
        , sessionBus(sessionBus)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void tellsASystemBusThatDoesNotAnswer();
    void theClientTellsASystemBusThatDoesNotAnswer();
    void theClientGivesUpOnTheSessionBus();
    void theClientCanBeInterruptedOnTheSessionBus();
    void theServiceGivesUpOnTheSessionBus();
    void theClientAddsWithoutTheSessionBus();
    void announcesWhatIsAddedWhileTheSessionBusAnswers();

public Q_SLOTS:
    void take(const QList<CommHistory::Event> &events)
    {
        for (const CommHistory::Event &event : events)
            heard += event.freeText();
    }

private:
    PrivateBus &systemBus;
    PrivateBus &sessionBus;
    QStringList heard;
};

void TestSilentBus::initTestCase()
{
    QVERIFY(StoreTesting::makeStore());
    qDBusRegisterMetaType<CommHistory::MessagePart>();
    qDBusRegisterMetaType<QList<CommHistory::MessagePart>>();
    qDBusRegisterMetaType<CommHistory::Event::Contact>();
    qDBusRegisterMetaType<QList<CommHistory::Event::Contact>>();
    qDBusRegisterMetaType<CommHistory::Event>();
    qDBusRegisterMetaType<QList<CommHistory::Event>>();
}

void TestSilentBus::cleanup()
{
    systemBus.goOn();
    sessionBus.goOn();
}

//! From the beginning, and when it has answered before.
void TestSilentBus::tellsASystemBusThatDoesNotAnswer()
{
    const QString noDaemon =
        QStringLiteral("There is no modem daemon, neither ModemManager nor oFono.");
    systemBus.stop();
    QCOMPARE(outcomeOfSending(), Silent);
    QCOMPARE(outcomeOfSending(), Silent);
    QCOMPARE(int(StoreTesting::read(Outbox).size()), 2);
    systemBus.goOn();
    QCOMPARE(outcomeOfSending(), noDaemon);
    systemBus.stop();
    QCOMPARE(outcomeOfSending(), Silent);
    systemBus.goOn();
    QCOMPARE(outcomeOfSending(), noDaemon);
}

//! Whatever the log leaves out.
void TestSilentBus::theClientTellsASystemBusThatDoesNotAnswer()
{
    systemBus.stop();
    QProcess client;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                       QStringLiteral("korvasync.messaging=false"));
    client.setProcessEnvironment(environment);
    client.start(QStringLiteral(KORVASYNC_CLIENT), SendHello);
    QVERIFY(client.waitForFinished(Patience));
    QCOMPARE(client.exitCode(), 8);
    const QByteArray errors = client.readAllStandardError();
    QVERIFY2(errors.endsWith(": The system bus does not answer.\n"), errors);
}

void TestSilentBus::theClientGivesUpOnTheSessionBus()
{
    sessionBus.stop();
    QProcess client;
    client.start(QStringLiteral(KORVASYNC_CLIENT),
                 SendHello
                     + QStringList{QStringLiteral("--timeout=1"), QStringLiteral("-ondjson")});
    QVERIFY(client.waitForFinished(Patience));
    QCOMPARE(
        client.readAllStandardError(),
        QByteArray("korvasync: the message was not sent, as the session bus does not answer\n"));
    QCOMPARE(client.readAllStandardOutput(), QByteArray("{\"status\":\"failed\"}\n"));
    QCOMPARE(client.exitCode(), 5);
}

void TestSilentBus::theClientCanBeInterruptedOnTheSessionBus()
{
    sessionBus.stop();
    QProcess client;
    client.start(QStringLiteral(KORVASYNC_CLIENT), SendHello);
    QVERIFY(client.waitForStarted());
    const auto waitsForTheBus = [&] {
        const QString folder = QStringLiteral("/proc/%1/task").arg(client.processId());
        for (const QString &thread : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile name(folder + QLatin1Char('/') + thread + QStringLiteral("/comm"));
            if (name.open(QIODevice::ReadOnly) && name.readAll().startsWith("QDBusConnection"))
                return true;
        }
        return false;
    };
    QTRY_VERIFY_WITH_TIMEOUT(waitsForTheBus(), Patience);
    QCOMPARE(kill(pid_t(client.processId()), SIGINT), 0);
    QVERIFY(client.waitForFinished(Patience));
    QCOMPARE(client.exitStatus(), QProcess::NormalExit);
    QCOMPARE(client.exitCode(), 130);
    QCOMPARE(client.readAllStandardError(),
             QByteArray("korvasync: interrupted before the message was sent\n"));
}

void TestSilentBus::theServiceGivesUpOnTheSessionBus()
{
    sessionBus.stop();
    QProcess service;
    service.start(QStringLiteral(KORVASYNCD), QStringList());
    QVERIFY(service.waitForFinished(2 * Patience));
    QCOMPARE(service.readAllStandardError(),
             QByteArray("korvasyncd: the session bus does not answer\n"));
    QCOMPARE(service.exitCode(), 1);
}

void TestSilentBus::theClientAddsWithoutTheSessionBus()
{
    sessionBus.stop();
    QProcess client;
    client.start(QStringLiteral(KORVASYNC_CLIENT), {QStringLiteral("add"), QStringLiteral("-")});
    client.write(VMessageText().text().toUtf8());
    client.closeWriteChannel();
    QVERIFY(client.waitForFinished(Patience));
    QCOMPARE(client.readAllStandardError(), QByteArray());
    QCOMPARE(client.readAllStandardOutput().split('\n').value(1),
             QByteArray("1 read, 1 added, 0 present, 0 refused, 0 failed"));
    QCOMPARE(client.exitCode(), 0);
}

//! One that did not answer at first, and one that ceases to.
void TestSilentBus::announcesWhatIsAddedWhileTheSessionBusAnswers()
{
    const auto add = [](const char *text) {
        return StoreTesting::add({StoreTesting::message(QString::fromLatin1(text))}).size();
    };
    MessageLog log;
    sessionBus.stop();
    QCOMPARE(add("unheard"), 1);
    QCOMPARE(add("unheard as well"), 1);
    const auto warnings = log.lines(QtWarningMsg);
    sessionBus.goOn();
    QDBusConnection listener =
        QDBusConnection::connectToBus(sessionBus.address(), QStringLiteral("listener"));
    QVERIFY(listener.connect(QString(), QString(), QStringLiteral("com.quelt.commhistory"),
                             QStringLiteral("eventsAdded"), this,
                             SLOT(take(QList<CommHistory::Event>))));
    BusTesting::roundTrip(listener);
    QCOMPARE(add("first"), 1);
    sessionBus.stop();
    QCOMPARE(add("second"), 1);
    QCOMPARE(add("third"), 1);
    sessionBus.goOn();
    QTRY_COMPARE_WITH_TIMEOUT(
        heard,
        (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}),
        Patience);
    QCOMPARE(warnings, QStringList{QStringLiteral("The session bus does not answer.")});
    QCOMPARE(log.lines(QtWarningMsg).size(), 2);
}

int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    PrivateBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");
    PrivateBus sessionBus("DBUS_SESSION_BUS_ADDRESS");
    QCoreApplication application(argc, argv);
    TestSilentBus test(systemBus, sessionBus);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_silentbus.moc"
