// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "shared/number.h"

#include <QtTest/QTest>

// Which texts are several numbers.
class TestNumber : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tellsJoinedNumbers_data();
    void tellsJoinedNumbers();
    void tellsAnyNumberOfThem();
};

void TestNumber::tellsJoinedNumbers_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QStringList>("numbers");
    const auto row = [](const char *name, const char *number, const char *numbers) {
        QTest::newRow(name) << QString::fromLatin1(number)
                            << QString::fromLatin1(numbers).split(QLatin1Char('|'));
    };
    row("one", "+15550100", "+15550100");
    row("word", "InfoPost", "InfoPost");
    row("nothing", "", "");
    row("tilde", "+15550100~+15550101", "+15550100|+15550101");
    row("semicolon", "+15550100;+15550101", "+15550100|+15550101");
    row("comma and blank", "+15550100, +15550101", "+15550100| +15550101");
    row("three", "5550100~5550101,5550102", "5550100|5550101|5550102");
    row("several signs", "5550100~;,5550101", "5550100|5550101");
    row("the same twice", "5550100~5550100", "5550100|5550100");
    row("sign at the end", "5550100~5550101~~", "5550100|5550101");
    row("one with a sign at the end", "5550100~", "5550100~");
    row("sign at the beginning", "~5550100~5550101", "~5550100~5550101");
    row("signs alone", "~~~", "~~~");
    row("written out", "+1 (555) 01-00~1/555.0101", "+1 (555) 01-00|1/555.0101");
    row("as short as can be", "12345~67890", "12345|67890");
    row("code behind a pause", "5550100,1234", "5550100,1234");
    row("code before a pause", "1234,5550100", "1234,5550100");
    row("digits behind signs", "5550100~++++1234", "5550100~++++1234");
    row("no digits", "5550100~-----", "5550100~-----");
    row("number and word", "5550100~InfoPost", "5550100~InfoPost");
    row("star", "5550100~*100#55", "5550100~*100#55");
}

void TestNumber::tellsJoinedNumbers()
{
    QFETCH(QString, number);
    QTEST(Number::joined(number), "numbers");
}

void TestNumber::tellsAnyNumberOfThem()
{
    constexpr int count = 200000;
    QStringList numbers;
    for (int i = 0; i < count; ++i)
        numbers += QString::number(5550100 + i);
    QCOMPARE(Number::joined(numbers.join(QLatin1Char('~'))), numbers);
    numbers += QStringLiteral("x");
    QCOMPARE(Number::joined(numbers.join(QLatin1Char('~'))).size(), 1);
}

QTEST_GUILESS_MAIN(TestNumber)
#include "tst_number.moc"
