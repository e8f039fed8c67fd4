// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "scannedmessages.h"
#include "vmessagesupport.h"

#include <vmessage/vmessageparser.h>
#include <vmessage/vmessagescanner.h>

#include <QtCore/QList>
#include <QtTest/QtTest>

using namespace VMessageSupport;

namespace {

struct Found
{
    QByteArray bytes;
    quint64 offset;
    quint64 line;
    bool complete;
    bool isJoined;

    bool operator==(const Found &other) const
    {
        return bytes == other.bytes && offset == other.offset && line == other.line
            && complete == other.complete && isJoined == other.isJoined;
    }
};

QList<Found> scanned(const QByteArray &file)
{
    QList<Found> result;
    for (const ScannedMessage &message : scannedMessages({file.constData(), size_t(file.size())}))
        result.append({QByteArray(message.bytes.data(), int(message.bytes.size())), message.offset,
                       message.line, message.complete, message.isJoined});
    return result;
}

QList<QByteArray> bytesOf(const QList<Found> &messages)
{
    QList<QByteArray> result;
    for (const Found &message : messages)
        result.append(message.bytes);
    return result;
}

QByteArray textOf(const QByteArray &bytes)
{
    VMessageParser parser;
    const VMessageBody *body =
        parser.body(parser.parseVMessage(bytes.constData(), uint(bytes.size())));
    return body ? QByteArray(body->text, body->length) : QByteArray("no text");
}

// Dialects without a text property; the lines of the text end as all others do.
QByteArray phoneMessage(const QByteArray &text)
{
    return "BEGIN:VMSG\nVERSION:1.1\nX-ABC-DT:20101103T142530Z\nBEGIN:VCARD\nTEL:+15550100\n"
           "END:VCARD\nBEGIN:VENV\nBEGIN:VBODY\nDate:03.11.2010 14:25:30\n"
        + text + "\nEND:VBODY\nEND:VENV\nEND:VMSG\n";
}

} // namespace

class TestVMessageScanner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsOwnMessagesWhateverTheirTexts();
    void isNotForgedByAnOwnText();
    void findsMessagesAmongOtherLines();
    void tellsOffsetAndLine();
    void findsMessagesWithLfOnly();
    void findsMessagesWithMixedLineEnds();
    void findsOwnMessagesWithAnEditedLine();
    void refusesAnOwnMessageCutBehindAClosingWord();
    void findsMessagesWithSignsOfAFilesEndBetweenThem_data();
    void findsMessagesWithSignsOfAFilesEndBetweenThem();
    void findsMessagesOfOtherLineEnds_data();
    void findsMessagesOfOtherLineEnds();
    void keepsAClosingLineInAnLfTextUnlessItCloses();
    void endsAMessageWithoutEndVMsgAtTheNext();
    void findsTheMessageAfterACutOne_data();
    void findsTheMessageAfterACutOne();
    void handsOutTheCutMessageAtTheEndOfTheFile();
    void endsWithTheLineThatClosesTheMessage();
    void handsBackWhatBeginsTheNextMessage();
    void isNotWholeWithABodyThatOnlyEnds();
    void findsMessagesBehindByteOrderMarks();
    void findsNothingInOtherFiles();
    void survivesHostileInput();
};

void TestVMessageScanner::findsOwnMessagesWhateverTheirTexts()
{
    TextSource texts(2);
    QByteArray file;
    QList<QByteArray> expected;
    for (int i = 0; i < 1000; ++i) {
        expected.append(texts.next());
        file += ownMessage(expected.last());
    }
    QList<QByteArray> found;
    for (const Found &message : scanned(file)) {
        QVERIFY(message.complete);
        found.append(textOf(message.bytes));
    }
    QCOMPARE(found, expected);
}

void TestVMessageScanner::isNotForgedByAnOwnText()
{
    const QByteArray forging = "a\nEND:VBODY\nEND:VENV\nEND:VMSG\n"
        + withLfOnly(ownMessage("forged")) + "BEGIN:VMSG\nEND:VBODY";
    const QList<Found> found = scanned(ownMessage(forging) + ownMessage("second"));
    QCOMPARE(found.size(), 2);
    QCOMPARE(textOf(found[0].bytes), forging);
    QCOMPARE(textOf(found[1].bytes), QByteArray("second"));
}

void TestVMessageScanner::findsMessagesAmongOtherLines()
{
    const QByteArray first = ownMessage("first");
    const QByteArray second = phoneMessage("second");
    const QByteArray file = "2\r\nEND:VMSG\r\nBEGIN:VNOTE\r\nEND:VNOTE\r\n" + first
        + "\r\nEND:VBODY\r\nEND:VMSG\r\nbetween\n" + second + "behind";
    QCOMPARE(bytesOf(scanned(file)), QList<QByteArray>({first, second}));
}

void TestVMessageScanner::tellsOffsetAndLine()
{
    const QList<Found> found =
        scanned("one\r\ntwo\n" + ownMessage("a\nb") + "\n" + phoneMessage("c"));
    QCOMPARE(found.size(), 2);
    QCOMPARE(found[0].offset, quint64(9));
    QCOMPARE(found[0].line, quint64(3));
    QCOMPARE(found[1].offset, quint64(9 + ownMessage("a\nb").size() + 1));
    QCOMPARE(found[1].line, quint64(3 + 18 + 1));
}

void TestVMessageScanner::findsMessagesWithLfOnly()
{
    const QByteArray first = withLfOnly(ownMessage("one\n\ntwo"));
    const QByteArray second = phoneMessage("three\n four");
    const QList<Found> found = scanned(first + second);
    QCOMPARE(bytesOf(found), QList<QByteArray>({first, second}));
    QCOMPARE(textOf(found[0].bytes), QByteArray("one\n\ntwo"));
    QCOMPARE(textOf(found[1].bytes), QByteArray("three\n four"));
}

void TestVMessageScanner::findsMessagesWithMixedLineEnds()
{
    const QByteArray message = phoneMessage("Hello").replace("VMSG\n", "VMSG\r\n");
    const QList<Found> found = scanned(message + message);
    QCOMPARE(bytesOf(found), QList<QByteArray>({message, message}));
    QVERIFY(found[0].complete && found[1].complete);
}

void TestVMessageScanner::findsOwnMessagesWithAnEditedLine()
{
    const QByteArray edited = ownMessage("Hello").replace("Hello\r\n", "Changed\n");
    const QByteArray next = ownMessage("next");
    const QList<Found> found = scanned(edited + next);
    QCOMPARE(bytesOf(found), QList<QByteArray>({edited, next}));
    QCOMPARE(textOf(found[0].bytes), QByteArray("Changed"));
}

// The text ends in the words that close it; behind them the file was cut.
void TestVMessageScanner::refusesAnOwnMessageCutBehindAClosingWord()
{
    const QByteArray whole = ownMessage("one\nEND:VBODY");
    const QByteArray cut = whole.left(whole.indexOf("END:VBODY") + int(qstrlen("END:VBODY\r\n")));
    const QByteArray next = ownMessage("next");
    const QList<Found> found = scanned(cut + next);
    QCOMPARE(bytesOf(found), QList<QByteArray>({cut, next}));
    VMessageParser parser;
    QVERIFY(!parser.parseVMessage(cut.constData(), uint(cut.size())));
}

void TestVMessageScanner::findsMessagesWithSignsOfAFilesEndBetweenThem_data()
{
    QTest::addColumn<QByteArray>("signs");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("zero") << QByteArray(1, '\0');
    QTest::newRow("zeros") << QByteArray(3, '\0');
    QTest::newRow("Ctrl-Z") << QByteArray("\x1A");
    QTest::newRow("mark") << QByteArray("\xEF\xBB\xBF");
    QTest::newRow("Ctrl-Z and mark") << QByteArray("\x1A\xEF\xBB\xBF");
    QTest::newRow("blank") << QByteArray(" ");
}

void TestVMessageScanner::findsMessagesWithSignsOfAFilesEndBetweenThem()
{
    QFETCH(QByteArray, signs);
    const QByteArray lf = phoneMessage("1");
    for (QByteArray message : {lf, QByteArray(lf).replace("\n", "\r\n"), ownMessage("1")}) {
        if (signs != " ") {
            const QList<Found> found = scanned((message + signs).repeated(3));
            QCOMPARE(found.size(), 3);
            QVERIFY(found[0].complete && found[1].complete && found[2].complete);
            QCOMPARE(textOf(found[2].bytes), QByteArray("1"));
        }
        const int lines = int(message.count('\n'));
        message = message.trimmed();
        const QList<Found> joined = scanned((message + signs).repeated(2) + message);
        QCOMPARE(joined.size(), 3);
        QVERIFY(joined[0].complete && joined[1].complete && joined[2].complete);
        QVERIFY(joined[0].isJoined && joined[1].isJoined && !joined[2].isJoined);
        QCOMPARE(joined[2].line, quint64(1 + 2 * (lines - 1)));
        for (const Found &one : joined)
            QCOMPARE(textOf(one.bytes), QByteArray("1"));
    }
}

void TestVMessageScanner::findsMessagesOfOtherLineEnds_data()
{
    QTest::addColumn<QByteArray>("first");
    const QByteArray lf = phoneMessage("1");
    const QByteArray crLf = QByteArray(lf).replace("\n", "\r\n");
    const QByteArray own = ownMessage("1");
    const auto closing = [](const QByteArray &message) {
        return QByteArray(message).replace("END:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n",
                                           "END:VBODY\nEND:VENV\nEND:VMSG\n");
    };
    const auto without = [](const char *line, QByteArray message) {
        return message.replace(line, "");
    };
    QTest::newRow("whole") << crLf;
    QTest::newRow("own") << own;
    QTest::newRow("without END:VMSG") << without("END:VMSG\r\n", crLf);
    QTest::newRow("without END:VENV and END:VMSG") << without("END:VENV\r\nEND:VMSG\r\n", crLf);
    QTest::newRow("own without END:VMSG") << without("END:VMSG\r\n", own);
    QTest::newRow("closed with LF") << closing(crLf);
    QTest::newRow("own closed with LF") << closing(own);
    QTest::newRow("text and closing lines with LF")
        << closing(crLf).replace("30\r\n1\r\n", "30\n1\n");
}

void TestVMessageScanner::findsMessagesOfOtherLineEnds()
{
    QFETCH(QByteArray, first);
    for (const QByteArray &second : {phoneMessage("2"), ownMessage("2")}) {
        const QList<Found> found = scanned(first + second);
        QCOMPARE(bytesOf(found), QList<QByteArray>({first, second}));
        QCOMPARE(textOf(found[0].bytes), QByteArray("1"));
        QCOMPARE(textOf(found[1].bytes), QByteArray("2"));
    }
}

void TestVMessageScanner::keepsAClosingLineInAnLfTextUnlessItCloses()
{
    const QByteArray kept = "one\nEND:VBODY\nEND:VENV\ntwo\nEND:VMSG\nEND:VBODY\nEND:VBODY\nthree";
    const QList<Found> found = scanned(phoneMessage(kept) + phoneMessage("second"));
    QCOMPARE(found.size(), 2);
    QCOMPARE(textOf(found[0].bytes), kept);

    const QList<Found> forged = scanned(phoneMessage("one\nEND:VBODY\n\nEND:VENV\nEND:VMSG\ntwo"));
    QCOMPARE(forged.size(), 1);
    QCOMPARE(textOf(forged[0].bytes), QByteArray("one"));
}

void TestVMessageScanner::endsAMessageWithoutEndVMsgAtTheNext()
{
    for (const QByteArray &message : {ownMessage("first"), phoneMessage("first")}) {
        const QByteArray open = message.left(message.indexOf("END:VMSG"));
        const QByteArray opener = message.left(message.lastIndexOf("END:VENV"));
        for (const QByteArray &first : {open, opener}) {
            const QList<Found> found = scanned(first + message);
            QCOMPARE(bytesOf(found), QList<QByteArray>({first, message}));
            QVERIFY(!found[0].complete);
            QVERIFY(found[1].complete);
            QCOMPARE(textOf(found[0].bytes), QByteArray("first"));
        }
    }
}

void TestVMessageScanner::findsTheMessageAfterACutOne_data()
{
    QTest::addColumn<QByteArray>("cut");
    const QByteArray own = ownMessage("some\r\ntext");
    QTest::newRow("first line") << QByteArray("BEGIN:VMSG\r\n");
    QTest::newRow("header") << own.left(own.indexOf("X-IRMC-TYPE"));
    QTest::newRow("card") << own.left(own.indexOf("TEL:"));
    QTest::newRow("body without text") << own.left(own.indexOf("X-SMS"));
    QTest::newRow("text") << own.left(own.indexOf("text"));
    QTest::newRow("all but the closing lines") << own.left(own.indexOf("END:VBODY"));
}

void TestVMessageScanner::findsTheMessageAfterACutOne()
{
    QFETCH(QByteArray, cut);
    const QList<Found> found = scanned(cut + ownMessage("second"));
    QCOMPARE(bytesOf(found), QList<QByteArray>({cut, ownMessage("second")}));
    QVERIFY(!found[0].complete);
    QCOMPARE(textOf(found[0].bytes), QByteArray("no text"));

    const QList<Found> lfOnly = scanned(withLfOnly(cut + ownMessage("second")));
    QCOMPARE(bytesOf(lfOnly),
             QList<QByteArray>({withLfOnly(cut), withLfOnly(ownMessage("second"))}));
}

void TestVMessageScanner::handsOutTheCutMessageAtTheEndOfTheFile()
{
    const QByteArray whole = ownMessage("a\nEND:VBODY\nEND:VENV\nEND:VMSG\nb");
    const auto withoutLineEnd = int(whole.size()) - 2;
    for (int length = int(qstrlen("BEGIN:VMSG")); length < withoutLineEnd; ++length) {
        const QList<Found> found = scanned(whole.left(length));
        QCOMPARE(bytesOf(found), QList<QByteArray>({whole.left(length)}));
        QVERIFY(!found[0].complete);
    }
    QVERIFY(scanned(whole.left(withoutLineEnd))[0].complete);
}

void TestVMessageScanner::endsWithTheLineThatClosesTheMessage()
{
    const QByteArray message = ownMessage("Hello");
    VMessageScanner scanner;
    int start = 0;
    while (start < message.lastIndexOf("END:VMSG")) {
        const int end = int(message.indexOf('\n', start)) + 1;
        const auto taken = scanner.take({message.constData() + start, size_t(end - start)});
        QCOMPARE(taken.verdict, VMessageScanner::Unfinished);
        QVERIFY(taken.unused.empty());
        start = end;
    }
    const auto last = scanner.take("END:VMSG\r\n");
    QCOMPARE(last.verdict, VMessageScanner::Whole);
    QVERIFY(last.unused.empty());
}

void TestVMessageScanner::handsBackWhatBeginsTheNextMessage()
{
    VMessageScanner joined;
    joined.take("BEGIN:VMSG\r\n");
    const auto whole = joined.take("END:VMSG \xEF\xBB\xBF"
                                   "BEGIN:VMSG\r\n");
    QCOMPARE(whole.verdict, VMessageScanner::Whole);
    QCOMPARE(QByteArray(whole.unused.data(), int(whole.unused.size())),
             QByteArray("\xEF\xBB\xBF"
                        "BEGIN:VMSG\r\n"));

    VMessageScanner open;
    open.take("BEGIN:VMSG\r\n");
    const auto cut = open.take("begin:vmsg\n");
    QCOMPARE(cut.verdict, VMessageScanner::Cut);
    QCOMPARE(QByteArray(cut.unused.data(), int(cut.unused.size())), QByteArray("begin:vmsg\n"));
}

void TestVMessageScanner::isNotWholeWithABodyThatOnlyEnds()
{
    const QByteArray broken = phoneMessage("lost").replace("BEGIN:VBODY", "BEGIN:VBOD");
    const QByteArray joined = broken.chopped(1);
    const QByteArray next = phoneMessage("found");
    QCOMPARE(scanned(broken + next),
             (QList<Found>{{broken, 0, 1, false, false},
                           {next, size_t(broken.size()), 14, true, false}}));
    QCOMPARE(scanned(joined + next),
             (QList<Found>{{joined, 0, 1, false, true},
                           {next, size_t(joined.size()), 13, true, false}}));
    const QByteArray bodiless = "BEGIN:VMSG\nVERSION:1.1\nEND:VMSG\n";
    QCOMPARE(scanned(bodiless), (QList<Found>{{bodiless, 0, 1, true, false}}));
}

void TestVMessageScanner::findsMessagesBehindByteOrderMarks()
{
    const QByteArray marked = "\xEF\xBB\xBF" + ownMessage("Hello");
    const QList<Found> found = scanned(marked + marked);
    QCOMPARE(bytesOf(found), QList<QByteArray>({marked, marked}));
    QCOMPARE(textOf(found[1].bytes), QByteArray("Hello"));
}

void TestVMessageScanner::findsNothingInOtherFiles()
{
    for (const char *file : {"", "\n", "Hello", "BEGIN:VNOTE\r\nBODY:x\r\nEND:VNOTE\r\n",
                             "BEGIN:VCARD\nEND:VCARD\n", " BEGIN:VMSG\n", "BEGIN:VMSGX\n"})
        QVERIFY(scanned(file).isEmpty());
}

void TestVMessageScanner::survivesHostileInput()
{
    constexpr int mebi = 1 << 20;
    const QByteArray own = ownMessage(QByteArray("END:VBODY\n").repeated(mebi / 10));
    QCOMPARE(scanned(own).size(), 1);
    QCOMPARE(scanned(QByteArray("BEGIN:VMSG\n").repeated(mebi / 10)).size(), mebi / 10);
    QCOMPARE(scanned(QByteArray(mebi, 'x')).size(), 0);
    QCOMPARE(scanned("BEGIN:VMSG\nBEGIN:VBODY\n" + QByteArray(mebi, ' ')).size(), 1);
}

QTEST_APPLESS_MAIN(TestVMessageScanner)

#include "tst_vmessagescanner.moc"
