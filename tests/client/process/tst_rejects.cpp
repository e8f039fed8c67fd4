// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"

#include "heldstore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

#include <csignal>
#include <unistd.h>

// The file that --rejects names: what it gets, what it replaces, and what it leaves alone.
class TestRejects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replaceTheirInput_data();
    void replaceTheirInput();
    void leaveTheirInputWhenInterrupted_data();
    void leaveTheirInputWhenInterrupted();
    void leaveTheirInputAfterASignal_data();
    void leaveTheirInputAfterASignal();
    void leaveTheirInputWithoutAReader();
    void leaveTheirInputWhenTheStoreIsFull_data();
    void leaveTheirInputWhenTheStoreIsFull();
    void leaveTheirInputWhenTheStoreGivesNoAnswer();
    void leaveTheirInputWhenTheStoreCannotBeRead();
    void leaveTheirInputWhenTheyDoNotFit();
    void leaveAnInputThatGrew();
    void leaveAnInputThatTheyDoNotHold_data();
    void leaveAnInputThatTheyDoNotHold();
    void leaveAFileOfAnEarlierRunAfterASignal();
    void takeTheNextFreeName();
    void goOnlyIntoAFileOfOnesOwn_data();
    void goOnlyIntoAFileOfOnesOwn();
    void followLinksOfOnesOwn();
    void haveNoNameUntilTheyAreWhole();
    void keepWhatIsNoItem();
    void keepReasonsThatPointAtFiles();

private:
    ClientProcess::Outcome shell(const ClientProcess &client, const QByteArray &script) const;
};

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
static const QByteArray other = vMessage("INBOX", "20101103T142531Z", "+15550100", "Good bye");
static const QByteArray draft = vMessage("DRAFTS", "20101103T142530Z", "+15550100", "unsent");
static const QByteArray draftReason = ": sms-draft: a draft, and drafts cannot be written\r\n";

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

static QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

static QByteArray stays(const QByteArray &file, const QByteArray &beside)
{
    return "korvasync: " + file
        + " stays as it is, since it may hold what was neither stored nor refused; the rejects are "
          "in "
        + beside + "\n";
}

static QStringList words(const char *line) { return text(line).split(QLatin1Char(' ')); }

//! $KORVASYNC is the client.
ClientProcess::Outcome TestRejects::shell(const ClientProcess &client,
                                          const QByteArray &script) const
{
    const QString prelude =
        text("KORVASYNC=\"" KORVASYNC_CLIENT " --store %1\"; ").arg(client.store());
    return client.runProgram(text("bash"), {text("-c"), prelude + QString::fromUtf8(script)});
}

//! An input that is named again as the place of the rejects, in every way.
static void addRowsOfNames()
{
    QTest::addColumn<QString>("rejects");
    QTest::addColumn<QString>("input");
    QTest::newRow("same name") << text("in/all.vmg") << text("in/all.vmg");
    QTest::newRow("other spelling") << text("./in/../in/all.vmg") << text("in/all.vmg");
    QTest::newRow("below a folder") << text("in/all.vmg") << text("in");
    QTest::newRow("link as input") << text("in/all.vmg") << text("link");
    QTest::newRow("link as rejects") << text("link") << text("in/all.vmg");
    QTest::newRow("hard link") << text("in/all.vmg") << text("second.vmg");
}

static void prepare(ClientProcess &client, const QByteArray &input)
{
    client.workingDirectory = client.filePath(QString());
    const QString file = client.write(text("in/all.vmg"), input);
    QVERIFY(QFile::link(text("in/all.vmg"), client.filePath(text("link"))));
    QCOMPARE(::link(QFile::encodeName(file).constData(),
                    QFile::encodeName(client.filePath(text("second.vmg"))).constData()),
             0);
}

void TestRejects::replaceTheirInput_data() { addRowsOfNames(); }

void TestRejects::replaceTheirInput()
{
    QFETCH(QString, rejects);
    QFETCH(QString, input);
    ClientProcess client;
    prepare(client, hello + draft);
    const auto outcome = client.run({text("add"), text("-qq"), text("--rejects"), rejects, input});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QByteArray());
    const QString source = input == text("in") ? text("in/all.vmg") : input;
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg"))),
             "# " + source.toUtf8() + ":16" + draftReason + draft);
    QCOMPARE(filesIn(client.filePath(text("in"))), QStringList{text("all.vmg")});
    QVERIFY(QFileInfo(client.filePath(text("link"))).isSymLink());
}

//! Ends an "add --rejects" once it has told of \a count items. Behind them it reads standard input,
//! which does not end.
static QByteArray endBySignal(const ClientProcess &client, const QStringList &add, int count,
                              int signalNumber)
{
    BusyClient busy(client, add + QStringList{text("-")}, QByteArray(), count);
    if (!busy.isBusy() || !busy.endBySignal(signalNumber))
        qFatal("the client does not end");
    const bool isKilled = busy.process.exitStatus() != QProcess::NormalExit;
    return isKilled ? "killed" : busy.process.readAllStandardError();
}

void TestRejects::leaveTheirInputWhenInterrupted_data() { addRowsOfNames(); }

void TestRejects::leaveTheirInputWhenInterrupted()
{
    QFETCH(QString, rejects);
    QFETCH(QString, input);
    ClientProcess client;
    prepare(client, hello + draft);
    const QStringList add = words("add -qq --chunk 1 --rejects") + QStringList{rejects, input};
    const QByteArray errors = endBySignal(client, add, 2, SIGINT);
    const QString folder = client.filePath(text("in"));
    QCOMPARE(contentOf(folder + text("/all.vmg")), hello + draft);
    const QByteArray beside =
        rejects.startsWith(text("./")) ? "in/../in/all.vmg.1" : "in/all.vmg.1";
    QCOMPARE(errors, stays(rejects.toUtf8(), beside));
    const QString source = input == text("in") ? text("in/all.vmg") : input;
    QCOMPARE(filesIn(folder), (QStringList{text("all.vmg"), text("all.vmg.1")}));
    QCOMPARE(contentOf(folder + text("/all.vmg.1")),
             "# " + source.toUtf8() + ":16" + draftReason + draft);
    QCOMPARE(QFile::permissions(folder + text("/all.vmg.1"))
                 & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
             QFile::Permissions());
}

void TestRejects::leaveTheirInputAfterASignal_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::addColumn<QStringList>("files");
    const QStringList both{text("all.vmg"), text("all.vmg.1")};
    QTest::newRow("SIGINT") << SIGINT << both;
    QTest::newRow("SIGTERM") << SIGTERM << both;
    QTest::newRow("SIGHUP") << SIGHUP << both;
    QTest::newRow("SIGKILL") << SIGKILL << QStringList{text("all.vmg")};
}

void TestRejects::leaveTheirInputAfterASignal()
{
    QFETCH(int, signalNumber);
    QFETCH(QStringList, files);
    ClientProcess client;
    prepare(client, draft + hello);
    endBySignal(client, words("add --chunk 1 --rejects in/all.vmg in/all.vmg"), 2, signalNumber);
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg"))), draft + hello);
    QCOMPARE(filesIn(client.filePath(text("in"))), files);
}

// The reader takes one result and goes, before the next item comes.
void TestRejects::leaveTheirInputWithoutAReader()
{
    ClientProcess client;
    prepare(client, hello + draft);
    client.write(text("other.vmg"), other);
    const auto outcome = shell(
        client,
        "mkfifo gate; { $KORVASYNC add -qq --chunk 1 --rejects in/all.vmg in/all.vmg gate; "
        "echo $? >&2; } | { head -n 2 > /dev/null; exec < /dev/null; cat other.vmg > gate; }");
    QCOMPARE(outcome.errors, stays("in/all.vmg", "in/all.vmg.1") + "141\n");
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg"))), hello + draft);
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg.1"))),
             "# in/all.vmg:16" + draftReason + draft);
}

void TestRejects::leaveTheirInputWhenTheStoreIsFull_data()
{
    QTest::addColumn<QByteArray>("verb");
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("input");
    QByteArray messages = draft;
    QByteArray calls = hello;
    for (int i = 0; i < 8000; ++i) {
        const QByteArray number = "+1555" + QByteArray::number(1000000 + i);
        messages += vMessage("INBOX", "20101103T142530Z", number, QByteArray(300, 'x'));
        calls += callEntry("missed", number, 0, "20101103T142530Z");
    }
    QTest::newRow("messages") << QByteArray("add --chunk 100") << QByteArray("BEGIN:VMSG")
                              << messages;
    QTest::newRow("calls") << QByteArray("calls add") << QByteArray("BEGIN:VCALLHISTENTRY")
                           << calls;
}

// What the store did not take is among the rejects, so that it can be added from there as well.
void TestRejects::leaveTheirInputWhenTheStoreIsFull()
{
    QFETCH(QByteArray, verb);
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, input);
    ClientProcess client;
    prepare(client, input);
    const QByteArray script = "$KORVASYNC " + verb
        + " -qq --rejects in/all.vmg in/all.vmg > results; echo $?; grep -c ^failed results; "
          "grep -c '^refused' results";
    const auto outcome = client.runOnDisk("6m", script);
    const QByteArrayList told = outcome.output.split('\n');
    QCOMPARE(told.value(0), QByteArray("3"));
    QVERIFY2(told.value(1).toInt() > 0, outcome.output);
    QCOMPARE(told.value(2), QByteArray("1"));
    QVERIFY2(outcome.errors.endsWith(stays("in/all.vmg", "in/all.vmg.1")), outcome.errors);
    QVERIFY(contentOf(client.filePath(text("in/all.vmg"))) == input);
    const QByteArray rejects = contentOf(client.filePath(text("in/all.vmg.1")));
    QCOMPARE(rejects.count("-store: "), told.value(1).toInt());
    QCOMPARE(rejects.count("\n" + begin), told.value(1).toInt() + (verb.startsWith("add") ? 1 : 0));
}

void TestRejects::leaveTheirInputWhenTheStoreGivesNoAnswer()
{
    ClientProcess client;
    prepare(client, draft + hello);
    client.fill(other);
    const HeldStore holder(client.store());
    QVERIFY(holder.isHeld());
    const auto outcome = client.run(words("add -qq --timeout 0.5 --rejects in/all.vmg in/all.vmg"));
    QCOMPARE(outcome.exitCode, 5);
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg"))), draft + hello);
}

void TestRejects::leaveTheirInputWhenTheStoreCannotBeRead()
{
    ClientProcess client;
    prepare(client, draft + hello);
    client.write(text("store/photo.jpg"), "no store");
    const auto outcome = client.run(words("add -qq --rejects in/all.vmg in/all.vmg"));
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg"))), draft + hello);
    QCOMPARE(filesIn(client.filePath(text("in"))), QStringList{text("all.vmg")});
}

void TestRejects::leaveTheirInputWhenTheyDoNotFit()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("draft.vmg"),
                 vMessage("DRAFTS", "20101103T142530Z", "+15550100", QByteArray(60000, 'x')));
    const auto outcome =
        client.runOnDisk("100k",
                         "cp draft.vmg $DISK/f.vmg; " KORVASYNC_CLIENT
                         " --store other add -q --rejects $DISK/f.vmg $DISK/f.vmg > results; "
                         "echo $?; ls -A $DISK; cmp draft.vmg $DISK/f.vmg");
    QCOMPARE(outcome.output, QByteArray("1\nf.vmg\n"));
    QVERIFY2(outcome.errors.contains("f.vmg cannot be written: No space left on device; name "
                                     "another with --rejects\n"),
             outcome.errors);
}

void TestRejects::leaveAnInputThatGrew()
{
    ClientProcess client;
    prepare(client, hello + draft);
    BusyClient busy(client, words("add -qq --chunk 1 --rejects in/all.vmg in/all.vmg -"),
                    QByteArray(), 2);
    QVERIFY(busy.isBusy());
    QFile file(client.filePath(text("in/all.vmg")));
    QVERIFY(file.open(QIODevice::Append));
    file.write(other);
    file.close();
    QVERIFY(busy.finish());
    QCOMPARE(busy.process.exitCode(), 1);
    QCOMPARE(busy.process.readAllStandardError(), stays("in/all.vmg", "in/all.vmg.1"));
    QCOMPARE(contentOf(file.fileName()), hello + draft + other);
}

void TestRejects::leaveAnInputThatTheyDoNotHold_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("no item") << QByteArray(2000000, 'x')
                             << QByteArray("# in/all.vmg:1: sms-parse: not a whole vMessage\r\n");
    QTest::newRow("a card") << hello + "BEGIN:VCARD\r\nFN:Ada\r\nEND:VCARD\r\n" + draft
                            << "# in/all.vmg:19" + draftReason + draft;
    QTest::newRow("a note at the end") << draft + "Ask Ada.\r\n"
                                       << "# in/all.vmg:1" + draftReason + draft;
    QTest::newRow("too long")
        << vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray(34000000, 'x'))
        << QByteArray("# in/all.vmg:1: sms-parse: longer than 32 MiB, so not kept\r\n"
                      "# in/all.vmg:13: sms-parse: BEGIN:VMSG is missing\r\n"
                      "END:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n");
}

void TestRejects::leaveAnInputThatTheyDoNotHold()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, reason);
    ClientProcess client;
    prepare(client, input);
    const auto outcome = client.run(words("add -qq --rejects link in/all.vmg"));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, stays("link", "in/all.vmg.1"));
    QVERIFY(contentOf(client.filePath(text("in/all.vmg"))) == input);
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg.1"))), reason);
}

// A person may have mended it.
void TestRejects::leaveAFileOfAnEarlierRunAfterASignal()
{
    ClientProcess client;
    prepare(client, draft);
    client.write(text("mend.txt"), hello);
    const QStringList add = words("add -qq --chunk 1 in/all.vmg --rejects mend.txt");
    QCOMPARE(endBySignal(client, add, 1, SIGINT), stays("mend.txt", "mend.txt.1"));
    QCOMPARE(contentOf(client.filePath(text("mend.txt"))), hello);
    QCOMPARE(client.run(add).exitCode, 1);
    QCOMPARE(contentOf(client.filePath(text("mend.txt"))), "# in/all.vmg:1" + draftReason + draft);
}

void TestRejects::takeTheNextFreeName()
{
    ClientProcess client;
    prepare(client, draft);
    client.write(text("in/all.vmg.1"), "mine");
    QVERIFY(QFile::link(text("nowhere"), client.filePath(text("in/all.vmg.2"))));
    const QStringList add = words("add -qq --chunk 1 in/all.vmg --rejects in/all.vmg");
    QCOMPARE(endBySignal(client, add, 1, SIGINT), stays("in/all.vmg", "in/all.vmg.3"));
    QCOMPARE(contentOf(client.filePath(text("in/all.vmg.1"))), QByteArray("mine"));
    QVERIFY(!QFile::exists(client.filePath(text("in/nowhere"))));
}

void TestRejects::goOnlyIntoAFileOfOnesOwn_data()
{
    QTest::addColumn<QByteArray>("prepare");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray noFile("it is not a regular file");
    QTest::newRow("pipe") << QByteArray("mkfifo mend.txt") << noFile;
    QTest::newRow("device") << QByteArray("ln -s /dev/full mend.txt") << noFile;
    QTest::newRow("folder") << QByteArray("mkdir mend.txt") << QByteArray("Is a directory");
    QTest::newRow("write-protected")
        << QByteArray("touch mend.txt; chmod 444 mend.txt") << QByteArray("Permission denied");
    QTest::newRow("of another user") << QByteArray("touch mend.txt; chown 1777 mend.txt")
                                     << QByteArray("it belongs to another user");
    const QByteArray link("a link of another user leads there");
    QTest::newRow("link of another user")
        << QByteArray("touch mine; ln -s mine mend.txt; chown -h 1777 mend.txt") << link;
    QTest::newRow("link of another user to nothing")
        << QByteArray("ln -s mine mend.txt; chown -h 1777 mend.txt") << link;
    QTest::newRow("link behind a link")
        << QByteArray("touch mine; ln -s mine 2; chown -h 1777 2; ln -s 2 mend.txt") << link;
    QTest::newRow("link to a file of another user")
        << QByteArray("touch yours; chown 1777 yours; ln -s yours mend.txt")
        << QByteArray("it belongs to another user");
    QTest::newRow("link to itself")
        << QByteArray("ln -s mend.txt mend.txt") << QByteArray("Too many levels of symbolic links");
}

void TestRejects::goOnlyIntoAFileOfOnesOwn()
{
    QFETCH(QByteArray, prepare);
    QFETCH(QByteArray, reason);
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("all.vmg"), hello + draft);
    QCOMPARE(shell(client, prepare).errors, QByteArray());
    const QStringList before = filesIn(client.workingDirectory);
    const auto outcome = client.run(words("add --rejects mend.txt all.vmg"));
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             "korvasync: mend.txt cannot be written: " + reason
                 + "; name another with --rejects\n");
    QCOMPARE(filesIn(client.workingDirectory), before);
    QVERIFY(!QFile::exists(client.store()));
}

void TestRejects::followLinksOfOnesOwn()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("all.vmg"), draft);
    QCOMPARE(shell(client,
                   "mkdir far; ln -s far near; ln -s $PWD/near/second first; ln -s mend far/second")
                 .errors,
             QByteArray());
    QCOMPARE(client.run(words("add -qq --rejects first all.vmg")).exitCode, 1);
    QCOMPARE(contentOf(client.filePath(text("far/mend"))), "# all.vmg:1" + draftReason + draft);
    QVERIFY(QFileInfo(client.filePath(text("first"))).isSymLink());
    QVERIFY(QFileInfo(client.filePath(text("far/second"))).isSymLink());
}

void TestRejects::haveNoNameUntilTheyAreWhole()
{
    ClientProcess client;
    prepare(client, draft.repeated(500));
    BusyClient busy(client, words("add -qq --chunk 1 --rejects in/mend.txt in/all.vmg -"),
                    QByteArray(), 500);
    QVERIFY(busy.isBusy());
    QCOMPARE(filesIn(client.filePath(text("in"))), QStringList{text("all.vmg")});
    QVERIFY(busy.finish());
    QCOMPARE(filesIn(client.filePath(text("in"))),
             (QStringList{text("all.vmg"), text("mend.txt")}));
}

// Standard input cannot be read anew.
void TestRejects::keepWhatIsNoItem()
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

void TestRejects::keepReasonsThatPointAtFiles()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("all.vmg"), hello + draft);
    client.write(text("big.txt"), QByteArray(2000000, 'x'));
    const QStringList add = words("add -qq --rejects mend.txt");
    client.run(add + words("big.txt all.vmg missing.vmg"));
    const QByteArray big("# big.txt:1: sms-parse: not a whole vMessage\r\n");
    const QByteArray missing("# missing.vmg: unreadable: No such file or directory\r\n");
    const QString rejects = client.filePath(text("mend.txt"));
    QCOMPARE(contentOf(rejects), big + "# all.vmg:16" + draftReason + draft + missing);
    client.run(add + words("mend.txt"));
    QCOMPARE(contentOf(rejects), big + "# mend.txt:3" + draftReason + draft + missing);
    client.write(text("mend.txt"), big + "# all.vmg:16" + draftReason + hello + missing);
    QCOMPARE(client.run(add + words("mend.txt")).exitCode, 0);
    QCOMPARE(contentOf(rejects), big + missing);
}

QTEST_GUILESS_MAIN(TestRejects)
#include "tst_rejects.moc"
