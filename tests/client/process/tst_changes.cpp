// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

#include <csignal>

// "changes": what happened since a cursor, at once and as it happens.
class TestChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatIsThereWithoutACursor();
    void tellsWhatHappenedSinceACursor();
    void givesTheCursorAgainWhenNothingHappened();
    void refusesACursorOfNoStore_data();
    void refusesACursorOfNoStore();
    void refusesACursorOfAnotherStore();
    void refusesACursorThatTheStoreHasYetToGive();
    void followsUntilInterrupted_data();
    void followsUntilInterrupted();
    void endsWhenTheStoreGoes();
    void endsWhenTheReaderGoes();
};

namespace {

const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello", "UNREAD");
const QByteArray answer = vMessage("SENT", "20101103T142531Z", "+15550100", "Hello yourself");
const QByteArray missed = callEntry("missed", "", 0, "20101103T142532Z");

const QByteArray helloItem(
    "\"id\":1,\"folder\":\"inbox\",\"number\":\"+15550100\","
    "\"time\":\"2010-11-03T14:25:30Z\",\"read\":false,\"body\":\"Hello\"}\n");
const QByteArray answerItem(
    "\"id\":2,\"folder\":\"sent\",\"number\":\"+15550100\","
    "\"time\":\"2010-11-03T14:25:31Z\",\"read\":true,\"body\":\"Hello yourself\"}\n");
const QByteArray missedItem(
    "\"id\":3,\"type\":\"missed\",\"duration\":0,\"time\":\"2010-11-03T14:25:32Z\"}\n");

void fill(const ClientProcess &client)
{
    client.fill(hello + answer);
    QCOMPARE(client.run({text("calls"), text("add"), text("-q")}, missed).exitCode, 0);
}

//! What stands before the cursor of the last line, which \a cursor is set to.
QByteArray withoutCursor(const QByteArray &output, QString *cursor)
{
    const QByteArray start("{\"cursor\":\"");
    const QByteArray end("\"}\n");
    const auto from = output.lastIndexOf(start);
    if (from < 0 || !output.endsWith(end))
        return output;
    const auto value = from + start.size();
    *cursor = QString::fromUtf8(output.mid(value, output.size() - end.size() - value));
    return output.left(from);
}

QString cursorOf(const ClientProcess &client)
{
    QString cursor;
    withoutCursor(client.run({text("changes")}).output, &cursor);
    return cursor;
}

//! Reads a batch of a client that follows, up to the line with its cursor.
QByteArray nextBatch(QProcess &process)
{
    constexpr int patience = 60000; // milliseconds
    QByteArray batch;
    while (!batch.contains("{\"cursor\":") || !batch.endsWith('\n')) {
        if (!process.waitForReadyRead(patience))
            return batch + "and no more";
        batch += process.readAllStandardOutput();
    }
    QString cursor;
    return withoutCursor(batch, &cursor);
}

bool hasEnded(QProcess &process)
{
    constexpr int patience = 60000; // milliseconds
    return process.state() == QProcess::NotRunning || process.waitForFinished(patience);
}

void verifyUnknown(const ClientProcess &client, const ClientProcess::Outcome &outcome)
{
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             "korvasync: the store " + client.store().toUtf8()
                 + " never gave this cursor, or an older copy of it was put back; start anew "
                   "without one, and compare\n");
}

} // namespace

void TestChanges::tellsWhatIsThereWithoutACursor()
{
    ClientProcess client;
    fill(client);
    const auto outcome = client.run({text("changes")});
    QString cursor;
    QCOMPARE(withoutCursor(outcome.output, &cursor),
             "{\"op\":\"added\",\"kind\":\"message\"," + helloItem
                 + "{\"op\":\"added\",\"kind\":\"message\"," + answerItem
                 + "{\"op\":\"added\",\"kind\":\"call\"," + missedItem);
    QVERIFY(!cursor.isEmpty());
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(client.run({text("changes"), QString()}).output, outcome.output);
}

void TestChanges::tellsWhatHappenedSinceACursor()
{
    ClientProcess client;
    fill(client);
    const QString before = cursorOf(client);
    const QString other = client.write(
        text("other.vmg"), vMessage("INBOX", "20101103T142530Z", "+15550100", "Goodbye"));
    QCOMPARE(client.run({text("modify"), text("1"), other}).exitCode, 0);
    QCOMPARE(client.run({text("delete"), text("--yes"), text("2")}).exitCode, 0);
    QCOMPARE(client.run({text("calls"), text("wipe"), text("--yes")}).exitCode, 0);
    client.fill(vMessage("INBOX", "20101103T142533Z", "InfoPost", "News"));
    QString after;
    QCOMPARE(withoutCursor(client.run({text("changes"), before}).output, &after),
             QByteArray("{\"op\":\"changed\",\"kind\":\"message\",\"id\":1,\"folder\":\"inbox\","
                        "\"number\":\"+15550100\",\"time\":\"2010-11-03T14:25:30Z\",\"read\":true,"
                        "\"body\":\"Goodbye\"}\n"
                        "{\"op\":\"deleted\",\"kind\":\"message\",\"id\":2}\n"
                        "{\"op\":\"deleted\",\"kind\":\"call\",\"id\":3}\n"
                        "{\"op\":\"added\",\"kind\":\"message\",\"id\":4,\"folder\":\"inbox\","
                        "\"number\":\"InfoPost\",\"time\":\"2010-11-03T14:25:33Z\",\"read\":true,"
                        "\"body\":\"News\"}\n"));
    QVERIFY(before != after);
}

void TestChanges::givesTheCursorAgainWhenNothingHappened()
{
    ClientProcess client;
    fill(client);
    const QString cursor = cursorOf(client);
    QCOMPARE(client.run({text("changes"), cursor}).output,
             "{\"cursor\":\"" + cursor.toUtf8() + "\"}\n");
}

void TestChanges::refusesACursorOfNoStore_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *line : {"changes x", "changes 1.x.1.1", "changes --follow x"})
        QTest::newRow(line) << QString::fromLatin1(line).split(QLatin1Char(' '));
}

void TestChanges::refusesACursorOfNoStore()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    fill(client);
    verifyUnknown(client, client.run(arguments));
}

void TestChanges::refusesACursorOfAnotherStore()
{
    ClientProcess client;
    ClientProcess other;
    fill(client);
    fill(other);
    verifyUnknown(client, client.run({text("changes"), cursorOf(other)}));
}

void TestChanges::refusesACursorThatTheStoreHasYetToGive()
{
    ClientProcess client;
    fill(client);
    const QString copy = client.filePath(text("copy"));
    QCOMPARE(client.runProgram(text("cp"), {text("-a"), client.store(), copy}).exitCode, 0);
    client.fill(vMessage("INBOX", "20101103T142533Z", "InfoPost", "News"));
    const QString cursor = cursorOf(client);
    QVERIFY(QDir(client.store()).removeRecursively());
    QVERIFY(QDir().rename(copy, client.store()));
    verifyUnknown(client, client.run({text("changes"), cursor}));
}

void TestChanges::followsUntilInterrupted_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("INT") << SIGINT;
    QTest::newRow("TERM") << SIGTERM;
}

void TestChanges::followsUntilInterrupted()
{
    QFETCH(int, signalNumber);
    ClientProcess client;
    fill(client);
    QProcess process;
    client.start(process, {text("changes"), text("--follow"), cursorOf(client)});
    QCOMPARE(nextBatch(process), QByteArray());
    QCOMPARE(client.run({text("delete"), text("--yes"), text("1")}).exitCode, 0);
    QCOMPARE(nextBatch(process),
             QByteArray("{\"op\":\"deleted\",\"kind\":\"message\",\"id\":1}\n"));
    QCOMPARE(client.run({text("delete"), text("--yes"), text("2")}).exitCode, 0);
    QCOMPARE(nextBatch(process),
             QByteArray("{\"op\":\"deleted\",\"kind\":\"message\",\"id\":2}\n"));
    kill(static_cast<pid_t>(process.processId()), signalNumber);
    QVERIFY(hasEnded(process));
    QCOMPARE(process.exitCode(), 128 + signalNumber);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestChanges::endsWhenTheStoreGoes()
{
    ClientProcess client;
    fill(client);
    QProcess process;
    client.start(process, {text("changes"), text("--follow"), cursorOf(client)});
    QCOMPARE(nextBatch(process), QByteArray());
    QVERIFY(QDir().rename(client.store(), client.filePath(text("elsewhere"))));
    QVERIFY(hasEnded(process));
    QCOMPARE(process.exitCode(), 3);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QVERIFY(process.readAllStandardError().startsWith("korvasync: The store in "));
}

void TestChanges::endsWhenTheReaderGoes()
{
    ClientProcess client;
    fill(client);
    const QString script =
        text("set -o pipefail; " KORVASYNC_CLIENT " --store '%1' changes --follow | head -n 1")
            .arg(client.store());
    const auto outcome = client.runProgram(text("bash"), {text("-c"), script});
    QCOMPARE(outcome.exitCode, 141);
    QCOMPARE(outcome.output, "{\"op\":\"added\",\"kind\":\"message\"," + helloItem);
    QCOMPARE(outcome.errors, QByteArray());
}

QTEST_GUILESS_MAIN(TestChanges)
#include "tst_changes.moc"
