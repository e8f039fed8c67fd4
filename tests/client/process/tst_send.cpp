// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

// Sending as far as it comes without a bus.
class TestSend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatItDoesNotUnderstand_data();
    void refusesWhatItDoesNotUnderstand();
    void refusesATextThatNoMessageCarries();
    void refusesWhatIsNotUtf8_data();
    void refusesWhatIsNotUtf8();
    void refusesFilesThatAreNotOneMessage_data();
    void refusesFilesThatAreNotOneMessage();
    void tellsWhatWouldBeSent_data();
    void tellsWhatWouldBeSent();
    void takesTheNumberFromStandardInput_data();
    void takesTheNumberFromStandardInput();
    void refusesStandardInputWithoutNumberOrText_data();
    void refusesStandardInputWithoutNumberOrText();
    void leavesAByteOrderMarkOut_data();
    void leavesAByteOrderMarkOut();
    void failsWithoutASessionBus();
    void refusesAFolderThatIsNoStore();
};

static QByteArray party(const QByteArray &number)
{
    return "BEGIN:VENV\r\nBEGIN:VCARD\r\nVERSION:2.1\r\nTEL:" + number + "\r\nEND:VCARD\r\n";
}

static QByteArray messageTo(const QByteArray &parties, const QByteArray &text = "Hello")
{
    return "BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\nX-IRMC-BOX:DRAFTS\r\n" + parties
        + "BEGIN:VBODY\r\n" + text + "\r\nEND:VBODY\r\n"
        + QByteArray("END:VENV\r\n").repeated(int(parties.count("BEGIN:VENV"))) + "END:VMSG\r\n";
}

static const QByteArray toOne = messageTo(party("+15550100"));

void TestSend::refusesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString number = QStringLiteral("+15550100");
    const QString hello = QStringLiteral("Hello");
    const QString file = QStringLiteral("--vmessage=-");
    QTest::newRow("nothing on standard input") << QStringList();
    QTest::newRow("nothing behind -") << QStringList(QStringLiteral("-"));
    QTest::newRow("a number behind -") << QStringList{QStringLiteral("-"), hello};
    QTest::newRow("no text") << QStringList(number);
    QTest::newRow("an empty text") << QStringList{number, QString()};
    QTest::newRow("empty standard input") << QStringList{number, QStringLiteral("-")};
    QTest::newRow("an empty number") << QStringList{QString(), hello};
    QTest::newRow("two texts") << QStringList{number, hello, hello};
    QTest::newRow("a file and a number") << QStringList{file, number};
    QTest::newRow("a missing file") << QStringList(QStringLiteral("--vmessage=missing"));
    QTest::newRow("an empty file") << QStringList(file);
    QTest::newRow("entries") << QStringList{number, hello, QStringLiteral("-oentries")};
}

void TestSend::refusesWhatItDoesNotUnderstand()
{
    QFETCH(QStringList, arguments);
    const ClientProcess client;
    const auto outcome = client.run(QStringList(QStringLiteral("send")) + arguments);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY(!outcome.errors.isEmpty());
    QVERIFY(!outcome.errors.contains("15550100"));
    QVERIFY(!QDir(client.store()).exists());
}

void TestSend::refusesATextThatNoMessageCarries()
{
    const auto outcome = ClientProcess().run(
        {QStringLiteral("send"), QStringLiteral("+15550100"), QStringLiteral("-")},
        QByteArray("Hello \0 there", 13));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: a message cannot carry this number or text; leave control "
                        "characters out\n"));
    QCOMPARE(outcome.exitCode, 2);
}

void TestSend::refusesWhatIsNotUtf8_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("errors");
    const QByteArray words("korvasync: number and text are not UTF-8; nothing was sent\n");
    const QByteArray input(
        "korvasync: standard input is not UTF-8; convert it, with iconv for instance\n");
    QTest::newRow("text") << text("+15550100 \"$(printf 'Gr\\374n')\"") << words;
    QTest::newRow("number") << text("\"$(printf '\\377+15550100')\" Hello") << words;
    QTest::newRow("standard input") << text("+15550100 -") << input;
}

void TestSend::refusesWhatIsNotUtf8()
{
    QFETCH(QString, words);
    QFETCH(QByteArray, errors);
    const ClientProcess client;
    const QString command =
        text("%1 --store %2 send -n ").arg(text(KORVASYNC_CLIENT), client.store()) + words;
    const auto outcome = client.runProgram(text("sh"), {text("-c"), command}, "Hello \xff\xfe");
    QCOMPARE(outcome.errors, errors);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.exitCode, 2);
}

void TestSend::refusesFilesThatAreNotOneMessage_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("errors");
    QTest::newRow("two messages") << toOne + toOne << 2
                                  << QByteArray("korvasync: send takes exactly one message, and - "
                                                "has more\n");
    QTest::newRow("a cut message") << toOne.left(toOne.indexOf("END:VBODY")) << 1
                                   << QByteArray("korvasync: not sent (sms-parse): END:VBODY is "
                                                 "missing; BEGIN:VBODY is in line 10\n");
    QTest::newRow("two receivers")
        << messageTo(party("+15550100") + party("+15550101")) << 1
        << QByteArray("korvasync: not sent (too-many-recipients): more than one "
                      "other party; a message can be kept for one\n");
    QTest::newRow("only a sender")
        << vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello") << 1
        << QByteArray("korvasync: not sent (sms-no-number): no number of the other party\n");
    QTest::newRow("no text")
        << messageTo(party("+15550100"), QByteArray()) << 2
        << QByteArray("korvasync: there is no text to send; give one behind the number\n");
    QTest::newRow("a byte order mark alone")
        << messageTo(party("+15550100"), "\xEF\xBB\xBF") << 2
        << QByteArray("korvasync: there is no text to send; give one behind the number\n");
    QTest::newRow("an escape in the number")
        << messageTo(party("+1555\x1B[31m0100")) << 1
        << QByteArray("korvasync: not sent (sms-no-number): no number of the other party\n");
}

void TestSend::refusesFilesThatAreNotOneMessage()
{
    QFETCH(QByteArray, file);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, errors);
    const ClientProcess client;
    const auto outcome = client.run({QStringLiteral("send"), QStringLiteral("--vmessage=-")}, file);
    QCOMPARE(outcome.errors, errors);
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, QByteArray());
}

void TestSend::tellsWhatWouldBeSent_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("text") << QStringLiteral("-otext")
                          << QByteArray("would be sent to +15550100: Hello\n");
    QTest::newRow("ndjson")
        << QStringLiteral("-ondjson")
        << QByteArray("{\"status\":\"sent\",\"number\":\"+15550100\",\"body\":\"Hello\"}\n");
}

void TestSend::tellsWhatWouldBeSent()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, output);
    const ClientProcess client;
    const auto outcome = client.run(
        {QStringLiteral("send"), QStringLiteral("-n"), QStringLiteral("--vmessage=-"), format},
        toOne);
    QCOMPARE(outcome.output, output);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(!QDir(client.store()).exists());
}

void TestSend::takesTheNumberFromStandardInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("body");
    const QStringList dash(QStringLiteral("-"));
    QTest::newRow("without a word")
        << QStringList() << QByteArray("+15550100\nHello\n") << QByteArray("Hello");
    QTest::newRow("-") << dash << QByteArray("+15550100\nHello\n") << QByteArray("Hello");
    QTest::newRow("no last line feed")
        << dash << QByteArray("+15550100\nHello") << QByteArray("Hello");
    QTest::newRow("lines") << dash << QByteArray("+15550100\nHello\n\n-\nBye\n\n")
                           << QByteArray("Hello\\n\\n-\\nBye\\n");
    QTest::newRow("a line without text first")
        << dash << QByteArray("+15550100\n\nHello\n") << QByteArray("\\nHello");
    QTest::newRow("CR LF and a mark")
        << dash << QByteArray("\xEF\xBB\xBF+15550100\r\nHello\r\n") << QByteArray("Hello");
    QTest::newRow("blanks around the number")
        << dash << QByteArray(" +15550100 \nHello\n") << QByteArray("Hello");
}

void TestSend::takesTheNumberFromStandardInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, body);
    const auto outcome = ClientProcess().run(
        QStringList{text("send"), text("-n"), text("-ondjson")} + arguments, input);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output,
             "{\"status\":\"sent\",\"number\":\"+15550100\",\"body\":\"" + body + "\"}\n");
    QCOMPARE(outcome.exitCode, 0);
}

void TestSend::refusesStandardInputWithoutNumberOrText_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("errors");
    const QByteArray noText("korvasync: there is no text to send; give one behind the number\n");
    QTest::newRow("a number alone") << QByteArray("+15550100\n") << 2 << noText;
    QTest::newRow("a number and an end") << QByteArray("+15550100") << 2 << noText;
    QTest::newRow("a text alone")
        << QByteArray("\nHello\n") << 1
        << QByteArray("korvasync: not sent (sms-no-number): no number of the other party\n");
}

void TestSend::refusesStandardInputWithoutNumberOrText()
{
    QFETCH(QByteArray, input);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, errors);
    const auto outcome = ClientProcess().run({text("send"), text("-")}, input);
    QCOMPARE(outcome.errors, errors);
    QCOMPARE(outcome.exitCode, exitCode);
}

void TestSend::leavesAByteOrderMarkOut_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("word") << QStringLiteral("\uFEFFHello") << QByteArray();
    QTest::newRow("two in a word") << QStringLiteral("\uFEFF\uFEFFHello") << QByteArray();
    QTest::newRow("standard input") << QStringLiteral("-") << QByteArray("\xEF\xBB\xBFHello");
}

void TestSend::leavesAByteOrderMarkOut()
{
    QFETCH(QString, word);
    QFETCH(QByteArray, input);
    const auto outcome =
        ClientProcess().run({text("send"), text("-n"), text("+15550100"), word}, input);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output, QByteArray("would be sent to +15550100: Hello\n"));
}

void TestSend::failsWithoutASessionBus()
{
    const ClientProcess client;
    const auto outcome = client.run({QStringLiteral("send"), QStringLiteral("+15550100"),
                                     QStringLiteral("Hello"), QStringLiteral("-ondjson")});
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: the message was not sent, as there is no session bus; run it "
                        "in a session, or under dbus-run-session\n"));
    QCOMPARE(outcome.output, QByteArray("{\"status\":\"failed\"}\n"));
    QCOMPARE(outcome.exitCode, 8);
}

void TestSend::refusesAFolderThatIsNoStore()
{
    const ClientProcess client;
    QVERIFY(QDir().mkpath(client.store() + QStringLiteral("/other")));
    const auto outcome =
        client.run({QStringLiteral("send"), QStringLiteral("+15550100"), QStringLiteral("Hello")});
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
}

QTEST_GUILESS_MAIN(TestSend)
#include "tst_send.moc"
