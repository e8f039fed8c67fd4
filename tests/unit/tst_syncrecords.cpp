// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"

#include <korvasync/syncrecords.h>

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

const QDateTime sentTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);
const QDateTime changeTime(QDate(2011, 2, 1), QTime(6, 0, 1), Qt::UTC);

//! A record in which no field has its default value.
SmsInfo fullRecord()
{
    SmsInfo info;
    info.id = 17;
    info.parentId = LocSent;
    info.groupId = 5;
    info.fromNumber = QStringLiteral("+15550100");
    info.toNumber = QStringLiteral("+15550101");
    info.body = QStringLiteral("See you at six");
    info.time = sentTime;
    info.modifiedTime = changeTime;
    info.readStatus = QStringLiteral("READ");
    info.charset = QStringLiteral("UTF-8");
    info.encoding = QStringLiteral("8BIT");
    info.language = QStringLiteral("en");
    info.folderName = QStringLiteral("SENT");
    info.messageToken = QStringLiteral("token-1");
    info.refId = 3;
    return info;
}

void compareWithFullRecord(const SmsInfo &info)
{
    QCOMPARE(info.id, 17);
    QCOMPARE(info.parentId, 4101);
    QCOMPARE(info.groupId, 5);
    QCOMPARE(info.fromNumber, QStringLiteral("+15550100"));
    QCOMPARE(info.toNumber, QStringLiteral("+15550101"));
    QCOMPARE(info.body, QStringLiteral("See you at six"));
    QCOMPARE(info.time, sentTime);
    QCOMPARE(info.modifiedTime, changeTime);
    QCOMPARE(info.readStatus, QStringLiteral("READ"));
    QCOMPARE(info.charset, QStringLiteral("UTF-8"));
    QCOMPARE(info.encoding, QStringLiteral("8BIT"));
    QCOMPARE(info.language, QStringLiteral("en"));
    QCOMPARE(info.folderName, QStringLiteral("SENT"));
    QCOMPARE(info.messageToken, QStringLiteral("token-1"));
    QCOMPARE(info.refId, 3);
}

} // namespace

class TestSyncRecords : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void codesHaveTheirValues();
    void smsInfoStartsWithItsDefaults();
    void smsInfoIsCopiedFieldByField();
    void smsInfoCopiedOntoItselfIsUnchanged();
    void printOfADefaultSmsInfo();
    void printShowsTheMainFieldsOnOneDebugLine();
    void printShowsTheTimeInUnsignedSeconds_data();
    void printShowsTheTimeInUnsignedSeconds();
    void syncSmsInfoStartsWithItsDefaultsAndIsCopied();
    void callInfoStartsWithItsDefaultsAndIsCopied();
};

void TestSyncRecords::codesHaveTheirValues()
{
    QCOMPARE(int(LocInbox), 4098);
    QCOMPARE(int(LocOutbox), 4099);
    QCOMPARE(int(LocDrafts), 4100);
    QCOMPARE(int(LocSent), 4101);
    QCOMPARE(int(LocMyFolder), 4104);
    QCOMPARE(int(IncomingCall), 0);
    QCOMPARE(int(OutgoingCall), 1);
    QCOMPARE(int(MissedCall), 2);
    QCOMPARE(int(SmsSync), 0);
    QCOMPARE(int(CallSync), 1);
    QCOMPARE(int(GroupIdNotFound), 0);
    QCOMPARE(int(SmsNoError), 0);
    QCOMPARE(int(SmsParseError), 1);
    QCOMPARE(int(SmsDraftNotAllowed), 2);
    QCOMPARE(int(SmsNoVCard), 3);
    QCOMPARE(int(SmsInvalidId), 4);
    QCOMPARE(int(SmsNoParentId), 5);
    QCOMPARE(int(SmsDatabaseError), 6);
    QCOMPARE(int(SmsDeleteFailed), 7);
    QCOMPARE(int(SmsZeroMessagesPassed), 8);
    QCOMPARE(int(CallNoError), 0);
    QCOMPARE(int(CallParseError), 1);
    for (const size_t size : {sizeof(LocationId), sizeof(CallType), sizeof(SyncType),
                              sizeof(ErrorCause), sizeof(SMSSyncError), sizeof(CallSyncError)})
        QCOMPARE(size, sizeof(int));
}

void TestSyncRecords::smsInfoStartsWithItsDefaults()
{
    const SmsInfo info;
    QCOMPARE(info.id, -1);
    QCOMPARE(info.parentId, 0);
    QCOMPARE(info.groupId, -1);
    QCOMPARE(info.refId, -1);
    for (const QString &text :
         {info.fromNumber, info.toNumber, info.body, info.readStatus, info.charset, info.encoding,
          info.language, info.folderName, info.messageToken})
        QVERIFY(text.isEmpty());
    QVERIFY(info.time.isNull());
    QVERIFY(info.modifiedTime.isNull());
}

void TestSyncRecords::smsInfoIsCopiedFieldByField()
{
    const SmsInfo original = fullRecord();
    compareWithFullRecord(SmsInfo(original));

    SmsInfo assigned;
    QCOMPARE(&(assigned = original), &assigned);
    compareWithFullRecord(assigned);

    SmsInfo copied;
    copied.copy(original);
    compareWithFullRecord(copied);
}

void TestSyncRecords::smsInfoCopiedOntoItselfIsUnchanged()
{
    SmsInfo info = fullRecord();
    info.copy(info);
    compareWithFullRecord(info);
    SmsInfo &alias = info;
    info = alias;
    compareWithFullRecord(info);
}

void TestSyncRecords::printOfADefaultSmsInfo()
{
    MessageLog log;
    SmsInfo().print();
    QCOMPARE(log.lines(QtDebugMsg),
             QStringList(QStringLiteral(
                 "Id ==  -1  |  ParentId ==  0  |  Body ==  \"\"  |  Time ==  4294967295  |  "
                 "charset ==  \"\" | encoding ==  \"\" | language ==  \"\" | folderName ==  \"\" "
                 "| messageToken ==  \"\"")));
}

void TestSyncRecords::printShowsTheMainFieldsOnOneDebugLine()
{
    MessageLog log;
    fullRecord().print();
    QCOMPARE(log.lines(QtDebugMsg),
             QStringList(QStringLiteral(
                 "Id ==  17  |  ParentId ==  4101  |  Body ==  \"See you at six\"  |  "
                 "Time ==  1288794330  |  charset ==  \"UTF-8\" | encoding ==  \"8BIT\" | "
                 "language ==  \"en\" | folderName ==  \"SENT\" | messageToken ==  \"token-1\"")));
}

void TestSyncRecords::printShowsTheTimeInUnsignedSeconds_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("printed");
    const auto utc = [](int year, int month, int day, QTime time) {
        return QDateTime(QDate(year, month, day), time, Qt::UTC);
    };
    QTest::newRow("epoch") << utc(1970, 1, 1, QTime(0, 0)) << QStringLiteral("0");
    QTest::newRow("before-epoch") << utc(1969, 12, 31, QTime(23, 59, 59))
                                  << QStringLiteral("4294967295");
    QTest::newRow("beyond-31-bits")
        << utc(2038, 1, 19, QTime(3, 14, 8)) << QStringLiteral("2147483648");
    QTest::newRow("last-of-32-bits")
        << utc(2106, 2, 7, QTime(6, 28, 15)) << QStringLiteral("4294967295");
    QTest::newRow("beyond-32-bits")
        << utc(2106, 2, 7, QTime(6, 28, 16)) << QStringLiteral("4294967295");
}

void TestSyncRecords::printShowsTheTimeInUnsignedSeconds()
{
    QFETCH(QDateTime, time);
    QFETCH(QString, printed);
    MessageLog log;
    SmsInfo info;
    info.time = time;
    info.print();
    QVERIFY(log.lines(QtDebugMsg).value(0).contains(QStringLiteral("Time ==  %1  |").arg(printed)));
}

void TestSyncRecords::syncSmsInfoStartsWithItsDefaultsAndIsCopied()
{
    SyncSmsInfo info;
    QCOMPARE(info.id, -1);
    QCOMPARE(info.parentId, -1);
    QVERIFY(info.time.isNull());
    QVERIFY(info.vMessage.isEmpty());
    QVERIFY(info.messageToken.isEmpty());

    info = {8, 4098, QStringLiteral("20101103T142530Z"), QStringLiteral("BEGIN:VMSG"),
            QStringLiteral("token-2")};
    const SyncSmsInfo copy = info;
    QCOMPARE(copy.id, 8);
    QCOMPARE(copy.parentId, 4098);
    QCOMPARE(copy.time, QStringLiteral("20101103T142530Z"));
    QCOMPARE(copy.vMessage, QStringLiteral("BEGIN:VMSG"));
    QCOMPARE(copy.messageToken, QStringLiteral("token-2"));
}

void TestSyncRecords::callInfoStartsWithItsDefaultsAndIsCopied()
{
    CallInfo info;
    QCOMPARE(info.id, 0);
    QVERIFY(info.type.isEmpty());
    QVERIFY(info.number.isEmpty());
    QCOMPARE(info.duration, 0);
    QVERIFY(info.dateTime.isNull());

    info = {4, QStringLiteral("missed"), QStringLiteral("+15550100"), 61, sentTime};
    const CallInfo copy = info;
    QCOMPARE(copy.id, 4);
    QCOMPARE(copy.type, QStringLiteral("missed"));
    QCOMPARE(copy.number, QStringLiteral("+15550100"));
    QCOMPARE(copy.duration, 61);
    QCOMPARE(copy.dateTime, sentTime);
}

QTEST_GUILESS_MAIN(TestSyncRecords)
#include "tst_syncrecords.moc"
