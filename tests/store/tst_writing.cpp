// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "fullevent.h"
#include "storetesting.h"

#include <commhistory/callmodel.h>
#include <commhistory/trackerio.h>

using namespace CommHistory;
using namespace StoreTesting;

//! Adding, modifying and deleting: what is reported and what is then in the store.
class TestWriting : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(makeStore()); }
    void addsAreReportedAThousandAtATimeInOrder();
    void theReportComesOnALaterTurn();
    void anEmptyRequestIsReportedOnce_data();
    void anEmptyRequestIsReportedOnce();
    void idsAreNeverReused();
    void requestsOfManyModelsKeepTheirOrder();

    void modifyingWritesOnlyTheFieldsThatWereSet();
    void modifyingMovesAndRetimes();
    void modifyingKeepsTheConversationForAnIdBelowOne();
    void modifyingAnUnknownIdFails();
    void nothingFollowsAFailedReport();

    void deletionsOfOneTurnAreOneReport();
    void deletionsOfUnequalStatusAreApart();
    void moreDeletionsThanATransactionHolds();
    void deletingTakesAnyEvent();
    void deletionsComeBeforeALaterRequest();
    void deletionsOfADeletedModelAreDone();

    void aReceiverMayDeleteTheModel();
    void aReaderMayDeleteTheModel();
    void aModelMayBeDeletedWhileItsRequestWaits();
};

void TestWriting::addsAreReportedAThousandAtATimeInOrder()
{
    EventModel model;
    Reports reports(&model);
    QList<Event> events = messages(2500, QStringLiteral("m"), 5101);
    QVERIFY(model.addEvents(events, false));
    const QList<Report> got = reports.wait(3);
    QCOMPARE(got.size(), 3);
    QCOMPARE(got.at(0).events.size(), 1000);
    QCOMPARE(got.at(1).events.size(), 1000);
    QCOMPARE(got.at(2).events.size(), 500);
    int position = 0;
    int lastId = 0;
    for (const Report &report : got) {
        QVERIFY(report.status);
        for (const Event &event : report.events) {
            QCOMPARE(event.freeText(), QStringLiteral("m%1").arg(position++));
            QVERIFY(event.id() > lastId);
            lastId = event.id();
        }
    }
    QCOMPARE(read(5101).size(), 2500);
    QCOMPARE(reports.waiting(), 0);
}

void TestWriting::theReportComesOnALaterTurn()
{
    EventModel model;
    Reports reports(&model);
    QList<Event> events = messages(1, QStringLiteral("m"), 5102);
    model.addEvents(events, false);
    Event event;
    TrackerIO::instance()->getEvent(1, event); // the add is done by now
    QCOMPARE(reports.waiting(), 0);
    QCOMPARE(reports.wait(1).size(), 1);
}

void TestWriting::anEmptyRequestIsReportedOnce_data()
{
    QTest::addColumn<bool>("modify");
    QTest::newRow("add") << false;
    QTest::newRow("modify") << true;
}

void TestWriting::anEmptyRequestIsReportedOnce()
{
    QFETCH(bool, modify);
    EventModel model;
    Reports reports(&model);
    QList<Event> none;
    QVERIFY(modify ? model.modifyEvents(none) : model.addEvents(none, false));
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(got.first().status);
    QVERIFY(got.first().events.isEmpty());
    read(5103);
    QCOMPARE(reports.waiting(), 0);
}

void TestWriting::idsAreNeverReused()
{
    const QList<int> ids = add(messages(3, QStringLiteral("m"), 5104));
    EventModel model;
    Reports reports(&model);
    for (const int id : ids)
        model.deleteEvent(id);
    QCOMPARE(reports.wait(1).value(0).ids(), ids);
    const QList<int> later = add(messages(3, QStringLiteral("m"), 5104));
    QCOMPARE(later.size(), 3);
    QVERIFY(later.first() > ids.last());
}

void TestWriting::requestsOfManyModelsKeepTheirOrder()
{
    const int id = add(messages(1, QStringLiteral("m"), 5105)).value(0, -1);
    Event change;
    change.setId(id);
    EventModel one;
    EventModel two;
    for (int i = 0; i < 20; ++i) {
        change.setFreeText(QString::number(i));
        QList<Event> changes{change};
        (i % 2 ? one : two).modifyEvents(changes);
        Event found;
        QVERIFY(TrackerIO::instance()->getEvent(id, found));
        QCOMPARE(found.freeText(), QString::number(i));
    }
}

void TestWriting::modifyingWritesOnlyTheFieldsThatWereSet()
{
    Event event = fullEvent();
    event.setParentId(5106); // where nothing else is
    const int id = add({event}).value(0, -1);
    Event before;
    QVERIFY(TrackerIO::instance()->getEvent(id, before));

    Event change;
    change.setId(id);
    change.setFreeText(QStringLiteral("after"));
    change.setIsRead(false);
    change.setLastModified(utc(1999, 1, 1)); // the store's own business
    EventModel model;
    Reports reports(&model);
    QList<Event> changes{change};
    QVERIFY(model.modifyEvents(changes));
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(got.first().status);
    QCOMPARE(got.first().ids(), QList<int>{id});

    Event after;
    QVERIFY(TrackerIO::instance()->getEvent(id, after));
    QCOMPARE(after.freeText(), QStringLiteral("after"));
    QCOMPARE(after.isRead(), false);
    QVERIFY(after.lastModified() >= before.lastModified());
    QCOMPARE(after.lastModified(), got.first().events.first().lastModified());
    before.setFreeText(after.freeText());
    before.setIsRead(after.isRead());
    before.setLastModified(after.lastModified());
    QVERIFY(after == before);
}

void TestWriting::modifyingMovesAndRetimes()
{
    const int id = add(messages(1, QStringLiteral("m"), 5107)).value(0, -1);
    Event change;
    change.setId(id);
    change.setParentId(5108);
    change.setStartTime(utc(2020, 1, 1));
    change.setEndTime(QDateTime());
    change.setGroupId(4);
    EventModel model;
    Reports reports(&model);
    QList<Event> changes{change};
    model.modifyEvents(changes);
    QCOMPARE(reports.wait(1).size(), 1);
    QCOMPARE(read(5107).size(), 0);
    const QList<Event> found = read(5108);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().id(), id);
    QCOMPARE(found.first().startTime(), utc(2020, 1, 1));
    QVERIFY(found.first().endTime().isNull());
    QCOMPARE(found.first().groupId(), 4);
}

void TestWriting::modifyingKeepsTheConversationForAnIdBelowOne()
{
    Event event = message(QStringLiteral("m"), 5109);
    event.setGroupId(5);
    const int id = add({event}).value(0, -1);
    EventModel model;
    Reports reports(&model);
    for (const int groupId : {0, -1}) {
        Event change;
        change.setId(id);
        change.setGroupId(groupId);
        QList<Event> changes{change};
        model.modifyEvents(changes);
        QVERIFY(reports.wait(1).value(0).status);
        QCOMPARE(read(5109).first().groupId(), 5);
    }
}

void TestWriting::modifyingAnUnknownIdFails()
{
    const int id = add(messages(1, QStringLiteral("before"), 5110)).value(0, -1);
    Event known;
    known.setId(id);
    known.setFreeText(QStringLiteral("after"));
    Event unknown = known;
    unknown.setId(2000000000);
    EventModel model;
    Reports reports(&model);
    QList<Event> changes{known, unknown};
    QVERIFY(model.modifyEvents(changes));
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(!got.first().status);
    // One transaction: all or nothing.
    QCOMPARE(read(5110).first().freeText(), QStringLiteral("before0"));
}

void TestWriting::nothingFollowsAFailedReport()
{
    const QList<int> ids = add(messages(1, QStringLiteral("before"), 5111));
    Event known;
    known.setId(ids.first());
    known.setFreeText(QStringLiteral("after"));
    Event unknown;
    unknown.setId(2000000000);
    QList<Event> changes;
    for (int i = 0; i < 1000; ++i)
        changes.append(unknown);
    changes.append(known);
    EventModel model;
    Reports reports(&model);
    model.modifyEvents(changes);
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(!got.first().status);
    QCOMPARE(read(5111).first().freeText(), QStringLiteral("before0"));
    QCOMPARE(reports.waiting(), 0);
}

void TestWriting::deletionsOfOneTurnAreOneReport()
{
    const QList<int> ids = add(messages(5, QStringLiteral("m"), 5112));
    EventModel model;
    Reports reports(&model);
    const QList<int> order{ids[3], ids[0], ids[4]};
    for (const int id : order)
        QVERIFY(model.deleteEvent(id));
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(got.first().status);
    QCOMPARE(got.first().ids(), order);
    QCOMPARE(read(5112).size(), 2);
    QCOMPARE(reports.waiting(), 0);
}

void TestWriting::deletionsOfUnequalStatusAreApart()
{
    const QList<int> ids = add(messages(3, QStringLiteral("m"), 5113));
    EventModel model;
    Reports reports(&model);
    for (const int id : {ids[0], ids[1], 2000000000, -1, ids[2], ids[0]})
        model.deleteEvent(id);
    const QList<Report> got = reports.wait(4);
    QCOMPARE(got.size(), 4);
    QCOMPARE(got.at(0).ids(), (QList<int>{ids[0], ids[1]}));
    QCOMPARE(got.at(1).ids(), (QList<int>{2000000000, -1}));
    QCOMPARE(got.at(2).ids(), (QList<int>{ids[2]}));
    QCOMPARE(got.at(3).ids(), (QList<int>{ids[0]}));
    QVERIFY(got.at(0).status && !got.at(1).status && got.at(2).status && !got.at(3).status);
    QCOMPARE(read(5113).size(), 0);
    QCOMPARE(reports.waiting(), 0);
}

void TestWriting::moreDeletionsThanATransactionHolds()
{
    const QList<int> ids = add(messages(2200, QStringLiteral("m"), 5114));
    EventModel model;
    Reports reports(&model);
    for (const int id : ids)
        model.deleteEvent(id);
    QList<int> reported;
    for (const Report &report : reports.wait(3)) {
        QVERIFY(report.status);
        QVERIFY(report.events.size() <= 1000);
        reported += report.ids();
    }
    QCOMPARE(reported, ids);
    QCOMPARE(read(5114).size(), 0);
}

void TestWriting::deletingTakesAnyEvent()
{
    Event call;
    call.setType(Event::CallEvent);
    const int id = add({call}).value(0, -1);
    EventModel model;
    Reports reports(&model);
    model.deleteEvent(id);
    QVERIFY(reports.wait(1).value(0).status);
    Event found;
    QVERIFY(!TrackerIO::instance()->getEvent(id, found));
}

void TestWriting::deletionsComeBeforeALaterRequest()
{
    const QList<int> ids = add(messages(2, QStringLiteral("m"), 5115));
    EventModel one;
    EventModel two;
    Reports reports(&one);
    one.deleteEvent(ids[0]);
    two.deleteEvent(ids[1]);
    Event found;
    QVERIFY(!TrackerIO::instance()->getEvent(ids[0], found));
    QVERIFY(!TrackerIO::instance()->getEvent(ids[1], found));
    one.deleteEvent(ids[1]);
    const QList<Report> got = reports.wait(2);
    QCOMPARE(got.size(), 2);
    QVERIFY(got.at(0).status);
    QVERIFY(!got.at(1).status);
}

void TestWriting::deletionsOfADeletedModelAreDone()
{
    const QList<int> ids = add(messages(1, QStringLiteral("m"), 5116));
    {
        EventModel model;
        model.deleteEvent(ids.first());
    }
    Event found;
    QVERIFY(!TrackerIO::instance()->getEvent(ids.first(), found));
}

void TestWriting::aReceiverMayDeleteTheModel()
{
    auto *model = new EventModel;
    int reports = 0;
    connect(model, &EventModel::eventsCommitted, this, [&] {
        ++reports;
        delete model;
    });
    QList<Event> events = messages(1500, QStringLiteral("m"), 5117);
    model->addEvents(events, false);
    QTRY_COMPARE_WITH_TIMEOUT(reports, 1, Patience);
    // What was taken is written, and nobody is told.
    QCOMPARE(read(5117).size(), 1500);
    QCOMPARE(reports, 1);
}

void TestWriting::aReaderMayDeleteTheModel()
{
    auto *model = new SyncSMSModel(5118, QDateTime(), false);
    bool isRead = false;
    connect(model, &SyncSMSModel::modelReady, this, [&] {
        isRead = true;
        delete model;
    });
    QVERIFY(model->getEvents());
    QTRY_VERIFY_WITH_TIMEOUT(isRead, Patience);

    auto *resetting = new SyncSMSModel(5118, QDateTime(), false);
    bool isReset = false;
    connect(resetting, &SyncSMSModel::modelReset, this, [&] {
        isReset = true;
        delete resetting;
    });
    QVERIFY(resetting->getEvents());
    QTRY_VERIFY_WITH_TIMEOUT(isReset, Patience);

    auto *calls = new CallModel;
    bool areRead = false;
    connect(calls, &CallModel::modelReady, this, [&] {
        areRead = true;
        delete calls;
    });
    QVERIFY(calls->getEvents());
    QTRY_VERIFY_WITH_TIMEOUT(areRead, Patience);
}

void TestWriting::aModelMayBeDeletedWhileItsRequestWaits()
{
    for (int i = 0; i < 20; ++i) {
        SyncSMSModel model(5119, QDateTime(), false);
        QList<Event> events = messages(10, QStringLiteral("m"), 5119);
        QVERIFY(model.addEvents(events, false));
        QVERIFY(model.getEvents());
    }
    QCOMPARE(read(5119).size(), 200);
}

STORE_TEST_MAIN(TestWriting)
#include "tst_writing.moc"
