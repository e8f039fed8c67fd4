// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventloop.h"
#include "messagelog.h"
#include "pendingwrite.h"
#include "samplerecords.h"

using namespace KorvaSyncIf;

namespace {

const auto known = QStringLiteral("+15550100");

QStringList warnings(const MessageLog &log) { return log.lines(QtWarningMsg); }

} // namespace

//! What each report of the adapter makes of a pending write.
class TestPendingReports : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void committedWithTheIdMinusOneIsADatabaseError();
    void aCallCommittedWithTheIdMinusOneShowsInTheErrorFlagAlone();
    void aReportWithoutReferencesFinishes();
    void onlyTheIdMinusOneIsAFault();
    void aReportWithMoreReferencesThanTheRequestIsCutAtItsEnd();
    void aReportWithMoreIdsThanReferencesLeavesTheRest();
    void aFailedCommitIsTheLastReport();
    void aReportWithTooFewIdsIsRefusedAtItsEnd();
    void committedOutsideTheRequestIsRefused();
    void aFailedCommitMarksItsItems();
    void aFailedCommitOutsideTheRequestChangesNothing();
    void aFailedCallCommitShowsInTheErrorFlagAlone();
    void aMissingConversationMarksItsItemAndFinishesNothing();
    void aMissingConversationOutsideTheRequestIsLogged();
    void callsDoNotHearOfMissingConversations();
    void failedDeletionsShowInTheStatusAlone();
    void deletionsOutsideTheRequestAreLogged();
    void anEmptyDeletionReportFinishes();
};

void TestPendingReports::committedWithTheIdMinusOneIsADatabaseError()
{
    IdsWrite write(3);
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0, 1, 2})),
               Q_ARG(QList<int>, (Ints{10, -1, 12})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.ids, (Ints{10, -1, 12}));
    QCOMPARE(write.status, (Errors{SmsNoError, SmsDatabaseError, SmsNoError}));
    QVERIFY(write.isError);
}

void TestPendingReports::aCallCommittedWithTheIdMinusOneShowsInTheErrorFlagAlone()
{
    StatusWrite write(1, CallSync);
    write.store.react(Request::AddEvents, Reaction::reporting({{{-1}}}));
    CallErrors callStatus;
    connect(write.pending.data(), &PendingStatus::finished, &write.parent,
            [&callStatus](PendingStatus *pending) { callStatus = pending->statusCallMsgs(); });
    write.pending->store({call(QStringLiteral("missed"), 0)});
    settle();
    QCOMPARE(write.finishedCount, 1);
    QVERIFY(write.isError);
    QVERIFY(write.status.isEmpty());
    QCOMPARE(callStatus, CallErrors{CallNoError});
}

void TestPendingReports::aReportWithoutReferencesFinishes()
{
    {
        IdsWrite write(1);
        write.call("eventsCommittedSlot", Q_ARG(QList<int>, Ints()), Q_ARG(QList<int>, (Ints{10})));
        QCOMPARE(write.finishedCount, 1);
        QCOMPARE(write.ids, Ints{-1});
    }
    {
        IdsWrite empty(0);
        empty.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0})),
                   Q_ARG(QList<int>, (Ints{10})));
        QCOMPARE(empty.finishedCount, 1);
    }
}

void TestPendingReports::onlyTheIdMinusOneIsAFault()
{
    IdsWrite write(3);
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0, 1, 2})),
               Q_ARG(QList<int>, (Ints{0, -2, 12})));
    QCOMPARE(write.ids, (Ints{0, -2, 12}));
    QCOMPARE(write.status, (Errors{SmsNoError, SmsNoError, SmsNoError}));
    QVERIFY(!write.isError);
}

void TestPendingReports::aReportWithMoreReferencesThanTheRequestIsCutAtItsEnd()
{
    IdsWrite write(2);
    MessageLog log;
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{1, 0, 0})),
               Q_ARG(QList<int>, (Ints{11, 10, -1})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.ids, (Ints{10, 11}));
    QCOMPARE(write.status, (Errors{SmsNoError, SmsNoError}));
    QVERIFY(!write.isError);
    QVERIFY(warnings(log).isEmpty());
}

void TestPendingReports::aReportWithMoreIdsThanReferencesLeavesTheRest()
{
    IdsWrite write(3);
    MessageLog log;
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0, 1})),
               Q_ARG(QList<int>, (Ints{10, 11, -1})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.ids, (Ints{10, 11, -1}));
    QVERIFY(!write.isError);
    QVERIFY(warnings(log).isEmpty());
}

// The object lives on until the event loop runs, and a late report would reach it.
void TestPendingReports::aFailedCommitIsTheLastReport()
{
    IdsWrite write(1);
    SyncStorageIf *const adapter = write.adapter();
    write.store.react(Request::AddEvents, Reaction::silent());
    write.pending->store({receivedFrom(known, 0)});
    Q_EMIT adapter->eventsCommitFailed({0});
    MessageLog log;
    Q_EMIT adapter->eventsCommitted(Ints{0}, Ints{11});
    Q_EMIT adapter->eventsCommitFailed({0});
    Q_EMIT adapter->error({0}, GroupIdNotFound);
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.pending->ids(), Ints{-1});
    QVERIFY(warnings(log).isEmpty());
}

void TestPendingReports::aReportWithTooFewIdsIsRefusedAtItsEnd()
{
    IdsWrite write(2);
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0, 1})),
               Q_ARG(QList<int>, (Ints{10})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.ids, (Ints{10, -1}));
}

void TestPendingReports::committedOutsideTheRequestIsRefused()
{
    IdsWrite write(2);
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{2, -1})),
               Q_ARG(QList<int>, (Ints{10, -1})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.ids, (Ints{-1, -1}));
    QCOMPARE(write.status, (Errors{SmsNoError, SmsNoError}));
}

void TestPendingReports::aFailedCommitMarksItsItems()
{
    IdsWrite write(3);
    write.store.react(Request::AddEvents, Reaction::failed());
    write.pending->store({receivedFrom(known, 0), receivedFrom(known, 2)});
    settle();
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsDatabaseError, SmsNoError, SmsDatabaseError}));
    QCOMPARE(write.ids, (Ints{-1, -1, -1}));
    QVERIFY(write.isError);
}

void TestPendingReports::aFailedCommitOutsideTheRequestChangesNothing()
{
    StatusWrite write(3, SmsSync);
    MessageLog log;
    write.call("eventsCommitFailed", Q_ARG(QList<int>, (Ints{3, 5})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsNoError, SmsNoError, SmsNoError}));
    QVERIFY(write.isError);
    QVERIFY(warnings(log).isEmpty());
}

void TestPendingReports::aFailedCallCommitShowsInTheErrorFlagAlone()
{
    StatusWrite write(1, CallSync);
    write.store.react(Request::AddEvents, Reaction::failed());
    write.pending->store({call(QStringLiteral("missed"), 0)});
    settle();
    QCOMPARE(write.finishedCount, 1);
    QVERIFY(write.isError);
    QVERIFY(write.status.isEmpty());
}

void TestPendingReports::aMissingConversationMarksItsItemAndFinishesNothing()
{
    StatusWrite write(3, SmsSync);
    SyncStorageIf *const adapter = write.adapter();
    write.store.knowConversation(QStringLiteral("5550100"), 7);
    write.store.react(Request::ModifyEvents, Reaction::silent());
    write.pending->modify({storedMessage(11, 0), storedMessage(12, 1), storedMessage(13, 2)});
    settle();
    MessageLog log;
    Q_EMIT adapter->error({1}, GroupIdNotFound);
    QCOMPARE(warnings(log),
             QStringList(QStringLiteral(
                 "Group Id not found for the message at idx 1 setting database error")));
    QCOMPARE(write.finishedCount, 0);
    QVERIFY(!write.pending->isError());
    QCOMPARE(write.pending->status(), (Errors{SmsNoError, SmsDatabaseError, SmsNoError}));
    Q_EMIT adapter->eventsCommitted(Ints{0, 2}, Ints{11, 13});
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsNoError, SmsDatabaseError, SmsNoError}));
    QVERIFY(!write.isError);
}

void TestPendingReports::aMissingConversationOutsideTheRequestIsLogged()
{
    StatusWrite write(1, SmsSync);
    MessageLog log;
    write.call("errorIndexesNotProcessed", Q_ARG(QList<int>, (Ints{1, 4})),
               Q_ARG(KorvaSyncIf::ErrorCause, GroupIdNotFound));
    QCOMPARE(warnings(log),
             (QStringList{QStringLiteral("Received error for idx  1 is out of range"),
                          QStringLiteral("Received error for idx  4 is out of range")}));
    QCOMPARE(write.pending->status(), Errors{SmsNoError});
    log.clear();
    write.call("errorIndexesNotProcessed", Q_ARG(QList<int>, (Ints{-1})),
               Q_ARG(KorvaSyncIf::ErrorCause, GroupIdNotFound));
    QCOMPARE(write.pending->status(), Errors{SmsNoError});
    log.clear();
    write.call("errorIndexesNotProcessed", Q_ARG(QList<int>, Ints()),
               Q_ARG(KorvaSyncIf::ErrorCause, GroupIdNotFound));
    QVERIFY(warnings(log).isEmpty());
    QCOMPARE(log.lines(QtDebugMsg),
             QStringList(QStringLiteral(
                 "void KorvaSyncIf::PendingStatus::errorIndexesNotProcessed(QList<int>, "
                 "KorvaSyncIf::ErrorCause) 0")));
}

void TestPendingReports::callsDoNotHearOfMissingConversations()
{
    StatusWrite write(1, CallSync);
    SyncStorageIf *const adapter = write.adapter();
    write.store.react(Request::AddEvents, Reaction::silent());
    write.pending->store({call(QStringLiteral("missed"), 0)});
    MessageLog log;
    Q_EMIT adapter->error({0}, GroupIdNotFound);
    QVERIFY(warnings(log).isEmpty());
}

void TestPendingReports::failedDeletionsShowInTheStatusAlone()
{
    StatusWrite write(2, SmsSync);
    MessageLog log;
    write.call("deletedIdsStatus", Q_ARG(QList<int>, (Ints{0, 1})),
               Q_ARG(QList<bool>, (Bools{true, false})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsNoError, SmsDeleteFailed}));
    QVERIFY(!write.isError);
    QCOMPARE(warnings(log), QStringList(QStringLiteral("Deletion for db Id @ idx 1 failed")));
    QVERIFY(log.lines(QtDebugMsg)
                .contains(
                    QStringLiteral("void KorvaSyncIf::PendingStatus::deletedIdsStatus(QList<int>, "
                                   "QList<bool>) 2")));
}

void TestPendingReports::deletionsOutsideTheRequestAreLogged()
{
    StatusWrite write(2, SmsSync);
    MessageLog log;
    write.call("deletedIdsStatus", Q_ARG(QList<int>, (Ints{2, 1, 0})),
               Q_ARG(QList<bool>, (Bools{false, false})));
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsNoError, SmsDeleteFailed}));
    QCOMPARE(warnings(log),
             (QStringList{QStringLiteral("Oops .. An invalid ref Id 2"),
                          QStringLiteral("Deletion for db Id @ idx 1 failed")}));
}

void TestPendingReports::anEmptyDeletionReportFinishes()
{
    StatusWrite write(1, SmsSync);
    write.call("deletedIdsStatus", Q_ARG(QList<int>, Ints()), Q_ARG(QList<bool>, Bools()));
    QCOMPARE(write.finishedCount, 1);
    QVERIFY(!write.isError);
    settle();
    QVERIFY(write.pending.isNull());
}

QTEST_GUILESS_MAIN(TestPendingReports)
#include "tst_pendingreports.moc"
