// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/datetext.h"

#include <vmessage/messagetime.h>

#include <QtTest/QTest>

//! In Qt 5 a zone alone cannot be a column.
struct Zone
{
    QTimeZone zone;
};
Q_DECLARE_METATYPE(Zone)

class TestDateText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheSpellingsOfMessageFiles_data();
    void readsTheSpellingsOfMessageFiles();
    void refusesWhatIsNoTime_data();
    void refusesWhatIsNoTime();
    void readsTimesOfTheCommandLine_data();
    void readsTimesOfTheCommandLine();
    void readsTimesThatTheClockDecides_data();
    void readsTimesThatTheClockDecides();
    void showsTimesAsTheClocksOfAZoneDo_data();
    void showsTimesAsTheClocksOfAZoneDo();
    void takesTheFirstOfTwoEqualLocalTimes();
    void movesLocalTimesOutOfAGap();
    void agreesWithQtAllYearRound();

private:
    const QTimeZone helsinki{"Europe/Helsinki"};
};

static QDateTime clockAt(const char *utc)
{
    return QDateTime::fromString(QString::fromLatin1(utc), Qt::ISODate);
}

void TestDateText::readsTheSpellingsOfMessageFiles_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("utc");
    const auto row = [](const char *text, const char *utc) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(utc);
    };
    row("20101103T142530Z", "2010-11-03T14:25:30Z");
    row("20101103T142530", "2010-11-03T12:25:30Z");
    row("03.11.2010 14:25:30", "2010-11-03T12:25:30Z");
    row("03-11-2010 14:25:30", "2010-11-03T12:25:30Z");
    row("03.07.2010 14:25:30", "2010-07-03T11:25:30Z");
    row("2010/11/03 14:25:30", "2010-11-03T12:25:30Z");
    row("2010/11/03 24:05:30", "2010-11-02T22:05:30Z");
    row("2010/11/03 14:25:30 GMT", "2010-11-03T14:25:30Z");
    row("2010-11-03T14:25:30", "2010-11-03T12:25:30Z");
    row("2010-11-03T14:25:30Z", "2010-11-03T14:25:30Z");
    row("2010.11.3.14.25.30", "2010-11-03T12:25:30Z");
    row("2010.11.3.14.25.30Z", "2010-11-03T14:25:30Z");
    row("2010.1.3.4.5.6", "2010-01-03T02:05:06Z");
    row("02:25PM, 2010 Nov 03", "2010-11-03T12:25:00Z");
    row("12:05AM, 2010 Nov 03", "2010-11-02T22:05:00Z");
    row("12:05PM, 2010 Nov 03", "2010-11-03T10:05:00Z");
    row("1288794330000", "2010-11-03T14:25:30Z");
    row("1288794330999", "2010-11-03T14:25:30Z");
    row("1288794330", "2010-11-03T14:25:30Z");
    row("Wed, 03 Nov 2010 14:25:30 +0900", "2010-11-03T05:25:30Z");
    row("3 Nov 2010 14:25:30 -0130", "2010-11-03T15:55:30Z");
    row("Wed, 03 Nov 2010 14:25:30 GMT", "2010-11-03T14:25:30Z");
    row("  03.11.2010 14:25:30 ", "2010-11-03T12:25:30Z");
    row("03.11.2010 14:5:3", "2010-11-03T12:05:03Z");
    row("2010-11-03t14:25:30z", "2010-11-03T14:25:30Z");
    row("2010/11/03T14:25:30.", "2010-11-03T12:25:30Z");
    row("20101231T235960Z", "2010-12-31T23:59:59Z");
    row("99999999999", "5138-11-16T09:46:39Z");
    row("100000000000", "1973-03-03T09:46:40Z");
}

void TestDateText::readsTheSpellingsOfMessageFiles()
{
    QFETCH(QString, text);
    QFETCH(QString, utc);
    QCOMPARE(DateText::write(DateText::readMessageTime(text, helsinki)), utc);
}

void TestDateText::refusesWhatIsNoTime_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"",
                             " ",
                             "19700000T000000Z",
                             "01.01.1970 00:00:00",
                             "soon",
                             "03.13.2010 14:25:30",
                             "31.04.2010 14:25:30",
                             "03.11.2010",
                             "03.11.2010 25:25:30",
                             "03.11-2010 14:25:30",
                             "2010/11/03 14:61:30",
                             "20101103T142530Zulu",
                             "20101103T142530Z later",
                             "13:05PM, 2010 Nov 03",
                             "02:25PM, 2010 Foo 03",
                             "-1288794330",
                             "99999999999999999999999999",
                             "100000000000000",
                             "0",
                             "29.02.2010 14:25:30",
                             "0000-11-03 14:25:30",
                             "03.11.2010 14:25:30 +2400",
                             "03.11.2010 14:25:30 +0060",
                             "00:25PM, 2010 Nov 03",
                             "03.11.2010 14:25:61",
                             "3. November 2010"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestDateText::refusesWhatIsNoTime()
{
    QFETCH(QString, text);
    QVERIFY(DateText::readMessageTime(text, helsinki).isNull());
}

void TestDateText::readsTimesOfTheCommandLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("utc");
    const auto row = [](const char *text, const char *utc) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(utc);
    };
    row("2024-05-01T10:00:00Z", "2024-05-01T10:00:00Z");
    row("2024-05-01T10:00:00.000Z", "2024-05-01T10:00:00Z");
    row("2024-05-01T10:00:00.250Z", "2024-05-01T10:00:01Z");
    row("2024-05-01T10:00:00+02:00", "2024-05-01T08:00:00Z");
    row("2024-05-01", "2024-04-30T21:00:00Z");
    row("2024-01-01", "2023-12-31T22:00:00Z");
    row("@1714557600", "2024-05-01T10:00:00Z");
    row("@0", "1970-01-01T00:00:00Z");
    row("@-1", "1969-12-31T23:59:59Z");
    row("1970-01-01T00:00:00Z", "1970-01-01T00:00:00Z");
    row("2024-05-01T10:00:00", "");
    row("2024-02-30", "");
    row("2024/05/01", "");
    row("01.05.2024", "");
    row("2024-05-01 10:00:00Z", "2024-05-01T10:00:00Z");
    row("2024-05-01t10:00:00z", "2024-05-01T10:00:00Z");
    row("1-5-2024 10:00:00Z", "");
    row("01-05-2024 10:00:00Z", "");
    row("20240501T100000Z", "");
    row("Wed, 01 May 2024 10:00:00 GMT", "");
    row("@", "");
    row("@100000000001", "");
    row("", "");
}

void TestDateText::readsTimesOfTheCommandLine()
{
    QFETCH(QString, text);
    QFETCH(QString, utc);
    QCOMPARE(DateText::write(DateText::readOption(text, helsinki, clockAt("2024-05-01T10:00:00Z"))),
             utc);
}

void TestDateText::readsTimesThatTheClockDecides_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("utc");
    const auto row = [](const char *name, const char *text, const char *zone, const char *now,
                        const char *utc) {
        QTest::newRow(name) << QString::fromLatin1(text) << QByteArray(zone) << clockAt(now)
                            << QString::fromLatin1(utc);
    };
    const char *const berlin = "Europe/Berlin";
    row("minutes", "30m", berlin, "2024-05-01T10:00:00Z", "2024-05-01T09:30:00Z");
    row("hours", "12h", berlin, "2024-05-01T10:00:00Z", "2024-04-30T22:00:00Z");
    row("days", "7d", berlin, "2024-05-01T10:00:00Z", "2024-04-24T10:00:00Z");
    row("weeks", "2w", berlin, "2024-05-01T10:00:00Z", "2024-04-17T10:00:00Z");
    row("none", "0d", berlin, "2024-05-01T10:00:00Z", "2024-05-01T10:00:00Z");
    row("many", "20000d", berlin, "2024-05-01T10:00:00Z", "1969-07-29T10:00:00Z");
    row("days-over-a-change", "7d", berlin, "2024-04-03T10:00:00Z", "2024-03-27T10:00:00Z");
    row("today", "today", berlin, "2024-05-01T10:00:00Z", "2024-04-30T22:00:00Z");
    row("yesterday", "yesterday", berlin, "2024-05-01T10:00:00Z", "2024-04-29T22:00:00Z");
    row("already-tomorrow", "today", berlin, "2024-05-01T22:00:00Z", "2024-05-01T22:00:00Z");
    row("not-yet-tomorrow", "today", berlin, "2024-05-01T21:59:59Z", "2024-04-30T22:00:00Z");
    row("west", "today", "America/New_York", "2024-05-01T03:00:00Z", "2024-04-30T04:00:00Z");
    row("spring-today", "today", berlin, "2024-03-31T10:00:00Z", "2024-03-30T23:00:00Z");
    row("spring-yesterday", "yesterday", berlin, "2024-04-01T10:00:00Z", "2024-03-30T23:00:00Z");
    row("autumn-today", "today", berlin, "2024-10-27T10:00:00Z", "2024-10-26T22:00:00Z");
    row("autumn-yesterday", "yesterday", berlin, "2024-10-28T10:00:00Z", "2024-10-26T22:00:00Z");
    row("no-midnight", "today", "America/Sao_Paulo", "2018-11-04T12:00:00Z",
        "2018-11-04T03:00:00Z");
    row("year", "yesterday", "UTC", "2024-01-01T00:00:00Z", "2023-12-31T00:00:00Z");
    for (const char *text : {"7",
                             "d",
                             "-7d",
                             "+7d",
                             "7 d",
                             " 7d",
                             "7D",
                             "7dd",
                             "7s",
                             "7y",
                             "1.5h",
                             "1h30m",
                             "0x7d",
                             "1e3m",
                             "tomorrow",
                             "Today",
                             "now",
                             "165344w",
                             "9223372036854775808m",
                             "153722867280912931m",
                             "@7d"})
        row(text, text, berlin, "2024-05-01T10:00:00Z", "");
    QTest::newRow("other-digits") << QString::fromUtf8("\u0667d") << QByteArray(berlin)
                                  << clockAt("2024-05-01T10:00:00Z") << QString();
}

void TestDateText::readsTimesThatTheClockDecides()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, now);
    QFETCH(QString, utc);
    QCOMPARE(DateText::write(DateText::readOption(text, QTimeZone(zone), now)), utc);
}

void TestDateText::showsTimesAsTheClocksOfAZoneDo_data()
{
    QTest::addColumn<Zone>("zone");
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const QTimeZone &zone, const char *utc,
                        const char *shown) {
        QTest::newRow(name) << Zone{zone} << clockAt(utc) << QString::fromLatin1(shown);
    };
    const QTimeZone berlin("Europe/Berlin");
    row("summer", berlin, "2024-05-01T08:00:00Z", "2024-05-01 10:00:00+02:00");
    row("winter", berlin, "2024-01-01T23:30:05Z", "2024-01-02 00:30:05+01:00");
    row("first-of-two", berlin, "2024-10-27T00:30:00Z", "2024-10-27 02:30:00+02:00");
    row("second-of-two", berlin, "2024-10-27T01:30:00Z", "2024-10-27 02:30:00+01:00");
    row("west", QTimeZone("America/New_York"), "2024-05-01T03:00:00Z", "2024-04-30 23:00:00-04:00");
    row("less-than-an-hour-west", QTimeZone(-1800), "2024-05-01T00:00:00Z",
        "2024-04-30 23:30:00-00:30");
    row("quarters", QTimeZone("Asia/Kathmandu"), "2024-05-01T08:00:00Z",
        "2024-05-01 13:45:00+05:45");
    row("seconds", QTimeZone(3661), "2024-05-01T08:00:00Z", "2024-05-01 09:01:01+01:01:01");
    row("seconds-west", QTimeZone(-3661), "2024-05-01T08:00:00Z", "2024-05-01 06:58:59-01:01:01");
    row("utc", QTimeZone::utc(), "2024-05-01T08:00:00Z", "2024-05-01 08:00:00+00:00");
    QTest::newRow("none") << Zone{berlin} << QDateTime() << QString();
}

void TestDateText::showsTimesAsTheClocksOfAZoneDo()
{
    QFETCH(Zone, zone);
    QFETCH(QDateTime, time);
    QFETCH(QString, shown);
    QCOMPARE(DateText::writeIn(zone.zone, time), shown);
}

void TestDateText::takesTheFirstOfTwoEqualLocalTimes()
{
    const QDateTime utc = MessageTime::toUtc(QDate(2010, 10, 31), QTime(3, 30), helsinki);
    QCOMPARE(DateText::write(utc), QStringLiteral("2010-10-31T00:30:00Z"));
}

void TestDateText::movesLocalTimesOutOfAGap()
{
    const QDateTime utc = MessageTime::toUtc(QDate(2010, 3, 28), QTime(3, 30), helsinki);
    QCOMPARE(DateText::write(utc), QStringLiteral("2010-03-28T01:30:00Z"));
}

void TestDateText::agreesWithQtAllYearRound()
{
    for (const char *id : {"Europe/Helsinki", "America/New_York", "Asia/Kathmandu"}) {
        const QTimeZone zone(id);
        QDateTime utc(QDate(2010, 1, 1), QTime(0, 0), Qt::UTC);
        for (; utc.date().year() == 2010; utc = utc.addSecs(30 * 60)) {
            const QDateTime local = utc.toTimeZone(zone);
            const QDateTime again = MessageTime::toUtc(local.date(), local.time(), zone);
            // Only the second of two equal times of the clock is taken for the first.
            if (again != utc)
                QCOMPARE(again.toTimeZone(zone).time(), local.time());
            QVERIFY(again == utc || again == utc.addSecs(-3600));
        }
    }
}

QTEST_GUILESS_MAIN(TestDateText)
#include "tst_datetext.moc"
