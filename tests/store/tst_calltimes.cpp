// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The times of calls in the call log of the real store.

#include "callloghelpers.h"
#include "timezone.h"

using namespace CallLog;
using namespace KorvaSyncIf;

//! Each function begins with an empty call log.
class TestCallTimes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void aCallThatWasReadIsAddedWithoutItsTime();
    void anOutgoingCallComesBackWithItsStart();
    void anOutgoingCallComesBackWithItsStartBeforeAClockChange();
    void everyHalfHourComesBack_data();
    void everyHalfHourComesBack();
    void aMomentIsReadInTheReadersZone();
    void callsWithoutTimeComeBack();
    void callsBefore1970ComeBack();
};

namespace {

QString stamp(const QDate &day, int minute)
{
    return day.addDays(minute / 1440).toString(QStringLiteral("yyyyMMdd"))
        + QStringLiteral("T%1%2")
              .arg(minute % 1440 / 60, 2, 10, QLatin1Char('0'))
              .arg(minute % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

void TestCallTimes::init()
{
    QVERIFY(StoreTesting::makeStore());
    QVERIFY(CallSyncInterface(nullptr).deleteAllCalls());
}

void TestCallTimes::aCallThatWasReadIsAddedWithoutItsTime()
{
    add({incoming(QStringLiteral("1"), QStringLiteral("20260301T120000"), 7)});
    const QStringList got = read();
    QCOMPARE(got,
             QStringList(incoming(QStringLiteral("1"), QStringLiteral("20260301T1200000"), 7)));
    QCOMPARE(add(got), QStringLiteral("added 0"));
    QVERIFY(read().contains(incoming(QStringLiteral("1"), QString(), 7)));
}

void TestCallTimes::anOutgoingCallComesBackWithItsStart()
{
    add({outgoing(QStringLiteral("1"), QStringLiteral("20260301T120100"), 60),
         incoming(QStringLiteral("2"), QStringLiteral("20260301T120200"), 60)});
    QCOMPARE(read(),
             (QStringList{incoming(QStringLiteral("2"), QStringLiteral("20260301T1202000"), 60),
                          outgoing(QStringLiteral("1"), QStringLiteral("20260301T1200000"), 60)}));
}

void TestCallTimes::anOutgoingCallComesBackWithItsStartBeforeAClockChange()
{
    const TimeZone zone("America/St_Johns");
    // In the spring the clock jumps from 02:00 to 03:00, in the autumn back to 01:00.
    add({outgoing(QStringLiteral("1"), QStringLiteral("20260308T031500"), 1800),
         outgoing(QStringLiteral("2"), QStringLiteral("20261101T021500"), 7200)});
    QCOMPARE(
        read(),
        (QStringList{outgoing(QStringLiteral("2"), QStringLiteral("20261101T0115000"), 7200),
                     outgoing(QStringLiteral("1"), QStringLiteral("20260308T0145000"), 1800)}));
}

// A clock reading that is skipped or comes twice is no moment; these alone are left out.
void TestCallTimes::everyHalfHourComesBack_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<int>("leftOutFrom"); // minute of the day
    QTest::addColumn<int>("leftOutTo");   // not included
    const auto row = [](const char *zone, const QDate &day, int from = 0, int to = 0) {
        QTest::addRow("%s-%d-%d", zone, day.year(), day.month())
            << QByteArray(zone) << day << from << to;
    };
    row("Asia/Kathmandu", {2026, 3, 1});
    row("Asia/Kathmandu", {1986, 1, 1}, 0, 15);
    row("Asia/Kolkata", {2026, 3, 1});
    row("Pacific/Marquesas", {2026, 3, 1});
    row("America/St_Johns", {2026, 3, 8}, 120, 180);
    row("America/St_Johns", {2026, 11, 1}, 60, 120);
    row("Australia/Lord_Howe", {2026, 10, 4}, 120, 150);
    row("Australia/Lord_Howe", {2026, 4, 5}, 90, 120);
    row("Australia/Adelaide", {2026, 10, 4}, 120, 180);
    row("Australia/Adelaide", {2026, 4, 5}, 120, 180);
    row("Pacific/Chatham", {2026, 9, 27}, 165, 225);
    row("Pacific/Chatham", {2026, 4, 5}, 165, 225);
    row("America/Caracas", {2016, 5, 1}, 150, 180);
    row("America/Caracas", {2007, 12, 9}, 150, 180);
    row("Europe/Helsinki", {2026, 3, 29}, 180, 240);
    row("UTC", {2026, 3, 29});
}

void TestCallTimes::everyHalfHourComesBack()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDate, day);
    QFETCH(int, leftOutFrom);
    QFETCH(int, leftOutTo);
    const TimeZone here(zone);
    QStringList given;
    QStringList expected;
    // From the day before to the day after.
    for (int minute = -1440; minute < 2880; minute += 30) {
        if (minute >= leftOutFrom && minute < leftOutTo)
            continue;
        const QString time = stamp(day.addDays(-1), minute + 1440);
        given.append(incoming(QStringLiteral("1"), time + QStringLiteral("30Z"), 45));
        expected.prepend(incoming(QStringLiteral("1"), time + QStringLiteral("300"), 45));
    }
    QVERIFY(add(given).startsWith(QLatin1String("added ")));
    const QStringList got = read();
    QCOMPARE(int(got.size()), int(expected.size()));
    for (int i = 0; i < got.size(); ++i)
        QCOMPARE(got.at(i), expected.at(i));
}

void TestCallTimes::aMomentIsReadInTheReadersZone()
{
    {
        const TimeZone zone("Asia/Kathmandu");
        add({missed(QStringLiteral("1"), QStringLiteral("20260301T001500"))});
    }
    const TimeZone zone("America/St_Johns");
    QCOMPARE(read(), QStringList(missed(QStringLiteral("1"), QStringLiteral("20260228T1500000"))));
}

// A missing end counts as the last second that 32 bits hold.
void TestCallTimes::callsWithoutTimeComeBack()
{
    const TimeZone zone("UTC");
    QCOMPARE(add({QString(), incoming(QStringLiteral("1"), QString(), 30),
                  outgoing(QStringLiteral("2"), QStringLiteral("soon"), 31)}),
             QStringLiteral("added 0 0 0"));
    const QStringList expected{
        outgoing(QString(), QStringLiteral("21060207T0628150"), 0),
        incoming(QStringLiteral("1"), QString(), 30),
        outgoing(QStringLiteral("2"), QStringLiteral("21060207T0627440"), 31)};
    QCOMPARE(read(), expected);
    QCOMPARE(read(AllCalls, QDateTime(QDate(2026, 3, 1), QTime(0, 0))), expected);
}

void TestCallTimes::callsBefore1970ComeBack()
{
    const TimeZone zone("UTC");
    add({incoming(QStringLiteral("1"), QStringLiteral("19601103T142530"), 30),
         outgoing(QStringLiteral("2"), QStringLiteral("19601103T142530"), 31),
         incoming(QStringLiteral("3"), QStringLiteral("19700101T000010"), 60)});
    QCOMPARE(read(),
             (QStringList{incoming(QStringLiteral("1"), QStringLiteral("19601103T1425300"), 30),
                          outgoing(QStringLiteral("2"), QStringLiteral("21060207T0627440"), 31),
                          incoming(QStringLiteral("3"), QStringLiteral("19700101T0000100"), 60)}));
}

STORE_TEST_MAIN(TestCallTimes)
#include "tst_calltimes.moc"
