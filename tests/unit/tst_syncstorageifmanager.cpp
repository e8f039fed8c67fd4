// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The pool, and how an adapter comes and goes.

#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"
#include "scriptedstore.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

//! The pool on a store; empty at the start and at the end of each test.
struct Fixture
{
    ~Fixture() { pool->deleteAll(); }

    ScriptedStore store;
    SyncStorageIfManager *pool = SyncStorageIfManager::getInstance();
};

//! Id of the type that is registered under the name; 0 when there is none.
int typeId(const QString &name)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMetaType::fromName(name.toLatin1()).id();
#else
    return QMetaType::type(name.toLatin1());
#endif
}

QStringList destructionLines(const MessageLog &log)
{
    return log.lines(QtDebugMsg).filter(QStringLiteral("Destr"));
}

} // namespace

class TestSyncStorageIfManager : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void thereIsOnePool();
    void anEmptyPoolMayBeEmptied();
    void anIdleAdapterIsHandedOutAgain();
    void aBusyAdapterIsReplacedAndStaysRetired();
    void aCallReadRetiresItsAdapter();
    void aRefusedWriteRetiresItsAdapter();
    void aRetiredAdapterFinishesItsBatch();
    void aRetiredAdapterIsNotHandedOutWhenTheNextOneIsBusy();
    void emptyingDestroysCurrentThenRetiredInOrder();
    void anAdapterIsMadeWithTwoModels();
    void anAdapterDestroysItsModels();
    void anAdapterStartsIdle();
    void signalTypesAreRegistered_data();
    void signalTypesAreRegistered();
    void theTraceOfAnAdaptersMaking();
};

void TestSyncStorageIfManager::thereIsOnePool()
{
    QVERIFY(SyncStorageIfManager::getInstance());
    QCOMPARE(SyncStorageIfManager::getInstance(), SyncStorageIfManager::getInstance());
}

void TestSyncStorageIfManager::anEmptyPoolMayBeEmptied()
{
    Fixture f;
    f.pool->deleteAll();
    f.pool->deleteAll();
    QVERIFY(f.store.calls.isEmpty());
    MessageLog log;
    QVERIFY(f.pool->syncStorageIf());
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Creating StorageIf")));
}

void TestSyncStorageIfManager::anIdleAdapterIsHandedOutAgain()
{
    Fixture f;
    SyncStorageIf *const adapter = f.pool->syncStorageIf();
    MessageLog log;
    QCOMPARE(f.pool->syncStorageIf(), adapter);
    QCOMPARE(log.lines(QtDebugMsg),
             (QStringList{
                 QStringLiteral("KorvaSyncIf::SyncStorageIf* "
                                "KorvaSyncIf::SyncStorageIfManager::syncStorageIf()"),
                 QStringLiteral("bool KorvaSyncIf::SyncStorageIf::inUse() Returning in Use Value"),
                 QStringLiteral("StorageIf not in use anymore, returning the same storageIf")}));
}

void TestSyncStorageIfManager::aBusyAdapterIsReplacedAndStaysRetired()
{
    Fixture f;
    SyncStorageIf *const busy = f.pool->syncStorageIf();
    busy->storeSms({receivedFrom(QStringLiteral("+15550100"), 0)});
    MessageLog log;
    SyncStorageIf *const fresh = f.pool->syncStorageIf();
    QVERIFY(fresh != busy);
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("StorageIf in use, saving it in for later deletion, "
                                         "creating a new storageIf")));
    settle();
    QVERIFY(!busy->inUse());
    QCOMPARE(f.pool->syncStorageIf(), fresh);
}

void TestSyncStorageIfManager::aCallReadRetiresItsAdapter()
{
    Fixture f;
    SyncStorageIf *const adapter = f.pool->syncStorageIf();
    adapter->fetchCallMessages(QDateTime(), QString());
    settle();
    QVERIFY(f.pool->syncStorageIf() != adapter);
}

void TestSyncStorageIfManager::aRefusedWriteRetiresItsAdapter()
{
    Fixture f;
    f.store.react(Request::AddEvents, Reaction::refused());
    SyncStorageIf *const adapter = f.pool->syncStorageIf();
    adapter->storeSms({receivedFrom(QStringLiteral("+15550100"), 0)});
    settle();
    QVERIFY(f.pool->syncStorageIf() != adapter);
}

void TestSyncStorageIfManager::aRetiredAdapterFinishesItsBatch()
{
    Fixture f;
    SyncStorageIf *const busy = f.pool->syncStorageIf();
    QList<int> committed;
    connect(busy, qOverload<QList<int>, QList<int>>(&SyncStorageIf::eventsCommitted), this,
            [&committed](QList<int>, QList<int> ids) { committed = ids; });
    busy->storeSms({receivedFrom(QStringLiteral("+15550100"), 0)});
    f.pool->syncStorageIf();
    settle();
    QCOMPARE(committed, QList<int>{101});
}

void TestSyncStorageIfManager::aRetiredAdapterIsNotHandedOutWhenTheNextOneIsBusy()
{
    Fixture f;
    SyncStorageIf *const first = f.pool->syncStorageIf();
    first->storeSms({receivedFrom(QStringLiteral("+15550100"), 0)});
    SyncStorageIf *const second = f.pool->syncStorageIf();
    settle();
    QVERIFY(!first->inUse());
    second->storeSms({receivedFrom(QStringLiteral("+15550100"), 0)});
    SyncStorageIf *const third = f.pool->syncStorageIf();
    QVERIFY(third != first);
    QVERIFY(third != second);
}

void TestSyncStorageIfManager::emptyingDestroysCurrentThenRetiredInOrder()
{
    Fixture f;
    QStringList destroyed;
    for (const char *const name : {"first", "second", "current"}) {
        SyncStorageIf *const adapter = f.pool->syncStorageIf();
        connect(adapter, &QObject::destroyed, this,
                [&destroyed, name] { destroyed.append(QString::fromLatin1(name)); });
        if (qstrcmp(name, "current") != 0)
            adapter->fetchCallMessages(QDateTime(), QString());
    }
    f.pool->deleteAll();
    QCOMPARE(destroyed,
             (QStringList{QStringLiteral("current"), QStringLiteral("first"),
                          QStringLiteral("second")}));
    f.pool->deleteAll();
    QCOMPARE(int(destroyed.size()), 3);
    settle(); // what was posted to them is gone too
}

void TestSyncStorageIfManager::anAdapterIsMadeWithTwoModels()
{
    ScriptedStore store;
    const SyncStorageIf adapter(nullptr);
    QCOMPARE(store.calls,
             (QStringList{QStringLiteral("SyncSMSModel(4098, null, false)"),
                          QStringLiteral("GroupModel()"),
                          QStringLiteral("GroupModel::enableContactChanges(false)")}));
    QVERIFY(!adapter.parent());
}

void TestSyncStorageIfManager::anAdapterDestroysItsModels()
{
    ScriptedStore store;
    MessageLog log;
    {
        SyncStorageIf adapter(nullptr);
        store.calls.clear();
        log.clear();
    }
    QCOMPARE(store.calls,
             (QStringList{QStringLiteral("~SyncSMSModel"), QStringLiteral("~GroupModel")}));
    QCOMPARE(destructionLines(log),
             (QStringList{QStringLiteral("virtual KorvaSyncIf::SyncStorageIf::~SyncStorageIf() "
                                         "SyncStorageIf Destroyed"),
                          QStringLiteral("Destroying SyncStorageIfPrivate")}));
    {
        SyncStorageIf adapter(nullptr);
        adapter.deleteAllCallLogMsgs();
        adapter.deleteSms({});
        store.calls.clear();
    }
    QCOMPARE(store.calls,
             (QStringList{QStringLiteral("~SyncSMSModel"), QStringLiteral("~GroupModel"),
                          QStringLiteral("~CallModel"), QStringLiteral("~EventModel")}));
}

void TestSyncStorageIfManager::anAdapterStartsIdle()
{
    ScriptedStore store;
    QVERIFY(!SyncStorageIf(nullptr).inUse());
}

void TestSyncStorageIfManager::signalTypesAreRegistered_data()
{
    QTest::addColumn<QString>("name");
    for (const char *const name : {"QList<KorvaSyncIf::SmsInfo>", "KorvaSyncIf::ErrorCause",
                                   "QList<KorvaSyncIf::CallInfo>", "QList<bool>"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestSyncStorageIfManager::signalTypesAreRegistered()
{
    QFETCH(QString, name);
    ScriptedStore store;
    const SyncStorageIf adapter(nullptr);
    const QMetaType type(typeId(name));
    QVERIFY(type.isValid());
    QVERIFY(type.sizeOf() > 0);
    void *const value = type.create();
    QVERIFY(value);
    type.destroy(value);
}

void TestSyncStorageIfManager::theTraceOfAnAdaptersMaking()
{
    ScriptedStore store;
    MessageLog log;
    const SyncStorageIf adapter(nullptr);
    const QStringList lines = log.lines(QtDebugMsg);
    QCOMPARE(lines.value(1), QStringLiteral("KorvaSyncIf::SyncStorageIf::SyncStorageIf(QObject*)"));
    const auto id = [](const char *name) {
        return QString::number(typeId(QString::fromLatin1(name)));
    };
    QCOMPARE(lines.value(2),
             QStringLiteral("regId2> %1 regId3 %2 regId4 %3 regId5 %4")
                 .arg(id("QList<KorvaSyncIf::SmsInfo>"), id("KorvaSyncIf::ErrorCause"),
                      id("QList<KorvaSyncIf::CallInfo>"), id("QList<bool>")));
}

QTEST_GUILESS_MAIN(TestSyncStorageIfManager)
#include "tst_syncstorageifmanager.moc"
