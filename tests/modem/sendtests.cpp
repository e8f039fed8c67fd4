// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendtests.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>

namespace {

const QString Number = QStringLiteral("+15550100");
const QString Hello = QStringLiteral("Hello");
const QStringList SendHello{QStringLiteral("send"), Number, Hello};
const QString AsJson = QStringLiteral("-ondjson");

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

SendTests::Outcome SendTests::run(const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(QStringLiteral(KORVASYNC_CLIENT), arguments);
    process.write(input);
    process.closeWriteChannel();
    Outcome outcome;
    // The simulated modem is served by this loop meanwhile.
    if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; },
                         3 * StoreTesting::Patience)) {
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    if (process.exitStatus() == QProcess::NormalExit)
        outcome.exitCode = process.exitCode();
    outcome.output = process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    return outcome;
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

void SendTests::fails()
{
    const Outcome outcome = run(SendHello);
    QCOMPARE(outcome.output, QByteArray());
    const QList<QJsonObject> outbox = listed(QStringLiteral("outbox"));
    QCOMPARE(outbox.size(), 1);
    QCOMPARE(outcome.errors,
             "korvasync: the message was not sent; it stands in the outbox as "
                 + idOf(outbox.first()) + '\n');
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
    QCOMPARE(stack.takeMessages(), one(Number, Hello));
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
    fails();
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
    fails();
}

void SendTests::tellsAMissingDaemon()
{
    stack.stop();
    fails();
}

void SendTests::tellsAMissingModem()
{
    QVERIFY(stack.startWithoutModem());
    fails();
}

void SendTests::doesNotKnowWhenTheModemGoes()
{
    QVERIFY(stack.provide());
    QVERIFY(stack.order("hang-up"));
    const Outcome outcome =
        run(SendHello + QStringList{AsJson, QStringLiteral("--timeout"), QStringLiteral("5")});
    QCOMPARE(outcome.exitCode, 9);
    QCOMPARE(outcome.output, QByteArray("{\"status\":\"unknown\"}\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: it is not known whether the message was sent; do not repeat "
                        "it blindly\n"));
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
