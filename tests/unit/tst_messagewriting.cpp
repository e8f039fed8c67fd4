// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adapterfixture.h"
#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"
#include "syncstorageif/syncstorageif_p.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>

using namespace KorvaSyncIf;

namespace {

//! A number whose conversation the store knows.
const auto known = QStringLiteral("+15550100");

//! An adapter on a store that knows the conversation 7 of the known number.
struct Fixture : AdapterFixture
{
    Fixture() { store.knowConversation(QStringLiteral("5550100"), 7); }

    //! Calls that write, in order.
    QStringList writes() const
    {
        return store.calls.filter(QRegularExpression(QStringLiteral("::(add|modify|delete)")));
    }
};

QList<SmsInfo> threeMessages()
{
    return {receivedFrom(known, 0), receivedFrom(known, 1), receivedFrom(known, 2)};
}

using Run = std::function<void(Fixture &)>;

QList<int> removedBy(const QList<int> &refIds, const QList<int> &ids)
{
    SyncStorageIfPrivate d;
    for (const int refId : refIds)
        d.pendingMessages.append(receivedFrom(known, refId));
    d.removeIdsFromPendingMsgs(ids);
    return SyncStorageIfPrivate::getRefIds(d.pendingMessages);
}

} // namespace

Q_DECLARE_METATYPE(Run)

class TestMessageWriting : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void storingReturnsBeforeAnyStoreWork();
    void modifyingReturnsBeforeAnyStoreWork();
    void aBatchIsAddedInOneCall();
    void anEmptyBatchIsNotRefused();
    void aBatchReportedInTwoPartsEndsOnce();
    void aReportOfNoEventsLeavesTheBatchWaiting();
    void aReportOfTooManyEventsEndsTheBatch();
    void idsAreMatchedByPosition();
    void theIdMinusOneIsPassedOn();
    void aReportInsideTheCallEndsTheBatch();
    void aSecondReportReachesNobody();
    void aFailedReportFailsTheBatch();
    void aFailedReportAfterAPartialOneFailsAllOfTheBatch();
    void aRefusedAdditionGivesNoSignalAndLeavesTheAdapterBusy();
    void aRefusedAdditionStaysConnected();
    void anAdditionThatIsNeverReportedLeavesTheAdapterBusy();
    void theNextBatchCountsFromTheStart();
    void aModificationCarriesIdsAndKnownConversations();
    void aModificationWithUnknownPartiesNeverReachesTheStore();
    void aModificationWithOneUnknownPartyWritesWhatStalePositionsLeave();
    void aRefusedModificationGivesNoSignal();
    void aFailedModificationFailsTheBatch();
    void aReceiverOfTheErrorMayDestroyTheAdapter();
    void aReceiverOfTheResultMayDestroyTheAdapter();
    void aModificationAfterOneWithUnknownPartiesHasNoError();
    void theAdapterIsFreeInsideTheReceiver_data();
    void theAdapterIsFreeInsideTheReceiver();
    void aNewBatchKnowsNothingOfTheLast();
    void removalWorksAtStalePositions_data();
    void removalWorksAtStalePositions();
    void removalWarnsOfUnknownReferences();
    void theTraceOfAnAddition();
};

void TestMessageWriting::storingReturnsBeforeAnyStoreWork()
{
    Fixture f;
    f.store.calls.clear();
    QVERIFY(f.adapter.storeSms(threeMessages()));
    QVERIFY(f.adapter.inUse());
    QVERIFY(f.store.calls.isEmpty());
    QVERIFY(f.signalsOf.heard.isEmpty());
}

void TestMessageWriting::modifyingReturnsBeforeAnyStoreWork()
{
    Fixture f;
    f.store.calls.clear();
    QVERIFY(f.adapter.modifySms({storedMessage(11, 0)}));
    QVERIFY(f.adapter.inUse());
    QVERIFY(f.store.calls.isEmpty());
    QVERIFY(f.signalsOf.heard.isEmpty());
}

void TestMessageWriting::aBatchIsAddedInOneCall()
{
    Fixture f;
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.writes(), QStringList(QStringLiteral("SyncSMSModel::addEvents(3 events, false)")));
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 101 102 103)")));
    QVERIFY(!f.adapter.inUse());
    QCOMPARE(f.store.addedEvents.at(2).groupId(), 7);
    QCOMPARE(f.store.addedEvents.at(2).startTime(),
             QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC));
}

void TestMessageWriting::anEmptyBatchIsNotRefused()
{
    Fixture f;
    QVERIFY(f.adapter.storeSms({}));
    settle();
    QCOMPARE(f.writes(), QStringList(QStringLiteral("SyncSMSModel::addEvents(0 events, false)")));
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(; )")));
}

void TestMessageWriting::aBatchReportedInTwoPartsEndsOnce()
{
    Fixture f;
    MessageLog log;
    f.store.react(Request::AddEvents,
                  Reaction::reporting({{{11, 12}}, {{13}}}, Reaction::WhenReleased));
    f.adapter.storeSms(threeMessages());
    settle();
    f.store.release();
    settle();
    QVERIFY(f.isWaiting());
    f.store.release();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 11 12 13)")));
    QVERIFY(!f.adapter.inUse());
    QCOMPARE(log.linesFrom(QtDebugMsg, QStringLiteral("Waiting for remaining indexes")),
             QStringList(QStringLiteral(
                 "Waiting for remaining indexes: recvd events count 2 Expected  3")));
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("Finished getting all expected events, resetting "
                                         "indexAdded and inUse counters")));
}

void TestMessageWriting::aReportOfNoEventsLeavesTheBatchWaiting()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{}}}));
    f.adapter.storeSms(threeMessages());
    settle();
    QVERIFY(f.isWaiting());
}

void TestMessageWriting::aReportOfTooManyEventsEndsTheBatch()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{11, 12, 13, 14}}}));
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 11 12 13 14)")));
    QVERIFY(!f.adapter.inUse());
}

void TestMessageWriting::idsAreMatchedByPosition()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{13, 11, 12}}}));
    f.adapter.storeSms({receivedFrom(known, 4), receivedFrom(known, 2), receivedFrom(known, 9)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(4 2 9; 13 11 12)")));
}

void TestMessageWriting::theIdMinusOneIsPassedOn()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{11, -1, 13}}}));
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 11 -1 13)")));
}

void TestMessageWriting::aReportInsideTheCallEndsTheBatch()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{11, 12, 13}}}, Reaction::AtOnce));
    f.adapter.storeSms(threeMessages());
    QVERIFY(f.signalsOf.heard.isEmpty());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 11 12 13)")));
}

void TestMessageWriting::aSecondReportReachesNobody()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{11, 12, 13}}, {{11, 12, 13}}}));
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 11 12 13)")));
}

void TestMessageWriting::aFailedReportFailsTheBatch()
{
    Fixture f;
    MessageLog log;
    f.store.react(Request::AddEvents, Reaction::failed());
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitFailed(0 1 2)")));
    QVERIFY(!f.adapter.inUse());
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Committing db ids failed")));
}

void TestMessageWriting::aFailedReportAfterAPartialOneFailsAllOfTheBatch()
{
    Fixture f;
    f.store.react(Request::AddEvents,
                  Reaction::reporting({{{11, 12}}, {{13}, false}, {{13}, true}}));
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitFailed(0 1 2)")));
    QVERIFY(!f.adapter.inUse());
}

void TestMessageWriting::aRefusedAdditionGivesNoSignalAndLeavesTheAdapterBusy()
{
    Fixture f;
    MessageLog log;
    f.store.react(Request::AddEvents, Reaction::refused());
    f.adapter.storeSms(threeMessages());
    settle();
    QVERIFY(f.isWaiting());
    QVERIFY(
        log.lines(QtDebugMsg).contains(QStringLiteral("Add Events of EventModel returned FALSE")));
}

void TestMessageWriting::aRefusedAdditionStaysConnected()
{
    Fixture f;
    Reaction refusedAndReported = Reaction::reporting({{{11, 12, 13}}});
    refusedAndReported.taken = false;
    f.store.react(Request::AddEvents, refusedAndReported);
    f.adapter.storeSms(threeMessages());
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1 2; 11 12 13)")));
}

void TestMessageWriting::anAdditionThatIsNeverReportedLeavesTheAdapterBusy()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::silent());
    f.adapter.storeSms(threeMessages());
    settle();
    QVERIFY(f.isWaiting());
}

void TestMessageWriting::theNextBatchCountsFromTheStart()
{
    Fixture f;
    f.adapter.storeSms(threeMessages());
    settle();
    f.signalsOf.heard.clear();
    f.store.react(Request::AddEvents, Reaction::reporting({{{21}}, {{22}}}));
    f.adapter.storeSms({receivedFrom(known, 5), receivedFrom(known, 6)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(5 6; 21 22)")));
}

void TestMessageWriting::aModificationCarriesIdsAndKnownConversations()
{
    Fixture f;
    f.adapter.modifySms({storedMessage(11, 0), storedMessage(12, 1)});
    settle();
    QCOMPARE(f.writes(), QStringList(QStringLiteral("SyncSMSModel::modifyEvents(2 events)")));
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1; 11 12)")));
    QCOMPARE(f.store.modifiedEvents.at(1).id(), 12);
    QCOMPARE(f.store.modifiedEvents.at(1).groupId(), 7);
    QVERIFY(!(f.store.modifiedEvents.at(1).setProperties() & CommHistory::Event::StartTime));
}

void TestMessageWriting::aModificationWithUnknownPartiesNeverReachesTheStore()
{
    Fixture f;
    f.adapter.modifySms({storedMessage(11, 0, QStringLiteral("+15550111")),
                         storedMessage(12, 1, QStringLiteral("+15550112"))});
    settle();
    QCOMPARE(f.signalsOf.heard,
             (QStringList{QStringLiteral("error(0 0 1 1; 0)"),
                          QStringLiteral("eventsCommitFailed(0 0 1 1)")}));
    QCOMPARE(f.writes(), QStringList());
    QVERIFY(!f.adapter.inUse());
}

void TestMessageWriting::aModificationWithOneUnknownPartyWritesWhatStalePositionsLeave()
{
    Fixture f;
    f.adapter.modifySms({storedMessage(11, 0), storedMessage(12, 1, QStringLiteral("+15550112")),
                         storedMessage(13, 2)});
    settle();
    // Positions 0 and 1 are given up, which leaves the one message without a conversation.
    QCOMPARE(f.signalsOf.heard,
             (QStringList{QStringLiteral("error(0 1 1 2; 0)"),
                          QStringLiteral("eventsCommitted(1; 12)")}));
    QCOMPARE(int(f.store.modifiedEvents.size()), 1);
    QCOMPARE(f.store.modifiedEvents.at(0).id(), 12);
    QCOMPARE(f.store.modifiedEvents.at(0).groupId(), -1);
}

void TestMessageWriting::aRefusedModificationGivesNoSignal()
{
    Fixture f;
    MessageLog log;
    f.store.react(Request::ModifyEvents, Reaction::refused());
    f.adapter.modifySms({storedMessage(11, 0)});
    settle();
    QVERIFY(f.isWaiting());
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("Modiy Events of EventModel returned false")));
}

void TestMessageWriting::aFailedModificationFailsTheBatch()
{
    Fixture f;
    f.store.react(Request::ModifyEvents, Reaction::failed());
    f.adapter.modifySms({storedMessage(11, 3)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitFailed(3)")));
    QVERIFY(!f.adapter.inUse());
}

void TestMessageWriting::aReceiverOfTheErrorMayDestroyTheAdapter()
{
    ScriptedStore store;
    auto *const adapter = new SyncStorageIf(nullptr);
    bool destroyed = false;
    QObject::connect(adapter, &SyncStorageIf::error, this, [&] {
        destroyed = true;
        delete adapter;
    });
    adapter->modifySms({storedMessage(11, 0, QStringLiteral("+15550111"))});
    settle();
    QVERIFY(destroyed);
}

void TestMessageWriting::aReceiverOfTheResultMayDestroyTheAdapter()
{
    for (const bool successful : {true, false}) {
        ScriptedStore store;
        store.knowConversation(QStringLiteral("5550100"), 7);
        if (!successful)
            store.react(Request::AddEvents, Reaction::failed());
        auto *const adapter = new SyncStorageIf(nullptr);
        bool destroyed = false;
        const auto destroy = [&] {
            destroyed = true;
            delete adapter;
        };
        connect(adapter, qOverload<QList<int>, QList<int>>(&SyncStorageIf::eventsCommitted), this,
                destroy);
        connect(adapter, &SyncStorageIf::eventsCommitFailed, this, destroy);
        adapter->storeSms(threeMessages());
        settle();
        QVERIFY(destroyed);
    }
}

void TestMessageWriting::aModificationAfterOneWithUnknownPartiesHasNoError()
{
    Fixture f;
    f.adapter.modifySms({storedMessage(11, 0, QStringLiteral("+15550111"))});
    settle();
    f.signalsOf.heard.clear();
    f.adapter.modifySms({storedMessage(12, 0), storedMessage(13, 1)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1; 12 13)")));
}

void TestMessageWriting::theAdapterIsFreeInsideTheReceiver_data()
{
    QTest::addColumn<Run>("run");
    QTest::newRow("committed") << Run([](Fixture &f) { f.adapter.storeSms(threeMessages()); });
    QTest::newRow("failed") << Run([](Fixture &f) {
        f.store.react(Request::AddEvents, Reaction::failed());
        f.adapter.storeSms(threeMessages());
    });
    QTest::newRow("no-conversation") << Run([](Fixture &f) {
        f.store.react(Request::AddGroups, Reaction::failed());
        f.adapter.storeSms({receivedFrom(QStringLiteral("+15550111"), 0)});
    });
    QTest::newRow("read") << Run(
        [](Fixture &f) { f.adapter.fetchSmsMessages(QDateTime(), LocInbox, false); });
    QTest::newRow("deleted") << Run(
        [](Fixture &f) { f.adapter.deleteSms({storedMessage(11, 0)}); });
}

// A receiver starts the next request on the same adapter.
void TestMessageWriting::theAdapterIsFreeInsideTheReceiver()
{
    QFETCH(Run, run);
    Fixture f;
    QList<bool> busy;
    const auto note = [&] { busy.append(f.adapter.inUse()); };
    connect(&f.adapter, qOverload<QList<int>, QList<int>>(&SyncStorageIf::eventsCommitted), this,
            note);
    connect(&f.adapter, &SyncStorageIf::eventsCommitFailed, this, note);
    connect(&f.adapter, &SyncStorageIf::error, this, note);
    connect(&f.adapter, &SyncStorageIf::dataReadyInModel, this, note);
    connect(&f.adapter, &SyncStorageIf::deletedIdsStatus, this, note);
    run(f);
    settle();
    QCOMPARE(busy, QList<bool>{false});
}

void TestMessageWriting::aNewBatchKnowsNothingOfTheLast()
{
    SyncStorageIfPrivate d;
    d.refIds = {1};
    d.dbIds = {2};
    d.committedCount = 3;
    d.clearCachedDBIdsAndRefIndexes();
    QVERIFY(d.refIds.isEmpty());
    QVERIFY(d.dbIds.isEmpty());
    QCOMPARE(d.committedCount, 0);
}

void TestMessageWriting::removalWorksAtStalePositions_data()
{
    QTest::addColumn<QList<int>>("refIds");
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<QList<int>>("left");
    const auto row = [](const char *name, const QList<int> &refIds, const QList<int> &ids,
                        const QList<int> &left) { QTest::newRow(name) << refIds << ids << left; };
    row("two-of-four", {0, 1, 2, 3}, {1, 2}, {0, 2});
    row("one", {0, 1, 2, 3}, {1}, {0, 2, 3});
    row("in-descending-order", {0, 1, 2, 3}, {2, 1}, {0, 3});
    row("doubled", {0, 1, 2}, {0, 1, 1, 2}, {1});
    row("all-doubled", {0, 1}, {0, 0, 1, 1}, {});
    row("position-beyond-what-is-left", {0, 1}, {0, 1}, {1});
    row("first-position-of-equal-references", {5, 5, 6}, {5}, {5, 6});
    row("none", {0, 1}, {}, {0, 1});
}

void TestMessageWriting::removalWorksAtStalePositions()
{
    QFETCH(QList<int>, refIds);
    QFETCH(QList<int>, ids);
    QFETCH(QList<int>, left);
    QCOMPARE(removedBy(refIds, ids), left);
}

void TestMessageWriting::removalWarnsOfUnknownReferences()
{
    MessageLog log;
    QCOMPARE(removedBy({0, 1}, {7, 1}), QList<int>{0});
    QCOMPARE(log.lines(QtWarningMsg), QStringList(QStringLiteral("Cannot find idx for id 7")));
}

void TestMessageWriting::theTraceOfAnAddition()
{
    Fixture f;
    MessageLog log;
    f.adapter.storeSms({receivedFrom(known, 0)});
    const auto signature = QStringLiteral(
        "bool KorvaSyncIf::SyncStorageIf::storeSms(const QList<KorvaSyncIf::SmsInfo>&)");
    QCOMPARE(log.lines(QtDebugMsg),
             (QStringList{signature, QStringLiteral("Exit %1 true").arg(signature)}));
    log.clear();
    settle();
    const QStringList lines = log.lines(QtDebugMsg);
    QCOMPARE(lines.value(0),
             QStringLiteral("Enter void KorvaSyncIf::SyncStorageIf::startAddingMessages()"));
    QVERIFY(lines.contains(QStringLiteral("void KorvaSyncIf::SyncStorageIf::addEvents()")));
    QVERIFY(lines.contains(QStringLiteral(
        "void KorvaSyncIf::SyncStorageIf::eventsCommitted(QList<CommHistory::Event>, bool) "
        "1 true")));
}

QTEST_GUILESS_MAIN(TestMessageWriting)
#include "tst_messagewriting.moc"
