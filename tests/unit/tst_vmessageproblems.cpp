// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "decodedmessage.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

using Problem = VMessageDecoder::Problem;

class TestVMessageProblems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhyThereIsNoMessage_data();
    void saysWhyThereIsNoMessage();
    void takesNoTextForASecondMessage_data();
    void takesNoTextForASecondMessage();
    void refusesMoreBytesThanTheParserCounts();
    void leavesTheItemAloneWithoutAMessage();
    void hasNoProblemBeforeTheFirstMessage();
};

void TestVMessageProblems::saysWhyThereIsNoMessage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("line");
    const auto row = [](const char *name, const QByteArray &bytes, Problem::Kind kind, int line) {
        QTest::newRow(name) << bytes << int(kind) << line;
    };
    const QByteArray head = "BEGIN:VMSG\r\nVERSION:1.1\r\n";
    const QByteArray tail = "END:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
    row("null", QByteArray(), Problem::NoBegin, 1);
    row("nothing", QByteArray(""), Problem::NoBegin, 1);
    row("a zero", QByteArray("\0", 1), Problem::NoBegin, 1);
    row("a text", "Hello\r\nthere\r\n", Problem::NoBegin, 1);
    row("header cut", head, Problem::CutHeader, 2);
    row("lines in front", "1\n2\n" + head, Problem::CutHeader, 4);
    row("no BEGIN:VBODY", head + "X-SMS:Hello\r\n" + tail, Problem::NoBody, 4);
    row("no END:VBODY", head + "BEGIN:VBODY\r\nX-SMS:Hello\r\nEND:VENV\r\n", Problem::OpenBody, 3);
    row("cut text", head + "BEGIN:VBODY\r\nX-SMS:Hel", Problem::OpenBody, 3);
    row("line behind the body", head + "BEGIN:VBODY\r\nHello\r\nEND:VBODY\r\nthere\r\nEND:VMSG\r\n",
        Problem::LineBehindBody, 6);
    row("two messages", ownMessage + ownMessage, Problem::SecondMessage, 19);
    row("two with line feeds", QByteArray(ownMessage + ownMessage).replace("\r\n", "\n"),
        Problem::SecondMessage, 19);
    row("two with lines between", ownMessage + "\r\n# the next\r\n" + ownMessage,
        Problem::SecondMessage, 21);
    row("two joined on one line", ownMessage.chopped(2) + ownMessage, Problem::SecondMessage, 18);
    row("a cut one behind", ownMessage + head, Problem::SecondMessage, 19);
    row("one behind a cut header", head + ownMessage, Problem::SecondMessage, 3);
    row("one behind a cut text", head + "BEGIN:VBODY\r\nX-SMS:Hel\r\n" + ownMessage,
        Problem::SecondMessage, 5);
    row("one behind a body that is closed", head + "BEGIN:VBODY\r\na\r\nEND:VBODY\r\n" + ownMessage,
        Problem::SecondMessage, 6);
    row("three messages", ownMessage + ownMessage + ownMessage, Problem::SecondMessage, 19);
}

void TestVMessageProblems::saysWhyThereIsNoMessage()
{
    QFETCH(QByteArray, bytes);
    const DecodedMessage decoded(bytes);
    QVERIFY(!decoded.isMessage);
    QTEST(int(decoded.decoder.problem().kind), "kind");
    QTEST(decoded.decoder.problem().line, "line");
}

void TestVMessageProblems::takesNoTextForASecondMessage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a terminating zero") << QByteArray(ownMessage + '\0');
    QTest::newRow("several zeros") << QByteArray(ownMessage + QByteArray(3, '\0'));
    QTest::newRow("lines around it") << "Hello\r\n\r\n" + ownMessage + "END:VMSG\r\nHello\r\n";
    QTest::newRow("a byte order mark") << "\xEF\xBB\xBF" + ownMessage;
    QTest::newRow("no last line end") << ownMessage.chopped(2);
}

void TestVMessageProblems::takesNoTextForASecondMessage()
{
    QFETCH(QByteArray, bytes);
    const DecodedMessage decoded(bytes);
    QVERIFY(decoded.isMessage);
    QCOMPARE(decoded.item.text, QStringLiteral("Good\nmorning"));
}

void TestVMessageProblems::refusesMoreBytesThanTheParserCounts()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    // They are refused by their number, before anything reads them.
    const QByteArray huge = QByteArray::fromRawData(ownMessage.constData(), qsizetype(1) << 31);
    const DecodedMessage decoded(huge);
    QVERIFY(!decoded.isMessage);
    QCOMPARE(decoded.decoder.problem().kind, Problem::LongText);
    QCOMPARE(decoded.decoder.problem().line, 1);
#else
    QCOMPARE(sizeof(QByteArray().size()), sizeof(int)); // there cannot be more
#endif
}

void TestVMessageProblems::leavesTheItemAloneWithoutAMessage()
{
    VMessageDecoder decoder;
    HistoryItem item;
    item.id = 7;
    item.text = QStringLiteral("before");
    QVERIFY(!decoder.decode("Hello", &item));
    QCOMPARE(item.id, 7);
    QCOMPARE(item.text, QStringLiteral("before"));
}

void TestVMessageProblems::hasNoProblemBeforeTheFirstMessage()
{
    const VMessageDecoder decoder;
    QCOMPARE(decoder.problem().kind, Problem::None);
    QCOMPARE(decoder.problem().line, 0);
    QCOMPARE(decoder.type(), QString());
    QVERIFY(decoder.originators().isEmpty());
    QVERIFY(decoder.recipients().isEmpty());
}

QTEST_GUILESS_MAIN(TestVMessageProblems)
#include "tst_vmessageproblems.moc"
