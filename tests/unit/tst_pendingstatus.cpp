// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventloop.h"
#include "messagelog.h"
#include "pendingwrite.h"
#include "samplerecords.h"

#include <QtCore/QRegularExpression>

using namespace KorvaSyncIf;

namespace {

const auto known = QStringLiteral("+15550100");

QStringList warnings(const MessageLog &log) { return log.lines(QtWarningMsg); }

} // namespace

//! A pending write from its creation to its end.
class TestPendingStatus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void messageListsAreSizedByTheCount();
    void callListsAreSizedByTheCount();
    void aCountBelowOneGivesEmptyLists_data();
    void aCountBelowOneGivesEmptyLists();
    void errorsAreSetByReference();
    void errorsAreSetAsFarAsBothListsReach();
    void callErrorsAreSetByReference();
    void errorsOutsideTheRequestAreRefused();
    void aRequestWithoutItemsIsAnError();
    void theEntryOfARequestWithoutItemsIsAppended();
    void nothingLeftToStoreIsAnError();
    void nothingLeftToModifyIsAnError();
    void nothingLeftToDeleteIsAnError();
    void noCallsLeftToStoreIsAnErrorInTheSameWords();
    void addedMessagesGetTheirIds();
    void modifiedMessagesFinish();
    void storedCallsFinish();
    void deletedMessagesFinish();
    void refusedCallsAreAnErrorAtOnceAndStay();
    void nothingComesInsideTheCall();
    void theObjectLivesInItsSlotAndIsGoneAfter();
    void reportsAfterTheEndReachNobody();
    void onlyWritesLogTheirTime();
    void theTimeLineCountsTheReportedIds();
    void aTimerThatNeverRanShowsNoTime();
    void theTraceOfItsLife();
};

void TestPendingStatus::messageListsAreSizedByTheCount()
{
    {
        StatusWrite write(3, SmsSync);
        QCOMPARE(write.pending->status(), (Errors{SmsNoError, SmsNoError, SmsNoError}));
        QVERIFY(write.pending->statusCallMsgs().isEmpty());
        QVERIFY(!write.pending->isError());
    }
    {
        IdsWrite ids(3);
        QCOMPARE(ids.pending->ids(), (Ints{-1, -1, -1}));
        QCOMPARE(ids.pending->status(), (Errors{SmsNoError, SmsNoError, SmsNoError}));
    }
}

void TestPendingStatus::callListsAreSizedByTheCount()
{
    StatusWrite write(2, CallSync);
    QVERIFY(write.pending->status().isEmpty());
    QCOMPARE(write.pending->statusCallMsgs(), (CallErrors{CallNoError, CallNoError}));
}

void TestPendingStatus::aCountBelowOneGivesEmptyLists_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -1;
}

void TestPendingStatus::aCountBelowOneGivesEmptyLists()
{
    QFETCH(int, count);
    IdsWrite messages(count);
    QVERIFY(messages.pending->status().isEmpty());
    QVERIFY(messages.pending->ids().isEmpty());
    QVERIFY(!messages.pending->isError());
}

void TestPendingStatus::errorsAreSetByReference()
{
    StatusWrite write(4, SmsSync);
    write.pending->setStatusIds({1, 3}, {SmsParseError, SmsInvalidId});
    QCOMPARE(write.pending->status(),
             (Errors{SmsNoError, SmsParseError, SmsNoError, SmsInvalidId}));
    QVERIFY(!write.pending->isError());
    settle();
    QCOMPARE(write.finishedCount, 0);
}

void TestPendingStatus::errorsAreSetAsFarAsBothListsReach()
{
    StatusWrite write(2, SmsSync);
    write.pending->setStatusIds({0, 1}, {SmsNoVCard});
    QCOMPARE(write.pending->status(), (Errors{SmsNoVCard, SmsNoError}));
    write.pending->setStatusIds({1}, {SmsNoParentId, SmsParseError});
    QCOMPARE(write.pending->status(), (Errors{SmsNoVCard, SmsNoParentId}));
    write.pending->setStatusIds({}, {SmsParseError});
    write.pending->setStatusIds({0}, {});
    QCOMPARE(write.pending->status(), (Errors{SmsNoVCard, SmsNoParentId}));
}

void TestPendingStatus::callErrorsAreSetByReference()
{
    StatusWrite write(3, CallSync);
    write.pending->setStatusCallIds({2}, {CallParseError});
    QCOMPARE(write.pending->statusCallMsgs(),
             (CallErrors{CallNoError, CallNoError, CallParseError}));
    write.pending->setStatusCallIds({}, {CallParseError});
    write.pending->setStatusCallIds({0, 1}, {CallParseError});
    QCOMPARE(write.pending->statusCallMsgs(),
             (CallErrors{CallParseError, CallNoError, CallParseError}));
    QVERIFY(!write.pending->isError());
}

void TestPendingStatus::errorsOutsideTheRequestAreRefused()
{
    StatusWrite write(1, SmsSync);
    MessageLog log;
    write.pending->setStatusIds({1, -1, 0}, {SmsParseError, SmsParseError, SmsNoVCard});
    QCOMPARE(write.pending->status(), Errors{SmsNoVCard});
    QCOMPARE(int(warnings(log).size()), 2);
}

void TestPendingStatus::aRequestWithoutItemsIsAnError()
{
    IdsWrite write(0);
    MessageLog log;
    write.pending->setZeroMessagesPassedError();
    QCOMPARE(write.pending->status(), Errors{SmsZeroMessagesPassed});
    QCOMPARE(write.pending->ids(), Ints{-1});
    QVERIFY(write.pending->isError());
    QCOMPARE(warnings(log), QStringList(QStringLiteral("Empty list to be processed")));
    settle();
    QCOMPARE(write.finishedCount, 0);
    QVERIFY(write.pending);
}

void TestPendingStatus::theEntryOfARequestWithoutItemsIsAppended()
{
    IdsWrite write(1);
    write.pending->setZeroMessagesPassedError();
    QCOMPARE(write.pending->status(), (Errors{SmsNoError, SmsZeroMessagesPassed}));
    QCOMPARE(write.pending->ids(), (Ints{-1, -1}));
}

void TestPendingStatus::nothingLeftToStoreIsAnError()
{
    IdsWrite write(1);
    MessageLog log;
    write.pending->setStatusIds({0}, {SmsParseError});
    write.pending->store(QList<SmsInfo>());
    QVERIFY(write.pending->isError());
    QCOMPARE(warnings(log), QStringList(QStringLiteral("Empty list :: setting errorOccured")));
    QCOMPARE(write.pending->status(), Errors{SmsParseError});
    settle();
    QCOMPARE(write.finishedCount, 0);
    QVERIFY(write.pending);
    QVERIFY(!write.adapter()->inUse());
}

void TestPendingStatus::nothingLeftToModifyIsAnError()
{
    StatusWrite write(1, SmsSync);
    MessageLog log;
    write.pending->modify({});
    QVERIFY(write.pending->isError());
    QCOMPARE(warnings(log), QStringList(QStringLiteral("Empty smsInfo List")));
    settle();
    QCOMPARE(write.finishedCount, 0);
    QVERIFY(!write.adapter()->inUse());
}

void TestPendingStatus::nothingLeftToDeleteIsAnError()
{
    StatusWrite write(1, SmsSync);
    MessageLog log;
    write.pending->deleteIds({});
    QVERIFY(write.pending->isError());
    QCOMPARE(warnings(log), QStringList(QStringLiteral("Empty ids list")));
    settle();
    QCOMPARE(write.finishedCount, 0);
    QVERIFY(!write.adapter()->inUse());
}

void TestPendingStatus::noCallsLeftToStoreIsAnErrorInTheSameWords()
{
    StatusWrite write(1, CallSync);
    MessageLog log;
    write.pending->store(QList<CallInfo>());
    QVERIFY(write.pending->isError());
    QCOMPARE(warnings(log), QStringList(QStringLiteral("Empty smsInfo List")));
    QVERIFY(log.lines(QtDebugMsg).isEmpty());
    settle();
    QCOMPARE(write.finishedCount, 0);
}

void TestPendingStatus::addedMessagesGetTheirIds()
{
    IdsWrite write(3);
    write.pending->setStatusIds({1}, {SmsParseError});
    write.pending->store({receivedFrom(known, 0), receivedFrom(known, 2)});
    QVERIFY(!write.pending->isError());
    settle();
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.ids, (Ints{101, -1, 102}));
    QCOMPARE(write.status, (Errors{SmsNoError, SmsParseError, SmsNoError}));
    QVERIFY(!write.isError);
}

void TestPendingStatus::modifiedMessagesFinish()
{
    StatusWrite write(2, SmsSync);
    write.store.knowConversation(QStringLiteral("5550100"), 7);
    write.pending->modify({storedMessage(11, 0), storedMessage(12, 1)});
    settle();
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsNoError, SmsNoError}));
    QVERIFY(!write.isError);
}

void TestPendingStatus::storedCallsFinish()
{
    StatusWrite write(2, CallSync);
    write.pending->store({call(QStringLiteral("missed"), 0), call(QStringLiteral("missed"), 1)});
    QVERIFY(!write.pending->isError());
    settle();
    QCOMPARE(write.finishedCount, 1);
    QVERIFY(!write.isError);
}

void TestPendingStatus::deletedMessagesFinish()
{
    StatusWrite write(2, SmsSync);
    write.pending->deleteIds({storedMessage(11, 0), storedMessage(12, 1)});
    QVERIFY(!write.pending->isError());
    settle();
    QCOMPARE(write.finishedCount, 1);
    QCOMPARE(write.status, (Errors{SmsNoError, SmsNoError}));
    QVERIFY(!write.isError);
}

void TestPendingStatus::refusedCallsAreAnErrorAtOnceAndStay()
{
    StatusWrite write(1, CallSync);
    write.store.react(Request::AddEvents, Reaction::refused());
    write.pending->store({call(QStringLiteral("missed"), 0)});
    QVERIFY(write.pending->isError());
    QCOMPARE(write.pending->statusCallMsgs(), CallErrors{CallNoError});
    settle();
    QCOMPARE(write.finishedCount, 0);
    QVERIFY(write.pending);
}

void TestPendingStatus::nothingComesInsideTheCall()
{
    const Reaction atOnce = Reaction::reporting({{{101}}}, Reaction::AtOnce);
    {
        IdsWrite write(1);
        write.store.react(Request::AddEvents, atOnce);
        write.pending->store({receivedFrom(known, 0)});
        QCOMPARE(write.finishedCount, 0);
        settle();
        QCOMPARE(write.finishedCount, 1);
    }
    {
        StatusWrite write(1, SmsSync);
        write.store.knowConversation(QStringLiteral("5550100"), 7);
        write.store.react(Request::ModifyEvents, atOnce);
        write.pending->modify({storedMessage(101, 0)});
        QCOMPARE(write.finishedCount, 0);
        settle();
        QCOMPARE(write.finishedCount, 1);
    }
    {
        StatusWrite write(1, CallSync);
        write.store.react(Request::AddEvents, atOnce);
        write.pending->store({call(QStringLiteral("missed"), 0)});
        QCOMPARE(write.finishedCount, 0);
        settle();
        QCOMPARE(write.finishedCount, 1);
    }
    {
        StatusWrite write(1, SmsSync);
        write.store.react(Request::DeleteEvents, atOnce);
        write.pending->deleteIds({storedMessage(101, 0)});
        QCOMPARE(write.finishedCount, 0);
        settle();
        QCOMPARE(write.finishedCount, 1);
    }
}

void TestPendingStatus::theObjectLivesInItsSlotAndIsGoneAfter()
{
    IdsWrite write(1);
    PendingIds *const address = write.pending;
    bool wasAlive = false;
    connect(address, &PendingStatus::finished, &write.parent,
            [&] { wasAlive = !write.pending.isNull(); });
    write.pending->store({receivedFrom(known, 0)});
    settle();
    QVERIFY(wasAlive);
    QCOMPARE(write.finishedWith, address);
    QVERIFY(write.pending.isNull());
}

void TestPendingStatus::reportsAfterTheEndReachNobody()
{
    {
        IdsWrite write(1);
        SyncStorageIf *const adapter = write.adapter();
        write.store.react(Request::AddEvents, Reaction::silent());
        write.pending->store({receivedFrom(known, 0)});
        Q_EMIT adapter->eventsCommitted(Ints{0}, Ints{11});
        MessageLog log;
        Q_EMIT adapter->eventsCommitted(Ints{0}, Ints{12});
        Q_EMIT adapter->eventsCommitFailed({0});
        Q_EMIT adapter->error({0}, GroupIdNotFound);
        QCOMPARE(write.finishedCount, 1);
        QCOMPARE(write.pending->ids(), Ints{11});
        QCOMPARE(write.pending->status(), Errors{SmsNoError});
        QVERIFY(warnings(log).isEmpty());
    }
    {
        StatusWrite write(1, SmsSync);
        SyncStorageIf *const adapter = write.adapter();
        write.store.react(Request::DeleteEvents, Reaction::silent());
        write.pending->deleteIds({storedMessage(11, 0)});
        Q_EMIT adapter->eventsCommitFailed({0}); // not what a deletion listens to
        QCOMPARE(write.finishedCount, 0);
        Q_EMIT adapter->deletedIdsStatus({0}, {true});
        Q_EMIT adapter->deletedIdsStatus({0}, {false});
        QCOMPARE(write.finishedCount, 1);
        QCOMPARE(write.pending->status(), Errors{SmsNoError});
    }
}

void TestPendingStatus::onlyWritesLogTheirTime()
{
    {
        IdsWrite write(2);
        MessageLog log;
        write.pending->store({receivedFrom(known, 0), receivedFrom(known, 1)});
        settle();
        const QStringList lines = log.lines(QtCriticalMsg);
        QCOMPARE(int(lines.size()), 1);
        const QRegularExpression expected(
            QStringLiteral("^Time taken by PendingStatus to write/modify 2 msgs is \\d+ ms$"));
        QVERIFY2(expected.match(lines.at(0)).hasMatch(), qPrintable(lines.at(0)));
    }
    {
        IdsWrite write(1);
        MessageLog log;
        write.call("eventsCommitFailed", Q_ARG(QList<int>, (Ints{0})));
        QVERIFY(log.lines(QtCriticalMsg).isEmpty());
    }
    {
        StatusWrite write(1, SmsSync);
        MessageLog log;
        write.pending->deleteIds({storedMessage(11, 0)});
        settle();
        QCOMPARE(write.finishedCount, 1);
        QVERIFY(log.lines(QtCriticalMsg).isEmpty());
    }
}

void TestPendingStatus::theTimeLineCountsTheReportedIds()
{
    IdsWrite write(3);
    MessageLog log;
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0, 1, 2})),
               Q_ARG(QList<int>, (Ints{11, 12, 13, 14, 15})));
    QCOMPARE(int(log.linesFrom(QtCriticalMsg,
                               QStringLiteral("Time taken by PendingStatus to write/modify 5 msgs "
                                              "is "))
                     .size()),
             1);
}

void TestPendingStatus::aTimerThatNeverRanShowsNoTime()
{
    IdsWrite write(1);
    MessageLog log;
    write.call("eventsCommittedSlot", Q_ARG(QList<int>, (Ints{0})), Q_ARG(QList<int>, (Ints{11})));
    QCOMPARE(
        log.lines(QtCriticalMsg),
        QStringList(QStringLiteral("Time taken by PendingStatus to write/modify 1 msgs is 0 ms")));
}

void TestPendingStatus::theTraceOfItsLife()
{
    MessageLog log;
    {
        IdsWrite write(1);
        write.pending->store({receivedFrom(known, 0)});
        settle();
    }
    const QStringList lines = log.lines(QtDebugMsg);
    for (const char *const line :
         {"KorvaSyncIf::PendingStatus::PendingStatus(int, KorvaSyncIf::SyncType, QObject*)",
          "KorvaSyncIf::PendingIds::PendingIds(int, QObject*)",
          "void KorvaSyncIf::PendingIds::store(const QList<KorvaSyncIf::SmsInfo>&)",
          "void KorvaSyncIf::PendingStatus::eventsCommittedSlot(QList<int>, QList<int>)",
          "virtual KorvaSyncIf::PendingIds::~PendingIds()",
          "virtual KorvaSyncIf::PendingStatus::~PendingStatus()"})
        QCOMPARE(int(lines.count(QString::fromLatin1(line))), 1);
}

QTEST_GUILESS_MAIN(TestPendingStatus)
#include "tst_pendingstatus.moc"
