// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Call-history entries as sync clients get them.

#include "callsyncinterface_p.h"
#include "platformfixture.h"

#include <korvasync/pendingmsgs.h>

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

CallInfo callWith(const QString &number, const QDateTime &dateTime)
{
    CallInfo call;
    call.type = QStringLiteral("outgoing");
    call.number = number;
    call.duration = 65;
    call.dateTime = dateTime;
    return call;
}

QString encoded(const CallInfo &call)
{
    PlatformFixture platform;
    return PendingMsgs(&platform.parent).encodeCallSyncMsgs(call);
}

} // namespace

class TestCallHistoryEncoding : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anEntryIsWritten();
    void millisecondsHaveNoLeadingZeros_data();
    void millisecondsHaveNoLeadingZeros();
    void theTimeIsWrittenInItsOwnZone();
    void aNullTimeIsWrittenAsNothing();
    void timesBefore1970AreWritten();
    void durationsAreWrittenInDecimal_data();
    void durationsAreWrittenInDecimal();
    void valuesAreWrittenAsTheyStand();
    void whatIsWrittenReadsBackWithoutItsTime();
};

void TestCallHistoryEncoding::anEntryIsWritten()
{
    CallInfo call =
        callWith(QStringLiteral("555"), QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30, 7)));
    call.id = 4711;
    QCOMPARE(encoded(call),
             QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:outgoing\r\nTEL:555\r\nDURATION:65\r\n"
                            "CALL-DATETIME:20101103T1425307\r\nEND:VCALLHISTENTRY\r\n"));
    QCOMPARE(encoded(CallInfo()),
             QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:\r\nTEL:\r\nDURATION:0\r\n"
                            "CALL-DATETIME:\r\nEND:VCALLHISTENTRY\r\n"));
}

void TestCallHistoryEncoding::millisecondsHaveNoLeadingZeros_data()
{
    QTest::addColumn<int>("msec");
    QTest::addColumn<QString>("line");
    QTest::newRow("0") << 0 << QStringLiteral("\r\nCALL-DATETIME:20101103T1425300\r\n");
    QTest::newRow("7") << 7 << QStringLiteral("\r\nCALL-DATETIME:20101103T1425307\r\n");
    QTest::newRow("70") << 70 << QStringLiteral("\r\nCALL-DATETIME:20101103T14253070\r\n");
    QTest::newRow("250") << 250 << QStringLiteral("\r\nCALL-DATETIME:20101103T142530250\r\n");
    QTest::newRow("999") << 999 << QStringLiteral("\r\nCALL-DATETIME:20101103T142530999\r\n");
}

void TestCallHistoryEncoding::millisecondsHaveNoLeadingZeros()
{
    QFETCH(int, msec);
    QFETCH(QString, line);
    const QDateTime time(QDate(2010, 11, 3), QTime(14, 25, 30, msec));
    const QString entry = encoded(callWith(QStringLiteral("555"), time));
    QVERIFY2(entry.contains(line), qPrintable(entry));
}

void TestCallHistoryEncoding::theTimeIsWrittenInItsOwnZone()
{
    const QDate date(2010, 11, 3);
    const QTime time(4, 5, 6);
    const QString line = QStringLiteral("\r\nCALL-DATETIME:20101103T0405060\r\n");
    for (const QDateTime &dateTime : {QDateTime(date, time), QDateTime(date, time, Qt::UTC),
                                      QDateTime(date, time, Qt::OffsetFromUTC, 20700)})
        QVERIFY(encoded(callWith(QStringLiteral("555"), dateTime)).contains(line));
}

void TestCallHistoryEncoding::aNullTimeIsWrittenAsNothing()
{
    QCOMPARE(encoded(callWith(QStringLiteral("555"), QDateTime())),
             QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:outgoing\r\nTEL:555\r\nDURATION:65\r\n"
                            "CALL-DATETIME:\r\nEND:VCALLHISTENTRY\r\n"));
}

void TestCallHistoryEncoding::timesBefore1970AreWritten()
{
    const QDateTime time(QDate(1965, 2, 3), QTime(23, 59, 59, 999), Qt::UTC);
    QVERIFY(encoded(callWith(QStringLiteral("555"), time))
                .contains(QStringLiteral("\r\nCALL-DATETIME:19650203T235959999\r\n")));
}

void TestCallHistoryEncoding::durationsAreWrittenInDecimal_data()
{
    QTest::addColumn<int>("duration");
    QTest::addColumn<QString>("line");
    QTest::newRow("zero") << 0 << QStringLiteral("\r\nDURATION:0\r\n");
    QTest::newRow("negative") << -65 << QStringLiteral("\r\nDURATION:-65\r\n");
    QTest::newRow("greatest") << 2147483647 << QStringLiteral("\r\nDURATION:2147483647\r\n");
    QTest::newRow("least") << -2147483647 - 1 << QStringLiteral("\r\nDURATION:-2147483648\r\n");
}

void TestCallHistoryEncoding::durationsAreWrittenInDecimal()
{
    QFETCH(int, duration);
    QFETCH(QString, line);
    CallInfo call;
    call.duration = duration;
    QVERIFY(encoded(call).contains(line));
}

void TestCallHistoryEncoding::valuesAreWrittenAsTheyStand()
{
    CallInfo call = callWith(QStringLiteral(" 1:2\r\nEND:X\0%1😀;\\ "), QDateTime());
    call.type = QStringLiteral("a kind of its own\n");
    QCOMPARE(encoded(call),
             QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:a kind of its own\n\r\n"
                            "TEL: 1:2\r\nEND:X\0%1😀;\\ \r\nDURATION:65\r\n"
                            "CALL-DATETIME:\r\nEND:VCALLHISTENTRY\r\n"));
}

// Sync clients know both forms and turn one into the other.
void TestCallHistoryEncoding::whatIsWrittenReadsBackWithoutItsTime()
{
    for (const int msec : {0, 7, 250, 999}) {
        const QDateTime time(QDate(2010, 11, 3), QTime(14, 25, 30, msec));
        CallSyncInterfacePrivate parser;
        const CallInfo call =
            parser.parseCallSyncMsg(encoded(callWith(QStringLiteral("555"), time)));
        QCOMPARE(int(parser.lastError), 0);
        QCOMPARE(call.type, QStringLiteral("outgoing"));
        QCOMPARE(call.number, QStringLiteral("555"));
        QCOMPARE(call.duration, 65);
        QVERIFY(!call.dateTime.isValid());
    }
}

QTEST_GUILESS_MAIN(TestCallHistoryEncoding)
#include "tst_callhistoryencoding.moc"
