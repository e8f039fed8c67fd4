// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendtests.h"

#include <commhistory/eventmarshalling.h>

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>

#include <csignal>

namespace {

const QString Number = QStringLiteral("+15550100");
const QString Hello = QStringLiteral("Hello");
const QStringList SendHello{QStringLiteral("send"), Number, Hello};
const QString AsJson = QStringLiteral("-ondjson");
const QByteArray Unknown(
    "korvasync: it is not known whether the message was sent; do not repeat it "
    "blindly");

QList<QJsonObject> one(const QString &number, const QString &text)
{
    return {{{QStringLiteral("number"), number}, {QStringLiteral("text"), text}}};
}

QByteArray idOf(const QJsonObject &message)
{
    return QByteArray::number(message.value(QLatin1String("id")).toInt());
}

QString bodyOf(const QJsonObject &message)
{
    return message.value(QLatin1String("body")).toString();
}

} // namespace

void SendTests::start(QProcess *process, const QStringList &arguments, const QByteArray &input)
{
    process->start(QStringLiteral(KORVASYNC_CLIENT), arguments);
    process->write(input);
    process->closeWriteChannel();
}

SendTests::Outcome SendTests::finish(QProcess *process)
{
    Outcome outcome;
    // The simulated modem is served by this loop meanwhile.
    if (!QTest::qWaitFor([&] { return process->state() == QProcess::NotRunning; },
                         3 * StoreTesting::Patience)) {
        process->kill();
        process->waitForFinished();
        return outcome;
    }
    if (process->exitStatus() == QProcess::NormalExit)
        outcome.exitCode = process->exitCode();
    outcome.output = process->readAllStandardOutput();
    outcome.errors = process->readAllStandardError();
    return outcome;
}

SendTests::Outcome SendTests::run(const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    start(&process, arguments, input);
    return finish(&process);
}

QList<QJsonObject> SendTests::listed(const QString &folder)
{
    const Outcome outcome =
        run({QStringLiteral("list"), QStringLiteral("--folder"), folder, AsJson});
    QList<QJsonObject> messages;
    for (const QByteArray &line : outcome.output.split('\n')) {
        if (!line.isEmpty())
            messages += QJsonDocument::fromJson(line).object();
    }
    return messages;
}

void SendTests::cleanup()
{
    stack.takeMessages();
    QVERIFY(QDir(qEnvironmentVariable("KORVASYNC_STORE")).removeRecursively());
}

void SendTests::sendsWhole(const QString &text)
{
    QVERIFY(stack.provide());
    const Outcome outcome = run({QStringLiteral("send"), Number, text});
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(stack.takeMessages(), one(Number, text));
    const QList<QJsonObject> sent = listed(QStringLiteral("sent"));
    QCOMPARE(sent.size(), 1);
    QCOMPARE(bodyOf(sent.first()), text);
    QCOMPARE(sent.first().value(QLatin1String("number")).toString(), Number);
    QCOMPARE(outcome.output, idOf(sent.first()) + '\n');
}

void SendTests::fails(const QByteArray &reason)
{
    const Outcome outcome = run(SendHello);
    QCOMPARE(outcome.output, QByteArray());
    const QList<QJsonObject> outbox = listed(QStringLiteral("outbox"));
    QCOMPARE(outbox.size(), 1);
    QCOMPARE(outcome.errors,
             "korvasync: the message was not sent and stands in the outbox as "
                 + idOf(outbox.first()) + ": " + reason + '\n');
    QCOMPARE(outcome.exitCode, 8);
    QCOMPARE(stack.takeMessages(), QList<QJsonObject>());
}

void SendTests::sendsTextsWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << Hello;
    QTest::newRow("lines") << QStringLiteral("One\nEND:VBODY\nTwo\n");
    QTest::newRow("160 Cyrillic letters") << QStringLiteral("абвгдежзик").repeated(16);
}

void SendTests::sendsTextsWhole()
{
    QFETCH(QString, text);
    sendsWhole(text);
}

void SendTests::sendsStandardInput()
{
    QVERIFY(stack.provide());
    QCOMPARE(run({QStringLiteral("send"), Number, QStringLiteral("-")}, "Hello\n").exitCode, 0);
    QCOMPARE(run({QStringLiteral("send")}, "+15550100\nHello\n").exitCode, 0);
    QCOMPARE(stack.takeMessages(), one(Number, Hello) + one(Number, Hello));
}

void SendTests::sendsTheMessageOfAFile()
{
    QVERIFY(stack.provide());
    const QByteArray message(
        "BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\nX-IRMC-BOX:DRAFTS\r\n"
        "BEGIN:VENV\r\nBEGIN:VCARD\r\nVERSION:2.1\r\nTEL:+15550100\r\nEND:VCARD\r\n"
        "BEGIN:VBODY\r\nПривет\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n");
    const Outcome outcome =
        run({QStringLiteral("send"), QStringLiteral("--vmessage"), QStringLiteral("-")}, message);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(stack.takeMessages(), one(Number, QStringLiteral("Привет")));
}

//! What is sent and stored has none, and is the message that was sent all the same.
void SendTests::sendsATextWithoutItsByteOrderMark()
{
    QVERIFY(stack.provide());
    const Outcome outcome = run({QStringLiteral("send"), Number, QStringLiteral("\uFEFFHello")});
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, idOf(listed(QStringLiteral("sent")).value(0)) + '\n');
    QCOMPARE(stack.takeMessages(), one(Number, Hello));
}

void SendTests::printsResultsAsJson()
{
    QVERIFY(stack.provide());
    const Outcome sent = run(SendHello + QStringList(AsJson));
    QCOMPARE(sent.exitCode, 0);
    QCOMPARE(sent.output,
             "{\"id\":" + idOf(listed(QStringLiteral("sent")).value(0))
                 + ",\"status\":\"sent\"}\n");
    QVERIFY(stack.order("refuse"));
    const Outcome failed = run(SendHello + QStringList(AsJson));
    QCOMPARE(failed.exitCode, 8);
    QCOMPARE(failed.output,
             "{\"id\":" + idOf(listed(QStringLiteral("outbox")).value(0))
                 + ",\"status\":\"failed\"}\n");
}

void SendTests::tellsTwoEqualMessagesApart()
{
    QVERIFY(stack.provide());
    const Outcome first = run(SendHello);
    const Outcome second = run(SendHello);
    QCOMPARE(first.exitCode, 0);
    QCOMPARE(second.exitCode, 0);
    QCOMPARE(stack.takeMessages(), one(Number, Hello) + one(Number, Hello));
    QVERIFY(first.output.toInt() != second.output.toInt());
    QList<QByteArray> ids;
    for (const QJsonObject &message : listed(QStringLiteral("sent")))
        ids += idOf(message) + '\n';
    QCOMPARE(ids.size(), 2);
    QVERIFY(ids.contains(first.output));
    QVERIFY(ids.contains(second.output));
}

void SendTests::takesNoEarlierMessageForTheOneSent()
{
    QVERIFY(stack.provide());
    QCOMPARE(run(SendHello).exitCode, 0);
    stack.takeMessages();
    QVERIFY(stack.order("refuse"));
    fails(words.refusal);
}

void SendTests::takesNoOtherClientsMessageForTheOneSent()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("delay 5000"));
    QProcess first;
    start(&first, SendHello);
    QVERIFY(stack.waitForSubmission());
    const Outcome hasty = run(SendHello + QStringList(QStringLiteral("--timeout=0.1")));
    QVERIFY2(hasty.errors.startsWith("korvasync: the message was not sent, as another client "),
             hasty.errors);
    QCOMPARE(hasty.exitCode, 5);
    QVERIFY(stack.order("refuse"));
    const Outcome second = run(SendHello);
    QCOMPARE(second.output, QByteArray());
    QCOMPARE(second.exitCode, 8);
    const Outcome outcome = finish(&first);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, idOf(listed(QStringLiteral("sent")).value(0)) + '\n');
    QCOMPARE(stack.takeMessages(), one(Number, Hello));
}

//! Longer than the library itself waits.
void SendTests::waitsForALateAnswer()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("delay 5000"));
    const Outcome outcome = run(SendHello);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, idOf(listed(QStringLiteral("sent")).value(0)) + '\n');
}

void SendTests::tellsARefusal()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("refuse"));
    fails(words.refusal);
}

void SendTests::tellsAMissingDaemon()
{
    stack.stop();
    fails("There is no modem daemon, neither ModemManager nor oFono.");
}

void SendTests::tellsAMissingModem()
{
    QVERIFY(stack.startWithoutModem());
    fails("There is no modem.");
}

void SendTests::tellsAMissingSim()
{
    QVERIFY(stack.start("no-sim"));
    fails("The modem has no SIM card.");
}

void SendTests::tellsALockedSim()
{
    QVERIFY(stack.start("ask-pin"));
    fails("The SIM card is locked and asks for its PIN.");
}

void SendTests::tellsAMissingNetwork()
{
    QVERIFY(stack.provide());
    QCOMPARE(run(SendHello).exitCode, 0); // enables the modem
    QVERIFY(QDir(qEnvironmentVariable("KORVASYNC_STORE")).removeRecursively());
    stack.takeMessages();
    QVERIFY(stack.goAway());
    fails("The modem is not registered with a network.");
}

void SendTests::doesNotKnowWhenTheModemGoes()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("hang-up"));
    const Outcome outcome = run(SendHello + QStringList{AsJson, QStringLiteral("--timeout=10")});
    QCOMPARE(outcome.exitCode, 9);
    QCOMPARE(outcome.output, QByteArray("{\"status\":\"unknown\"}\n"));
    QCOMPARE(outcome.errors, Unknown + ": " + words.loss + '\n');
}

void SendTests::doesNotKnowWhenTheTimeIsOver()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("ignore"));
    const Outcome outcome = run(SendHello + QStringList{QStringLiteral("--timeout=3")});
    QCOMPARE(outcome.errors, Unknown + '\n');
    QCOMPARE(outcome.exitCode, 9);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(listed(QStringLiteral("all")), QList<QJsonObject>());
}

void SendTests::doesNotKnowWhenInterrupted()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("ignore"));
    QProcess process;
    start(&process, SendHello);
    QVERIFY(stack.waitForSubmission());
    QCOMPARE(kill(pid_t(process.processId()), SIGINT), 0);
    const Outcome outcome = finish(&process);
    QCOMPARE(outcome.errors, Unknown + '\n');
    QCOMPARE(outcome.exitCode, 130);
    QCOMPARE(outcome.output, QByteArray());
}

//! To repeat is what does harm, so nothing else is the exit code.
void SendTests::doesNotKnowWhenTheStoreFails()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("delay 3000"));
    const QString store = qEnvironmentVariable("KORVASYNC_STORE");
    StoreTesting::makeStore();
    QProcess process;
    start(&process, SendHello + QStringList{AsJson, QStringLiteral("--timeout=10")});
    QVERIFY(stack.waitForSubmission());
    QVERIFY(QDir(store).removeRecursively());
    QVERIFY(QDir().mkpath(store + QStringLiteral("/no store")));
    const Outcome outcome = finish(&process);
    QVERIFY2(outcome.errors.startsWith(
                 Unknown + ": A message could not be added to the history.\nkorvasync: "),
             outcome.errors);
    QCOMPARE(outcome.exitCode, 9);
    QCOMPARE(outcome.output, QByteArray("{\"status\":\"unknown\"}\n"));
    QCOMPARE(stack.takeMessages(), one(Number, Hello));
}

//! Any program on the session bus can announce what it likes.
void SendTests::isNotDeceivedByAForgedAnnouncement()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("ignore"));
    QProcess process;
    start(&process, SendHello + QStringList{QStringLiteral("--timeout=3")});
    QVERIFY(stack.waitForSubmission());
    CommHistory::Event event;
    event.setId(42);
    event.setDirection(CommHistory::Event::Outbound);
    event.setFreeText(Hello);
    event.setRemoteUid(Number);
    qDBusRegisterMetaType<CommHistory::Event>();
    qDBusRegisterMetaType<QList<CommHistory::Event>>();
    QVERIFY(QDBusConnection::sessionBus().send(
        QDBusMessage::createSignal(QStringLiteral("/"), QStringLiteral("com.quelt.commhistory"),
                                   QStringLiteral("eventsAdded"))
        << QVariant::fromValue(QList<CommHistory::Event>{event})));
    const Outcome outcome = finish(&process);
    QCOMPARE(outcome.errors, Unknown + '\n');
    QCOMPARE(outcome.exitCode, 9);
    QCOMPARE(outcome.output, QByteArray());
}

void SendTests::sendsNothingInADryRun()
{
    QVERIFY(stack.provide());
    const Outcome outcome = run(SendHello + QStringList(QStringLiteral("--dry-run")));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("would be sent to +15550100: Hello\n"));
    QVERIFY(!QDir(qEnvironmentVariable("KORVASYNC_STORE")).exists());
    QCOMPARE(stack.takeMessages(), QList<QJsonObject>());
}
