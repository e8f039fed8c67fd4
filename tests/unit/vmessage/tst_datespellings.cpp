// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <vmessage/datelines.h>
#include <vmessage/datespellings.h>

#include <QtTest/QTest>

namespace {

std::string_view view(const QByteArray &text) { return {text.constData(), size_t(text.size())}; }

// "2010-11-3 14:25:30", then "+" where a fraction was left out, then the zone's seconds.
QByteArray rendered(const std::optional<DateSpellings::Date> &date)
{
    if (!date)
        return "no time";
    const auto text = [](int number) { return QByteArray::number(number); };
    return text(date->year) + '-' + text(date->month) + '-' + text(date->day) + ' '
        + text(date->hour) + ':' + text(date->minute) + ':' + text(date->second)
        + (date->hasFraction ? "+" : "") + ' '
        + (date->offset ? text(*date->offset) : QByteArray("local"));
}

// The value that a line of a body has as a date.
QByteArray dateOf(const QByteArray &line)
{
    const auto date = DateLines::dateOf(view(line));
    return date ? QByteArray(date->data(), int(date->size())) : QByteArray("a text");
}

} // namespace

class TestDateSpellings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsAndReadsEverySpelling_data();
    void tellsAndReadsEverySpelling();
    void tellsWhatIsNoTimeForADate_data();
    void tellsWhatIsNoTimeForADate();
    void takesNoTextForADate_data();
    void takesNoTextForADate();
    void readsCounts_data();
    void readsCounts();
    void tellsCountsFromNumbersInATextByTheirDigits();
};

void TestDateSpellings::tellsAndReadsEverySpelling_data()
{
    QTest::addColumn<QByteArray>("date");
    const auto row = [](const char *text, const char *date) {
        QTest::newRow(text) << QByteArray(date);
    };
    row("20101103T142530Z", "2010-11-3 14:25:30 0");
    row("20101103T142530", "2010-11-3 14:25:30 local");
    row("20101103t142530 +0200", "2010-11-3 14:25:30 7200");
    row("03.11.2010 14:25:30", "2010-11-3 14:25:30 local");
    row("3.1.2010 4:5:3", "2010-1-3 4:5:3 local");
    row("03.11.2010 14:5:30", "2010-11-3 14:5:30 local");
    row("03.11.2010 14:25", "2010-11-3 14:25:0 local");
    row("03.11.2010   14:25:30", "2010-11-3 14:25:30 local");
    row("03-11-2010 14:25:30", "2010-11-3 14:25:30 local");
    row("2010/11/03 14:25:30", "2010-11-3 14:25:30 local");
    row("2010/11/03 24:05:30", "2010-11-3 0:5:30 local");
    row("2010/11/03 14:25:30 GMT", "2010-11-3 14:25:30 0");
    row("2010/11/03T14:25:30", "2010-11-3 14:25:30 local");
    row("2010/11/03.14.25.30", "2010-11-3 14:25:30 local");
    row("2010-11-03 14:25:30", "2010-11-3 14:25:30 local");
    row("2010-11-03T14:25:30", "2010-11-3 14:25:30 local");
    row("2010-11-03T14:25:30.250Z", "2010-11-3 14:25:30+ 0");
    row("2010-11-03T14:25:30.000Z", "2010-11-3 14:25:30 0");
    row("2010-11-03T14:25:30.", "2010-11-3 14:25:30 local");
    row("2010-11-03T14:25:30.1234567890123456789Z", "2010-11-3 14:25:30+ 0");
    row("2010-11-03T14:25:30-05:30", "2010-11-3 14:25:30 -19800");
    row("2010-11-3.14.25.30", "2010-11-3 14:25:30 local");
    row("2010.11.3.14.25.30", "2010-11-3 14:25:30 local");
    row("2010.11.3.14.25.30Z", "2010-11-3 14:25:30 0");
    row("2010.11.3.14.25", "2010-11-3 14:25:0 local");
    row("2010.11.3.14.25.30.5", "2010-11-3 14:25:30+ local");
    row("2010.11.03 14:25:30", "2010-11-3 14:25:30 local");
    row("2010.11.03T14:25:30", "2010-11-3 14:25:30 local");
    row("02:25PM, 2010 Nov 03", "2010-11-3 14:25:0 local");
    row("2:25 pm 2010 nov 3 UTC", "2010-11-3 14:25:0 0");
    row("2:5PM, 2010 Nov 3", "2010-11-3 14:5:0 local");
    row("12:05AM, 2010 Nov 03", "2010-11-3 0:5:0 local");
    row("12:05PM, 2010 Nov 03", "2010-11-3 12:5:0 local");
    row("Wed, 03 Nov 2010 14:25:30 +0900", "2010-11-3 14:25:30 32400");
    row("Wed 3 Nov 2010 14:25", "2010-11-3 14:25:0 local");
    row("3 Nov 2010 14:25:30 -0130", "2010-11-3 14:25:30 -5400");
    row("03Nov2010 14:25:30 UT", "2010-11-3 14:25:30 0");
    row("31.12.2010 23:59:60 Z", "2010-12-31 23:59:59 0");
}

void TestDateSpellings::tellsAndReadsEverySpelling()
{
    const QByteArray text = QTest::currentDataTag();
    QFETCH(QByteArray, date);
    QVERIFY(DateSpellings::isDate(view(text)));
    QCOMPARE(rendered(DateSpellings::readDate(view(text))), date);
    QCOMPARE(dateOf("Date:" + text), text);
    QCOMPARE(dateOf("DATE : " + text + " \r"), text);
}

void TestDateSpellings::tellsWhatIsNoTimeForADate_data()
{
    QTest::addColumn<QByteArray>("date");
    const auto row = [](const char *text, const char *date) {
        QTest::newRow(text) << QByteArray(date);
    };
    row("19700000T000000Z", "1970-0-0 0:0:0 0"); // the calendar is the reader's
    row("31.13.2010 14:25:30", "2010-13-31 14:25:30 local");
    row("03.11.2010 25:25:30", "no time");
    row("03.11.2010 14:60:30", "no time");
    row("03.11.2010 14:25:61", "no time");
    row("03.11.2010 14:25:30 +2400", "no time");
    row("03.11.2010 14:25:30 +0060", "no time");
    row("13:05PM, 2010 Nov 03", "no time");
    row("00:05AM, 2010 Nov 03", "no time");
}

void TestDateSpellings::tellsWhatIsNoTimeForADate()
{
    const QByteArray text = QTest::currentDataTag();
    QFETCH(QByteArray, date);
    QVERIFY(DateSpellings::isDate(view(text)));
    QCOMPARE(rendered(DateSpellings::readDate(view(text))), date);
    QCOMPARE(dateOf("Date:" + text), text);
}

void TestDateSpellings::takesNoTextForADate_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"soon",
                             "03.11.2010",
                             "03.11-2010 14:25:30",
                             "03/11/2010 14:25:30",
                             "3.11.10 14:25:30",
                             "03.11.2010 14",
                             "03.11.2010 14:25:30 later",
                             "03.11.2010 14:25:30Zulu",
                             "03.11.2010 14:25:",
                             "03.11.2010 14:25:30 +9",
                             "03.11.2010T14:25:30",
                             "2010-1103 14:25:30",
                             "2010.11.3.14:25:30",
                             "20101103 142530",
                             "2010113T142530Z",
                             "20101103T14253Z",

                             "02:25PM, 2010 Foo 03",
                             "02:25, 2010 Nov 03",
                             "Wed, 03 Nov 10 14:25:30",
                             "Wed, 03 Nov 2010",
                             "Midweek, 03 Nov 2010 14:25:30",
                             "3. Nov 2010 14:25",
                             "\xD9\xA3.11.2010 14:25:30"})
        QTest::newRow(text) << QByteArray(text);
}

void TestDateSpellings::takesNoTextForADate()
{
    QFETCH(QByteArray, text);
    QVERIFY(!DateSpellings::isDate(view(text)));
    QCOMPARE(rendered(DateSpellings::readDate(view(text))), QByteArray("no time"));
    QCOMPARE(dateOf("Date:" + text), QByteArray("a text"));
}

void TestDateSpellings::readsCounts_data()
{
    QTest::addColumn<qint64>("seconds");
    const auto row = [](const char *text, qint64 seconds) { QTest::newRow(text) << seconds; };
    row("1288794330", 1288794330);
    row("1288794330999", 1288794330);
    row("1", 1);
    row("0001", 1);
    row("99999999999", 99999999999);
    row("100000000000", 100000000);
    row("99999999999999", 99999999999);
    row("100000000000000", -1);
    row("99999999999999999999999999", -1);
    row("0", -1);
    row("-1", -1);
    row("+1", -1);
    row("1 ", -1);
    row("12x", -1);
}

void TestDateSpellings::readsCounts()
{
    const QByteArray text = QTest::currentDataTag();
    QFETCH(qint64, seconds);
    QCOMPARE(qint64(DateSpellings::readCount(view(text)).value_or(-1)), seconds);
    QVERIFY(!DateSpellings::readCount({}));
}

// A person who writes "Date: 2010" means no count.
void TestDateSpellings::tellsCountsFromNumbersInATextByTheirDigits()
{
    QCOMPARE(dateOf("Date:12345678"), QByteArray("a text"));
    QCOMPARE(dateOf("Date:123456789"), QByteArray("123456789"));
    QCOMPARE(dateOf("Date:1288794330000"), QByteArray("1288794330000"));
    QCOMPARE(dateOf("Date:0"), QByteArray("0"));
    QCOMPARE(dateOf("Date:"), QByteArray(""));
    QCOMPARE(dateOf("Date 12345678901"), QByteArray("a text"));
    QCOMPARE(dateOf("Date 123456789012"), QByteArray("123456789012"));
    QCOMPARE(dateOf("Date123456789012"), QByteArray("a text"));
    QCOMPARE(dateOf("Date 03.11.2010 14:25:30"), QByteArray("a text"));
}

QTEST_GUILESS_MAIN(TestDateSpellings)
#include "tst_datespellings.moc"
