// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// A batch of calls ends in the slot that ends those of messages; each end disconnects both
// models, so that what comes late reaches nobody.

#include "adaptersignals.h"
#include "eventloop.h"
#include "platformfixture.h"
#include "samplerecords.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

void addOutcomeRows()
{
    QTest::addColumn<bool>("status");
    QTest::addColumn<QString>("heard");
    QTest::newRow("committed") << true << QStringLiteral("eventsCommitted(5; 21)");
    QTest::newRow("failed") << false << QStringLiteral("eventsCommitFailed(5)");
}

//! Not taken, but reported all the same when released.
Reaction refusedAndReportedLate()
{
    Reaction reaction = Reaction::reporting({{{11}}}, Reaction::WhenReleased);
    reaction.taken = false;
    return reaction;
}

} // namespace

class TestCallBatches : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theEndOfABatchDisconnectsTheCallModel_data() { addOutcomeRows(); }
    void theEndOfABatchDisconnectsTheCallModel();
    void theEndOfABatchDisconnectsTheMessageModel_data() { addOutcomeRows(); }
    void theEndOfABatchDisconnectsTheMessageModel();
    void theEndOfAMessageBatchDisconnectsTheCallModel_data() { addOutcomeRows(); }
    void theEndOfAMessageBatchDisconnectsTheCallModel();
    void aSecondBatchCountsFromTheStart();
    void everyBatchConnectsTheCallModelAnew();
};

void TestCallBatches::theEndOfABatchDisconnectsTheCallModel()
{
    QFETCH(bool, status);
    QFETCH(QString, heard);
    PlatformFixture f;
    const AdapterSignals signalsOf(f.adapter());
    f.store.react(Request::AddEvents,
                  Reaction::reporting({{{21}, status}, {{22}, status}}, Reaction::WhenReleased));
    f.adapter()->storeCallLogMsgs({call(QStringLiteral("missed"), 5)});
    for (int report = 0; report < 2; ++report) {
        f.store.release();
        settle();
        QCOMPARE(signalsOf.heard, QStringList(heard));
    }
}

void TestCallBatches::theEndOfABatchDisconnectsTheMessageModel()
{
    QFETCH(bool, status);
    QFETCH(QString, heard);
    PlatformFixture f;
    SyncStorageIf *const adapter = f.adapter();
    const AdapterSignals signalsOf(adapter);
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    f.store.react(Request::AddEvents, refusedAndReportedLate());
    adapter->storeSms({receivedFrom(QStringLiteral("+15550100"), 0)});
    settle();
    f.store.react(Request::AddEvents, Reaction::reporting({{{21}, status}}));
    adapter->storeCallLogMsgs({call(QStringLiteral("missed"), 5)});
    settle();
    QCOMPARE(signalsOf.heard, QStringList(heard));
    QVERIFY(!adapter->inUse());
    f.store.release();
    settle();
    QCOMPARE(signalsOf.heard, QStringList(heard));
}

void TestCallBatches::theEndOfAMessageBatchDisconnectsTheCallModel()
{
    QFETCH(bool, status);
    QFETCH(QString, heard);
    PlatformFixture f;
    SyncStorageIf *const adapter = f.adapter();
    const AdapterSignals signalsOf(adapter);
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    f.store.react(Request::AddEvents, refusedAndReportedLate());
    QVERIFY(!adapter->storeCallLogMsgs({call(QStringLiteral("missed"), 0)}));
    f.store.react(Request::AddEvents, Reaction::reporting({{{21}, status}}));
    adapter->storeSms({receivedFrom(QStringLiteral("+15550100"), 5)});
    settle();
    QCOMPARE(signalsOf.heard, QStringList(heard));
    f.store.release();
    settle();
    QCOMPARE(signalsOf.heard, QStringList(heard));
}

void TestCallBatches::aSecondBatchCountsFromTheStart()
{
    PlatformFixture f;
    SyncStorageIf *const adapter = f.adapter();
    AdapterSignals signalsOf(adapter);
    adapter->storeCallLogMsgs(
        {call(QStringLiteral("missed"), 0), call(QStringLiteral("missed"), 1)});
    settle();
    signalsOf.heard.clear();
    f.store.react(Request::AddEvents,
                  Reaction::reporting({{{31}}, {{32}}}, Reaction::WhenReleased));
    adapter->storeCallLogMsgs(
        {call(QStringLiteral("missed"), 5), call(QStringLiteral("missed"), 6)});
    f.store.release();
    settle();
    QCOMPARE(signalsOf.heard, QStringList());
    f.store.release();
    settle();
    QCOMPARE(signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(5 6; 31 32)")));
}

// After a refused batch the call model is connected twice, and one report comes in twice. No
// pending object hears the second: it is done, and the pool has set such an adapter aside.
void TestCallBatches::everyBatchConnectsTheCallModelAnew()
{
    PlatformFixture f;
    SyncStorageIf *const adapter = f.adapter();
    const AdapterSignals signalsOf(adapter);
    f.store.react(Request::AddEvents, Reaction::refused());
    QVERIFY(!adapter->storeCallLogMsgs({call(QStringLiteral("missed"), 0)}));
    f.store.react(Request::AddEvents, Reaction::reporting({{{21}}}));
    QVERIFY(adapter->storeCallLogMsgs({call(QStringLiteral("missed"), 0)}));
    settle();
    QCOMPARE(signalsOf.heard,
             (QStringList{QStringLiteral("eventsCommitted(0; 21)"),
                          QStringLiteral("eventsCommitted(0; 21 21)")}));
}

QTEST_GUILESS_MAIN(TestCallBatches)
#include "tst_callbatches.moc"
