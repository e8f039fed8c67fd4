// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"
#include "samplerecords.h"
#include "syncstorageif/syncstorageif_p.h"
#include "timezone.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace KorvaSyncIf;
using CommHistory::Event;

namespace {

const auto account = QStringLiteral("/org/freedesktop/Telepathy/Account/ring/tel/ring");

Event eventOf(const SmsInfo &info, bool forModify = false)
{
    Event event;
    SyncStorageIfPrivate::constructSmsEvent(info, event, forModify);
    return event;
}

Event eventOf(const CallInfo &info)
{
    Event event;
    SyncStorageIfPrivate::constructCallEvent(info, event);
    return event;
}

SmsInfo recordOf(const Event &event, bool useModifiedTime = false)
{
    SmsInfo info;
    SyncStorageIfPrivate::fillSmsInfo(event, info, useModifiedTime);
    return info;
}

QDateTime utc(int hour, int minute, int second = 0)
{
    return QDateTime(QDate(2010, 11, 3), QTime(hour, minute, second), Qt::UTC);
}

} // namespace

class TestEventMapping : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theFolderDecidesTheOtherParty_data();
    void theFolderDecidesTheOtherParty();
    void theFolderDecidesDirectionAndStatus_data();
    void theFolderDecidesDirectionAndStatus();
    void aDraftIsStoredAsInboundWithTheRecipient();
    void onlyUpperCaseReadMarksAnEventRead_data();
    void onlyUpperCaseReadMarksAnEventRead();
    void aNewMessageWritesItsFields();
    void aModifiedMessageKeepsItsStoredTimes();
    void aStoredMessageIsReadBack();
    void theFolderDecidesNumberAndTimeOnRead_data();
    void theFolderDecidesNumberAndTimeOnRead();
    void theModifiedTimeIsTheTimeWhateverTheFolder_data();
    void theModifiedTimeIsTheTimeWhateverTheFolder();
    void whatIsReadLeavesTheOtherFields();
    void aMissingTimeStaysMissing();
    void theTraceOfAReadMessageIsOneLine();
    void theTypeDecidesTheCallsDirection_data();
    void theTypeDecidesTheCallsDirection();
    void aCallStartsItsDurationBeforeItsEnd();
    void fractionsOfASecondAreDroppedFromTheStart();
    void aCallWithoutTimeCountsFromTheUnsignedNothing();
    void aCallWritesNoMoreThanItsFields();
    void aStoredCallIsReadBack_data();
    void aStoredCallIsReadBack();
    void eventListsKeepOrderAndFillTheReferences();
    void callListsKeepOrderAndFillTheReferences();
};

void TestEventMapping::theFolderDecidesTheOtherParty_data()
{
    QTest::addColumn<int>("parentId");
    QTest::addColumn<bool>("outbound");
    QTest::newRow("inbox") << 4098 << false;
    QTest::newRow("outbox") << 4099 << true;
    QTest::newRow("drafts") << 4100 << true;
    QTest::newRow("sent") << 4101 << true;
    QTest::newRow("4102") << 4102 << false;
    QTest::newRow("own") << 4104 << false;
    QTest::newRow("4097") << 4097 << false;
    QTest::newRow("none") << 0 << false;
    QTest::newRow("negative") << -1 << false;
}

void TestEventMapping::theFolderDecidesTheOtherParty()
{
    QFETCH(int, parentId);
    QFETCH(bool, outbound);
    SmsInfo info;
    info.parentId = parentId;
    info.fromNumber = QStringLiteral("456");
    info.toNumber = QStringLiteral("123");
    QCOMPARE(SyncStorageIfPrivate::isOutboundEvent(info), outbound);
    const QString remote = outbound ? QStringLiteral("123") : QStringLiteral("456");
    QCOMPARE(SyncStorageIfPrivate::getRemoteId(info), remote);
    QCOMPARE(eventOf(info).remoteUid(), remote);
}

void TestEventMapping::theFolderDecidesDirectionAndStatus_data()
{
    QTest::addColumn<int>("parentId");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("status"); // -1: not set
    QTest::newRow("inbox") << 4098 << 1 << -1;
    QTest::newRow("outbox") << 4099 << 2 << 1;
    QTest::newRow("drafts") << 4100 << 1 << -1;
    QTest::newRow("sent") << 4101 << 2 << 2;
    QTest::newRow("4102") << 4102 << 1 << -1;
    QTest::newRow("own") << 4104 << 1 << -1;
    QTest::newRow("none") << 0 << 1 << -1;
}

void TestEventMapping::theFolderDecidesDirectionAndStatus()
{
    QFETCH(int, parentId);
    QFETCH(int, direction);
    QFETCH(int, status);
    SmsInfo info;
    info.parentId = parentId;
    for (const bool forModify : {false, true}) {
        const Event event = eventOf(info, forModify);
        QCOMPARE(int(event.direction()), direction);
        QCOMPARE(bool(event.setProperties() & Event::EventStatus), status != -1);
        if (status != -1)
            QCOMPARE(int(event.status()), status);
    }
}

void TestEventMapping::aDraftIsStoredAsInboundWithTheRecipient()
{
    SmsInfo info;
    info.parentId = LocDrafts;
    info.toNumber = QStringLiteral("123");
    info.fromNumber = QStringLiteral("456");
    const Event event = eventOf(info);
    QCOMPARE(event.remoteUid(), QStringLiteral("123"));
    QCOMPARE(int(event.direction()), 1);
    QVERIFY(!(event.setProperties() & Event::EventStatus));
}

void TestEventMapping::onlyUpperCaseReadMarksAnEventRead_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<bool>("read");
    QTest::newRow("READ") << QStringLiteral("READ") << true;
    QTest::newRow("read") << QStringLiteral("read") << false;
    QTest::newRow("UNREAD") << QStringLiteral("UNREAD") << false;
    QTest::newRow("READ-and-more") << QStringLiteral("READ ") << false;
    QTest::newRow("null") << QString() << false;
}

void TestEventMapping::onlyUpperCaseReadMarksAnEventRead()
{
    QFETCH(QString, status);
    QFETCH(bool, read);
    SmsInfo info;
    info.readStatus = status;
    const Event event = eventOf(info);
    QCOMPARE(event.isRead(), read);
    QVERIFY(event.setProperties() & Event::IsRead);
}

void TestEventMapping::aNewMessageWritesItsFields()
{
    SmsInfo info = receivedFrom(QStringLiteral("+15550100"), 3);
    info.id = 9;
    info.groupId = 4;
    info.messageToken = QStringLiteral("token-1");
    info.encoding = QStringLiteral("8BIT");
    info.charset = QStringLiteral("UTF-8");
    info.language = QStringLiteral("en");
    info.folderName = QStringLiteral("INBOX");
    info.modifiedTime = utc(1, 2);
    const Event event = eventOf(info);
    QCOMPARE(int(event.type()), 2);
    QCOMPARE(event.parentId(), 4098);
    QCOMPARE(event.localUid(), account);
    QCOMPARE(event.remoteUid(), QStringLiteral("+15550100"));
    QCOMPARE(event.groupId(), 4);
    QCOMPARE(event.messageToken(), QStringLiteral("token-1"));
    QCOMPARE(event.startTime(), utc(14, 25, 30));
    QCOMPARE(event.endTime(), utc(14, 25, 30));
    QCOMPARE(event.freeText(), QStringLiteral("Hello"));
    QCOMPARE(event.encoding(), QStringLiteral("8BIT"));
    QCOMPARE(event.setProperties(),
             Event::Type | Event::ParentId | Event::LocalUid | Event::RemoteUid | Event::GroupId
                 | Event::MessageToken | Event::IsRead | Event::EventDirection | Event::StartTime
                 | Event::EndTime | Event::FreeText | Event::Encoding);
}

void TestEventMapping::aModifiedMessageKeepsItsStoredTimes()
{
    const Event event = eventOf(storedMessage(9, 0), true);
    QCOMPARE(event.id(), 9);
    QCOMPARE(event.setProperties(),
             Event::Id | Event::Type | Event::ParentId | Event::LocalUid | Event::RemoteUid
                 | Event::GroupId | Event::MessageToken | Event::IsRead | Event::EventDirection
                 | Event::FreeText | Event::Encoding);
}

void TestEventMapping::aStoredMessageIsReadBack()
{
    Event event = messageEvent(9, LocInbox);
    event.setCharacterSet(QStringLiteral("UTF-8"));
    event.setEncoding(QStringLiteral("8BIT"));
    event.setLanguage(QStringLiteral("en"));
    event.setMessageToken(QStringLiteral("token-1"));
    SmsInfo info = recordOf(event);
    QCOMPARE(info.id, 9);
    QCOMPARE(info.parentId, 4098);
    QCOMPARE(info.fromNumber, QStringLiteral("+15550100"));
    QCOMPARE(info.body, QStringLiteral("Hello"));
    QCOMPARE(info.readStatus, QStringLiteral("UNREAD"));
    QCOMPARE(info.charset, QStringLiteral("UTF-8"));
    QCOMPARE(info.encoding, QStringLiteral("8BIT"));
    QCOMPARE(info.language, QStringLiteral("en"));
    QCOMPARE(info.messageToken, QStringLiteral("token-1"));

    event.setIsRead(true);
    QCOMPARE(recordOf(event).readStatus, QStringLiteral("READ"));
}

void TestEventMapping::theFolderDecidesNumberAndTimeOnRead_data()
{
    QTest::addColumn<int>("parentId");
    QTest::addColumn<bool>("received"); // from whom and the end time; else to whom and the start
    QTest::newRow("inbox") << 4098 << true;
    QTest::newRow("outbox") << 4099 << false;
    QTest::newRow("drafts") << 4100 << false;
    QTest::newRow("sent") << 4101 << false;
    QTest::newRow("4103") << 4103 << false;
    QTest::newRow("own") << 4104 << true;
    QTest::newRow("4200") << 4200 << true;
    QTest::newRow("4097") << 4097 << false;
    QTest::newRow("none") << 0 << false;
    QTest::newRow("negative") << -1 << false;
}

void TestEventMapping::theFolderDecidesNumberAndTimeOnRead()
{
    QFETCH(int, parentId);
    QFETCH(bool, received);
    const TimeZone zone("Asia/Kathmandu");
    Event event = messageEvent(9, parentId);
    event.setStartTime(event.startTime().toLocalTime());
    event.setEndTime(event.endTime().toLocalTime());
    const SmsInfo info = recordOf(event);
    QCOMPARE(info.fromNumber, received ? QStringLiteral("+15550100") : QString());
    QCOMPARE(info.toNumber, received ? QString() : QStringLiteral("+15550100"));
    QCOMPARE(info.time, received ? utc(11, 0) : utc(10, 0));
    QCOMPARE(info.time.timeSpec(), Qt::UTC);
    QVERIFY(info.modifiedTime.isNull());
}

void TestEventMapping::theModifiedTimeIsTheTimeWhateverTheFolder_data()
{
    QTest::addColumn<int>("parentId");
    for (const int parentId : {4098, 4099, 4100, 4101, 4104, 0})
        QTest::addRow("%d", parentId) << parentId;
}

void TestEventMapping::theModifiedTimeIsTheTimeWhateverTheFolder()
{
    QFETCH(int, parentId);
    const SmsInfo info = recordOf(messageEvent(9, parentId), true);
    QCOMPARE(info.time, utc(12, 0));
    QCOMPARE(info.time.timeSpec(), Qt::UTC);
    QVERIFY(info.modifiedTime.isNull());
}

void TestEventMapping::whatIsReadLeavesTheOtherFields()
{
    SmsInfo info;
    info.fromNumber = QStringLiteral("kept");
    info.groupId = 4;
    info.folderName = QStringLiteral("kept too");
    info.refId = 5;
    Event event = messageEvent(9, LocSent);
    event.setGroupId(77);
    SyncStorageIfPrivate::fillSmsInfo(event, info, false);
    QCOMPARE(info.fromNumber, QStringLiteral("kept"));
    QCOMPARE(info.toNumber, QStringLiteral("+15550100"));
    QCOMPARE(info.groupId, 4);
    QCOMPARE(info.folderName, QStringLiteral("kept too"));
    QCOMPARE(info.refId, 5);
}

void TestEventMapping::aMissingTimeStaysMissing()
{
    Event event;
    event.setId(9);
    QVERIFY(recordOf(event).time.isNull());
    QVERIFY(recordOf(event, true).time.isNull());
}

void TestEventMapping::theTraceOfAReadMessageIsOneLine()
{
    MessageLog log;
    Event event = messageEvent(9, LocInbox);
    event.setMessageToken(QStringLiteral("token-1"));
    recordOf(event, true);
    const QStringList lines = log.lines(QtDebugMsg);
    QCOMPARE(int(lines.size()), 2);
    QCOMPARE(lines.at(0),
             QStringLiteral("void KorvaSyncIf::SyncStorageIfPrivate::fillSmsInfo(const "
                            "CommHistory::Event&, KorvaSyncIf::SmsInfo&, bool) true"));
    QVERIFY(lines.at(1).startsWith(
        QStringLiteral("filling smsinfo from received event: id 9 whose parentid :  4098  remoteId "
                       "\"+15550100\" read :  false start/endTime:   QDateTime(")));
    // start, end and modified time
    const QRegularExpression times(
        QStringLiteral("Time:  .*10:00:00.*11:00:00.* modified Time :  .*12:00:00"));
    QVERIFY2(times.match(lines.at(1)).hasMatch(), qPrintable(lines.at(1)));
    QVERIFY(lines.at(1).endsWith(QStringLiteral(") messageToken :  \"token-1\"")));
}

void TestEventMapping::theTypeDecidesTheCallsDirection_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("missed");
    QTest::newRow("incoming") << QStringLiteral("incoming") << 1 << false;
    QTest::newRow("missed") << QStringLiteral("missed") << 1 << true;
    QTest::newRow("outgoing") << QStringLiteral("outgoing") << 2 << false;
    QTest::newRow("upper-case") << QStringLiteral("MISSED") << 2 << false;
    QTest::newRow("empty") << QString() << 2 << false;
}

void TestEventMapping::theTypeDecidesTheCallsDirection()
{
    QFETCH(QString, type);
    QFETCH(int, direction);
    QFETCH(bool, missed);
    const Event event = eventOf(call(type, 0));
    QCOMPARE(int(event.type()), 3);
    QCOMPARE(int(event.direction()), direction);
    QCOMPARE(event.isMissedCall(), missed);
}

void TestEventMapping::aCallStartsItsDurationBeforeItsEnd()
{
    const Event event = eventOf(call(QStringLiteral("missed"), 0));
    QCOMPARE(event.startTime(), utc(12, 0));
    QCOMPARE(event.endTime(), utc(12, 0, 30));
    QCOMPARE(event.remoteUid(), QStringLiteral("+15550100"));
}

void TestEventMapping::fractionsOfASecondAreDroppedFromTheStart()
{
    CallInfo info = call(QStringLiteral("incoming"), 0);
    info.dateTime = QDateTime(QDate(2010, 11, 3), QTime(12, 0, 30, 750), Qt::OffsetFromUTC, 3600);
    const Event event = eventOf(info);
    QCOMPARE(event.startTime(), utc(11, 0));
    QCOMPARE(event.startTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(event.endTime(), info.dateTime);
    QCOMPARE(event.endTime().offsetFromUtc(), 3600);
}

void TestEventMapping::aCallWithoutTimeCountsFromTheUnsignedNothing()
{
    CallInfo info = call(QStringLiteral("incoming"), 0);
    info.dateTime = QDateTime();
    const Event event = eventOf(info);
    QCOMPARE(event.startTime().toSecsSinceEpoch(), qint64(4294967265));
    QVERIFY(event.endTime().isNull());
}

void TestEventMapping::aCallWritesNoMoreThanItsFields()
{
    QCOMPARE(eventOf(call(QStringLiteral("incoming"), 5)).setProperties(),
             Event::Type | Event::EventDirection | Event::StartTime | Event::EndTime
                 | Event::RemoteUid);
    QCOMPARE(eventOf(call(QStringLiteral("missed"), 5)).setProperties(),
             Event::Type | Event::EventDirection | Event::IsMissedCall | Event::StartTime
                 | Event::EndTime | Event::RemoteUid);
}

void TestEventMapping::aStoredCallIsReadBack_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("missed");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("byItsEnd");
    QTest::newRow("incoming") << 1 << false << QStringLiteral("incoming") << true;
    QTest::newRow("missed") << 1 << true << QStringLiteral("missed") << true;
    QTest::newRow("outgoing") << 2 << false << QStringLiteral("outgoing") << false;
    QTest::newRow("outgoing-and-missed") << 2 << true << QStringLiteral("outgoing") << false;
    QTest::newRow("unknown") << 0 << false << QString() << false;
    QTest::newRow("unknown-and-missed") << 0 << true << QString() << false;
}

void TestEventMapping::aStoredCallIsReadBack()
{
    QFETCH(int, direction);
    QFETCH(bool, missed);
    QFETCH(QString, type);
    QFETCH(bool, byItsEnd);
    const CallInfo info =
        SyncStorageIfPrivate::callInfo(callEvent(8, Event::Direction(direction), missed));
    QCOMPARE(info.id, 0);
    QCOMPARE(info.type, type);
    QCOMPARE(info.dateTime, byItsEnd ? utc(12, 0, 30) : utc(12, 0));
    QCOMPARE(info.duration, 30);
    QCOMPARE(info.number, QStringLiteral("+15550100"));
}

void TestEventMapping::eventListsKeepOrderAndFillTheReferences()
{
    MessageLog log;
    SyncStorageIfPrivate d;
    d.refIds = {99};
    log.clear();
    const QList<Event> events = d.constructEventList(
        {storedMessage(11, 4, QStringLiteral("1")), storedMessage(12, 2, QStringLiteral("2"))},
        true);
    QCOMPARE(int(events.size()), 2);
    QCOMPARE(events.at(0).id(), 11);
    QCOMPARE(events.at(0).remoteUid(), QStringLiteral("1"));
    QCOMPARE(events.at(1).id(), 12);
    QCOMPARE(events.at(1).remoteUid(), QStringLiteral("2"));
    QCOMPARE(d.refIds, (QList<int>{4, 2}));
    const auto signature = QStringLiteral(
        "QList<CommHistory::Event> KorvaSyncIf::SyncStorageIfPrivate::constructEventList(const "
        "QList<KorvaSyncIf::SmsInfo>&, bool)");
    QCOMPARE(log.lines(QtDebugMsg),
             (QStringList{signature, QStringLiteral("Returning from ") + signature}));

    QCOMPARE(d.constructEventList({storedMessage(11, 4)}, false).at(0).id(), -1);
}

void TestEventMapping::callListsKeepOrderAndFillTheReferences()
{
    SyncStorageIfPrivate d;
    d.refIds = {99};
    const QList<Event> events = d.constructCallEventList(
        {call(QStringLiteral("missed"), 3), call(QStringLiteral("outgoing"), 1)});
    QCOMPARE(int(events.size()), 2);
    QVERIFY(events.at(0).isMissedCall());
    QCOMPARE(int(events.at(1).direction()), 2);
    QCOMPARE(d.refIds, (QList<int>{3, 1}));
}

QTEST_GUILESS_MAIN(TestEventMapping)
#include "tst_eventmapping.moc"
