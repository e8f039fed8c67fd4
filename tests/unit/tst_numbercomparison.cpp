// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What of a number decides which conversation it belongs to.

#include "messagelog.h"
#include "syncstorageif/syncstorageif_p.h"

#include <commhistory/phonenumber.h>

#include <QtTest/QTest>

using namespace KorvaSyncIf;

class TestNumberComparison : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void numbersAreComparedByTheirTail_data();
    void numbersAreComparedByTheirTail();
    void punctuationStaysUnlessItIsToGo();
    void theTraceOfANumberNamesItAndTheMatchLength();
};

void TestNumberComparison::numbersAreComparedByTheirTail_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("normalized");
    const auto row = [](const char *number, const char *normalized) {
        QTest::newRow(number) << QString::fromLatin1(number) << QString::fromLatin1(normalized);
    };
    row("123456789012", "6789012"); // twelve digits
    row("+1 (555) 010-0123", "0100123");
    row("15550100123", "0100123");
    row("1234567", "1234567");
    row("12345678", "2345678");
    row("112", "112");
    row("Bank24", "Bank24"); // normalises to nothing
    row("", "");
    row("+", "+");
    const auto wide = [](const char *name, const QString &number, const QString &normalized) {
        QTest::newRow(name) << number << normalized;
    };
    wide("arabic-digits", QStringLiteral("+\u0661\u0665\u0665\u0665\u0660\u0661\u0660\u0660"),
         QStringLiteral("5550100"));
    wide("full-width", QStringLiteral("\uFF0B\uFF11\uFF15\uFF15\uFF15\uFF10\uFF11\uFF10\uFF10"),
         QStringLiteral("5550100"));
    wide("wide-punctuation", QStringLiteral("555\u2011\u00A00100\u2013"),
         QStringLiteral("5550100"));
    wide("punctuation-alone", QStringLiteral("\u2013"), QStringLiteral("\u2013"));
    wide("wide-letter", QStringLiteral("5550100\u00E9"), QStringLiteral("5550100\u00E9"));
    wide("emoji", QStringLiteral("5550100\U0001F600"), QStringLiteral("5550100\U0001F600"));
}

void TestNumberComparison::numbersAreComparedByTheirTail()
{
    QFETCH(QString, number);
    QFETCH(QString, normalized);
    QCOMPARE(SyncStorageIfPrivate::normalizedNumber(number), normalized);
}

void TestNumberComparison::punctuationStaysUnlessItIsToGo()
{
    using namespace CommHistory;
    const auto number = QStringLiteral("+1 (555)\u20110100");
    QCOMPARE(normalizePhoneNumber(number, NormalizeFlagNone), number);
    QCOMPARE(normalizePhoneNumber(number, NormalizeFlagRemovePunctuation),
             QStringLiteral("15550100"));
    QCOMPARE(normalizePhoneNumber(QStringLiteral("555a"), NormalizeFlagNone), QString());
}

void TestNumberComparison::theTraceOfANumberNamesItAndTheMatchLength()
{
    MessageLog log;
    SyncStorageIfPrivate::normalizedNumber(QStringLiteral("+15550100"));
    QCOMPARE(log.lines(QtDebugMsg),
             QStringList(
                 QStringLiteral("normalized phn number \"5550100\" phone number match length 7")));
    log.clear();
    SyncStorageIfPrivate::normalizedNumber(QStringLiteral("Bank"));
    QVERIFY(log.lines(QtDebugMsg).isEmpty());
}

QTEST_GUILESS_MAIN(TestNumberComparison)
#include "tst_numbercomparison.moc"
