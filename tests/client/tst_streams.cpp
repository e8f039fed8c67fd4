// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <csignal>

// Standard input, output and error that are closed, full, or no streams, and --rejects.
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
    void leavesIgnoredSignalsIgnored();
    void waitsForAnOutputThatIsFull();
    void failsWhenRejectsDoNotFit_data();
    void failsWhenRejectsDoNotFit();
    void keepsOldRejectsOnAFullDisk();
    void writesRejectsToAPipe();
    void replacesAnInputFileByItsRejects();
    void keepsWhatIsNoItem();
    void keepsReasonsThatPointAtFiles();

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

void TestStreams::failsWhenRejectsDoNotFit_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("short") << hello + draft;
    QTest::newRow("long") << hello + draft.repeated(1000);
}

void TestStreams::failsWhenRejectsDoNotFit()
{
    QFETCH(QByteArray, input);
    ClientProcess client;
    const auto outcome = client.run(
        {text("add"), text("-qq"), text("--rejects"), text("/dev/full"), text("-")}, input);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.output.startsWith("added  1  -:1\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: /dev/full cannot be written: No space left on device; name "
                        "another with --rejects\n"));
}

void TestStreams::keepsOldRejectsOnAFullDisk()
{
    ClientProcess client;
    client.write(text("draft.vmg"),
                 vMessage("DRAFTS", "20101103T142530Z", "+15550100", QByteArray(200000, 'x')));
    client.workingDirectory = client.filePath(QString());
    const auto outcome =
        client.runOnDisk("100k",
                         "echo old > $DISK/rejects; " KORVASYNC_CLIENT
                         " --store other add -q --rejects $DISK/rejects draft.vmg; echo $?; "
                         "ls $DISK; cat $DISK/rejects");
    QCOMPARE(outcome.output,
             QByteArray("refused  draft.vmg:1  sms-draft: a draft, and drafts cannot be written\n"
                        "1\nrejects\nold\n"));
    QVERIFY2(outcome.errors.contains("cannot be written: No space left on device"), outcome.errors);
}

void TestStreams::writesRejectsToAPipe()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    const auto outcome = shell(client,
                               "mkfifo pipe; cat pipe & "
                               "$KORVASYNC add -qq -o ndjson --rejects pipe - > results; "
                               "CODE=$?; wait; echo $CODE",
                               draft);
    QCOMPARE(outcome.output,
             "# -:1: sms-draft: a draft, and drafts cannot be written\r\n" + draft + "1\n");
    QCOMPARE(outcome.errors, QByteArray());
}

void TestStreams::replacesAnInputFileByItsRejects()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("all.vmg"), hello + draft);
    const QStringList add{text("add"), text("-q"), text("--rejects"), text("all.vmg"),
                          text("all.vmg")};
    const auto outcome = client.run(add);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("added  1  all.vmg:1\n"
                        "refused  all.vmg:16  sms-draft: a draft, and drafts cannot be written\n"));
    QFile left(client.filePath(text("all.vmg")));
    QVERIFY(left.open(QIODevice::ReadOnly));
    QCOMPARE(left.readAll(),
             "# all.vmg:16: sms-draft: a draft, and drafts cannot be written\r\n" + draft);
}

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

// Standard input cannot be read anew.
void TestStreams::keepsWhatIsNoItem()
{
    ClientProcess client;
    const QString rejects = client.filePath(text("mend.txt"));
    const QByteArray reason("# -:1: sms-parse: not a whole vMessage\r\n");
    const QByteArray letter("Dear Ada,\r\nsee you at four.\r\n");
    const QByteArray page("<html>\n<body class='a'>Hello</body>\n</html>\n");
    for (const QByteArray &input : {letter, page, QByteArray(200000, 'x') + '\n'}) {
        const QStringList add{text("add"), text("-qq"), text("--rejects"), rejects};
        QCOMPARE(client.run(add + QStringList{text("-")}, input).exitCode, 1);
        QCOMPARE(contentOf(rejects), reason + input);
        client.run(add + QStringList{rejects});
        QCOMPARE(contentOf(rejects), reason + input);
    }
}

void TestStreams::keepsReasonsThatPointAtFiles()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("all.vmg"), hello + draft);
    client.write(text("big.txt"), QByteArray(2000000, 'x'));
    const QStringList add{text("add"), text("-qq"), text("--rejects"), text("mend.txt")};
    client.run(add + QStringList{text("big.txt"), text("all.vmg"), text("missing.vmg")});
    const QByteArray big("# big.txt:1: sms-parse: not a whole vMessage\r\n");
    const QByteArray missing("# missing.vmg: unreadable: No such file or directory\r\n");
    const QByteArray reason(": sms-draft: a draft, and drafts cannot be written\r\n");
    const QString rejects = client.filePath(text("mend.txt"));
    QCOMPARE(contentOf(rejects), big + "# all.vmg:16" + reason + draft + missing);
    client.run(add + QStringList{text("mend.txt")});
    QCOMPARE(contentOf(rejects), big + "# mend.txt:3" + reason + draft + missing);
    client.write(text("mend.txt"), big + "# all.vmg:16" + reason + hello + missing);
    QCOMPARE(client.run(add + QStringList{text("mend.txt")}).exitCode, 0);
    QCOMPARE(contentOf(rejects), big + missing);
}

QTEST_GUILESS_MAIN(TestStreams)
#include "tst_streams.moc"
