// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <csignal>

// Standard input, output and error that are closed, full, or no streams.
class TestStreams : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failsWithoutAnOutput();
    void worksWithoutAStandardError();
    void failsWithoutAnInput();
    void failsWhenIdsCannotBeRead_data();
    void failsWhenIdsCannotBeRead();
    void sendsNothingWhenTheTextCannotBeRead();
    void endsWhenInterruptedWhileItReadsIds();
    void endsWhenInterruptedInAnInputWithoutAnItem_data();
    void endsWhenInterruptedInAnInputWithoutAnItem();
    void leavesIgnoredSignalsIgnored();
    void waitsForAnOutputThatIsFull();

private:
    ClientProcess::Outcome shell(const ClientProcess &client, const char *script,
                                 const QByteArray &input = QByteArray()) const;
};

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
static const QByteArray draft = vMessage("DRAFTS", "20101103T142530Z", "+15550100", "unsent");

//! $KORVASYNC is the client.
ClientProcess::Outcome TestStreams::shell(const ClientProcess &client, const char *script,
                                          const QByteArray &input) const
{
    const QString prelude =
        text("KORVASYNC=\"" KORVASYNC_CLIENT " --store %1\"; ").arg(client.store());
    return client.runProgram(text("bash"), {text("-c"), prelude + text(script)}, input);
}

void TestStreams::failsWithoutAnOutput()
{
    ClientProcess client;
    client.fill(hello);
    const auto outcome = shell(client, "$KORVASYNC list >&-; echo $?");
    QCOMPARE(outcome.output, QByteArray("1\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: standard output cannot be written: Bad file descriptor; see "
                        "where it goes\n"));
    QCOMPARE(client.listed().count('\n'), 1);
}

void TestStreams::worksWithoutAStandardError()
{
    ClientProcess client;
    const auto outcome = shell(
        client, "$KORVASYNC add -q - 0<&0 2>&-; echo $?; $KORVASYNC list --count", hello + draft);
    QCOMPARE(outcome.output,
             QByteArray("added  1  -:1\n"
                        "refused  -:16  sms-draft: a draft, and drafts cannot be written\n1\n1\n"));
}

void TestStreams::failsWithoutAnInput()
{
    ClientProcess client;
    const auto outcome = shell(client, "$KORVASYNC add -q <&-; echo $?");
    QCOMPARE(outcome.output, QByteArray("refused  -  unreadable: Bad file descriptor\n1\n"));
}

void TestStreams::failsWhenIdsCannotBeRead_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("folder") << QByteArray("</") << QByteArray("Is a directory");
    QTest::newRow("closed") << QByteArray("<&-") << QByteArray("Bad file descriptor");
}

void TestStreams::failsWhenIdsCannotBeRead()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, reason);
    ClientProcess client;
    client.fill(hello);
    for (const char *command : {"show", "delete --yes"}) {
        const auto outcome =
            shell(client, QByteArray("$KORVASYNC ") + command + " - " + input + "; echo $?");
        QCOMPARE(outcome.output, QByteArray("2\n"));
        QCOMPARE(outcome.errors,
                 "korvasync: standard input cannot be read: " + reason
                     + "; see what it comes from\n");
    }
}

void TestStreams::sendsNothingWhenTheTextCannotBeRead()
{
    ClientProcess client;
    const auto outcome = shell(client, "$KORVASYNC send -n +15550100 - </; echo $?");
    QCOMPARE(outcome.output, QByteArray("2\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: standard input cannot be read: Is a directory; see what it "
                        "comes from\n"));
}

// Whether the process has taken over a signal.
static bool catches(const QProcess &process, int signalNumber)
{
    QFile status(text("/proc/%1/status").arg(process.processId()));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray all = status.readAll();
    const QByteArray caught("SigCgt:\t");
    const QByteArray mask = all.mid(all.indexOf(caught) + caught.size(), 16);
    return (mask.toULongLong(nullptr, 16) >> (signalNumber - 1) & 1) != 0;
}

void TestStreams::endsWhenInterruptedWhileItReadsIds()
{
    ClientProcess client;
    client.fill(hello);
    QProcess process;
    client.start(process, {text("show"), text("-")});
    process.write("1\n"); // and more is to come
    QVERIFY(process.waitForStarted());
    QVERIFY(process.waitForBytesWritten());
    QTRY_VERIFY_WITH_TIMEOUT(catches(process, SIGINT), 20000);
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 130);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestStreams::endsWhenInterruptedInAnInputWithoutAnItem_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("add") << QStringList{text("add"), text("/dev/zero")};
    QTest::newRow("verify") << QStringList{text("verify"), text("/dev/zero")};
    QTest::newRow("modify") << QStringList{text("modify"), text("1"), text("/dev/zero")};
    QTest::newRow("calls") << QStringList{text("calls"), text("add"), text("/dev/zero")};
}

void TestStreams::endsWhenInterruptedInAnInputWithoutAnItem()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    client.fill(hello);
    QProcess process;
    client.start(process, arguments);
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(catches(process, SIGINT), 20000);
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 130);
}

void TestStreams::leavesIgnoredSignalsIgnored()
{
    ClientProcess client;
    client.fill(hello);
    QProcess process;
    process.setProcessEnvironment(client.environment);
    process.start(text("bash"),
                  {text("-c"),
                   text("trap '' INT HUP; exec " KORVASYNC_CLIENT " --store %1 show -o ndjson -")
                       .arg(client.store())});
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(catches(process, SIGTERM), 20000);
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), SIGHUP), 0);
    process.write("1\n");
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().startsWith("{\"id\":1,"));
}

void TestStreams::waitsForAnOutputThatIsFull()
{
    ClientProcess client;
    client.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray(300000, 'x')));
    // The reader takes a byte at a time, from a pipe that answers at once when it is full.
    const auto outcome =
        shell(client,
              "{ perl -MFcntl -e 'fcntl(STDOUT, F_SETFL, O_WRONLY | O_NONBLOCK) or die'; "
              "$KORVASYNC list -o ndjson; echo $? >&2; } | dd bs=1 status=none | tr -cd x | wc -c");
    QCOMPARE(outcome.errors, QByteArray("0\n"));
    QCOMPARE(outcome.output, QByteArray("300001\n")); // one of them in "inbox"
}

QTEST_GUILESS_MAIN(TestStreams)
#include "tst_streams.moc"
