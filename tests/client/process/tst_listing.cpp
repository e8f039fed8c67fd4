// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

// "list" and "show" on a store with one message in each folder that can be written.
class TestListing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void selects_data();
    void selects();
    void printsATable();
    void showsLocalTimes();
    void printsNdjson();
    void printsVMessagesOfTheSelection();
    void countsWhatItSelects();
    void listsWhatWasChangedSince();
    void keepsTerminalsSafe();
    void showsMessagesInTheOrderAsked();
    void showsMessagesForPeople();
    void tellsOfUnknownIdsAndShowsTheOthers();
    void knowsNoNegativeIds_data();
    void knowsNoNegativeIds();
    void tellsWhatAnExpressionCannotDecide();

private:
    ClientProcess client;
};

static const QByteArray inbox1 =
    vMessage("INBOX", "20101103T142530Z", "+15550100", "Tea at four?", "UNREAD");
static const QByteArray sent1 =
    vMessage("SENT", "20101103T142531Z", "+15550100", "Yes, gladly\nAda");

void TestListing::initTestCase()
{
    client.fill(inbox1 + sent1
                + vMessage("MYFOLDERS", "20091103T142530Z", "InfoPost", "Your parcel waits")
                + vMessage("OUTBOX", "20111103T142530Z", "+15550101", "tea?")
                + vMessage("INBOX", "20101103T142531Z", "0155 501-00", "same second as another"));
}

void TestListing::selects_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("ids");
    const auto row = [](const char *options, const char *ids) {
        QTest::newRow(options) << QString::fromUtf8(options).split(QLatin1Char(' '))
                               << QByteArray(ids);
    };
    row("--ids", "3\n1\n2\n5\n4\n");
    row("--ids --folder all", "3\n1\n2\n5\n4\n");
    row("--ids --folder inbox", "1\n5\n");
    row("--ids --folder outbox", "4\n");
    row("--ids --folder sent", "2\n");
    row("--ids --folder my", "3\n");
    row("--ids --folder drafts", "");
    row("--ids --since 2010-11-03T14:25:31Z", "2\n5\n4\n");
    row("--ids --since 2010-11-03T14:25:32Z", "4\n");
    row("--ids --since 2010-11-03T14:25:30.0Z", "1\n2\n5\n4\n");
    row("--ids --since 2010-11-03T14:25:30.001Z", "2\n5\n4\n");
    row("--ids --since 2010-11-03T16:25:31+02:00", "2\n5\n4\n");
    row("--ids --since 2010-11-03t14:25:31z", "2\n5\n4\n");
    row("--ids --since 2010-11-03", "1\n2\n5\n4\n");
    row("--ids --since @1288794331", "2\n5\n4\n");
    row("--ids --until 2010-11-03T14:25:31Z", "3\n1\n");
    row("--ids --since 2010-11-03 --until 2010-11-04", "1\n2\n5\n");
    row("--ids --since 2010-11-04", "4\n");
    row("--ids --since 2010-11-04 --assume-tz Pacific/Kiritimati", "1\n2\n5\n4\n");
    row("--ids --since 2w", "");
    row("--ids --since yesterday", "");
    row("--ids --until today", "3\n1\n2\n5\n4\n");
    row("--ids --until 30m", "3\n1\n2\n5\n4\n");
    row("--ids --until 165343w", "");
    row("--ids --modified-since 12h", "3\n1\n2\n5\n4\n");
    row("--ids --number +15550100", "1\n2\n");
    row("--ids --number +1-555-0100", "1\n2\n");
    row("--ids --number 5550100", "1\n2\n");
    row("--ids --number +495550100", "");
    row("--ids --number 550100", "");
    row("--ids --number InfoPost", "3\n");
    row("--ids --number infopost", "3\n");
    row("--ids --number InfoPos", "");
    row("--ids --number-tail +495550100", "1\n2\n5\n");
    row("--ids --number-tail 5550100 --limit 1", "5\n");
    row("--ids --unread", "1\n");
    row("--ids --conversation 1", "1\n2\n5\n");
    row("--ids --conversation 2147483647", "");
    row("--ids -i --grep TEA", "1\n4\n");
    row("--ids --ignore-case --grep ^yes", "2\n");
    row("--ids --grep TEA", "");
    row("--ids --grep tea", "4\n");
    row("--ids --grep (?i)^tea", "1\n4\n");
    row("--ids --grep gladly.Ada", "");
    row("--ids --grep (?s)gladly.Ada", "2\n");
    row("--ids --limit 2", "5\n4\n");
    row("--ids --limit 0", "");
    row("--ids --limit 99", "3\n1\n2\n5\n4\n");
    row("--ids --folder inbox --limit 1", "5\n");
    row("--ids --folder inbox --number +15550100 --grep four --since 2010-01-01", "1\n");
}

void TestListing::selects()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, ids);
    const auto outcome = client.run(QStringList{text("list")} + options);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, ids);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestListing::printsATable()
{
    QCOMPARE(client.run({text("list")}).output,
             QByteArray("3  2009-11-03T14:25:30Z  my         InfoPost     Your parcel waits\n"
                        "1  2010-11-03T14:25:30Z  inbox   *  +15550100    Tea at four?\n"
                        "2  2010-11-03T14:25:31Z  sent       +15550100    Yes, gladly\xE2\x86\xB5"
                        "Ada\n"
                        "5  2010-11-03T14:25:31Z  inbox      0155 501-00  same second as another\n"
                        "4  2011-11-03T14:25:30Z  outbox     +15550101    tea?\n"));
}

void TestListing::showsLocalTimes()
{
    QCOMPARE(client.run({text("list"), text("--local"), text("--limit"), text("1")}).output,
             QByteArray("4  2011-11-03 16:25:30+02:00  outbox     +15550101  tea?\n"));
    const ClientProcess other;
    other.fill(vMessage("INBOX", "20100703T202530Z", "+15550100", "Summer")
               + vMessage("INBOX", "20101103T142530Z", "+15550100", "Winter", "UNREAD"));
    const auto shown =
        other.run({text("list"), text("--local"), text("--assume-tz"), text("Asia/Kathmandu")});
    QCOMPARE(shown.errors, QByteArray());
    QCOMPARE(shown.output,
             QByteArray("1  2010-07-04 02:10:30+05:45  inbox      +15550100  Summer\n"
                        "2  2010-11-03 20:10:30+05:45  inbox   *  +15550100  Winter\n"));
    const auto refused = other.run({text("list"), text("--local"), text("-ondjson")});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.output, QByteArray());
    QCOMPARE(refused.errors, QByteArray("korvasync: --local and -o ndjson exclude each other\n"));
}

void TestListing::printsNdjson()
{
    QCOMPARE(
        client.listed({text("--limit"), text("3")}),
        QByteArray(
            "{\"id\":2,\"folder\":\"sent\",\"number\":\"+15550100\","
            "\"time\":\"2010-11-03T14:25:31Z\",\"read\":true,\"body\":\"Yes, gladly\\nAda\"}\n"
            "{\"id\":5,\"folder\":\"inbox\",\"number\":\"0155 501-00\","
            "\"time\":\"2010-11-03T14:25:31Z\",\"read\":true,\"body\":\"same second as another\"}\n"
            "{\"id\":4,\"folder\":\"outbox\",\"number\":\"+15550101\","
            "\"time\":\"2011-11-03T14:25:30Z\",\"read\":true,\"body\":\"tea?\"}\n"));
}

void TestListing::printsVMessagesOfTheSelection()
{
    const auto listed =
        client.run({text("list"), text("-o"), text("vmsg"), text("--folder"), text("inbox")});
    const auto first = client.run({text("show"), text("1")});
    const auto fifth = client.run({text("show"), text("5")});
    QVERIFY(first.output.startsWith("BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:UNREAD\r\n"));
    QCOMPARE(listed.output, first.output + fifth.output);
}

void TestListing::countsWhatItSelects()
{
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("5\n"));
    QCOMPARE(client.run({text("list"), text("--count"), text("--folder"), text("inbox")}).output,
             QByteArray("2\n"));
    QCOMPARE(client.run({text("list"), text("--count"), text("--folder"), text("drafts")}).output,
             QByteArray("0\n"));
}

void TestListing::listsWhatWasChangedSince()
{
    ClientProcess other;
    other.fill(inbox1 + sent1);
    // The messages are of 2010, and were added a moment ago.
    QCOMPARE(other.run({text("list"), text("--ids"), text("--modified-since"), text("2024-01-01")})
                 .output,
             QByteArray("1\n2\n"));
    QCOMPARE(other.run({text("list"), text("--ids"), text("--modified-since"), text("9999-01-01")})
                 .output,
             QByteArray());
    QCOMPARE(
        other.listed(
            {text("--modified-since"), text("2024-01-01"), text("--folder"), text("sent")}),
        QByteArray(
            "{\"id\":2,\"folder\":\"sent\",\"number\":\"+15550100\","
            "\"time\":\"2010-11-03T14:25:31Z\",\"read\":true,\"body\":\"Yes, gladly\\nAda\"}\n"));
    QCOMPARE(other
                 .run({text("list"), text("--ids"), text("--modified-since"), text("2024-01-01"),
                       text("--since"), text("2010-11-03T14:25:31Z")})
                 .output,
             QByteArray("2\n"));
}

void TestListing::keepsTerminalsSafe()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "A\x1B[1m",
                        "x\x1B]0;title\x07\x7F\xC2\x9B"
                        "31m\xE2\x80\xAEy")
                   .replace("TEL:A\x1B[1m", "TEL:Ada"));
    QCOMPARE(other.run({text("list")}).output,
             QByteArray("1  2010-11-03T14:25:30Z  inbox      Ada  "
                        "x\xE2\x90\x9B]0;title\xE2\x90\x87\xEF\xBF\xBD\xEF\xBF\xBD"
                        "31m\xEF\xBF\xBDy\n"));
    QVERIFY(
        other.listed().contains("\"body\":\"x\\u001b]0;title\\u0007\\u007f\\u009b31m\\u202ey\""));
}

void TestListing::showsMessagesInTheOrderAsked()
{
    const auto outcome = client.run(
        {text("show"), text("-o"), text("ndjson"), text("4"), text("-"), text("3")}, "1\n\n 2 \n");
    QCOMPARE(outcome.exitCode, 0);
    QByteArray ids;
    for (const QByteArray &line : outcome.output.split('\n'))
        ids += line.mid(6, 1);
    QCOMPARE(ids, QByteArray("4123"));
}

void TestListing::showsMessagesForPeople()
{
    QCOMPARE(client.run({text("show"), text("-o"), text("text"), text("2")}).output,
             QByteArray("id:     2\nfolder: sent\nnumber: +15550100\ntime:   2010-11-03T14:25:31Z\n"
                        "read:   yes\n\nYes, gladly\nAda\n\n"));
}

void TestListing::tellsOfUnknownIdsAndShowsTheOthers()
{
    const auto outcome =
        client.run({text("show"), text("-o"), text("ndjson"), text("99"), text("4")});
    QCOMPARE(outcome.exitCode, 4);
    QVERIFY(outcome.output.startsWith("{\"id\":4,"));
    QCOMPARE(outcome.errors, QByteArray("korvasync: there is no message 99\n"));
}

void TestListing::knowsNoNegativeIds_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *line : {"show -1", "show -- -1", "delete --yes -1", "delete --yes -- -1"})
        QTest::newRow(line) << text(line).split(QLatin1Char(' '));
}

void TestListing::knowsNoNegativeIds()
{
    QFETCH(QStringList, arguments);
    const auto outcome = client.run(arguments);
    QCOMPARE(outcome.exitCode, 4);
    QVERIFY(outcome.errors.startsWith("korvasync: "));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("5\n"));
}

void TestListing::tellsWhatAnExpressionCannotDecide()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray(40, 'a') + 'b')
               + vMessage("INBOX", "20101103T142531Z", "+15550100", "b"));
    const auto outcome =
        other.run({text("list"), text("--ids"), text("--grep"), text("((a+)+c)|b")});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output, QByteArray("2\n"));
    QVERIFY2(outcome.errors.startsWith("korvasync: 1 not listed"), outcome.errors);
}

QTEST_GUILESS_MAIN(TestListing)
#include "tst_listing.moc"
