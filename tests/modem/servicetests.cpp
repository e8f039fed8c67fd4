// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "servicetests.h"

#include "senderservice.h"

#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusServiceWatcher>

using namespace ModemTesting;
using SenderService::answer;
using SenderService::call;
using SenderService::vMessage;

namespace {

QString textOf(const QJsonObject &message)
{
    return message.value(QLatin1String("text")).toString();
}

} // namespace

bool ServiceTests::start(const QStringList &options)
{
    QDBusServiceWatcher watcher(SenderService::BusName, QDBusConnection::sessionBus(),
                                QDBusServiceWatcher::WatchForRegistration);
    QSignalSpy registered(&watcher, &QDBusServiceWatcher::serviceRegistered);
    service.startBound(QStringLiteral(KORVASYNCD), options);
    return registered.wait(StoreTesting::Patience);
}

void ServiceTests::stop()
{
    service.terminate();
    QTRY_COMPARE_WITH_TIMEOUT(service.state(), QProcess::NotRunning, StoreTesting::Patience);
}

//! A modem that can send, and is enabled: to enable it takes longer than a call waits.
bool ServiceTests::provideModem()
{
    if (!stack.provide())
        return false;
    MessagingIf messaging{QString()};
    Outcome outcome(messaging.sendSMS(QStringLiteral("+15550199"), QStringLiteral("Hello"), false));
    return outcome.wait() && !outcome.isError() && stack.takeMessages().size() == 1;
}

void ServiceTests::init()
{
    QVERIFY(provideModem());
    QVERIFY(start());
}

void ServiceTests::cleanup()
{
    stop();
    stack.takeMessages();
    removeMessages();
}

void ServiceTests::sendsOneAfterTheOther()
{
    for (const char *word : {"first", "second", "third"}) {
        const QString text = QString::fromLatin1(word);
        const QList<int> result = answer(call(vMessage(text)));
        QCOMPARE(result, (QList<int>{StoreTesting::idIn(StoreTesting::Sent, text), 0}));
        QVERIFY(result.first() > 0);
    }
    QCOMPARE(stack.takeMessages().size(), 3);
}

void ServiceTests::servesTenQuickCalls()
{
    QList<QDBusPendingCall> calls;
    QStringList texts;
    for (int i = 0; i < 10; ++i) {
        texts += QStringLiteral("text %1").arg(i);
        calls += call(vMessage(texts.last()));
    }
    for (int i = 0; i < calls.size(); ++i) {
        const QList<int> result = answer(calls.at(i));
        QCOMPARE(result, (QList<int>{StoreTesting::idIn(StoreTesting::Sent, texts.at(i)), 0}));
        QVERIFY(result.first() > 0);
    }
    QStringList received;
    for (const QJsonObject &message : stack.takeMessages())
        received += textOf(message);
    QCOMPARE(received, texts);
}

void ServiceTests::sendsWhole(const QString &text)
{
    QCOMPARE(answer(call(vMessage(text))).value(1), 0);
    QCOMPARE(textOf(stack.takeMessages().value(0)), text);
    QVERIFY(StoreTesting::idIn(StoreTesting::Sent, text) > 0);
}

void ServiceTests::sendsAnyScriptWhole() { sendsWhole(QStringLiteral("абвгдежзик").repeated(16)); }

void ServiceTests::outlivesTheModemDaemon()
{
    QCOMPARE(answer(call(vMessage(QStringLiteral("before")))).value(1), 0);
    stack.stop();
    const QList<int> failed = answer(call(vMessage(QStringLiteral("meanwhile"))));
    const QList<CommHistory::Event> outbox = StoreTesting::read(StoreTesting::Outbox);
    QCOMPARE(outbox.size(), 1);
    QCOMPARE(failed, (QList<int>{outbox.first().id(), 0}));
    QVERIFY(provideModem());
    const QList<int> sent = answer(call(vMessage(QStringLiteral("after"))));
    QCOMPARE(sent,
             (QList<int>{StoreTesting::idIn(StoreTesting::Sent, QStringLiteral("after")), 0}));
    QVERIFY(sent.first() > 0);
}

//! The message comes into the store all the same.
void ServiceTests::tellsWhatIsNotKnownInTime()
{
    QVERIFY(stack.order("delay 5000"));
    QCOMPARE(answer(call(vMessage(QStringLiteral("late")))), (QList<int>{-1, 5}));
    QTRY_VERIFY_WITH_TIMEOUT(StoreTesting::idIn(StoreTesting::Sent, QStringLiteral("late")) > 0,
                             StoreTesting::Patience);
}

//! Also when the first one's outcome comes after its answer: until then they are one.
void ServiceTests::tellsEqualMessagesApart()
{
    const QString text = QStringLiteral("twice");
    QVERIFY(stack.order("delay 5000"));
    QCOMPARE(answer(call(vMessage(text))), (QList<int>{-1, 5}));
    QCOMPARE(answer(call(vMessage(text))), (QList<int>{-1, 5}));
    QVERIFY(stack.order("refuse"));
    QList<int> second;
    const auto isAnotherMessage = [&] {
        second = answer(call(vMessage(text)));
        return second.value(0) != -1;
    };
    QVERIFY(QTest::qWaitFor(isAnotherMessage, StoreTesting::Patience));
    QVERIFY(StoreTesting::idIn(StoreTesting::Sent, text) > 0);
    const QList<CommHistory::Event> outbox = StoreTesting::read(StoreTesting::Outbox);
    QCOMPARE(outbox.size(), 1);
    QCOMPARE(second, (QList<int>{outbox.first().id(), 0}));
    QCOMPARE(stack.takeMessages().size(), 1);
}

void ServiceTests::seesItsMessageThroughWhenTerminated()
{
    QVERIFY(stack.order("delay 5000"));
    const QDBusPendingCall first = call(vMessage(QStringLiteral("first")));
    QVERIFY(stack.waitForSubmission());
    const QDBusPendingCall queued = call(vMessage(QStringLiteral("queued")));
    QDBusConnection::sessionBus().interface()->isServiceRegistered(SenderService::BusName);
    service.terminate();
    QCOMPARE(answer(first), (QList<int>{-1, 5}));
    QCOMPARE(answer(queued), QList<int>());
    QCOMPARE(queued.error().message(),
             QStringLiteral("The message was not sent, as the service ends."));
    QCOMPARE(answer(call(vMessage(QStringLiteral("too late")))), QList<int>());
    QVERIFY(QTest::qWaitFor([this] { return service.state() == QProcess::NotRunning; },
                            StoreTesting::Patience));
    QCOMPARE(service.exitStatus(), QProcess::NormalExit);
    QCOMPARE(service.exitCode(), 0);
    QVERIFY(StoreTesting::idIn(StoreTesting::Sent, QStringLiteral("first")) > 0);
    QCOMPARE(stack.takeMessages().size(), 1);
}

//! But not before what was sent has come into the store.
void ServiceTests::endsWhenIdle()
{
    stop();
    QVERIFY(stack.order("delay 5000"));
    QVERIFY(start({QStringLiteral("--idle-time"), QStringLiteral("1")}));
    QCOMPARE(answer(call(vMessage(QStringLiteral("late")))), (QList<int>{-1, 5}));
    QVERIFY(QTest::qWaitFor([this] { return service.state() == QProcess::NotRunning; },
                            StoreTesting::Patience));
    QCOMPARE(service.exitStatus(), QProcess::NormalExit);
    QCOMPARE(service.exitCode(), 0);
    QVERIFY(StoreTesting::idIn(StoreTesting::Sent, QStringLiteral("late")) > 0);
}
