// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Adding calls through the facade.

#include "adaptersignals.h"
#include "callfixture.h"
#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>

using namespace KorvaSyncIf;
using CommHistory::Event;

class TestCallAdding : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void entriesAreStoredInOneRequest();
    void theEntrysTimeIsTheEndOfTheCall();
    void aBrokenEntryIsReportedAndTheOthersAreStored();
    void onlyBrokenEntriesAreAnErrorAtOnce();
    void noEntriesAreAnErrorAtOnce();
    void anEmptyEntryIsStoredAsADefaultCall();
    void anEntryWithoutReadableTimeIsStored();
    void referencesAreThoseOfTheWholeList();
    void callsReportedLateInPartsFinishOnce();
    void aFailedStoreShowsInTheErrorFlagAlone();
    void aFailureAfterAPartialReportFailsTheRequest();
    void refusedCallsLiveUntilTheFacadeGoes();
    void addsSideBySideFinishEachOnce();
};

namespace {

QDateTime local(int hour, int minute, int second)
{
    return QDateTime(QDate(2010, 11, 3), QTime(hour, minute, second));
}

} // namespace

void TestCallAdding::entriesAreStoredInOneRequest()
{
    CallFixture f;
    const PendingStatus *const pending =
        f.add({incoming, entry(QStringLiteral("missed")), outgoing});
    QCOMPARE(pending->parent(), f.facade.get());
    QCOMPARE(int(f.store.calls.filter(QStringLiteral("addEvents")).size()), 1);
    QCOMPARE(f.finishedCount, 0);
    settle();
    QCOMPARE(f.finishedCount, 1);
    QCOMPARE(f.callStatus, (CallErrors{CallNoError, CallNoError, CallNoError}));
    QVERIFY(f.status.isEmpty());
    QVERIFY(!f.isError);
    QCOMPARE(int(f.store.addedEvents.size()), 3);
    for (const Event &event : qAsConst(f.store.addedEvents)) {
        QCOMPARE(event.type(), Event::CallEvent);
        QCOMPARE(event.remoteUid(), QStringLiteral("+15550100"));
    }
    QCOMPARE(f.store.addedEvents.at(0).direction(), Event::Inbound);
    QVERIFY(!f.store.addedEvents.at(0).isMissedCall());
    QCOMPARE(f.store.addedEvents.at(1).direction(), Event::Inbound);
    QVERIFY(f.store.addedEvents.at(1).isMissedCall());
    QCOMPARE(f.store.addedEvents.at(2).direction(), Event::Outbound);
}

void TestCallAdding::theEntrysTimeIsTheEndOfTheCall()
{
    CallFixture f;
    f.add({incoming, outgoing});
    QCOMPARE(int(f.store.addedEvents.size()), 2);
    for (const Event &event : qAsConst(f.store.addedEvents)) {
        QCOMPARE(event.startTime(), local(14, 24, 30));
        QCOMPARE(event.endTime(), local(14, 25, 30));
    }
}

void TestCallAdding::aBrokenEntryIsReportedAndTheOthersAreStored()
{
    CallFixture f;
    const AdapterSignals heard(f.adapter());
    MessageLog log;
    PendingStatus *const pending =
        f.add({incoming, broken, entry(QStringLiteral("missed"), QStringLiteral("2"))});
    QCOMPARE(log.lines(QtWarningMsg),
             QStringList(QStringLiteral("idx  1 with error  1 stored in PendingStatus")));
    QCOMPARE(pending->statusCallMsgs(), (CallErrors{CallNoError, CallParseError, CallNoError}));
    QVERIFY(!pending->isError());
    settle();
    QCOMPARE(heard.heard, QStringList(QStringLiteral("eventsCommitted(0 2; 101 102)")));
    QCOMPARE(f.finishedCount, 1);
    QCOMPARE(f.callStatus, (CallErrors{CallNoError, CallParseError, CallNoError}));
    QVERIFY(!f.isError);
    QCOMPARE(int(f.store.addedEvents.size()), 2);
    QCOMPARE(f.store.addedEvents.at(1).remoteUid(), QStringLiteral("2"));
}

void TestCallAdding::onlyBrokenEntriesAreAnErrorAtOnce()
{
    CallFixture f;
    MessageLog log;
    const QPointer<PendingStatus> pending = f.add({broken, QStringLiteral("BEGIN")});
    QVERIFY(pending->isError());
    QCOMPARE(pending->statusCallMsgs(), (CallErrors{CallParseError, CallParseError}));
    QCOMPARE(log.lines(QtWarningMsg),
             (QStringList{QStringLiteral("idx  0 with error  1 stored in PendingStatus"),
                          QStringLiteral("idx  1 with error  1 stored in PendingStatus"),
                          emptyListWarning}));
    settle();
    QCOMPARE(f.finishedCount, 0);
    QVERIFY(f.store.addedEvents.isEmpty());
    QVERIFY(!f.adapter()->inUse());
    QVERIFY(pending);
    f.facade.reset();
    QVERIFY(pending.isNull());
}

void TestCallAdding::noEntriesAreAnErrorAtOnce()
{
    CallFixture f;
    MessageLog log;
    const QPointer<PendingStatus> pending = f.add({});
    QVERIFY(pending->isError());
    QVERIFY(pending->statusCallMsgs().isEmpty());
    QVERIFY(pending->status().isEmpty());
    QCOMPARE(log.lines(QtWarningMsg), QStringList(emptyListWarning));
    QVERIFY(log.lines(QtDebugMsg).filter(QStringLiteral("setStatusCallIds")).isEmpty());
    settle();
    QCOMPARE(f.finishedCount, 0);
    QVERIFY(pending);
}

void TestCallAdding::anEmptyEntryIsStoredAsADefaultCall()
{
    CallFixture f;
    const AdapterSignals heard(f.adapter());
    MessageLog log;
    f.add({incoming, QString()});
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    settle();
    QCOMPARE(heard.heard, QStringList(QStringLiteral("eventsCommitted(0 1; 101 102)")));
    QCOMPARE(f.callStatus, (CallErrors{CallNoError, CallNoError}));
    const Event event = f.store.addedEvents.value(1);
    QCOMPARE(event.direction(), Event::Outbound); // whatever is not inbound
    QVERIFY(event.remoteUid().isEmpty());
    QVERIFY(event.endTime().isNull());
    QCOMPARE(event.startTime().toSecsSinceEpoch(), qint64(4294967295));
}

void TestCallAdding::anEntryWithoutReadableTimeIsStored()
{
    CallFixture f;
    f.add({QStringLiteral("BEGIN:VCALLHISTENTRY\nTYPE:missed\nDURATION:30\nCALL-DATETIME:soon\n")});
    settle();
    QCOMPARE(f.callStatus, CallErrors{CallNoError});
    const Event event = f.store.addedEvents.value(0);
    QCOMPARE(event.direction(), Event::Inbound);
    QVERIFY(event.endTime().isNull());
    QCOMPARE(event.startTime().toSecsSinceEpoch(), qint64(4294967265));
}

void TestCallAdding::referencesAreThoseOfTheWholeList()
{
    CallFixture f;
    const AdapterSignals heard(f.adapter());
    f.add({broken, incoming, broken, broken, outgoing, incoming, broken});
    settle();
    QCOMPARE(heard.heard, QStringList(QStringLiteral("eventsCommitted(1 4 5; 101 102 103)")));
    QCOMPARE(f.callStatus,
             (CallErrors{CallParseError, CallNoError, CallParseError, CallParseError, CallNoError,
                         CallNoError, CallParseError}));
}

void TestCallAdding::callsReportedLateInPartsFinishOnce()
{
    CallFixture f;
    f.store.react(Request::AddEvents,
                  Reaction::reporting({{{101, 102}}, {{103}}}, Reaction::WhenReleased));
    MessageLog log;
    const QPointer<PendingStatus> pending = f.add({incoming, incoming, outgoing});
    f.store.release();
    settle();
    QCOMPARE(f.finishedCount, 0);
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral(
                    "Waiting for remaining indexes: recvd events count 2 Expected  3")));
    f.store.release();
    settle();
    QCOMPARE(f.finishedCount, 1);
    QVERIFY(!f.isError);
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("Finished getting all expected events, resetting "
                                         "indexAdded and inUse counters")));
    QVERIFY(pending.isNull());
}

void TestCallAdding::aFailedStoreShowsInTheErrorFlagAlone()
{
    CallFixture f;
    f.store.react(Request::AddEvents, Reaction::failed());
    MessageLog log;
    f.add({incoming, broken, outgoing});
    log.clear();
    settle();
    QCOMPARE(f.finishedCount, 1);
    QVERIFY(f.isError);
    QCOMPARE(f.callStatus, (CallErrors{CallNoError, CallParseError, CallNoError}));
    QVERIFY(f.status.isEmpty());
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    QVERIFY(log.lines(QtCriticalMsg).isEmpty());
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Committing db ids failed")));
}

void TestCallAdding::aFailureAfterAPartialReportFailsTheRequest()
{
    CallFixture f;
    const AdapterSignals heard(f.adapter());
    f.store.react(Request::AddEvents, Reaction::reporting({{{101}}, {{}, false}}));
    f.add({incoming, outgoing});
    settle();
    QCOMPARE(heard.heard, QStringList(QStringLiteral("eventsCommitFailed(0 1)")));
    QCOMPARE(f.finishedCount, 1);
    QVERIFY(f.isError);
}

void TestCallAdding::refusedCallsLiveUntilTheFacadeGoes()
{
    CallFixture f;
    f.store.react(Request::AddEvents, Reaction::refused());
    const QPointer<PendingStatus> pending = f.add({incoming});
    QVERIFY(pending->isError());
    QCOMPARE(pending->statusCallMsgs(), CallErrors{CallNoError});
    settle();
    QCOMPARE(f.finishedCount, 0);
    QVERIFY(pending);
    f.facade.reset();
    QVERIFY(pending.isNull());
}

void TestCallAdding::addsSideBySideFinishEachOnce()
{
    CallFixture f;
    f.store.react(Request::AddEvents, Reaction::reporting({{{31}}}, Reaction::WhenReleased));
    f.store.react(Request::AddEvents, Reaction::failed());
    f.add({incoming});
    f.add({outgoing, broken});
    settle();
    QCOMPARE(f.finishedCount, 1);
    QVERIFY(f.isError);
    QCOMPARE(f.callStatus, (CallErrors{CallNoError, CallParseError}));
    f.store.release();
    settle();
    QCOMPARE(f.finishedCount, 2);
    QVERIFY(!f.isError);
    QCOMPARE(f.callStatus, CallErrors{CallNoError});
}

QTEST_GUILESS_MAIN(TestCallAdding)
#include "tst_calladding.moc"
