// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

// "stats".
class TestStats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsForPrograms();
    void countsForPeople();
    void showsTheNumbersThatHaveMost();
    void countsFromATimeOn();
    void fitsItsBarsIntoTheTerminal();
    void leavesBarsOutOfANarrowTerminal();
    void keepsNamesHarmless();

private:
    static void fillWithMessagesAndCalls(const ClientProcess &client);
};

static const QByteArray messages = vMessage("INBOX", "20091231T235959Z", "+15550100", "a", "UNREAD")
    + vMessage("INBOX", "20100101T000000Z", "0155 501-00", "b")
    + vMessage("INBOX", "20101103T142530Z", "+15550101", "c")
    + vMessage("SENT", "20101103T142531Z", "+15550100", "d");

void TestStats::fillWithMessagesAndCalls(const ClientProcess &client)
{
    client.fill(messages);
    const auto added = client.run({text("calls"), text("add"), text("-")},
                                  callEntry("incoming", "+15550100", 65, "20101103T142530Z")
                                      + callEntry("outgoing", "+15550100", 3600, "20111103T142530Z")
                                      + callEntry("missed", "", 0, "20111103T142530Z"));
    QCOMPARE(added.exitCode, 0);
}

void TestStats::countsForPrograms()
{
    ClientProcess client;
    fillWithMessagesAndCalls(client);
    const auto outcome = client.run({text("stats"), text("-o"), text("ndjson")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output,
             QByteArray(
                 R"({"of":"messages","by":"total","count":4,"unread":1}
{"of":"messages","by":"folder","folder":"inbox","count":3,"unread":1}
{"of":"messages","by":"folder","folder":"sent","count":1,"unread":0}
{"of":"messages","by":"year","year":2009,"count":1,"unread":1}
{"of":"messages","by":"year","year":2010,"count":3,"unread":0}
{"of":"messages","by":"number","number":"+15550100","count":3,"unread":1}
{"of":"messages","by":"number","number":"+15550101","count":1,"unread":0}
{"of":"calls","by":"total","count":3,"seconds":3665}
{"of":"calls","by":"type","type":"incoming","count":1,"seconds":65}
{"of":"calls","by":"type","type":"missed","count":1,"seconds":0}
{"of":"calls","by":"type","type":"outgoing","count":1,"seconds":3600}
{"of":"calls","by":"year","year":2010,"count":1,"seconds":65}
{"of":"calls","by":"year","year":2011,"count":2,"seconds":3600}
{"of":"calls","by":"number","number":"+15550100","count":2,"seconds":3665}
{"of":"calls","by":"number","count":1,"seconds":0}
)"));
}

void TestStats::countsForPeople()
{
    ClientProcess client;
    fillWithMessagesAndCalls(client);
    const auto outcome = client.run({text("stats")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("total         messages      unread\n"
                        "                     4           1\n"
                        "\n"
                        "folder        messages      unread\n"
                        "inbox                3           1\n"
                        "sent                 1           0\n"
                        "\n"
                        "year          messages      unread\n"
                        "2009                 1           1\n"
                        "2010                 3           0\n"
                        "\n"
                        "number        messages      unread\n"
                        "+15550100            3           1\n"
                        "+15550101            1           0\n"
                        "\n"
                        "total            calls    duration\n"
                        "                     3     1:01:05\n"
                        "\n"
                        "type             calls    duration\n"
                        "incoming             1        1:05\n"
                        "missed               1        0:00\n"
                        "outgoing             1     1:00:00\n"
                        "\n"
                        "year             calls    duration\n"
                        "2010                 1        1:05\n"
                        "2011                 2     1:00:00\n"
                        "\n"
                        "number           calls    duration\n"
                        "+15550100            2     1:01:05\n"
                        "-                    1        0:00\n"));
}

void TestStats::showsTheNumbersThatHaveMost()
{
    ClientProcess client;
    QByteArray many;
    for (int i = 0; i < 12; ++i)
        many += vMessage("INBOX", "20101103T142530Z", "+155501" + QByteArray::number(10 + i), "x");
    client.fill(many + many);
    const QByteArray forPeople = client.run({text("stats")}).output;
    QVERIFY2(forPeople.contains("\nnumber (10 of 12)  messages "), forPeople);
    QVERIFY(forPeople.contains("+15550119"));
    QVERIFY(!forPeople.contains("+15550120"));
    QCOMPARE(client.run({text("stats"), text("-o"), text("ndjson")}).output.count("\"number\":"),
             12);
    const auto few = client.run({text("stats"), text("-ondjson"), text("--limit"), text("1")});
    QCOMPARE(few.output.count("\"number\":"), 1);
    QVERIFY2(few.output.contains("\"number\":\"+15550110\",\"count\":2,\"unread\":0}"), few.output);
}

void TestStats::countsFromATimeOn()
{
    ClientProcess client;
    fillWithMessagesAndCalls(client);
    const auto outcome = client.run(
        {text("stats"), text("-ondjson"), text("--since"), text("2010-11-03T14:25:31Z")});
    QVERIFY2(outcome.output.startsWith(
                 "{\"of\":\"messages\",\"by\":\"total\",\"count\":1,\"unread\":0}\n"),
             outcome.output);
    QVERIFY2(outcome.output.contains(
                 "{\"of\":\"calls\",\"by\":\"total\",\"count\":2,\"seconds\":3600}\n"),
             outcome.output);
}

void TestStats::fitsItsBarsIntoTheTerminal()
{
    ClientProcess client;
    client.fill(messages);
    const QByteArray bar = QByteArray("█").repeated(14);
    const QByteArray output = client.onTerminal(text("stats"), 50);
    QVERIFY2(output.contains("\ninbox                3           1  " + bar
                             + "\nsent                 1           0  " + bar.left(4 * 3) + "\n"),
             output);
    QVERIFY(output.contains("                     4           1\n")); // nothing to compare with
}

void TestStats::leavesBarsOutOfANarrowTerminal()
{
    ClientProcess client;
    client.fill(messages);
    const QByteArray output = client.onTerminal(text("stats"), 40);
    QVERIFY2(output.contains("\ninbox                3           1\n"), output);
}

void TestStats::keepsNamesHarmless()
{
    ClientProcess client;
    client.fill(vMessage("INBOX", "20101103T142530Z", "Info\u202Emoc", "x"));
    const QByteArray output = client.run({text("stats")}).output;
    QVERIFY2(output.contains("Info\uFFFDmoc"), output);
}

QTEST_GUILESS_MAIN(TestStats)
#include "tst_stats.moc"
