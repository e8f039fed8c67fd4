// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Deleting messages through the adapter.

#include "adapterfixture.h"
#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

QList<SmsInfo> threeStoredMessages()
{
    return {storedMessage(11, 4), storedMessage(12, 2), storedMessage(13, 9)};
}

} // namespace

class TestDeletions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void messagesAreDeletedOneByOne();
    void aDeletionReportedInTwoPartsEndsOnce();
    void failedDeletionsAreMarkedInReportOrder();
    void aDeletionReportedBeyondItsCountIsNotFinished();
    void aDeletionThatIsNeverReportedLeavesTheAdapterBusy();
    void anEmptyDeletionLeavesTheAdapterBusy();
    void deletionStatusStartsAnewWithEachDeletion();
    void aSecondDeletionReportedInTwoPartsEndsOnce();
    void aDeletionReportedInsideTheCallIsDeliveredOnALaterTurn();
    void deletionsShareOneEventModel();
};

void TestDeletions::messagesAreDeletedOneByOne()
{
    AdapterFixture f;
    MessageLog log;
    QVERIFY(f.adapter.deleteSms(threeStoredMessages()));
    QVERIFY(f.adapter.inUse());
    QCOMPARE(f.store.calls,
             (QStringList{QStringLiteral("EventModel::deleteEvent(11)"),
                          QStringLiteral("EventModel::deleteEvent(12)"),
                          QStringLiteral("EventModel::deleteEvent(13)")}));
    QVERIFY(f.signalsOf.heard.isEmpty());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("deletedIdsStatus(4 2 9; 1 1 1)")));
    QVERIFY(!f.adapter.inUse());
    QCOMPARE(
        log.linesFrom(QtDebugMsg, QStringLiteral("Deleted event id")),
        (QStringList{QStringLiteral("Deleted event id 11"), QStringLiteral("Deleted event id 12"),
                     QStringLiteral("Deleted event id 13")}));
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("All ids deleted")));
}

void TestDeletions::aDeletionReportedInTwoPartsEndsOnce()
{
    AdapterFixture f;
    f.store.react(Request::DeleteEvents,
                  Reaction::reporting({{{11, 12}}, {{13}}}, Reaction::WhenReleased));
    f.adapter.deleteSms(threeStoredMessages());
    settle();
    f.store.release();
    settle();
    QVERIFY(f.isWaiting());
    f.store.release();
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("deletedIdsStatus(4 2 9; 1 1 1)")));
}

void TestDeletions::failedDeletionsAreMarkedInReportOrder()
{
    AdapterFixture f;
    // The flags go by the order of the reports, not by the ids.
    f.store.react(Request::DeleteEvents, Reaction::reporting({{{13}, false}, {{11, 12}, true}}));
    f.adapter.deleteSms(threeStoredMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("deletedIdsStatus(4 2 9; 0 1 1)")));
}

void TestDeletions::aDeletionReportedBeyondItsCountIsNotFinished()
{
    AdapterFixture f;
    f.store.react(Request::DeleteEvents, Reaction::reporting({{{11, 12, 13, 14}}}));
    f.adapter.deleteSms(threeStoredMessages());
    settle();
    QVERIFY(f.isWaiting());
}

void TestDeletions::aDeletionThatIsNeverReportedLeavesTheAdapterBusy()
{
    AdapterFixture f;
    f.store.react(Request::DeleteEvents, Reaction::silent());
    f.adapter.deleteSms(threeStoredMessages());
    settle();
    QVERIFY(f.isWaiting());
}

void TestDeletions::anEmptyDeletionLeavesTheAdapterBusy()
{
    AdapterFixture f;
    MessageLog log;
    f.adapter.deleteSms({});
    settle();
    QVERIFY(f.store.calls.isEmpty());
    QVERIFY(f.isWaiting());
    QVERIFY(log.lines(QtWarningMsg).contains(QStringLiteral("Empty list for deletion")));
}

void TestDeletions::deletionStatusStartsAnewWithEachDeletion()
{
    AdapterFixture f;
    f.adapter.deleteSms(threeStoredMessages());
    settle();
    f.signalsOf.heard.clear();
    f.store.react(Request::DeleteEvents, Reaction::reporting({{{14}, false}}));
    f.adapter.deleteSms({storedMessage(14, 0)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("deletedIdsStatus(0; 0)")));
}

void TestDeletions::aSecondDeletionReportedInTwoPartsEndsOnce()
{
    AdapterFixture f;
    f.adapter.deleteSms({storedMessage(11, 0)});
    settle();
    f.signalsOf.heard.clear();
    f.store.react(Request::DeleteEvents, Reaction::reporting({{{12}, true}, {{13}, false}}));
    f.adapter.deleteSms({storedMessage(12, 0), storedMessage(13, 1)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("deletedIdsStatus(0 1; 1 0)")));
}

void TestDeletions::aDeletionReportedInsideTheCallIsDeliveredOnALaterTurn()
{
    AdapterFixture f;
    f.store.react(Request::DeleteEvents, Reaction::reporting({{{11}}}, Reaction::WhenReleased));
    f.adapter.deleteSms({storedMessage(11, 0)});
    settle();
    f.store.release();
    QCOMPARE(f.signalsOf.heard, QStringList());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("deletedIdsStatus(0; 1)")));
}

void TestDeletions::deletionsShareOneEventModel()
{
    AdapterFixture f;
    for (int i = 0; i < 2; ++i) {
        f.adapter.deleteSms({storedMessage(11 + i, 0)});
        settle();
    }
    QVERIFY(!f.store.calls.contains(QStringLiteral("~EventModel")));
}

QTEST_GUILESS_MAIN(TestDeletions)
#include "tst_deletions.moc"
