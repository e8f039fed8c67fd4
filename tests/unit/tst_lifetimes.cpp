// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Who lives how long: what receivers of finished() may do, and what becomes of requests that
// never finish.

#include "eventloop.h"
#include "samplerecords.h"
#include "scriptedstore.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"
#include "vmessagetext.h"

#include <korvasync/smssyncinterface.h>

#include <QtCore/QPointer>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace KorvaSyncIf;

namespace {

QList<SyncSmsInfo> oneItem(int id = 11)
{
    SyncSmsInfo item;
    item.id = id;
    item.vMessage = VMessageText().text();
    return {item};
}

//! Starts one kind of request and calls the receiver from its finished().
using Start = std::function<QObject *(SMSSyncInterface &, std::function<void(QObject *)>)>;

template <typename Pending>
QObject *whenFinished(Pending *pending, const std::function<void(QObject *)> &receiver)
{
    // By the pending object itself, so that the connection outlives a deleted facade.
    QObject::connect(pending, &std::remove_pointer_t<decltype(pending)>::finished,
                     [receiver](QObject *sender) { receiver(sender); });
    return pending;
}

void addStartRows()
{
    QTest::addColumn<Start>("start");
    QTest::addColumn<bool>("fails"); // the store reports failure
    const auto row = [](const char *name, const Start &start, bool fails = false) {
        QTest::newRow(name) << start << fails;
    };
    const Start add = [](SMSSyncInterface &facade, const std::function<void(QObject *)> &receiver) {
        QList<SyncSmsInfo> items = oneItem();
        return whenFinished(facade.addNewMessages(items), receiver);
    };
    row("read", [](SMSSyncInterface &facade, const std::function<void(QObject *)> &receiver) {
        return whenFinished(facade.messages(QDateTime(), LocInbox), receiver);
    });
    row("add", add);
    row("failed-add", add, true);
    row("modify", [](SMSSyncInterface &facade, const std::function<void(QObject *)> &receiver) {
        return whenFinished(facade.modifyMessages(oneItem()), receiver);
    });
    row("delete", [](SMSSyncInterface &facade, const std::function<void(QObject *)> &receiver) {
        return whenFinished(facade.deleteMessages({11}), receiver);
    });
}

//! The store of each row.
struct Store : ScriptedStore
{
    explicit Store(bool fails)
    {
        knowConversation(QStringLiteral("5550100"), 7);
        if (fails)
            react(Request::AddEvents, Reaction::failed());
    }
};

} // namespace

Q_DECLARE_METATYPE(Start)

class TestLifetimes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void resultsComeFromTheEventLoop_data() { addStartRows(); }
    void resultsComeFromTheEventLoop();
    void aReceiverMayDeleteThePendingObject_data() { addStartRows(); }
    void aReceiverMayDeleteThePendingObject();
    void aReceiverMayDeleteTheFacade_data() { addStartRows(); }
    void aReceiverMayDeleteTheFacade();
    void aReceiverMayStartTheNextRequest_data() { addStartRows(); }
    void aReceiverMayStartTheNextRequest();
    void theFacadeMayGoWhileARequestRuns_data() { addStartRows(); }
    void theFacadeMayGoWhileARequestRuns();
    void theClientMayDeleteAPendingObjectThatRuns_data() { addStartRows(); }
    void theClientMayDeleteAPendingObjectThatRuns();
    void refusedRequestsLiveUntilTheFacadeGoes();
    void requestsOfAnotherFacadeNeverFinishOnceAFacadeGoes();
    void requestsSideBySideFinishEachOnce();
    void aFailedGroupCommitIsFinishedByTheAdaptersNextBatch();
};

void TestLifetimes::resultsComeFromTheEventLoop()
{
    QFETCH(Start, start);
    QFETCH(bool, fails);
    Store store(fails);
    SMSSyncInterface facade;
    int finishedCount = 0;
    bool aliveInSlot = false;
    QPointer<QObject> pending;
    pending = start(facade, [&](QObject *sender) {
        ++finishedCount;
        aliveInSlot = pending == sender;
    });
    QCOMPARE(finishedCount, 0);
    settle();
    QCOMPARE(finishedCount, 1);
    QVERIFY(aliveInSlot);
    QVERIFY(pending.isNull());
}

void TestLifetimes::aReceiverMayDeleteThePendingObject()
{
    QFETCH(Start, start);
    QFETCH(bool, fails);
    Store store(fails);
    SMSSyncInterface facade;
    int finishedCount = 0;
    start(facade, [&](QObject *sender) {
        ++finishedCount;
        delete sender;
    });
    settle();
    QCOMPARE(finishedCount, 1);
}

void TestLifetimes::aReceiverMayDeleteTheFacade()
{
    QFETCH(Start, start);
    QFETCH(bool, fails);
    Store store(fails);
    auto facade = std::make_unique<SMSSyncInterface>();
    int finishedCount = 0;
    const QPointer<QObject> pending = start(*facade, [&](QObject *) {
        ++finishedCount;
        facade.reset();
    });
    settle();
    QCOMPARE(finishedCount, 1);
    QVERIFY(pending.isNull());
}

void TestLifetimes::aReceiverMayStartTheNextRequest()
{
    QFETCH(Start, start);
    QFETCH(bool, fails);
    Store store(fails);
    SMSSyncInterface facade;
    int finishedCount = 0;
    std::function<void(QObject *)> next = [&](QObject *) {
        if (++finishedCount < 3)
            start(facade, next);
    };
    start(facade, next);
    settle();
    QCOMPARE(finishedCount, 3);
}

void TestLifetimes::theFacadeMayGoWhileARequestRuns()
{
    QFETCH(Start, start);
    QFETCH(bool, fails);
    Store store(fails);
    auto facade = std::make_unique<SMSSyncInterface>();
    int finishedCount = 0;
    const QPointer<QObject> pending = start(*facade, [&](QObject *) { ++finishedCount; });
    facade.reset();
    QVERIFY(pending.isNull());
    settle();
    QCOMPARE(finishedCount, 0);
}

void TestLifetimes::theClientMayDeleteAPendingObjectThatRuns()
{
    QFETCH(Start, start);
    QFETCH(bool, fails);
    Store store(fails);
    SMSSyncInterface facade;
    int finishedCount = 0;
    delete start(facade, [&](QObject *) { ++finishedCount; });
    settle();
    QCOMPARE(finishedCount, 0);
}

void TestLifetimes::refusedRequestsLiveUntilTheFacadeGoes()
{
    ScriptedStore store;
    auto facade = std::make_unique<SMSSyncInterface>();
    store.react(Request::ReadMessages, Reaction::refused());
    QList<SyncSmsInfo> nothing;
    const QList<QPointer<QObject>> refused{
        facade->messages(QDateTime(), LocInbox), facade->addNewMessages(nothing),
        facade->modifyMessages(nothing), facade->deleteMessages({-1})};
    settle();
    for (const auto &pending : refused)
        QVERIFY(pending);
    facade.reset();
    for (const auto &pending : refused)
        QVERIFY(pending.isNull());
}

void TestLifetimes::requestsOfAnotherFacadeNeverFinishOnceAFacadeGoes()
{
    ScriptedStore store;
    SMSSyncInterface facade;
    auto other = std::make_unique<SMSSyncInterface>();
    int finishedCount = 0;
    const QPointer<PendingMsgs> pending = facade.messages(QDateTime(), LocInbox);
    connect(pending.data(), &PendingMsgs::finished, this, [&] { ++finishedCount; });
    other.reset();
    settle();
    QCOMPARE(finishedCount, 0);
    QVERIFY(pending);
}

void TestLifetimes::requestsSideBySideFinishEachOnce()
{
    Store store(false);
    SMSSyncInterface facade;
    QStringList finished;
    const auto note = [&finished](const char *name) {
        return [&finished, name] { finished.append(QString::fromLatin1(name)); };
    };
    QList<SyncSmsInfo> items = oneItem();
    connect(facade.addNewMessages(items), &PendingStatus::finished, this, note("add"));
    connect(facade.messages(QDateTime(), LocInbox), &PendingMsgs::finished, this, note("read"));
    connect(facade.modifyMessages(items), &PendingStatus::finished, this, note("modify"));
    connect(facade.deleteMessages({11}), &PendingStatus::finished, this, note("delete"));
    settle();
    finished.sort();
    QCOMPARE(finished,
             (QStringList{QStringLiteral("add"), QStringLiteral("delete"), QStringLiteral("modify"),
                          QStringLiteral("read")}));
}

// The adapter goes back to the pool with the waiting object still connected to it.
void TestLifetimes::aFailedGroupCommitIsFinishedByTheAdaptersNextBatch()
{
    ScriptedStore store;
    SMSSyncInterface facade;
    store.react(Request::AddGroups, Reaction::failed());
    QList<SyncSmsInfo> items = oneItem();
    const QPointer<PendingIds> first = facade.addNewMessages(items);
    int firstFinished = 0;
    QList<int> firstIds;
    connect(first.data(), &PendingStatus::finished, this, [&](PendingStatus *pending) {
        ++firstFinished;
        firstIds = static_cast<PendingIds *>(pending)->ids();
    });
    settle();
    QCOMPARE(firstFinished, 0);
    QVERIFY(first);
    QVERIFY(!first->isError());
    QCOMPARE(first->status(), QList<SMSSyncError>{SmsDatabaseError});

    int secondFinished = 0;
    connect(facade.addNewMessages(items), &PendingStatus::finished, this,
            [&] { ++secondFinished; });
    settle();
    QCOMPARE(firstFinished, 1);
    QCOMPARE(secondFinished, 1);
    QCOMPARE(firstIds, QList<int>{101});
    QVERIFY(first.isNull());
    QCOMPARE(int(store.addedEvents.size()), 1);
}

QTEST_GUILESS_MAIN(TestLifetimes)
#include "tst_lifetimes.moc"
