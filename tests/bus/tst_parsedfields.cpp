// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What is read of the parser's records.

#include "scriptedparser.h"
#include "sendtesting.h"

using namespace SendTesting;

class TestParsedFields : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void givesAsManyBytesAsThereAreUnits();
    void readsTextInItsLengthAndNumberAsLatin1();
    void nullFieldsEmptyWhatWasThere();
    void absentRecordsLeaveWhatWasThere();
};

void TestParsedFields::givesAsManyBytesAsThereAreUnits()
{
    ScriptedParser parser;
    Sender sender;
    sender.send(QStringLiteral("a\u00fcb\U0001F600c"));
    QCOMPARE(parser.inputs,
             QList<QByteArray>{QByteArray("a\xc3\xbc"
                                          "b\xf0\x9f")});
    QCOMPARE(parser.parsersAlive, 0);
}

void TestParsedFields::readsTextInItsLengthAndNumberAsLatin1()
{
    ScriptedParser parser;
    VMessageBody body{};
    body.text = "a\0\xc3\xbc-unread";
    body.length = 4;
    VMessageRecipient recipient{};
    recipient.telephone = "\xfc"
                          "555";
    parser.body = &body;
    parser.recipient = &recipient;
    Sender sender;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 0);
    QCOMPARE(int(sender.messaging.messages.size()), 1);
    QCOMPARE(sender.messaging.messages.at(0).text,
             QStringLiteral("a") + QChar() + QStringLiteral("\u00fc"));
    QCOMPARE(sender.messaging.messages.at(0).number, QStringLiteral("\u00fc555"));
}

void TestParsedFields::nullFieldsEmptyWhatWasThere()
{
    ScriptedParser parser;
    VMessageBody body{};
    body.text = "Hello";
    body.length = 5;
    VMessageRecipient recipient{};
    recipient.telephone = "+15550100";
    parser.body = &body;
    parser.recipient = &recipient;
    Sender sender;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 0);
    recipient.telephone = nullptr;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 3);
    body.text = nullptr;
    body.length = 0;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 2);
}

void TestParsedFields::absentRecordsLeaveWhatWasThere()
{
    ScriptedParser parser;
    VMessageBody body{};
    body.text = "Hello";
    body.length = 5;
    VMessageRecipient recipient{};
    recipient.telephone = "+15550100";
    parser.body = &body;
    Sender sender;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 3);
    parser.body = nullptr;
    parser.recipient = &recipient;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 0);
    QCOMPARE(sender.messaging.messages.at(0).text, QStringLiteral("Hello"));
    parser.recipient = nullptr;
    parser.parses = false;
    QCOMPARE(sender.send(QStringLiteral("x"))->errorCause(), 1);
}

BUS_TEST_MAIN(TestParsedFields)
#include "tst_parsedfields.moc"
