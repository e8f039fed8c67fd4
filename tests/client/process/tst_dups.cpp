// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"

#include <QtTest/QTest>

// "dups".
class TestDups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsGroupsForPrograms();
    void listsGroupsForPeople();
    void findsNoneAmongOthers();
    void deletesAllButOne_data();
    void deletesAllButOne();
    void deletesNothingInADryRun();
    void deletesNothingWhereNothingIsEqual();
    void needsAYesWithoutATerminal();
    void waitsForClientsThatAdd();
    void deletesOnlyWhatItAskedAbout_data();
    void deletesOnlyWhatItAskedAbout();
    void namesTheFaultInItsArguments_data();
    void namesTheFaultInItsArguments();

private:
    static QByteArray ids(const ClientProcess &client);
};

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
static const QByteArray other = vMessage("SENT", "20101103T142531Z", "+15550101", "Good bye");
static const QByteArray nationally =
    vMessage("INBOX", "20101103T142530Z", "0155 501-00", "Hello", "UNREAD");
static const QByteArray all = hello + other + nationally + other + hello; // ids 1 to 5

QByteArray TestDups::ids(const ClientProcess &client)
{
    return client.run({text("list"), text("--ids")}).output;
}

void TestDups::listsGroupsForPrograms()
{
    ClientProcess client;
    client.fill(all);
    const auto outcome = client.run({text("dups"), text("-o"), text("ndjson")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QByteArray first(R"("folder":"inbox","number":"+15550100",)"
                           R"("time":"2010-11-03T14:25:30Z","read":true,"body":"Hello")");
    const QByteArray second(R"("folder":"sent","number":"+15550101",)"
                            R"("time":"2010-11-03T14:25:31Z","read":true,"body":"Good bye")");
    const QByteArray national(R"("folder":"inbox","number":"0155 501-00",)"
                              R"("time":"2010-11-03T14:25:30Z","read":false,"body":"Hello")");
    QCOMPARE(outcome.output,
             "{\"id\":1," + first + ",\"group\":1}\n{\"id\":3," + national
                 + ",\"group\":1}\n{\"id\":5," + first + ",\"group\":1}\n{\"id\":2," + second
                 + ",\"group\":2}\n{\"id\":4," + second
                 + ",\"group\":2}\n{\"summary\":{\"groups\":2,\"surplus\":3}}\n");
    QCOMPARE(ids(client), QByteArray("1\n3\n5\n2\n4\n"));
}

void TestDups::listsGroupsForPeople()
{
    ClientProcess client;
    client.fill(hello + other + nationally);
    QCOMPARE(client.run({text("dups")}).output,
             QByteArray("1  2010-11-03T14:25:30Z  inbox      +15550100    Hello\n"
                        "3  2010-11-03T14:25:30Z  inbox   *  0155 501-00  Hello\n"
                        "\n1 group(s), 1 surplus\n"));
    QVERIFY(!client.run({text("dups"), text("-q")}).output.contains("surplus"));
}

void TestDups::findsNoneAmongOthers()
{
    ClientProcess client;
    client.fill(hello + other + vMessage("INBOX", "20101103T142531Z", "+15550100", "Hello")
                + vMessage("MYFOLDERS", "20101103T142530Z", "+15550100", "Hello")
                + vMessage("INBOX", "20101103T142530Z", "+15550100", "hello"));
    const auto outcome = client.run({text("dups")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("0 group(s), 0 surplus\n"));
}

void TestDups::deletesAllButOne_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("deleted");
    QTest::addColumn<QByteArray>("left");
    const QByteArray oldest("deleted  3\ndeleted  5\ndeleted  4\n");
    QTest::newRow("default") << QStringList() << oldest << QByteArray("1\n2\n");
    QTest::newRow("oldest") << QStringList{text("--keep"), text("oldest")} << oldest
                            << QByteArray("1\n2\n");
    QTest::newRow("newest") << QStringList{text("--keep"), text("newest")}
                            << QByteArray("deleted  1\ndeleted  3\ndeleted  2\n")
                            << QByteArray("5\n4\n");
}

void TestDups::deletesAllButOne()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, deleted);
    QFETCH(QByteArray, left);
    ClientProcess client;
    client.fill(all);
    const auto outcome =
        client.run(QStringList{text("dups"), text("--delete"), text("--yes")} + options);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output, deleted + "3 read, 3 deleted, 0 refused, 0 failed\n");
    QCOMPARE(ids(client), left);
    QCOMPARE(client.run({text("dups")}).output, QByteArray("0 group(s), 0 surplus\n"));
}

void TestDups::deletesNothingInADryRun()
{
    ClientProcess client;
    client.fill(all);
    const auto outcome =
        client.run({text("dups"), text("--delete"), text("-n"), text("-o"), text("ndjson")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"status\":\"deleted\",\"id\":3}\n"
                        "{\"ref\":1,\"status\":\"deleted\",\"id\":5}\n"
                        "{\"ref\":2,\"status\":\"deleted\",\"id\":4}\n"
                        "{\"summary\":{\"read\":3,\"deleted\":3,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(ids(client), QByteArray("1\n3\n5\n2\n4\n"));
}

void TestDups::deletesNothingWhereNothingIsEqual()
{
    ClientProcess client;
    client.fill(hello + other);
    const auto outcome = client.run({text("dups"), text("--delete"), text("--yes")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("0 read, 0 deleted, 0 refused, 0 failed\n"));
    QCOMPARE(ids(client), QByteArray("1\n2\n"));
}

void TestDups::needsAYesWithoutATerminal()
{
    ClientProcess client;
    client.fill(all);
    const auto outcome = client.run({text("dups"), text("--delete")}, "y\n");
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(
        outcome.errors,
        QByteArray("korvasync: dups --delete needs --yes where it cannot ask on a terminal\n"));
    QCOMPARE(ids(client), QByteArray("1\n3\n5\n2\n4\n"));
}

// Else each of two could delete what the other one keeps.
void TestDups::waitsForClientsThatAdd()
{
    ClientProcess client;
    client.fill(all);
    BusyClient adding(client, vMessage("INBOX", "20101103T142530Z", "+15550177", "Hi"));
    QVERIFY(adding.isBusy());
    const auto outcome =
        client.run({text("dups"), text("--delete"), text("--yes"), text("--timeout"), text("0.5")});
    QCOMPARE(outcome.exitCode, 5);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY(adding.finish());
    QCOMPARE(ids(client).count('\n'), 6);
}

void TestDups::deletesOnlyWhatItAskedAbout_data()
{
    QTest::addColumn<QStringList>("meanwhile");
    QTest::addColumn<QByteArray>("results");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("left");
    const QByteArray changed(
        "refused  2  sms-changed: no longer what it was when it was asked about\n");
    QTest::newRow("nothing") << QStringList{text("list")} << QByteArray("deleted  2\ndeleted  3\n")
                             << 0 << QByteArray("1\n");
    QTest::newRow("the one that stays is deleted")
        << QStringList{text("delete"), text("--yes"), text("1")} << changed + "deleted  3\n"
        << 1 << QByteArray("2\n");
    QTest::newRow("all but one are deleted")
        << QStringList{text("delete"), text("--yes"), text("1"), text("3")}
        << changed + "refused  3  sms-bad-id: no message has this id\n"
        << 1 << QByteArray("2\n");
    QTest::newRow("the one that stays is changed")
        << QStringList{text("modify"), text("1"), text("other.vmg")} << changed + "deleted  3\n"
        << 1 << QByteArray("1\n2\n");
    QTest::newRow("another one is added")
        << QStringList{text("add"), text("--on-duplicate"), text("add"), text("hello.vmg")}
        << QByteArray("deleted  2\ndeleted  3\n") << 0 << QByteArray("1\n4\n");
}

// One text is in the store three times, and at least one of them stays.
void TestDups::deletesOnlyWhatItAskedAbout()
{
    QFETCH(QStringList, meanwhile);
    QFETCH(QByteArray, results);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, left);
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.fill(hello + hello + hello);
    client.write(text("hello.vmg"), hello);
    client.write(text("other.vmg"), vMessage("INBOX", "", "+15550100", "Another text"));
    const auto outcome = client.runAtTerminal({text("dups"), text("--delete"), text("-q")}, "y\n",
                                              [&] { QCOMPARE(client.run(meanwhile).exitCode, 0); });
    QCOMPARE(outcome.output, results);
    QCOMPARE(outcome.exitCode, exitCode);
    QVERIFY2(outcome.errors.startsWith("Delete 2 message(s)? [y/N] "), outcome.errors);
    QCOMPARE(ids(client), left);
}

void TestDups::namesTheFaultInItsArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("fault");
    const QByteArray values("--keep is one of: oldest, newest");
    QTest::newRow("no such message to keep")
        << QStringList{text("--keep"), text("first")} << values;
    QTest::newRow("no such message to keep from deletion")
        << QStringList{text("--delete"), text("--keep"), text("first")} << values;
    const QByteArray deletion("dups takes --keep and --yes only with --delete");
    QTest::newRow("keep") << QStringList{text("--keep"), text("newest")} << deletion;
    QTest::newRow("yes") << QStringList{text("--yes")} << deletion;
    QTest::newRow("argument") << QStringList{text("--delete"), text("1")}
                              << QByteArray("dups takes no arguments");
}

void TestDups::namesTheFaultInItsArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, fault);
    const ClientProcess client;
    const auto outcome = client.run(QStringList{text("dups")} + arguments);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors, "korvasync: " + fault + "\n");
}

QTEST_GUILESS_MAIN(TestDups)
#include "tst_dups.moc"
