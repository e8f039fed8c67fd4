// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "input/itemreader.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

// Where one entry of a file ends and the next begins, wherever the pieces of the file end.
class TestItemReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesAFileApart_data();
    void takesAFileApart();
    void readsOnAcrossPieces();
    void findsMixedItemsWhereverPiecesEnd();
    void findsMessagesWhereverPiecesEnd_data();
    void findsMessagesWhereverPiecesEnd();
    void findsWhatIsWholeBeforeACut();
    void endsACutItemAtTheNextReason_data();
    void endsACutItemAtTheNextReason();
    void findsEntriesBehindACutMessage();
    void readsAgainWhatBeginsInABrokenItem_data();
    void readsAgainWhatBeginsInABrokenItem();
    void takesWhatATextSaysForText();
    void keepsNoItemThatIsTooLong();
    void tellsWhereAMessageBeginsThatIsTooLong();
    void readsUtf16();

private:
    QString write(const QByteArray &bytes) const;

    QTemporaryDir folder;
};

QString TestItemReader::write(const QByteArray &bytes) const
{
    const QString path = folder.filePath(QStringLiteral("calls.txt"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("a test file cannot be written");
    return path;
}

void TestItemReader::takesAFileApart_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<QByteArray>>("entries");
    QTest::addColumn<QList<int>>("lines");
    const QByteArray begin("BEGIN:VCALLHISTENTRY\r\n");
    const QByteArray end("END:VCALLHISTENTRY\r\n");
    QTest::newRow("empty") << QByteArray() << QList<QByteArray>() << QList<int>();
    QTest::newRow("text") << QByteArray("a\nb") << QList<QByteArray>() << QList<int>();
    QTest::newRow("two") << begin + "TEL:1\r\n" + end + begin + end
                         << QList<QByteArray>{begin + "TEL:1\r\n" + end, begin + end}
                         << QList<int>{1, 4};
    QTest::newRow("text-around") << "a\n\n" + begin + end + "b\n" + begin + end + "c"
                                 << QList<QByteArray>{begin + end, begin + end} << QList<int>{3, 6};
    QTest::newRow("no-end") << begin + "TEL:1\r\n" + begin + end + begin
                            << QList<QByteArray>{begin + "TEL:1\r\n", begin + end, begin}
                            << QList<int>{1, 3, 5};
    QTest::newRow("no-begin") << "TEL:1\r\n" + end + begin + end
                              << QList<QByteArray>{end, begin + end} << QList<int>{2, 3};
    QTest::newRow("no-last-line-end")
        << begin + "END:VCALLHISTENTRY" << QList<QByteArray>{begin + "END:VCALLHISTENTRY"}
        << QList<int>{1};
    QTest::newRow("case-and-blanks")
        << QByteArray(" begin:vcallhistentry \nend:vcallhistentry\n")
        << QList<QByteArray>{" begin:vcallhistentry \nend:vcallhistentry\n"} << QList<int>{1};
}

void TestItemReader::takesAFileApart()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QByteArray>, entries);
    QFETCH(QList<int>, lines);
    ItemReader reader(write(bytes));
    QList<QByteArray> foundEntries;
    QList<int> foundLines;
    while (const auto entry = reader.next()) {
        foundEntries += entry->bytes;
        foundLines += static_cast<int>(entry->line);
    }
    QCOMPARE(foundEntries, entries);
    QCOMPARE(foundLines, lines);
    QCOMPARE(reader.error().english, QString());
    QCOMPARE(reader.bytesRead(), qint64(bytes.size()));
}

// The file is read in pieces of 64 KiB.
void TestItemReader::readsOnAcrossPieces()
{
    const QByteArray entry("BEGIN:VCALLHISTENTRY\r\nTEL:1\r\nEND:VCALLHISTENTRY\r\n");
    for (int shift = 0; shift < entry.size(); ++shift) {
        const QByteArray filling = QByteArray(65536 - shift - 1, 'x') + '\n';
        ItemReader reader(write(filling + entry + entry));
        const auto first = reader.next();
        const auto second = reader.next();
        QVERIFY(first && second && !reader.next());
        QCOMPARE(first->bytes, entry);
        QCOMPARE(first->line, quint64(2));
        QCOMPARE(second->bytes, entry);
        QCOMPARE(second->line, quint64(5));
    }
}

static QList<QByteArray> mixedItems()
{
    return {"<sms body=\"a > b <sms \" date='1' />",
            "BEGIN:VMSG\r\nBEGIN:VBODY\r\n<call \r\nEND:VBODY\r\nEND:VMSG\r\n",
            "<mms a=\"</mms>\"><!-- </mms> --><part text='</mms>' /></mms>",
            "<call number=\"\nBEGIN:VMSG\n\" />",
            "BEGIN:VCALLHISTENTRY\nTEL:1\nEND:VCALLHISTENTRY\n",
            "BEGIN:BMSG\r\n<sms />\r\nEND:BMSG\r\n",
            "<sms broken=\"\"no\"",
            "<mms date=\"1\" />",
            "BEGIN:VMSG\nEND:VMSG\n"};
}

static QList<QByteArray> itemsOf(ItemReader &reader)
{
    QList<QByteArray> items;
    while (const auto item = reader.next())
        items += item->bytes;
    return items;
}

// The file is read in pieces of 64 KiB.
void TestItemReader::findsMixedItemsWhereverPiecesEnd()
{
    const QByteArray all = mixedItems().join("\n# <sms a:1: sms-parse: that's the reason\n");
    for (int shift = 0; shift < all.size(); ++shift) {
        ItemReader reader(write(QByteArray(65536 - shift - 1, 'x') + '\n' + all));
        QCOMPARE(itemsOf(reader), mixedItems());
    }
}

void TestItemReader::findsMessagesWhereverPiecesEnd_data()
{
    QTest::addColumn<QList<QByteArray>>("parts");
    const QByteArray own("BEGIN:VMSG\r\nBEGIN:VBODY\r\nX-SMS:one\nEND:VBODY\nEND:VENV\nEND:VMSG\n\n"
                         "\xF0\x9F\x98\x80\r\nEND:VBODY\r\nEND:VMSG\r\n");
    const QByteArray phone("BEGIN:VMSG\nBEGIN:VBODY\ntwo\nEND:VBODY\nEND:VENV\nEND:VMSG\n");
    const QByteArray unended = own.left(own.size() - 2);
    QTest::newRow("own") << QList<QByteArray>{own, own};
    QTest::newRow("lf") << QList<QByteArray>{QByteArray(phone).replace("two", "one"), phone};
    QTest::newRow("joined") << QList<QByteArray>{unended, unended, phone};
    QTest::newRow("joined-with-signs-between")
        << QList<QByteArray>{unended + " ", "\x1A\xEF\xBB\xBF" + unended, phone};
    QTest::newRow("cut") << QList<QByteArray>{own.left(own.size() / 2) + "\r\n",
                                              own.left(own.size() - 4)};
}

// The file is read in pieces of 64 KiB.
void TestItemReader::findsMessagesWhereverPiecesEnd()
{
    QFETCH(QList<QByteArray>, parts);
    const QByteArray all = parts.join();
    for (int shift = 0; shift < all.size(); ++shift) {
        ItemReader reader(write(QByteArray(65536 - shift - 1, 'x') + '\n' + all));
        QCOMPARE(itemsOf(reader), parts);
    }
}

void TestItemReader::findsWhatIsWholeBeforeACut()
{
    const QByteArray separator("\n# a:1: sms-parse: reason\n");
    const QByteArray all = mixedItems().join(separator);
    for (int length = 0; length < all.size(); ++length) {
        ItemReader reader(write(all.left(length)));
        const QList<QByteArray> items = itemsOf(reader);
        int end = 0;
        int whole = 0;
        for (const QByteArray &item : mixedItems()) {
            end += static_cast<int>(item.size());
            if (end <= length)
                ++whole;
            end += static_cast<int>(separator.size());
        }
        QCOMPARE(items.mid(0, whole), mixedItems().mid(0, whole));
        QVERIFY(items.size() <= whole + 2); // the cut one, and what seems to begin in it
    }
}

static const QByteArray entry("BEGIN:VCALLHISTENTRY\nTEL:1\nEND:VCALLHISTENTRY\n");

void TestItemReader::endsACutItemAtTheNextReason_data()
{
    QTest::addColumn<QByteArray>("cut");
    QTest::newRow("element-name") << QByteArray("<sms");
    QTest::newRow("element-value") << QByteArray("<sms body=\"it's");
    QTest::newRow("element-content") << QByteArray("<mms><parts><part");
    QTest::newRow("entry") << QByteArray("BEGIN:VCALLHISTENTRY\r\nTEL:1");
    QTest::newRow("foreign") << QByteArray("BEGIN:VNOTE\r\nBODY:1");
    QTest::newRow("message-header") << QByteArray("BEGIN:VMSG\r\nVERSION:1.1");
    QTest::newRow("message-body") << QByteArray("BEGIN:VMSG\r\nBEGIN:VBODY\r\nX-SMS:a\nb");
}

// A file of rejects has the reason between any two items, with an apostrophe as it may be.
void TestItemReader::endsACutItemAtTheNextReason()
{
    QFETCH(QByteArray, cut);
    const QByteArray reason("\r\n# it's a file.xml:12: bad-time: the clock's time\r\n");
    const QByteArray message("BEGIN:VMSG\r\nBEGIN:VBODY\r\nX-SMS:c\r\nEND:VBODY\r\nEND:VMSG\r\n");
    for (const QByteArray &next : {QByteArray("<sms body='d' />"), entry, message}) {
        ItemReader reader(write(cut + reason + next + reason + next));
        const QList<QByteArray> items = itemsOf(reader);
        QCOMPARE(items.size(), 3);
        QCOMPARE(items.at(0).trimmed(), cut);
        QCOMPARE(items.at(1), next);
        QCOMPARE(items.at(2), next);
    }
}

void TestItemReader::findsEntriesBehindACutMessage()
{
    const QByteArray message(
        "BEGIN:VMSG\r\nVERSION:1.1\r\nBEGIN:VBODY\r\nX-SMS:c\r\nEND:VBODY\r\n");
    const QByteArray crLfEntry = QByteArray(entry).replace("\n", "\r\n");
    for (const int length : {12, 20, 40, 58}) {
        const QByteArray cut = message.left(length) + "\r\n";
        ItemReader reader(write(cut + crLfEntry.repeated(3) + message + "END:VMSG\r\n" + entry));
        const QList<QByteArray> expected{
            cut, crLfEntry, crLfEntry, crLfEntry, message + "END:VMSG\r\n", entry};
        QCOMPARE(itemsOf(reader), expected);
    }
    ItemReader many(write("BEGIN:VMSG\nVERSION:1.1\n" + entry.repeated(1000000)));
    QCOMPARE(itemsOf(many).size(), 1000001);
}

void TestItemReader::readsAgainWhatBeginsInABrokenItem_data()
{
    QTest::addColumn<QList<QByteArray>>("items");
    QTest::newRow("zero-in-a-tag") << QList<QByteArray>{
        QByteArray("<sms \0", 6), QByteArray("<sms \0", 6), "<sms body='a' />"};
    QTest::newRow("open-comments") << QList<QByteArray>{
        "<mms><!--", "<mms><!--", "<sms body='<mms>' />", "<mms><!-- a", "<sms body='b' />"};
    QTest::newRow("open-comment-and-section") << QList<QByteArray>{
        "<mms><!--", "<mms><![CDATA[", "<mms><!-- ]]>", "<mms />", "<mms><![CDATA["};
    QTest::newRow("values-and-contents") << QList<QByteArray>{"<mms><a b=\"", "<mms>\" ><a b=\"",
                                                              "<mms>\" ><a b='", "<sms c=\"d\" />"};
    const QByteArray open("BEGIN:VMSG\r\nBEGIN:VBODY\r\nX-SMS:a\n");
    const QByteArray note("BEGIN:VNOTE\r\n");
    QTest::newRow("messages-with-objects")
        << QList<QByteArray>{"BEGIN:VMSG\r\n", note + "BEGIN:VBODY\r\nX-SMS:a\n", "BEGIN:VMSG\r\n",
                             note + "BEGIN:VBODY\r\nX-SMS:a\n", open + "b"};
}

void TestItemReader::readsAgainWhatBeginsInABrokenItem()
{
    QFETCH(QList<QByteArray>, items);
    ItemReader reader(write(items.join()));
    QCOMPARE(itemsOf(reader), items);
}

void TestItemReader::takesWhatATextSaysForText()
{
    const QByteArray end("\r\nEND:VBODY\r\nEND:VMSG\r\n");
    const QByteArray own = "BEGIN:VMSG\r\nBEGIN:VBODY\r\nX-SMS:a\n# a:1: bad-time: b\n" + entry
        + "# a:1: bad-time: b" + end;
    const QByteArray other = "BEGIN:VMSG\r\nBEGIN:VBODY\r\nTEXT:a\r\nBEGIN:VCALLHISTENTRY" + end;
    const QList<QByteArray> messages{own, other, own};
    ItemReader reader(write(messages.join()));
    QCOMPARE(itemsOf(reader), messages);
}

void TestItemReader::keepsNoItemThatIsTooLong()
{
    QByteArray lines;
    for (int i = 0; i < 6000000; ++i)
        lines += "TEL:1\n";
    ItemReader reader(write("BEGIN:VCALLHISTENTRY\n" + lines + entry));
    const auto first = reader.next();
    const auto second = reader.next();
    QVERIFY(first && second && !reader.next());
    QVERIFY(first->isTooLong);
    QCOMPARE(first->bytes, QByteArray());
    QCOMPARE(second->bytes, entry);
    QCOMPARE(second->line, quint64(6000002));
    QCOMPARE(reader.error().english, QString());
}

void TestItemReader::tellsWhereAMessageBeginsThatIsTooLong()
{
    const QByteArray lines = QByteArray("TEL:1\n").repeated(6000000);
    ItemReader reader(write("BEGIN:VMSG\nVERSION:1.1\nBEGIN:VMSG\n" + lines));
    const auto cut = reader.next();
    const auto tooLong = reader.next();
    QVERIFY(cut && tooLong);
    QCOMPARE(cut->line, quint64(1));
    QVERIFY(tooLong->isTooLong);
    QCOMPARE(tooLong->line, quint64(3));
}

void TestItemReader::readsUtf16()
{
    QByteArray wide("\xFF\xFE");
    for (const char c : QByteArray("BEGIN:VCALLHISTENTRY\nEND:VCALLHISTENTRY\n"))
        wide += QByteArray(1, c) + '\0';
    ItemReader reader(write(wide));
    const auto entry = reader.next();
    QVERIFY(entry);
    QCOMPARE(entry->bytes, QByteArray("BEGIN:VCALLHISTENTRY\nEND:VCALLHISTENTRY\n"));
}

QTEST_GUILESS_MAIN(TestItemReader)
#include "tst_itemreader.moc"
