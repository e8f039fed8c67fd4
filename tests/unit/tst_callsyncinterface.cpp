// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adaptersignals.h"
#include "eventloop.h"
#include "messagelog.h"
#include "platformfixture.h"
#include "samplerecords.h"

#include <korvasync/callsyncinterface.h>

#include <QtCore/QMetaObject>
#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace KorvaSyncIf;
using CommHistory::Event;

namespace {

using CallErrors = QList<CallSyncError>;

QString entry(const QString &type, const QString &number = QStringLiteral("+15550100"))
{
    return QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:%1\r\nTEL:%2\r\nDURATION:60\r\n"
                          "CALL-DATETIME:20101103T142530Z\r\nEND:VCALLHISTENTRY\r\n")
        .arg(type, number);
}

const auto incoming = entry(QStringLiteral("incoming"));
const auto outgoing = entry(QStringLiteral("outgoing"));
const auto broken = entry(QStringLiteral("unknown"));

const auto emptyListWarning = QStringLiteral("Empty smsInfo List");

//! The facade on a scripted store, and what its writes showed inside the slots of finished().
struct Fixture : PlatformFixture
{
    PendingStatus *add(const QList<QString> &entries)
    {
        PendingStatus *const pending = facade->addNewCalls(entries);
        QObject::connect(pending, &PendingStatus::finished, &parent, [this](PendingStatus *ended) {
            ++finishedCount;
            callStatus = ended->statusCallMsgs();
            status = ended->status();
            isError = ended->isError();
        });
        return pending;
    }

    std::unique_ptr<CallSyncInterface> facade{new CallSyncInterface(nullptr)};
    int finishedCount = 0;
    CallErrors callStatus;
    QList<SMSSyncError> status;
    bool isError = false;
};

QDateTime local(int hour, int minute, int second)
{
    return QDateTime(QDate(2010, 11, 3), QTime(hour, minute, second));
}

} // namespace

class TestCallSyncInterface : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theClassHasNoMethodsOfItsOwn();
    void theTraceOfItsLife();
    void theTraceOfItsCalls();
    void destructionEmptiesThePool();

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

    void theKindOfCallReachesTheStore_data();
    void theKindOfCallReachesTheStore();
    void callsComeAsEntries();
    void aRefusedReadLivesUntilTheFacadeGoes();
    void everyReadTakesANewAdapter();

    void allCallsAreDeletedAtOnce();
    void aDeletionThatTheStoreRefusesIsFalse();
    void aDeletionAfterAReadUsesANewAdapter();

    void aReceiverMayDeleteTheFacade();
    void aReceiverMayStartTheNextRequest();
    void theFacadeMayGoWhileRequestsRun();
};

void TestCallSyncInterface::theClassHasNoMethodsOfItsOwn()
{
    const QMetaObject &type = CallSyncInterface::staticMetaObject;
    QCOMPARE(type.className(), "KorvaSyncIf::CallSyncInterface");
    QCOMPARE(type.superClass(), &QObject::staticMetaObject);
    QCOMPARE(type.methodCount(), type.methodOffset());
    QCOMPARE(type.propertyCount(), type.propertyOffset());
    QObject parent;
    auto *const facade = new CallSyncInterface(&parent);
    QCOMPARE(facade->parent(), &parent);
    QCOMPARE(facade->metaObject(), &type);
}

void TestCallSyncInterface::theTraceOfItsLife()
{
    PlatformFixture platform;
    platform.adapter();
    MessageLog log;
    auto facade = std::make_unique<CallSyncInterface>(nullptr);
    QCOMPARE(
        log.lines(QtDebugMsg),
        (QStringList{
            QStringLiteral("KorvaSyncIf::CallSyncInterfacePrivate::CallSyncInterfacePrivate()"),
            QStringLiteral("KorvaSyncIf::CallSyncInterface::CallSyncInterface(QObject*)")}));
    log.clear();
    facade.reset();
    QCOMPARE(
        log.lines(QtDebugMsg),
        (QStringList{
            QStringLiteral(
                "virtual KorvaSyncIf::CallSyncInterface::~CallSyncInterface() Destroyed"),
            QStringLiteral("void KorvaSyncIf::SyncStorageIfManager::deleteAll()"),
            QStringLiteral(
                "virtual KorvaSyncIf::SyncStorageIf::~SyncStorageIf() SyncStorageIf Destroyed"),
            QStringLiteral("Destroying SyncStorageIfPrivate")}));
}

void TestCallSyncInterface::theTraceOfItsCalls()
{
    Fixture f;
    MessageLog log;
    f.facade->addNewCalls({incoming});
    QCOMPARE(log.lines(QtDebugMsg).value(0),
             QStringLiteral("KorvaSyncIf::PendingStatus* "
                            "KorvaSyncIf::CallSyncInterface::addNewCalls(const QList<QString>&)"));
    log.clear();
    f.facade->deleteAllCalls();
    QCOMPARE(log.lines(QtDebugMsg).value(0),
             QStringLiteral("bool KorvaSyncIf::CallSyncInterface::deleteAllCalls()"));
    log.clear();
    f.facade->calls(MissedCall, QDateTime());
    QCOMPARE(log.lines(QtDebugMsg).value(0),
             QStringLiteral("KorvaSyncIf::PendingMsgs* KorvaSyncIf::CallSyncInterface::calls("
                            "KorvaSyncIf::CallType, const QDateTime&)"));
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    log.clear();
    // What a run without trace still shows: how long each request took.
    settle();
    const QRegularExpression written(
        QStringLiteral("^Time taken by PendingStatus to write/modify 1 msgs is \\d+ ms$"));
    const QRegularExpression read(
        QStringLiteral("^Time taken by Pending Msgs to retrieve  0 calls \\d+ ms$"));
    const QStringList times = log.lines(QtCriticalMsg);
    QCOMPARE(int(times.size()), 2);
    QCOMPARE(int(times.filter(written).size()), 1);
    QCOMPARE(int(times.filter(read).size()), 1);
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    QVERIFY(log.lines(QtInfoMsg).isEmpty());
}

void TestCallSyncInterface::destructionEmptiesThePool()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::silent());
    const QPointer<SyncStorageIf> busy = f.adapter();
    f.facade->addNewCalls({incoming});
    const QPointer<SyncStorageIf> idle = f.adapter();
    QVERIFY(busy != idle);
    // Also that of another facade takes them all.
    delete new CallSyncInterface(nullptr);
    QVERIFY(busy.isNull());
    QVERIFY(idle.isNull());
    MessageLog log;
    QVERIFY(f.adapter());
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Creating StorageIf")));
}

void TestCallSyncInterface::entriesAreStoredInOneRequest()
{
    Fixture f;
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

void TestCallSyncInterface::theEntrysTimeIsTheEndOfTheCall()
{
    Fixture f;
    f.add({incoming, outgoing});
    QCOMPARE(int(f.store.addedEvents.size()), 2);
    for (const Event &event : qAsConst(f.store.addedEvents)) {
        QCOMPARE(event.startTime(), local(14, 24, 30));
        QCOMPARE(event.endTime(), local(14, 25, 30));
    }
}

void TestCallSyncInterface::aBrokenEntryIsReportedAndTheOthersAreStored()
{
    Fixture f;
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

void TestCallSyncInterface::onlyBrokenEntriesAreAnErrorAtOnce()
{
    Fixture f;
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

void TestCallSyncInterface::noEntriesAreAnErrorAtOnce()
{
    Fixture f;
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

void TestCallSyncInterface::anEmptyEntryIsStoredAsADefaultCall()
{
    Fixture f;
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

void TestCallSyncInterface::anEntryWithoutReadableTimeIsStored()
{
    Fixture f;
    f.add({QStringLiteral("BEGIN:VCALLHISTENTRY\nTYPE:missed\nDURATION:30\nCALL-DATETIME:soon\n")});
    settle();
    QCOMPARE(f.callStatus, CallErrors{CallNoError});
    const Event event = f.store.addedEvents.value(0);
    QCOMPARE(event.direction(), Event::Inbound);
    QVERIFY(event.endTime().isNull());
    QCOMPARE(event.startTime().toSecsSinceEpoch(), qint64(4294967265));
}

void TestCallSyncInterface::referencesAreThoseOfTheWholeList()
{
    Fixture f;
    const AdapterSignals heard(f.adapter());
    f.add({broken, incoming, broken, broken, outgoing, incoming, broken});
    settle();
    QCOMPARE(heard.heard, QStringList(QStringLiteral("eventsCommitted(1 4 5; 101 102 103)")));
    QCOMPARE(f.callStatus,
             (CallErrors{CallParseError, CallNoError, CallParseError, CallParseError, CallNoError,
                         CallNoError, CallParseError}));
}

void TestCallSyncInterface::callsReportedLateInPartsFinishOnce()
{
    Fixture f;
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

void TestCallSyncInterface::aFailedStoreShowsInTheErrorFlagAlone()
{
    Fixture f;
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

void TestCallSyncInterface::aFailureAfterAPartialReportFailsTheRequest()
{
    Fixture f;
    const AdapterSignals heard(f.adapter());
    f.store.react(Request::AddEvents, Reaction::reporting({{{101}}, {{}, false}}));
    f.add({incoming, outgoing});
    settle();
    QCOMPARE(heard.heard, QStringList(QStringLiteral("eventsCommitFailed(0 1)")));
    QCOMPARE(f.finishedCount, 1);
    QVERIFY(f.isError);
}

void TestCallSyncInterface::refusedCallsLiveUntilTheFacadeGoes()
{
    Fixture f;
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

void TestCallSyncInterface::addsSideBySideFinishEachOnce()
{
    Fixture f;
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

void TestCallSyncInterface::theKindOfCallReachesTheStore_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("incoming") << 0 << QStringLiteral("\"incoming\"") << 3;
    QTest::newRow("outgoing") << 1 << QStringLiteral("\"outgoing\"") << 1;
    QTest::newRow("missed") << 2 << QStringLiteral("\"missed\"") << 2;
    QTest::newRow("next") << 3 << QStringLiteral("\"\"") << 0;
}

void TestCallSyncInterface::theKindOfCallReachesTheStore()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(int, value);
    Fixture f;
    MessageLog log;
    const PendingMsgs *const pending =
        f.facade->calls(CallType(type), QDateTime(QDate(2010, 11, 1), QTime(0, 0), Qt::UTC));
    QCOMPARE(pending->parent(), f.facade.get());
    const QStringList started = log.linesFrom(
        QtDebugMsg,
        QStringLiteral("void KorvaSyncIf::PendingMsgs::callMessages(const QDateTime&, "
                       "const QString&) QDateTime(2010-11-01 "));
    QCOMPARE(int(started.size()), 1);
    QVERIFY2(started.first().endsWith(QLatin1String(") ") + text), qPrintable(started.first()));
    QVERIFY(f.store.calls.contains(
        QStringLiteral("CallModel::setFilter(1, %1, 2010-11-01T00:00:00Z)").arg(value)));
    QVERIFY(f.store.calls.contains(QStringLiteral("CallModel::getEvents()")));
}

void TestCallSyncInterface::callsComeAsEntries()
{
    Fixture f;
    Event late = callEvent(22, Event::Inbound);
    late.setEndTime(QDateTime(QDate(2010, 11, 3), QTime(12, 0, 59, 42), Qt::UTC));
    Event odd = callEvent(20, Event::UnknownDirection);
    odd.setEndTime(QDateTime());
    f.store.callRows = {late, Event(), callEvent(21, Event::Outbound), odd};
    QStringList entries;
    bool isError = true;
    int messages = -1;
    connect(f.facade->calls(IncomingCall, QDateTime()), &PendingMsgs::finished, &f.parent,
            [&](PendingMsgs *pending) {
                entries = pending->callLogs();
                isError = pending->isError();
                messages = int(pending->syncSmsInfo().size());
            });
    QVERIFY(entries.isEmpty());
    settle();
    QCOMPARE(
        entries,
        (QStringList{QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:incoming\r\nTEL:+15550100\r\n"
                                    "DURATION:59\r\nCALL-DATETIME:20101103T12005942\r\n"
                                    "END:VCALLHISTENTRY\r\n"),
                     QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:outgoing\r\nTEL:+15550100\r\n"
                                    "DURATION:30\r\nCALL-DATETIME:20101103T1200000\r\n"
                                    "END:VCALLHISTENTRY\r\n"),
                     // 2^32 - 1 for the missing end, less the start in 32 bits
                     QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:\r\nTEL:+15550100\r\n"
                                    "DURATION:-1288785601\r\nCALL-DATETIME:20101103T1200000\r\n"
                                    "END:VCALLHISTENTRY\r\n")}));
    QVERIFY(!isError);
    QCOMPARE(messages, 0);
}

void TestCallSyncInterface::aRefusedReadLivesUntilTheFacadeGoes()
{
    Fixture f;
    f.store.react(Request::ReadCalls, Reaction::refused());
    const QPointer<PendingMsgs> pending = f.facade->calls(MissedCall, QDateTime());
    QVERIFY(pending->isError());
    settle();
    QVERIFY(pending);
    f.facade.reset();
    QVERIFY(pending.isNull());
}

void TestCallSyncInterface::everyReadTakesANewAdapter()
{
    Fixture f;
    MessageLog log;
    const auto inUse = QStringLiteral(
        "StorageIf in use, saving it in for later deletion, creating a new storageIf");
    for (int read = 0; read < 3; ++read) {
        f.facade->calls(MissedCall, QDateTime());
        settle();
        QCOMPARE(int(log.lines(QtDebugMsg).count(inUse)), read);
        QCOMPARE(int(f.store.calls.count(QStringLiteral("CallModel()"))), read + 1);
    }
}

void TestCallSyncInterface::allCallsAreDeletedAtOnce()
{
    Fixture f;
    QVERIFY(f.facade->deleteAllCalls());
    QCOMPARE(int(f.store.calls.count(QStringLiteral("CallModel::deleteAll()"))), 1);
    QVERIFY(f.facade->children().isEmpty());
    QVERIFY(!f.adapter()->inUse());
}

void TestCallSyncInterface::aDeletionThatTheStoreRefusesIsFalse()
{
    Fixture f;
    f.store.callsCanBeDeleted = false;
    MessageLog log;
    QVERIFY(!f.facade->deleteAllCalls());
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    f.store.callsCanBeDeleted = true;
    QVERIFY(f.facade->deleteAllCalls());
}

void TestCallSyncInterface::aDeletionAfterAReadUsesANewAdapter()
{
    Fixture f;
    f.facade->calls(MissedCall, QDateTime());
    settle();
    QVERIFY(f.facade->deleteAllCalls());
    QCOMPARE(int(f.store.calls.count(QStringLiteral("CallModel()"))), 2);
}

void TestCallSyncInterface::aReceiverMayDeleteTheFacade()
{
    for (const bool fails : {false, true}) {
        Fixture f;
        if (fails)
            f.store.react(Request::AddEvents, Reaction::failed());
        const QPointer<PendingStatus> pending = f.facade->addNewCalls({incoming});
        connect(pending.data(), &PendingStatus::finished, &f.parent, [&f] { f.facade.reset(); });
        settle();
        QVERIFY(!f.facade);
        QVERIFY(pending.isNull());
    }
    Fixture f;
    const QPointer<PendingMsgs> pending = f.facade->calls(MissedCall, QDateTime());
    connect(pending.data(), &PendingMsgs::finished, &f.parent, [&f] { f.facade.reset(); });
    settle();
    QVERIFY(!f.facade);
    QVERIFY(pending.isNull());
}

void TestCallSyncInterface::aReceiverMayStartTheNextRequest()
{
    Fixture f;
    f.store.callRows = {callEvent(21, Event::Inbound)};
    int entriesRead = 0;
    connect(f.add({incoming}), &PendingStatus::finished, &f.parent, [&] {
        connect(f.facade->calls(MissedCall, QDateTime()), &PendingMsgs::finished, &f.parent,
                [&](PendingMsgs *read) {
                    entriesRead += int(read->callLogs().size());
                    f.add({outgoing, broken});
                });
    });
    settle();
    QCOMPARE(entriesRead, 1);
    QCOMPARE(f.finishedCount, 2);
    QCOMPARE(f.callStatus, (CallErrors{CallNoError, CallParseError}));
}

void TestCallSyncInterface::theFacadeMayGoWhileRequestsRun()
{
    Fixture f;
    const QPointer<PendingStatus> write = f.add({incoming});
    const QPointer<PendingMsgs> read = f.facade->calls(MissedCall, QDateTime());
    f.facade.reset();
    QVERIFY(write.isNull());
    QVERIFY(read.isNull());
    settle();
    QCOMPARE(f.finishedCount, 0);
}

QTEST_GUILESS_MAIN(TestCallSyncInterface)
#include "tst_callsyncinterface.moc"
