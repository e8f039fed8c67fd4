// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adaptersignals.h"
#include "callfixture.h"
#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"

#include <QtCore/QMetaObject>
#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace KorvaSyncIf;
using CommHistory::Event;

class TestCallSyncInterface : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theClassHasNoMethodsOfItsOwn();
    void theTraceOfItsLife();
    void theTraceOfItsCalls();
    void destructionEmptiesThePool();

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
    CallFixture f;
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
    CallFixture f;
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
    CallFixture f;
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
    CallFixture f;
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
    CallFixture f;
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
    CallFixture f;
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
    CallFixture f;
    QVERIFY(f.facade->deleteAllCalls());
    QCOMPARE(int(f.store.calls.count(QStringLiteral("CallModel::deleteAll()"))), 1);
    QVERIFY(f.facade->children().isEmpty());
    QVERIFY(!f.adapter()->inUse());
}

void TestCallSyncInterface::aDeletionThatTheStoreRefusesIsFalse()
{
    CallFixture f;
    f.store.callsCanBeDeleted = false;
    MessageLog log;
    QVERIFY(!f.facade->deleteAllCalls());
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    f.store.callsCanBeDeleted = true;
    QVERIFY(f.facade->deleteAllCalls());
}

void TestCallSyncInterface::aDeletionAfterAReadUsesANewAdapter()
{
    CallFixture f;
    f.facade->calls(MissedCall, QDateTime());
    settle();
    QVERIFY(f.facade->deleteAllCalls());
    QCOMPARE(int(f.store.calls.count(QStringLiteral("CallModel()"))), 2);
}

void TestCallSyncInterface::aReceiverMayDeleteTheFacade()
{
    for (const bool fails : {false, true}) {
        CallFixture f;
        if (fails)
            f.store.react(Request::AddEvents, Reaction::failed());
        const QPointer<PendingStatus> pending = f.facade->addNewCalls({incoming});
        connect(pending.data(), &PendingStatus::finished, &f.parent, [&f] { f.facade.reset(); });
        settle();
        QVERIFY(!f.facade);
        QVERIFY(pending.isNull());
    }
    CallFixture f;
    const QPointer<PendingMsgs> pending = f.facade->calls(MissedCall, QDateTime());
    connect(pending.data(), &PendingMsgs::finished, &f.parent, [&f] { f.facade.reset(); });
    settle();
    QVERIFY(!f.facade);
    QVERIFY(pending.isNull());
}

void TestCallSyncInterface::aReceiverMayStartTheNextRequest()
{
    CallFixture f;
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
    CallFixture f;
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
