// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reading and call-log writes through the adapter.

#include "adapterfixture.h"
#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;
using CommHistory::Event;

namespace {

const QDateTime since(QDate(2010, 11, 1), QTime(0, 0), Qt::UTC);

QDateTime utc(int hour, int minute, int second = 0)
{
    return QDateTime(QDate(2010, 11, 3), QTime(hour, minute, second), Qt::UTC);
}

} // namespace

class TestFetching : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aReadSetsFilterAndModeAndFetches_data();
    void aReadSetsFilterAndModeAndFetches();
    void rowsComeInOrderWithoutInvalidOnes();
    void theModifiedFlagReachesTheRecords();
    void aReadWithoutRowsDeliversAnEmptyListAndLeavesTheAdapterIdle();
    void aReadIsDeliveredOnALaterTurn();
    void aRefusedReadAnswersFalse();
    void aReadThatIsNeverReadyLeavesTheAdapterBusy();
    void aModelThatIsReadyTwiceDeliversOnce();
    void anUnsuccessfulModelIsReadAllTheSame();
    void oneMessageIsReadAtOnce();
    void anUnknownMessageGivesADefaultRecord();
    void anInvalidMessageGivesADefaultRecord();
    void aCallReadSetsTheFilter_data();
    void aCallReadSetsTheFilter();
    void callsAreDeliveredInOrderAndTheAdapterStaysBusy();
    void anOutgoingCallComesBackWithItsStart();
    void aRefusedCallReadAnswersFalse();
    void aCallReadIsDeliveredOnALaterTurn();
    void callsAreStoredThroughTheCallModel();
    void callsReportedInTwoPartsEndOnce();
    void aFailedCallReportFailsTheBatch();
    void refusedCallsAnswerFalse();
    void allCallsAreDeletedAtOnce();
};

void TestFetching::aReadSetsFilterAndModeAndFetches_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<int>("parentId");
    QTest::addColumn<bool>("modified");
    QTest::addColumn<QString>("filter");
    QTest::newRow("inbox") << since << 4098 << false
                           << QStringLiteral("4098, 2010-11-01T00:00:00Z, false");
    QTest::newRow("modified-sent")
        << since << 4101 << true << QStringLiteral("4101, 2010-11-01T00:00:00Z, true");
    QTest::newRow("all") << QDateTime() << 4104 << false << QStringLiteral("4104, null, false");
}

void TestFetching::aReadSetsFilterAndModeAndFetches()
{
    QFETCH(QDateTime, time);
    QFETCH(int, parentId);
    QFETCH(bool, modified);
    QFETCH(QString, filter);
    AdapterFixture f;
    QVERIFY(f.adapter.fetchSmsMessages(time, parentId, modified));
    QVERIFY(f.adapter.inUse());
    QCOMPARE(f.store.calls,
             (QStringList{QStringLiteral("SyncSMSModel::setSyncSmsFilter(%1)").arg(filter),
                          QStringLiteral("SyncSMSModel::setQueryMode(0)"),
                          QStringLiteral("SyncSMSModel::getEvents()")}));
}

void TestFetching::rowsComeInOrderWithoutInvalidOnes()
{
    AdapterFixture f;
    f.store.messageRows = {messageEvent(13, LocInbox), Event(), messageEvent(11, LocSent),
                           messageEvent(-1, LocInbox), messageEvent(12, LocMyFolder)};
    f.adapter.fetchSmsMessages(since, LocInbox, false);
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("dataReadyInModel(3)")));
    QCOMPARE(f.signalsOf.messages.at(0).id, 13);
    QCOMPARE(f.signalsOf.messages.at(0).fromNumber, QStringLiteral("+15550100"));
    QCOMPARE(f.signalsOf.messages.at(0).time, utc(11, 0));
    QCOMPARE(f.signalsOf.messages.at(1).id, 11);
    QCOMPARE(f.signalsOf.messages.at(1).toNumber, QStringLiteral("+15550100"));
    QCOMPARE(f.signalsOf.messages.at(1).time, utc(10, 0));
    QCOMPARE(f.signalsOf.messages.at(2).id, 12);
    QVERIFY(!f.adapter.inUse());
}

void TestFetching::theModifiedFlagReachesTheRecords()
{
    AdapterFixture f;
    f.store.messageRows = {messageEvent(13, LocInbox)};
    f.adapter.fetchSmsMessages(since, LocInbox, true);
    settle();
    QCOMPARE(f.signalsOf.messages.at(0).time, utc(12, 0));
    f.adapter.fetchSmsMessages(since, LocInbox, false);
    settle();
    QCOMPARE(f.signalsOf.messages.at(0).time, utc(11, 0));
}

void TestFetching::aReadWithoutRowsDeliversAnEmptyListAndLeavesTheAdapterIdle()
{
    AdapterFixture f;
    f.adapter.fetchSmsMessages(since, LocInbox, false);
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("dataReadyInModel(0)")));
    QVERIFY(!f.adapter.inUse());
}

void TestFetching::aReadIsDeliveredOnALaterTurn()
{
    AdapterFixture f;
    f.store.react(Request::ReadMessages, Reaction::reporting({{}}, Reaction::AtOnce));
    f.adapter.fetchSmsMessages(since, LocInbox, false);
    QVERIFY(f.signalsOf.heard.isEmpty());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("dataReadyInModel(0)")));
}

void TestFetching::aRefusedReadAnswersFalse()
{
    AdapterFixture f;
    f.store.react(Request::ReadMessages, Reaction::refused());
    QVERIFY(!f.adapter.fetchSmsMessages(since, LocInbox, false));
    settle();
    QVERIFY(f.isWaiting());
}

void TestFetching::aReadThatIsNeverReadyLeavesTheAdapterBusy()
{
    AdapterFixture f;
    f.store.react(Request::ReadMessages, Reaction::silent());
    QVERIFY(f.adapter.fetchSmsMessages(since, LocInbox, false));
    settle();
    QVERIFY(f.isWaiting());
}

void TestFetching::aModelThatIsReadyTwiceDeliversOnce()
{
    AdapterFixture f;
    f.store.react(Request::ReadMessages, Reaction::reporting({{}, {}}, Reaction::WhenReleased));
    f.store.react(Request::ReadCalls, Reaction::reporting({{}, {}}, Reaction::WhenReleased));
    f.adapter.fetchSmsMessages(since, LocInbox, false);
    f.adapter.fetchCallMessages(since, QString());
    for (int i = 0; i < 4; ++i) {
        f.store.release();
        settle();
    }
    QCOMPARE(f.signalsOf.heard,
             (QStringList{QStringLiteral("dataReadyInModel(0)"),
                          QStringLiteral("callInfoDataReadyInModel(0)")}));
}

void TestFetching::anUnsuccessfulModelIsReadAllTheSame()
{
    AdapterFixture f;
    f.store.messageRows = {messageEvent(13, LocInbox)};
    f.store.react(Request::ReadMessages, Reaction::reporting({{{}, false}}));
    f.adapter.fetchSmsMessages(since, LocInbox, false);
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("dataReadyInModel(1)")));
}

void TestFetching::oneMessageIsReadAtOnce()
{
    AdapterFixture f;
    f.store.eventsById.insert(13, messageEvent(13, LocInbox));
    const SmsInfo info = f.adapter.fetchSms(13);
    QCOMPARE(info.id, 13);
    QCOMPARE(info.body, QStringLiteral("Hello"));
    QCOMPARE(info.time, utc(11, 0));
    QCOMPARE(f.store.calls, QStringList(QStringLiteral("TrackerIO::getEvent(13)")));
    QVERIFY(!f.adapter.inUse());
    settle();
    QVERIFY(f.signalsOf.heard.isEmpty());
}

void TestFetching::anUnknownMessageGivesADefaultRecord()
{
    AdapterFixture f;
    const SmsInfo info = f.adapter.fetchSms(13);
    QCOMPARE(info.id, -1);
    QCOMPARE(info.parentId, 0);
    QVERIFY(info.readStatus.isEmpty());
    QVERIFY(info.time.isNull());
}

void TestFetching::anInvalidMessageGivesADefaultRecord()
{
    AdapterFixture f;
    Event event = messageEvent(13, LocInbox);
    event.setType(Event::UnknownType);
    f.store.eventsById.insert(13, event);
    QCOMPARE(f.adapter.fetchSms(13).id, -1);
}

void TestFetching::aCallReadSetsTheFilter_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("value");
    QTest::newRow("incoming") << QStringLiteral("incoming") << 3;
    QTest::newRow("outgoing") << QStringLiteral("outgoing") << 1;
    QTest::newRow("missed") << QStringLiteral("missed") << 2;
    QTest::newRow("upper-case") << QStringLiteral("MISSED") << 0;
    QTest::newRow("other") << QStringLiteral("dialled") << 0;
    QTest::newRow("empty") << QString() << 0;
}

void TestFetching::aCallReadSetsTheFilter()
{
    QFETCH(QString, type);
    QFETCH(int, value);
    AdapterFixture f;
    QVERIFY(f.adapter.fetchCallMessages(since, type));
    QVERIFY(f.adapter.inUse());
    QCOMPARE(
        f.store.calls,
        (QStringList{QStringLiteral("CallModel()"),
                     QStringLiteral("CallModel::setFilter(1, %1, 2010-11-01T00:00:00Z)").arg(value),
                     QStringLiteral("CallModel::getEvents()")}));
}

void TestFetching::callsAreDeliveredInOrderAndTheAdapterStaysBusy()
{
    AdapterFixture f;
    f.store.callRows = {callEvent(21, Event::Inbound), Event(), callEvent(20, Event::Inbound, true),
                        callEvent(19, Event::Outbound)};
    f.adapter.fetchCallMessages(since, QString());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("callInfoDataReadyInModel(3)")));
    QCOMPARE(f.signalsOf.calls.at(0).type, QStringLiteral("incoming"));
    QCOMPARE(f.signalsOf.calls.at(1).type, QStringLiteral("missed"));
    QCOMPARE(f.signalsOf.calls.at(2).type, QStringLiteral("outgoing"));
    QVERIFY(f.adapter.inUse());
}

void TestFetching::anOutgoingCallComesBackWithItsStart()
{
    AdapterFixture f;
    CallInfo outgoing = call(QStringLiteral("outgoing"), 0);
    CallInfo incoming = call(QStringLiteral("incoming"), 1);
    outgoing.duration = incoming.duration = 60;
    f.adapter.storeCallLogMsgs({outgoing, incoming});
    settle();
    f.store.callRows = f.store.addedEvents;
    f.store.callRows[0].setId(21);
    f.store.callRows[1].setId(22);
    f.adapter.fetchCallMessages(since, QString());
    settle();
    QCOMPARE(f.signalsOf.calls.at(0).dateTime, utc(11, 59, 30));
    QCOMPARE(f.signalsOf.calls.at(0).duration, 60);
    QCOMPARE(f.signalsOf.calls.at(1).dateTime, utc(12, 0, 30));
    QCOMPARE(f.signalsOf.calls.at(1).duration, 60);
}

void TestFetching::aRefusedCallReadAnswersFalse()
{
    AdapterFixture f;
    f.store.react(Request::ReadCalls, Reaction::refused());
    QVERIFY(!f.adapter.fetchCallMessages(since, QString()));
    settle();
    QVERIFY(f.signalsOf.heard.isEmpty());
}

void TestFetching::aCallReadIsDeliveredOnALaterTurn()
{
    AdapterFixture f;
    f.store.react(Request::ReadCalls, Reaction::reporting({{}}, Reaction::AtOnce));
    f.adapter.fetchCallMessages(since, QString());
    QVERIFY(f.signalsOf.heard.isEmpty());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("callInfoDataReadyInModel(0)")));
}

void TestFetching::callsAreStoredThroughTheCallModel()
{
    AdapterFixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{31, 32}}}, Reaction::AtOnce));
    QVERIFY(f.adapter.storeCallLogMsgs(
        {call(QStringLiteral("incoming"), 0), call(QStringLiteral("missed"), 3)}));
    QCOMPARE(f.store.calls,
             (QStringList{QStringLiteral("CallModel()"),
                          QStringLiteral("CallModel::addEvents(2 events, false)")}));
    QVERIFY(f.adapter.inUse());
    QVERIFY(f.signalsOf.heard.isEmpty());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 3; 31 32)")));
    QVERIFY(!f.adapter.inUse());
    QVERIFY(f.store.addedEvents.at(1).isMissedCall());
}

void TestFetching::callsReportedInTwoPartsEndOnce()
{
    AdapterFixture f;
    f.store.react(Request::AddEvents,
                  Reaction::reporting({{{31}}, {{32}}}, Reaction::WhenReleased));
    f.adapter.storeCallLogMsgs(
        {call(QStringLiteral("incoming"), 0), call(QStringLiteral("missed"), 1)});
    f.store.release();
    settle();
    QVERIFY(f.isWaiting());
    f.store.release();
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1; 31 32)")));
}

void TestFetching::aFailedCallReportFailsTheBatch()
{
    AdapterFixture f;
    f.store.react(Request::AddEvents, Reaction::failed());
    f.adapter.storeCallLogMsgs({call(QStringLiteral("incoming"), 2)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitFailed(2)")));
    QVERIFY(!f.adapter.inUse());
}

void TestFetching::refusedCallsAnswerFalse()
{
    AdapterFixture f;
    f.store.react(Request::AddEvents, Reaction::refused());
    QVERIFY(!f.adapter.storeCallLogMsgs({call(QStringLiteral("incoming"), 2)}));
    settle();
    QVERIFY(f.isWaiting());
}

void TestFetching::allCallsAreDeletedAtOnce()
{
    AdapterFixture f;
    QVERIFY(f.adapter.deleteAllCallLogMsgs());
    f.store.callsCanBeDeleted = false;
    QVERIFY(!f.adapter.deleteAllCallLogMsgs());
    QCOMPARE(f.store.calls,
             (QStringList{QStringLiteral("CallModel()"), QStringLiteral("CallModel::deleteAll()"),
                          QStringLiteral("CallModel::deleteAll()")}));
    QVERIFY(!f.adapter.inUse());
    settle();
    QVERIFY(f.signalsOf.heard.isEmpty());
}

QTEST_GUILESS_MAIN(TestFetching)
#include "tst_fetching.moc"
