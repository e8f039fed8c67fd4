// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

#include <array>

// "modify" and "delete".
class TestChanging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replacesAMessageButNotItsTime();
    void movesAMessageToAnotherFolder();
    void readsTheReplacementFromStandardInput();
    void takesExactlyOneMessage();
    void refusesAReplacement_data();
    void refusesAReplacement();
    void namesNoOptionThatItLacks();
    void failsForANumberWithoutMessages();
    void saysInADryRunWhatTheStoreWillSay_data();
    void saysInADryRunWhatTheStoreWillSay();
    void tellsOfAnUnknownIdToModify();
    void deletesMessages();
    void readsIdsToDeleteFromStandardInput();
    void doesTheOthersWhenAnIdIsUnknown();
    void needsAYesWithoutATerminal();
    void changesNothingInADryRun();
    void saysInADryRunWhatItWouldDelete();
    void deletesManyMessages();
    void deletesNothingWithoutAYes();
    void deletesOnlyWhatItAskedAbout_data();
    void deletesOnlyWhatItAskedAbout();
    void claimsNoDeletionOfAnotherClient();
};

static const QByteArray first = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
static const QByteArray second = vMessage("SENT", "20101103T142531Z", "+15550101", "Good bye");

static QStringList modify(const QStringList &more)
{
    return QStringList{text("modify"), text("-o"), text("ndjson")} + more;
}

static QStringList remove(const QStringList &more)
{
    return QStringList{text("delete"), text("-o"), text("ndjson")} + more;
}

void TestChanging::replacesAMessageButNotItsTime()
{
    ClientProcess client;
    client.fill(first + second);
    client.workingDirectory = client.filePath(QString());
    client.write(text("new.vmg"),
                 "\n"
                     + vMessage("INBOX", "20200101T000000Z", "+15550101", "Hello again", "UNREAD"));
    const auto outcome = client.run(modify({text("1"), text("new.vmg")}));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"src\":\"new.vmg:2\",\"status\":\"changed\",\"id\":1}\n"
                        "{\"summary\":{\"read\":1,\"changed\":1,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(
        client.listed({text("--folder"), text("inbox")}),
        QByteArray("{\"id\":1,\"folder\":\"inbox\",\"number\":\"+15550101\","
                   "\"time\":\"2010-11-03T14:25:30Z\",\"read\":false,\"body\":\"Hello again\"}\n"));
}

void TestChanging::movesAMessageToAnotherFolder()
{
    ClientProcess client;
    client.fill(first);
    const auto outcome =
        client.run(modify({text("1"), text("-")}), vMessage("MYFOLDERS", "", "+15550100", "Hello"));
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(client.listed().startsWith("{\"id\":1,\"folder\":\"my\",\"number\":\"+15550100\","
                                       "\"time\":\"2010-11-03T14:25:30Z\""));
}

void TestChanging::readsTheReplacementFromStandardInput()
{
    ClientProcess client;
    client.fill(first);
    const QByteArray shown = client.run({text("show"), text("1")}).output;
    const auto outcome = client.run({text("modify"), text("1"), text("-")},
                                    QByteArray(shown).replace("Hello", "Hallo"));
    QCOMPARE(outcome.output,
             QByteArray("changed  1  -:1\n1 read, 1 changed, 0 refused, 0 failed\n"));
    QCOMPARE(client.run({text("show"), text("1")}).output,
             QByteArray(shown).replace("Hello", "Hallo"));
}

void TestChanging::takesExactlyOneMessage()
{
    ClientProcess client;
    client.fill(first);
    const QByteArray before = client.listed();
    const auto none = client.run(modify({text("1"), text("-")}), "nothing here");
    QCOMPARE(none.exitCode, 2);
    QCOMPARE(none.errors,
             QByteArray("korvasync: modify takes exactly one message, and - has none\n"));
    const auto two = client.run(modify({text("1"), text("-")}), second + second);
    QCOMPARE(two.exitCode, 2);
    QCOMPARE(two.errors,
             QByteArray("korvasync: modify takes exactly one message, and - has more\n"));
    QCOMPARE(client.run(modify({text("1"), text("missing.vmg")})).exitCode, 2);
    QCOMPARE(client.listed(), before);
}

void TestChanging::refusesAReplacement_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("code");
    QTest::newRow("cut") << first.left(first.indexOf("END:VBODY"))
                         << QByteArray("sms-parse\",\"detail\":\"END:VBODY is missing; "
                                       "BEGIN:VBODY is in line 11\"");
    QTest::newRow("draft") << vMessage("DRAFTS", "", "+15550100", "x") << QByteArray("sms-draft");
    QTest::newRow("no-folder") << vMessage("", "", "+15550100", "x") << QByteArray("sms-no-folder");
    QTest::newRow("no-number") << vMessage("INBOX", "", "", "x") << QByteArray("sms-no-number");
}

void TestChanging::refusesAReplacement()
{
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, code);
    ClientProcess client;
    client.fill(first);
    const QByteArray before = client.listed();
    const auto outcome = client.run(modify({text("1"), text("-")}), message);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.output.startsWith(
                 "{\"ref\":0,\"src\":\"-:1\",\"status\":\"refused\",\"id\":1,\"code\":\"" + code),
             outcome.output);
    QCOMPARE(client.listed(), before);
}

void TestChanging::namesNoOptionThatItLacks()
{
    ClientProcess client;
    client.fill(first);
    const auto outcome = client.run({text("modify"), text("-q"), text("1"), text("-")},
                                    vMessage("", "", "+15550100", "x"));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("refused  1  -:1  sms-no-folder: no known folder; its line X-IRMC-BOX "
                        "names one, such as INBOX\n"));
    QVERIFY2(!outcome.errors.contains("--folder"), outcome.errors);
}

void TestChanging::saysInADryRunWhatTheStoreWillSay_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QByteArray>("outcome");
    const QByteArray changed("changed  1  -:1\n1 read, 1 changed, 0 refused, 0 failed\n");
    const QByteArray failed("failed  1  -:1  sms-store: the number has no messages yet; add one "
                            "first\n1 read, 0 changed, 0 refused, 1 failed\n");
    QTest::newRow("same") << QByteArray("+15550100") << changed;
    QTest::newRow("without-prefix") << QByteArray("0555-0100") << changed;
    QTest::newRow("another") << QByteArray("+15550101") << changed;
    QTest::newRow("new") << QByteArray("+15550177") << failed;
    QTest::newRow("word") << QByteArray("InfoPost") << changed;
    QTest::newRow("new-word") << QByteArray("NewsPost") << failed;
    QTest::newRow("end-of-a-number") << QByteArray("0101") << changed;
    QTest::newRow("no-end-of-a-number") << QByteArray("0107") << failed;
    QTest::newRow("end-of-a-word") << QByteArray("Post") << changed;
    QTest::newRow("dot-for-a-letter") << QByteArray("P.st") << changed;
    QTest::newRow("whole-word") << QByteArray("^InfoPost") << changed;
    QTest::newRow("no-whole-word") << QByteArray("^Post") << failed;
    QTest::newRow("signs") << QByteArray("C++") << changed;
    QTest::newRow("end-with-signs") << QByteArray("++") << failed;
    QTest::newRow("repetition-of-a-letter") << QByteArray("Pos+t") << failed;
    QTest::newRow("quote") << QByteArray("McDonald's") << failed;
    QTest::newRow("long-end") << QByteArray(63, 'x') << changed;
    QTest::newRow("too-long-end") << QByteArray(64, 'x') << failed;
}

void TestChanging::saysInADryRunWhatTheStoreWillSay()
{
    QFETCH(QByteArray, number);
    QFETCH(QByteArray, outcome);
    ClientProcess client;
    client.fill(first + second + vMessage("INBOX", "20101103T142532Z", "InfoPost", "News")
                + vMessage("INBOX", "20101103T142533Z", "C++", "News")
                + vMessage("INBOX", "20101103T142534Z", QByteArray(65, 'x'), "News"));
    const QByteArray before = client.listed();
    const QByteArray replacement = vMessage("INBOX", "", number, "x");
    const auto foreseen =
        client.run({text("modify"), text("-n"), text("1"), text("-")}, replacement);
    QCOMPARE(foreseen.output, outcome);
    QCOMPARE(client.listed(), before);
    const auto done = client.run({text("modify"), text("1"), text("-")}, replacement);
    QCOMPARE(done.output, outcome);
    QCOMPARE(foreseen.exitCode, done.exitCode);
    QCOMPARE(foreseen.errors, done.errors);
}

void TestChanging::failsForANumberWithoutMessages()
{
    ClientProcess client;
    client.fill(first);
    const QByteArray before = client.listed();
    const auto outcome =
        client.run(modify({text("1"), text("-")}), vMessage("INBOX", "", "+15550177", "x"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(
        outcome.output.startsWith(
            "{\"ref\":0,\"src\":\"-:1\",\"status\":\"failed\",\"id\":1,\"code\":\"sms-store\""),
        outcome.output);
    QCOMPARE(client.listed(), before);
}

void TestChanging::tellsOfAnUnknownIdToModify()
{
    ClientProcess client;
    client.fill(first);
    const auto outcome = client.run(modify({text("99"), text("-")}), second);
    QCOMPARE(outcome.exitCode, 4);
    QVERIFY2(outcome.output.contains("\"status\":\"refused\",\"id\":99,\"code\":\"sms-bad-id\""),
             outcome.output);
}

void TestChanging::deletesMessages()
{
    ClientProcess client;
    client.fill(first + second);
    const auto outcome = client.run(remove({text("--yes"), text("1")}));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"status\":\"deleted\",\"id\":1}\n"
                        "{\"summary\":{\"read\":1,\"deleted\":1,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(client.run({text("list"), text("--ids")}).output, QByteArray("2\n"));
}

void TestChanging::readsIdsToDeleteFromStandardInput()
{
    ClientProcess client;
    client.fill(first + second);
    QCOMPARE(client.run(remove({text("--yes"), text("-q"), text("-")}), "2\n1\n").output,
             QByteArray("{\"ref\":0,\"status\":\"deleted\",\"id\":2}\n{\"ref\":1,\"status\":"
                        "\"deleted\",\"id\":1}\n"));
    QCOMPARE(client.run({text("list"), text("--ids")}).output, QByteArray());
    QCOMPARE(client.run(remove({text("--yes"), text("-")})).exitCode, 0);
}

void TestChanging::doesTheOthersWhenAnIdIsUnknown()
{
    ClientProcess client;
    client.fill(first + second);
    const auto outcome =
        client.run(remove({text("--yes"), text("99"), text("2"), text("2"), text("1")}));
    QCOMPARE(outcome.exitCode, 4);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"status\":\"refused\",\"id\":99,\"code\":\"sms-bad-id\","
                        "\"detail\":\"no message has this id\"}\n"
                        "{\"ref\":1,\"status\":\"deleted\",\"id\":2}\n"
                        "{\"ref\":2,\"status\":\"refused\",\"id\":2,\"code\":\"sms-bad-id\","
                        "\"detail\":\"no message has this id\"}\n"
                        "{\"ref\":3,\"status\":\"deleted\",\"id\":1}\n"
                        "{\"summary\":{\"read\":4,\"deleted\":2,\"refused\":2,\"failed\":0}}\n"));
}

void TestChanging::needsAYesWithoutATerminal()
{
    ClientProcess client;
    client.fill(first);
    const auto outcome = client.run(remove({text("1")}), "y\n");
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: delete needs --yes where it cannot ask on a terminal\n"));
    QCOMPARE(client.run({text("list"), text("--ids")}).output, QByteArray("1\n"));
}

void TestChanging::changesNothingInADryRun()
{
    ClientProcess client;
    client.fill(first + second);
    const QByteArray before = client.listed();
    QVERIFY(client.run(remove({text("-n"), text("1"), text("99")}))
                .output.startsWith("{\"ref\":0,\"status\":\"deleted\",\"id\":1}\n{\"ref\":1,"
                                   "\"status\":\"refused\",\"id\":99,"));
    QVERIFY(
        client.run(modify({text("-n"), text("1"), text("-")}), second)
            .output.startsWith("{\"ref\":0,\"src\":\"-:1\",\"status\":\"changed\",\"id\":1}\n"));
    QCOMPARE(client.listed(), before);
}

void TestChanging::saysInADryRunWhatItWouldDelete()
{
    ClientProcess client;
    client.fill(first);
    QCOMPARE(client.run({text("delete"), text("-n"), text("1")}).output,
             QByteArray("would delete  1\n1 read, 1 would delete, 0 refused, 0 failed\n"));
    QCOMPARE(client.run({text("calls"), text("wipe"), text("-n")}).output,
             QByteArray("would delete 0 call(s)\n"));
}

void TestChanging::deletesManyMessages()
{
    ClientProcess client;
    QByteArray messages;
    for (int i = 0; i < 1201; ++i)
        messages += vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray::number(i));
    client.fill(messages);
    const QByteArray ids = client.run({text("list"), text("--ids")}).output;
    const auto outcome = client.run(remove({text("--yes"), text("-")}), ids);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.output.endsWith(
        "{\"summary\":{\"read\":1201,\"deleted\":1201,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("0\n"));
}

void TestChanging::deletesNothingWithoutAYes()
{
    ClientProcess client;
    client.fill(first + second);
    const auto outcome = client.runAtTerminal({text("delete"), text("1"), text("2")}, "n\n");
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             QByteArray("Delete 2 message(s)? [y/N] korvasync: nothing was deleted\n"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("2\n"));
}

void TestChanging::deletesOnlyWhatItAskedAbout_data()
{
    QTest::addColumn<QStringList>("meanwhile");
    QTest::addColumn<QByteArray>("result");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("left");
    QTest::newRow("nothing") << QStringList{text("list")} << QByteArray("deleted  1\n") << 0
                             << QByteArray();
    QTest::newRow("changed")
        << QStringList{text("modify"), text("1"), text("new.vmg")}
        << QByteArray("refused  1  sms-changed: no longer what it was when it was asked about\n")
        << 1 << QByteArray("1\n");
    QTest::newRow("gone") << QStringList{text("delete"), text("--yes"), text("1")}
                          << QByteArray("refused  1  sms-bad-id: no message has this id\n") << 4
                          << QByteArray();
}

void TestChanging::deletesOnlyWhatItAskedAbout()
{
    QFETCH(QStringList, meanwhile);
    QFETCH(QByteArray, result);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, left);
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.fill(first + second);
    client.write(text("new.vmg"), vMessage("INBOX", "", "+15550100", "Not to be lost"));
    const auto outcome =
        client.runAtTerminal({text("delete"), text("-q"), text("1"), text("2")}, "y\n",
                             [&] { QCOMPARE(client.run(meanwhile).exitCode, 0); });
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, result + "deleted  2\n");
    QCOMPARE(client.run({text("list"), text("--ids")}).output, left);
}

void TestChanging::claimsNoDeletionOfAnotherClient()
{
    constexpr int count = 1500;
    const ClientProcess client;
    QByteArray messages;
    QByteArray ids;
    for (int i = 1; i <= count; ++i) {
        messages += vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray::number(i));
        ids += QByteArray::number(i) + '\n';
    }
    client.fill(messages);
    std::array<QProcess, 3> processes;
    for (QProcess &process : processes) {
        client.start(process, remove({text("--yes"), text("-")}));
        process.write(ids);
        process.closeWriteChannel();
    }
    QByteArray results;
    for (QProcess &process : processes) {
        QVERIFY(process.waitForFinished(120000));
        results += process.readAllStandardOutput();
    }
    QCOMPARE(results.count("\"status\":\"deleted\""), count);
    QCOMPARE(results.count("\"code\":\"sms-bad-id\""), 2 * count);
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("0\n"));
}

QTEST_GUILESS_MAIN(TestChanging)
#include "tst_changing.moc"
