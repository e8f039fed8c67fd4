// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "modemtesting.h"

#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>
#include <QtDBus/QDBusServiceWatcher>

using namespace ModemTesting;
using StoreTesting::Patience;

const QString BusName = QStringLiteral("org.korvasync.Sender");

//! The service for other programs, in a process of its own.
class TestService : public QObject
{
    Q_OBJECT
public:
    explicit TestService(const PrivateBus &systemBus)
        : stack(ModemStack::Daemon::Ofono, systemBus)
    {
    }

private Q_SLOTS:
    void init();
    void cleanup();
    void sendsOneAfterTheOther();
    void servesTenQuickCalls();
    void sendsAnyScriptWhole();
    void outlivesTheModemDaemon();
    void tellsWhatIsNotKnownInTime();
    void tellsWhatCannotBeSent_data();
    void tellsWhatCannotBeSent();
    void endsWhenIdle();

private:
    bool start(const QStringList &options = QStringList());
    void stop();
    static QDBusPendingCall call(const QString &vMessage);
    static QList<int> answer(QDBusPendingCall call);

    ModemStack stack;
    QProcess service;
};

namespace {

QString message(const QString &text)
{
    return QStringLiteral("BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-BOX:SENT\r\nBEGIN:VENV\r\n"
                          "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:+15550100\r\nEND:VCARD\r\n"
                          "BEGIN:VBODY\r\n%1\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n")
        .arg(text);
}

QString textOf(const QJsonObject &message)
{
    return message.value(QLatin1String("text")).toString();
}

int idInSent(const QString &text)
{
    for (const CommHistory::Event &event : StoreTesting::read(StoreTesting::Sent)) {
        if (event.freeText() == text)
            return event.id();
    }
    return -1;
}

} // namespace

bool TestService::start(const QStringList &options)
{
    QDBusServiceWatcher watcher(BusName, QDBusConnection::sessionBus(),
                                QDBusServiceWatcher::WatchForRegistration);
    QSignalSpy registered(&watcher, &QDBusServiceWatcher::serviceRegistered);
    service.start(QStringLiteral(KORVASYNCD), options);
    return registered.wait(Patience);
}

void TestService::stop()
{
    service.terminate();
    QTRY_COMPARE_WITH_TIMEOUT(service.state(), QProcess::NotRunning, Patience);
}

QDBusPendingCall TestService::call(const QString &vMessage)
{
    QDBusMessage request = QDBusMessage::createMethodCall(
        BusName, QStringLiteral("/SendSmsInterface"), QStringLiteral("org.korvasync.SendSms1"),
        QStringLiteral("SendSms"));
    request << vMessage;
    return QDBusConnection::sessionBus().asyncCall(request, 3 * Patience);
}

//! Id and error cause.
QList<int> TestService::answer(QDBusPendingCall call)
{
    if (!QTest::qWaitFor([&] { return call.isFinished(); }, 3 * Patience) || call.isError())
        return {};
    QList<int> numbers;
    for (const QVariant &argument : call.reply().arguments())
        numbers += argument.toInt();
    return numbers;
}

void TestService::init()
{
    QVERIFY(stack.provide());
    QVERIFY(start());
}

void TestService::cleanup()
{
    stop();
    stack.takeMessages();
    removeMessages();
}

void TestService::sendsOneAfterTheOther()
{
    for (const char *word : {"first", "second", "third"}) {
        const QString text = QString::fromLatin1(word);
        const QList<int> result = answer(call(message(text)));
        QCOMPARE(result, (QList<int>{idInSent(text), 0}));
        QVERIFY(result.first() > 0);
    }
    QCOMPARE(stack.takeMessages().size(), 3);
}

void TestService::servesTenQuickCalls()
{
    QList<QDBusPendingCall> calls;
    QStringList texts;
    for (int i = 0; i < 10; ++i) {
        texts += QStringLiteral("text %1").arg(i);
        calls += call(message(texts.last()));
    }
    for (int i = 0; i < calls.size(); ++i) {
        const QList<int> result = answer(calls.at(i));
        QCOMPARE(result, (QList<int>{idInSent(texts.at(i)), 0}));
        QVERIFY(result.first() > 0);
    }
    QStringList received;
    for (const QJsonObject &message : stack.takeMessages())
        received += textOf(message);
    QCOMPARE(received, texts);
}

void TestService::sendsAnyScriptWhole()
{
    const QString text = QStringLiteral("абвгдежзик").repeated(16);
    QCOMPARE(answer(call(message(text))).value(1), 0);
    QCOMPARE(textOf(stack.takeMessages().value(0)), text);
}

void TestService::outlivesTheModemDaemon()
{
    QCOMPARE(answer(call(message(QStringLiteral("before")))).value(1), 0);
    stack.stop();
    const QList<int> failed = answer(call(message(QStringLiteral("meanwhile"))));
    const QList<CommHistory::Event> outbox = StoreTesting::read(Outbox);
    QCOMPARE(outbox.size(), 1);
    QCOMPARE(failed, (QList<int>{outbox.first().id(), 0}));
    QVERIFY(stack.provide());
    const QList<int> sent = answer(call(message(QStringLiteral("after"))));
    QCOMPARE(sent, (QList<int>{idInSent(QStringLiteral("after")), 0}));
    QVERIFY(sent.first() > 0);
}

//! The message comes into the store all the same.
void TestService::tellsWhatIsNotKnownInTime()
{
    QVERIFY(stack.order("delay 5000"));
    QCOMPARE(answer(call(message(QStringLiteral("late")))), (QList<int>{-1, 5}));
    QTRY_VERIFY_WITH_TIMEOUT(idInSent(QStringLiteral("late")) > 0, Patience);
}

void TestService::tellsWhatCannotBeSent_data()
{
    QTest::addColumn<QString>("vMessage");
    QTest::addColumn<int>("errorCause");
    QTest::newRow("no message") << QStringLiteral("Hello") << 2;
    QTest::newRow("no text") << message(QString()) << 2;
    QTest::newRow("no number")
        << message(QStringLiteral("Hello")).remove(QStringLiteral("+15550100")) << 3;
}

void TestService::tellsWhatCannotBeSent()
{
    QFETCH(QString, vMessage);
    QFETCH(int, errorCause);
    QCOMPARE(answer(call(vMessage)), (QList<int>{-1, errorCause}));
    QCOMPARE(stack.takeMessages(), QList<QJsonObject>());
}

//! But not before what was sent has come into the store.
void TestService::endsWhenIdle()
{
    stop();
    QVERIFY(stack.order("delay 5000"));
    QVERIFY(start({QStringLiteral("--idle-time"), QStringLiteral("1")}));
    QCOMPARE(answer(call(message(QStringLiteral("late")))), (QList<int>{-1, 5}));
    QVERIFY(QTest::qWaitFor([this] { return service.state() == QProcess::NotRunning; }, Patience));
    QCOMPARE(service.exitStatus(), QProcess::NormalExit);
    QCOMPARE(service.exitCode(), 0);
    QVERIFY(idInSent(QStringLiteral("late")) > 0);
}

MODEM_TEST_MAIN(TestService)
#include "tst_service.moc"
