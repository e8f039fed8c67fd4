// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "shared/number.h"
#include "store/duplicateindex.h"

#include <QtTest/QTest>

#include <malloc.h>

class TestDuplicateIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheTailOfANumberAndAllOfAWord_data();
    void takesTheTailOfANumberAndAllOfAWord();
    void undoesWordsThatWereTakenForLatin1();
    void tellsMessagesApart();
    void takesSpellingsOfOneTextForOne();
    void tellsWhatAnExportLoses();
    void matchesTheNthWithTheNth();
    void countsAnewInEachFile();
    void costsLessThanAHundredBytesAnItem();
};

static Fingerprint print(const char *number = "+15550100", int folder = 4098, int second = 0,
                         const char *body = "Hello")
{
    return Fingerprint::of(folder, QString::fromUtf8(number),
                           QDateTime(QDate(2010, 11, 3), QTime(14, 25, second), Qt::UTC),
                           QString::fromUtf8(body));
}

void TestDuplicateIndex::takesTheTailOfANumberAndAllOfAWord_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("comparable");
    const auto row = [](const char *number, const char *comparable) {
        QTest::newRow(number) << QString::fromUtf8(number) << QString::fromUtf8(comparable);
    };
    row("+15550100", "5550100");
    row("+358 (0)40 555-0100", "5550100");
    row("5550100", "5550100");
    row("112", "112");
    row("InfoPost", "InfoPost");
    row("Bank24", "Bank24");
    row("*#*", "*#*");
    row("٥٥٥٠١٠٠", "5550100");
    row("Ba\u0308nk", "B\u00E4nk");
    row("", "");
}

void TestDuplicateIndex::takesTheTailOfANumberAndAllOfAWord()
{
    QFETCH(QString, number);
    QFETCH(QString, comparable);
    QCOMPARE(Number::comparable(number), comparable);
}

void TestDuplicateIndex::undoesWordsThatWereTakenForLatin1()
{
    QCOMPARE(Number::asMeant(QStringLiteral("B\u00C3\u00A4nk")), QStringLiteral("B\u00E4nk"));
    QCOMPARE(Number::asMeant(QStringLiteral("B\u00E4nk")), QStringLiteral("B\u00E4nk"));
    QCOMPARE(Number::asMeant(QStringLiteral("\u0411\u0430\u043D\u043A")),
             QStringLiteral("\u0411\u0430\u043D\u043A"));
    QCOMPARE(Number::asMeant(QStringLiteral("+15550100")), QStringLiteral("+15550100"));
}

void TestDuplicateIndex::tellsMessagesApart()
{
    QVERIFY(print() == print("15550100"));
    QVERIFY(!(print() == print("+15550101")));
    QVERIFY(!(print() == print("+15550100", 4101)));
    QVERIFY(!(print() == print("+15550100", 4098, 1)));
    QVERIFY(!(print() == print("+15550100", 4098, 0, "hello")));
}

void TestDuplicateIndex::takesSpellingsOfOneTextForOne()
{
    const Fingerprint expected = print("+15550100", 4098, 0, "B\u00E4r\n\nDachs");
    QVERIFY(print("+15550100", 4098, 0, "B\u00E4r\r\n\r\nDachs") == expected);
    QVERIFY(print("+15550100", 4098, 0, "B\u00E4r\r\rDachs") == expected);
    QVERIFY(print("+15550100", 4098, 0, "Ba\u0308r\n\nDachs") == expected);
    QVERIFY(!(print("+15550100", 4098, 0, "B\u00E4r\nDachs") == expected));
    QVERIFY(!(print("+15550100", 4098, 0, "Bar\n\nDachs") == expected));
}

void TestDuplicateIndex::tellsWhatAnExportLoses()
{
    const QDateTime time(QDate(2010, 11, 3), QTime(14, 25), Qt::UTC);
    const auto lossy = [&](int folder, const QString &number, const QString &body) {
        return Fingerprint::ofLossyExport(folder, number, time, body);
    };
    const QString number = QStringLiteral("+15550100");
    const QString replaced = QStringLiteral("a\uFFFDb");
    const QString emoji = QString::fromUtf8("\xF0\x9F\x98\x80\t\r\n");
    QVERIFY(!lossy(KorvaSyncIf::LocInbox, number, emoji));
    QVERIFY(!lossy(KorvaSyncIf::LocSent, number, replaced));
    const auto exported = Fingerprint::ofExport(KorvaSyncIf::LocInbox, number, time, replaced);
    for (const int code : {0x0, 0x7, 0x1B, 0xD800, 0xDC00, 0xFFFE, 0xFFFF}) {
        const QString body = QStringLiteral("a") + QChar(code) + QStringLiteral("b");
        QVERIFY(lossy(KorvaSyncIf::LocInbox, number, body) == exported);
        QVERIFY(lossy(KorvaSyncIf::LocMyFolder, number, body) == exported);
        QVERIFY(!(lossy(KorvaSyncIf::LocSent, number, body) == exported));
    }
    // In the backup it is another message than one of the store that says the same.
    QVERIFY(!(exported == Fingerprint::of(KorvaSyncIf::LocInbox, number, time, replaced)));

    Call call;
    call.type = QStringLiteral("missed");
    call.start = time;
    call.number = QStringLiteral("Bank\u0007");
    const auto exportedCall = Fingerprint::ofLossyExport(call);
    call.number = QStringLiteral("Bank\uFFFD");
    QVERIFY(exportedCall == Fingerprint::ofExport(call));
    QVERIFY(!Fingerprint::ofLossyExport(call));
}

void TestDuplicateIndex::matchesTheNthWithTheNth()
{
    DuplicateIndex index;
    index.addStored(print(), 7);
    index.addStored(print(), 9);
    index.addStored(print("+15550101"), 8);
    index.addStored(print(), 3);
    QCOMPARE(index.storedCount(print()), 3);
    QCOMPARE(index.storedId(print(), 1), 7);
    QCOMPARE(index.storedId(print(), 2), 9);
    QCOMPARE(index.storedId(print(), 3), 3);
    QCOMPARE(index.storedCount(print("+15550102")), 0);
}

void TestDuplicateIndex::countsAnewInEachFile()
{
    DuplicateIndex index;
    index.beginFile();
    QCOMPARE(index.countInFile(print()), 1);
    QCOMPARE(index.countInFile(print()), 2);
    QCOMPARE(index.countInFile(print("+15550101")), 1);
    index.beginFile();
    QCOMPARE(index.countInFile(print()), 1);
}

// What is counted in a file stands beside what is stored, not in a table of its own.
void TestDuplicateIndex::costsLessThanAHundredBytesAnItem()
{
    const auto itemNumber = [](quint64 i) {
        return Fingerprint{i, i * Q_UINT64_C(0x9E3779B97F4A7C15)};
    };
    const auto allocated = [] {
        const auto info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    for (const unsigned int count : {100000U, 500000U}) {
        const size_t before = allocated();
        DuplicateIndex index;
        index.beginFile();
        for (unsigned int i = 0; i < count; ++i)
            index.addStored(itemNumber(i), static_cast<int>(i));
        for (unsigned int i = 0; i < count; ++i)
            QCOMPARE(index.countInFile(itemNumber(i)), 1);
        const auto each = static_cast<int>((allocated() - before) / count);
        QVERIFY2(each < 100, QByteArray::number(each).constData());
    }
}

QTEST_GUILESS_MAIN(TestDuplicateIndex)
#include "tst_duplicateindex.moc"
