// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

// "conversations": one line each, the one with the newest message first.
class TestConversations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void printsATable();
    void printsNdjson();
    void selects_data();
    void selects();
    void givesTheIdsThatListTakes();
    void leavesCallsAlone();
    void showsPartiesAsTheyAreMeant();
    void shortensTexts_data();
    void shortensTexts();

private:
    ClientProcess client;
};

void TestConversations::initTestCase()
{
    client.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", "Tea at four?", "UNREAD")
                + vMessage("INBOX", "20101103T142529Z", "0155 501-00", "Hello", "UNREAD")
                + vMessage("INBOX", "20111103T142530Z", "InfoPost", "Your parcel waits")
                + vMessage("SENT", "20101103T142531Z", "+15550100", "Yes,\ngladly")
                + vMessage("OUTBOX", "20101103T142531Z", "+15550177", "Are you there?"));
}

void TestConversations::printsATable()
{
    const auto outcome = client.run({text("conversations")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("2  2011-11-03T14:25:30Z  1      InfoPost   Your parcel waits\n"
                        "3  2010-11-03T14:25:31Z  1      +15550177  Are you there?\n"
                        "1  2010-11-03T14:25:31Z  3  *2  +15550100  Yes, gladly\n"));
    QCOMPARE(outcome.errors, QByteArray());
}

void TestConversations::printsNdjson()
{
    QCOMPARE(client.run({text("conversations"), text("-o"), text("ndjson")}).output,
             QByteArray("{\"id\":2,\"number\":\"InfoPost\",\"messages\":1,\"unread\":0,"
                        "\"time\":\"2011-11-03T14:25:30Z\",\"words\":\"Your parcel waits\"}\n"
                        "{\"id\":3,\"number\":\"+15550177\",\"messages\":1,\"unread\":0,"
                        "\"time\":\"2010-11-03T14:25:31Z\",\"words\":\"Are you there?\"}\n"
                        "{\"id\":1,\"number\":\"+15550100\",\"messages\":3,\"unread\":2,"
                        "\"time\":\"2010-11-03T14:25:31Z\",\"words\":\"Yes, gladly\"}\n"));
}

void TestConversations::selects_data()
{
    QTest::addColumn<QByteArray>("lines");
    const auto row = [](const char *options, const char *lines) {
        QTest::newRow(options) << QByteArray(lines);
    };
    row("--since 2011-01-01", "2  2011-11-03T14:25:30Z  1    InfoPost  Your parcel waits\n");
    row("--until 2010-11-03T14:25:31Z",
        "1  2010-11-03T14:25:30Z  2  *2  +15550100  Tea at four?\n");
    row("--number +15550100", "1  2010-11-03T14:25:31Z  2  *1  +15550100  Yes, gladly\n");
    row("--number infopost", "2  2011-11-03T14:25:30Z  1    InfoPost  Your parcel waits\n");
    row("--number-tail 5550100", "1  2010-11-03T14:25:31Z  3  *2  +15550100  Yes, gladly\n");
    row("--number +15550199", "");
}

void TestConversations::selects()
{
    QFETCH(QByteArray, lines);
    const QStringList options =
        QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    const auto outcome = client.run(QStringList{text("conversations")} + options);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, lines);
}

void TestConversations::givesTheIdsThatListTakes()
{
    QCOMPARE(client.run({text("list"), text("--count"), text("--conversation"), text("1")}).output,
             QByteArray("3\n"));
    QCOMPARE(client.run({text("list"), text("--count"), text("--conversation"), text("2")}).output,
             QByteArray("1\n"));
}

void TestConversations::leavesCallsAlone()
{
    ClientProcess other;
    QCOMPARE(other
                 .run({text("calls"), text("add"), text("-q")},
                      callEntry("missed", "+15550100", 0, "20101103T142530Z"))
                 .exitCode,
             0);
    const auto outcome = other.run({text("conversations")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray());
}

void TestConversations::showsPartiesAsTheyAreMeant()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "B\xC3\xA4nk", "Hello"));
    const QByteArray line("1  2010-11-03T14:25:30Z  1    B\xC3\xA4nk  Hello\n");
    QCOMPARE(other.run({text("conversations")}).output, line);
    QCOMPARE(other.run({text("conversations"), text("--number"), text("B\xC3\xA4nk")}).output,
             line);
}

void TestConversations::shortensTexts_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("words");
    const auto row = [](const char *name, const QByteArray &body, const QByteArray &words) {
        QTest::newRow(name) << body << words;
    };
    const QByteArray more("\xE2\x80\xA6");
    row("empty", "", "");
    row("40-letters", QByteArray(40, 'x'), QByteArray(40, 'x'));
    row("41-letters", QByteArray(41, 'x'), QByteArray(40, 'x') + more);
    row("words", "The quick brown fox jumps over the lazy dog",
        "The quick brown fox jumps over the lazy" + more);
    row("word-of-40", QByteArray(40, 'x') + " y", QByteArray(40, 'x') + more);
    row("blanks", "a \n\n  b", "a b");
    row("many-blanks", "a" + QByteArray(300, ' ') + "b", "a" + more);
    row("pairs", "x" + QByteArray("\xF0\x9F\x8D\xB5").repeated(30),
        "x" + QByteArray("\xF0\x9F\x8D\xB5").repeated(19) + more);
    row("harmful", "a\x1B[1mb", "a\\u001b[1mb");
}

void TestConversations::shortensTexts()
{
    QFETCH(QByteArray, body);
    QFETCH(QByteArray, words);
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", body));
    QCOMPARE(other.run({text("conversations"), text("-o"), text("ndjson")}).output,
             "{\"id\":1,\"number\":\"+15550100\",\"messages\":1,\"unread\":0,"
             "\"time\":\"2010-11-03T14:25:30Z\",\"words\":\""
                 + words + "\"}\n");
}

QTEST_GUILESS_MAIN(TestConversations)
#include "tst_conversations.moc"
