// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QTest>

// "numbers".
class TestNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void judgesNumbers_data();
    void judgesNumbers();
    void tellsPeople();
    void sumsUpForPrograms();
};

static QByteArray messagesOf(const QList<QByteArray> &numbers)
{
    QByteArray messages;
    for (const QByteArray &number : numbers)
        messages += vMessage("INBOX", "20101103T142530Z", number, "Hello");
    return messages;
}

//! A line for each finding: its kind, tail and numbers.
static QByteArray inShort(const QByteArray &ndjson)
{
    QByteArray findings;
    QByteArray last;
    for (const QByteArray &line : ndjson.split('\n').mid(0, ndjson.count('\n'))) {
        const QJsonObject member = QJsonDocument::fromJson(line).object();
        const QByteArray head = member.value(text("finding")).toString().toUtf8() + ' '
            + member.value(text("tail")).toString().toUtf8() + ':';
        if (head != last)
            findings += (findings.isEmpty() ? "" : "\n") + head;
        findings += ' ' + member.value(text("number")).toString().toUtf8();
        last = head;
    }
    return findings;
}

void TestNumbers::judgesNumbers_data()
{
    QTest::addColumn<QList<QByteArray>>("numbers");
    QTest::addColumn<QByteArray>("findings"); // finding, tail and numbers
    const auto row = [](const char *name, const QList<QByteArray> &numbers, const char *findings) {
        QTest::newRow(name) << numbers << QByteArray(findings);
    };
    row("none", {"+15550100", "+15550101", "InfoPost", "4567"}, "");
    row("one-party", {"+15550100", "0015550100", "015550100", "555 0100"},
        "spellings 5550100: +15550100 0015550100 015550100 555 0100");
    row("two-parties", {"+15550100", "+995550100"},
        "different-numbers 5550100: +15550100 +995550100");
    row("two-areas", {"0401 5550100", "0501 5550100"},
        "different-numbers 5550100: 0401 5550100 0501 5550100");
    row("short-code", {"+15554567", "4567"}, "end-of-others 4567: 4567 +15554567");
    row("short-code-of-two", {"+15554567", "4567", "+15564567"},
        "end-of-others 4567: 4567 +15554567 +15564567");
    row("no-end", {"+15554567", "5456"}, "");
    row("word", {"InfoPost", "Post"}, "end-of-others Post: Post InfoPost");
    row("end-of-a-word", {"Bank24", "24"}, "end-of-others 24: 24 Bank24");
    row("words-in-other-letters", {"InfoPost", "post"}, "");
    row("pattern", {"Info.Post", "^Top", "$hop"},
        "pattern $hop: $hop\npattern Info.Post: Info.Post\npattern ^Top: ^Top");
    row("end-with-signs", {"C++", "++", "O'", "McO'", "post]", "Info[post]"}, "");
    row("signs-of-a-name", {"A+B", "C++", "McDonald's", "Info(1)", "a|b", "[x]", "a\\b"}, "");
    row("plus-of-a-number", {"+15550100"}, "");
}

void TestNumbers::judgesNumbers()
{
    QFETCH(QList<QByteArray>, numbers);
    QFETCH(QByteArray, findings);
    ClientProcess client;
    client.fill(messagesOf(numbers));
    const QByteArray before = client.listed();
    const auto outcome = client.run({text("numbers"), text("-q"), text("-o"), text("ndjson")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(inShort(outcome.output), findings);
    QCOMPARE(client.listed(), before);
}

void TestNumbers::tellsPeople()
{
    ClientProcess client;
    client.fill(messagesOf({"+15550100", "+995550100", "+15554567", "+15554567", "4567"}));
    const auto outcome = client.run({text("numbers")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("5550100: different numbers with this end share a conversation\n"
                        "       1  +15550100\n"
                        "       1  +995550100\n"
                        "4567: others end with it and can get its messages\n"
                        "       1  4567\n"
                        "       2  +15554567\n"
                        "4 numbers, 1 different-numbers, 1 end-of-others, 0 pattern, "
                        "0 spellings\n"));
}

void TestNumbers::sumsUpForPrograms()
{
    ClientProcess client;
    client.fill(messagesOf({"+15550100", "0015550100"}));
    QCOMPARE(client.run({text("numbers"), text("-o"), text("ndjson")}).output,
             QByteArray("{\"finding\":\"spellings\",\"tail\":\"5550100\","
                        "\"number\":\"+15550100\",\"messages\":1}\n"
                        "{\"finding\":\"spellings\",\"tail\":\"5550100\","
                        "\"number\":\"0015550100\",\"messages\":1}\n"
                        "{\"summary\":{\"numbers\":2,\"different-numbers\":0,"
                        "\"end-of-others\":0,\"pattern\":0,\"spellings\":1}}\n"));
}

QTEST_GUILESS_MAIN(TestNumbers)
#include "tst_numbers.moc"
