// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messages/number.h"
#include "store/duplicateindex.h"

#include <QtTest/QTest>

class TestDuplicateIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheTailOfANumberAndAllOfAWord_data();
    void takesTheTailOfANumberAndAllOfAWord();
    void undoesWordsThatWereTakenForLatin1();
    void tellsMessagesApart();
    void matchesTheNthWithTheNth();
    void countsAnewInEachFile();
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

void TestDuplicateIndex::matchesTheNthWithTheNth()
{
    DuplicateIndex index;
    index.addStored(print(), 7);
    index.addStored(print(), 9);
    index.addStored(print("+15550101"), 8);
    QCOMPARE(index.storedCount(print()), 2);
    QCOMPARE(index.storedId(print(), 1), 7);
    QCOMPARE(index.storedId(print(), 2), 9);
    QCOMPARE(index.storedCount(print("+15550102")), 0);
    QVERIFY(index.hasStored(print(), 9));
    QVERIFY(!index.hasStored(print(), 8));
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

QTEST_GUILESS_MAIN(TestDuplicateIndex)
#include "tst_duplicateindex.moc"
