// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adaptersignals.h"
#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"
#include "scriptedstore.h"
#include "syncstorageif/syncstorageif_p.h"

#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

const auto account = QStringLiteral("/org/freedesktop/Telepathy/Account/ring/tel/ring");

// Numbers without a conversation.
const auto alice = QStringLiteral("+15550111");
const auto bob = QStringLiteral("+15550112");
const auto carol = QStringLiteral("+15550113");

struct Fixture
{
    ScriptedStore store;
    SyncStorageIf adapter{nullptr};
    AdapterSignals signalsOf{&adapter};

    QList<int> addedGroupIds() const
    {
        QList<int> ids;
        for (const CommHistory::Event &event : store.addedEvents)
            ids.append(event.groupId());
        return ids;
    }
};

} // namespace

class TestConversationGroups : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theStoreIsAskedWithTheFixedQuery();
    void eachQueryHasAConnectionOfItsOwn();
    void theAnswerIsTheNumberBehindTheFirstColon_data();
    void theAnswerIsTheNumberBehindTheFirstColon();
    void withoutRowOrResultThereIsNoConversation();
    void aKnownConversationIsUsed();
    void internationalAndNationalFormShareAConversation();
    void aNumberOfAnEarlierBatchIsNotAskedForAgain();
    void anUnknownNumberIsAskedForAgain();
    void twoMessagesToOneNewNumberMakeOneConversation();
    void aNewConversationBelongsToTheAccount();
    void anAnswerOfZeroCountsAsNotFound();
    void aNameIsAskedForAsItStands();
    void aQuoteInANameIsNotEscaped();
    void aDraftsConversationIsTheRecipients();
    void groupsReportedInTwoPartsAreStampedByPosition();
    void moreGroupIdsThanGroupsAreIgnored();
    void newGroupsAreCachedForTheNextBatch();
    void aFailedGroupCommitEndsTheBatchWithAnErrorAlone();
    void aFailedGroupCommitAfterAPartialOneWritesNothing();
    void aGroupReportAfterAFailedOneReachesNobody();
    void theCacheOutlivesAFailedGroupCommit();
    void refusedGroupsGiveNoSignal();
    void twoBatchesWithNewNumbersDoNotMixTheirGroups();
    void aGroupReportWithoutPendingMessagesAddsNothing();
    void unknownPartiesDoubleTheirReference();
    void theGroupIdOfARecordIsTheOneFound();
    void theHashLeavesTheAccountOut();
    void theCacheFindsWhatItHolds();
    void theTraceOfACachedNumber();
};

void TestConversationGroups::theStoreIsAskedWithTheFixedQuery()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QCOMPARE(f.store.queries,
             QStringList(QStringLiteral(
                 "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject "
                 "'/org/freedesktop/Telepathy/Account/ring/tel/ring'; nie:generator ?remoteId. "
                 "FILTER REGEX(?remoteId, '5550111$')}")));
}

void TestConversationGroups::eachQueryHasAConnectionOfItsOwn()
{
    ScriptedStore store;
    store.knowConversation(QStringLiteral("5550100"), 7);
    QCOMPARE(SyncStorageIfPrivate::getGroup(account, QStringLiteral("5550100")), 7);
    QCOMPARE(store.calls,
             (QStringList{QStringLiteral("QSparqlConnection(QTRACKER_DIRECT)"),
                          QStringLiteral("QSparqlConnection::exec()"),
                          QStringLiteral("QSparqlResult::waitForFinished()"),
                          QStringLiteral("QSparqlResult::next()"),
                          QStringLiteral("QSparqlResult::binding(0)"),
                          QStringLiteral("~QSparqlResult"), QStringLiteral("~QSparqlConnection")}));
}

void TestConversationGroups::theAnswerIsTheNumberBehindTheFirstColon_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<int>("id");
    const auto row = [](const char *name, const QStringList &rows, int id) {
        QTest::newRow(name) << rows << id;
    };
    row("prefix", {QStringLiteral("prefix:17")}, 17);
    row("no-colon", {QStringLiteral("17")}, 17);
    row("two-colons", {QStringLiteral("a:b:17")}, 0);
    row("no-number", {QStringLiteral("prefix:x")}, 0);
    row("number-and-more", {QStringLiteral("prefix:17x")}, 0);
    row("nothing-behind", {QStringLiteral("prefix:")}, 0);
    row("negative", {QStringLiteral("prefix:-3")}, -3);
    row("hexadecimal", {QStringLiteral("prefix:0x11")}, 0);
    row("empty", {QString()}, -1);
    row("later-rows-are-ignored", {QStringLiteral("c:17"), QStringLiteral("c:18")}, 17);
    row("also-behind-an-empty-one", {QString(), QStringLiteral("c:18")}, -1);
    row("no-row", {}, -1);
}

void TestConversationGroups::theAnswerIsTheNumberBehindTheFirstColon()
{
    QFETCH(QStringList, rows);
    QFETCH(int, id);
    ScriptedStore store;
    store.conversations.insert(QStringLiteral("5550100"), rows);
    QCOMPARE(SyncStorageIfPrivate::getGroup(account, QStringLiteral("5550100")), id);
}

void TestConversationGroups::withoutRowOrResultThereIsNoConversation()
{
    ScriptedStore store;
    QCOMPARE(SyncStorageIfPrivate::getGroup(account, QStringLiteral("5550100")), -1);
    store.unanswered.insert(QStringLiteral("5550100"));
    QCOMPARE(SyncStorageIfPrivate::getGroup(account, QStringLiteral("5550100")), -1);
}

void TestConversationGroups::aKnownConversationIsUsed()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550111"), 7);
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QVERIFY(f.store.addedGroups.isEmpty());
    QCOMPARE(f.addedGroupIds(), QList<int>{7});
}

void TestConversationGroups::internationalAndNationalFormShareAConversation()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550111"), 7);
    f.adapter.storeSms({receivedFrom(QStringLiteral("+1 (555) 01-11"), 0),
                        receivedFrom(QStringLiteral("0555-0111"), 1)});
    settle();
    QCOMPARE(int(f.store.queries.size()), 1);
    QCOMPARE(f.addedGroupIds(), (QList<int>{7, 7}));
    QCOMPARE(f.store.addedEvents.at(1).remoteUid(), QStringLiteral("0555-0111"));
}

void TestConversationGroups::aNumberOfAnEarlierBatchIsNotAskedForAgain()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550111"), 7);
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    f.store.conversations.clear();
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QCOMPARE(int(f.store.queries.size()), 1);
    QCOMPARE(f.addedGroupIds(), (QList<int>{7, 7}));
}

void TestConversationGroups::anUnknownNumberIsAskedForAgain()
{
    Fixture f;
    f.adapter.modifySms({storedMessage(11, 0, alice), storedMessage(12, 1, alice)});
    settle();
    QCOMPARE(int(f.store.queries.size()), 2);
}

void TestConversationGroups::twoMessagesToOneNewNumberMakeOneConversation()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(alice, 0), receivedFrom(alice, 1)});
    settle();
    QCOMPARE(int(f.store.addedGroups.size()), 1);
    QCOMPARE(f.addedGroupIds(), (QList<int>{201, 201}));
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("eventsCommitted(0 1; 101 102)")));
}

void TestConversationGroups::aNewConversationBelongsToTheAccount()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(alice, 0), receivedFrom(bob, 1)});
    settle();
    QCOMPARE(int(f.store.addedGroups.size()), 2);
    QCOMPARE(f.store.addedGroups.at(0).localUid(), account);
    QCOMPARE(f.store.addedGroups.at(0).remoteUids(), QStringList(QStringLiteral("5550111")));
    QCOMPARE(f.store.addedGroups.at(1).localUid(), account);
    QCOMPARE(f.store.addedGroups.at(1).remoteUids(), QStringList(QStringLiteral("5550112")));
    QCOMPARE(f.store.calls.filter(QStringLiteral("addGroups")),
             QStringList(QStringLiteral("GroupModel::addGroups(2 groups)")));
}

void TestConversationGroups::anAnswerOfZeroCountsAsNotFound()
{
    Fixture f;
    f.store.conversations.insert(QStringLiteral("5550111"), {QStringLiteral("a:b:17")});
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QCOMPARE(int(f.store.addedGroups.size()), 1);
    QCOMPARE(f.addedGroupIds(), QList<int>{201});
}

void TestConversationGroups::aNameIsAskedForAsItStands()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(QStringLiteral("Bank24"), 0)});
    settle();
    QVERIFY(
        f.store.queries.value(0).endsWith(QStringLiteral("FILTER REGEX(?remoteId, 'Bank24$')}")));
    QCOMPARE(f.store.addedGroups.at(0).remoteUids(), QStringList(QStringLiteral("Bank24")));
}

void TestConversationGroups::aQuoteInANameIsNotEscaped()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(QStringLiteral("Ann's \\ (x)"), 0)});
    settle();
    QVERIFY2(f.store.queries.value(0).endsWith(
                 QStringLiteral("FILTER REGEX(?remoteId, 'Ann's \\ (x)$')}")),
             qPrintable(f.store.queries.value(0)));
}

void TestConversationGroups::aDraftsConversationIsTheRecipients()
{
    Fixture f;
    SmsInfo draft = receivedFrom(alice, 0);
    draft.parentId = LocDrafts;
    draft.toNumber = bob;
    f.adapter.storeSms({draft});
    settle();
    QCOMPARE(f.store.addedGroups.at(0).remoteUids(), QStringList(QStringLiteral("5550112")));
}

void TestConversationGroups::groupsReportedInTwoPartsAreStampedByPosition()
{
    Fixture f;
    f.store.react(Request::AddGroups,
                  Reaction::reporting({{{301, 302}}, {{303}}}, Reaction::WhenReleased));
    f.adapter.storeSms({receivedFrom(alice, 0), receivedFrom(bob, 1), receivedFrom(carol, 2),
                        receivedFrom(alice, 3)});
    settle();
    f.store.release();
    settle();
    QVERIFY(f.store.addedEvents.isEmpty());
    f.store.release();
    settle();
    QCOMPARE(f.addedGroupIds(), (QList<int>{301, 302, 303, 301}));
    QCOMPARE(f.signalsOf.heard,
             QStringList(QStringLiteral("eventsCommitted(0 1 2 3; 101 102 103 104)")));
}

void TestConversationGroups::moreGroupIdsThanGroupsAreIgnored()
{
    Fixture f;
    f.store.react(Request::AddGroups, Reaction::reporting({{{301, 302, 303}}, {{304}}}));
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QCOMPARE(f.addedGroupIds(), QList<int>{301});
}

void TestConversationGroups::newGroupsAreCachedForTheNextBatch()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QCOMPARE(int(f.store.queries.size()), 1);
    QCOMPARE(int(f.store.addedGroups.size()), 1);
    QCOMPARE(f.addedGroupIds(), (QList<int>{201, 201}));
}

void TestConversationGroups::aFailedGroupCommitEndsTheBatchWithAnErrorAlone()
{
    Fixture f;
    MessageLog log;
    f.store.react(Request::AddGroups, Reaction::failed());
    f.adapter.storeSms({receivedFrom(alice, 0), receivedFrom(bob, 1)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("error(0 0 1 1; 0)")));
    QVERIFY(f.store.addedEvents.isEmpty());
    QVERIFY(!f.adapter.inUse());
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("Group Ids commit failed..removing ids 0, 0, 1, 1")));
}

void TestConversationGroups::aFailedGroupCommitAfterAPartialOneWritesNothing()
{
    Fixture f;
    f.store.react(Request::AddGroups, Reaction::reporting({{{301}}, {{302}, false}, {{302}}}));
    f.adapter.storeSms({receivedFrom(alice, 0), receivedFrom(bob, 1)});
    settle();
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("error(0 0 1 1; 0)")));
    QVERIFY(f.store.addedEvents.isEmpty());
}

void TestConversationGroups::aGroupReportAfterAFailedOneReachesNobody()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    f.store.react(Request::AddGroups,
                  Reaction::reporting({{{}, false}, {{301}}}, Reaction::WhenReleased));
    f.adapter.storeSms({receivedFrom(QStringLiteral("+15550100"), 0), receivedFrom(alice, 1),
                        receivedFrom(QStringLiteral("+15550100"), 2)});
    settle();
    for (int i = 0; i < 2; ++i) {
        f.store.release();
        settle();
    }
    QCOMPARE(f.signalsOf.heard, QStringList(QStringLiteral("error(0 1 1 2; 0)")));
    QVERIFY(f.store.addedEvents.isEmpty());
}

void TestConversationGroups::theCacheOutlivesAFailedGroupCommit()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550113"), 7);
    f.adapter.storeSms({receivedFrom(carol, 0)});
    settle();
    f.store.react(Request::AddGroups, Reaction::failed());
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    f.store.queries.clear();
    f.adapter.storeSms({receivedFrom(carol, 0)});
    settle();
    QCOMPARE(f.store.queries, QStringList());
}

void TestConversationGroups::refusedGroupsGiveNoSignal()
{
    Fixture f;
    f.store.react(Request::AddGroups, Reaction::refused());
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    QVERIFY(f.signalsOf.heard.isEmpty());
    QVERIFY(f.adapter.inUse());
}

void TestConversationGroups::twoBatchesWithNewNumbersDoNotMixTheirGroups()
{
    Fixture f;
    f.adapter.storeSms({receivedFrom(alice, 0)});
    settle();
    f.adapter.storeSms({receivedFrom(bob, 0), receivedFrom(carol, 1)});
    settle();
    QCOMPARE(f.store.calls.filter(QStringLiteral("addGroups")),
             (QStringList{QStringLiteral("GroupModel::addGroups(1 groups)"),
                          QStringLiteral("GroupModel::addGroups(2 groups)")}));
    QCOMPARE(f.addedGroupIds(), (QList<int>{201, 202, 203}));
    f.adapter.storeSms({receivedFrom(alice, 0), receivedFrom(bob, 1), receivedFrom(carol, 2)});
    settle();
    QCOMPARE(f.addedGroupIds(), (QList<int>{201, 202, 203, 201, 202, 203}));
}

void TestConversationGroups::aGroupReportWithoutPendingMessagesAddsNothing()
{
    Fixture f;
    MessageLog log;
    QMetaObject::invokeMethod(&f.adapter, "groupIdsCommittedSlot", Q_ARG(QList<int>, QList<int>()),
                              Q_ARG(bool, true));
    settle();
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Done all groups Committed ..")));
    QVERIFY(f.store.calls.filter(QStringLiteral("addEvents")).isEmpty());
    QVERIFY(f.signalsOf.heard.isEmpty());
}

void TestConversationGroups::unknownPartiesDoubleTheirReference()
{
    ScriptedStore store;
    store.knowConversation(QStringLiteral("5550100"), 7);
    SyncStorageIfPrivate d;
    d.refIds = {99};
    d.pendingMessages = {receivedFrom(QStringLiteral("+15550100"), 0), receivedFrom(alice, 1),
                         receivedFrom(alice, 2), receivedFrom(bob, 3)};
    d.fillGroupIdsOfMsgs();
    QCOMPARE(d.refIds, (QList<int>{0, 1, 1, 2, 3, 3}));
    QCOMPARE(d.contactIds, (QStringList{QStringLiteral("5550111"), QStringLiteral("5550112")}));
    QCOMPARE(d.pendingMessages.at(0).groupId, 7);
    QCOMPARE(d.pendingMessages.at(1).groupId, -1);
}

void TestConversationGroups::theGroupIdOfARecordIsTheOneFound()
{
    ScriptedStore store;
    SyncStorageIfPrivate d;
    SmsInfo info = receivedFrom(alice, 0);
    info.groupId = 55;
    d.pendingMessages = {info};
    d.fillGroupIdsOfMsgs();
    QCOMPARE(d.pendingMessages.at(0).groupId, -1);
    store.conversations.insert(QStringLiteral("5550111"), {QStringLiteral("a:b:17")});
    d.fillGroupIdsOfMsgs();
    QCOMPARE(d.pendingMessages.at(0).groupId, 0);
}

void TestConversationGroups::theHashLeavesTheAccountOut()
{
    const auto number = QStringLiteral("5550100");
    const auto other = QStringLiteral("5550101");
    for (const HashSeed seed : {HashSeed(0), HashSeed(42)}) {
        QCOMPARE(::qHash(qMakePair(account, number), seed), ::qHash(number, seed));
        QCOMPARE(::qHash(qMakePair(number, account), seed), ::qHash(number, seed));
        QCOMPARE(::qHash(qMakePair(account, account), seed), ::qHash(account, seed));
        QCOMPARE(::qHash(qMakePair(number, other), seed),
                 ::qHash(number, seed) ^ ::qHash(other, seed));
    }
    QCOMPARE(::qHash(qMakePair(account, number)), ::qHash(number, HashSeed(0)));
}

void TestConversationGroups::theCacheFindsWhatItHolds()
{
    SyncStorageIfPrivate d;
    for (int i = 0; i < 1000; ++i)
        d.groupCache.insert(qMakePair(account, QString::number(5550000 + i)), i);
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(d.groupCache.value(qMakePair(account, QString::number(5550000 + i)), -1), i);
    QVERIFY(!d.groupCache.contains(qMakePair(account, QStringLiteral("5551000"))));
    QVERIFY(!d.groupCache.contains(qMakePair(QStringLiteral("5550000"), account)));
}

void TestConversationGroups::theTraceOfACachedNumber()
{
    ScriptedStore store;
    MessageLog log;
    SyncStorageIfPrivate d;
    d.groupCache.insert(qMakePair(account, QStringLiteral("5550111")), 17);
    d.pendingMessages = {receivedFrom(alice, 0)};
    d.fillGroupIdsOfMsgs();
    QVERIFY(log.lines(QtDebugMsg)
                .contains(QStringLiteral("Original remoteId  \"+15550111\" Found GRPID  17 for "
                                         "remoteNo.  \"5550111\"")));
    log.clear();
    CommHistory::Group group;
    group.setRemoteUids({QStringLiteral("5550112")});
    d.groupsToAdd = {group};
    d.insertGroupIdInPendingMsgs({18}, 0);
    const QStringList lines = log.lines(QtDebugMsg);
    QVERIFY(lines.contains(QStringLiteral("Inserting the new group ids")));
    QVERIFY(lines.contains(
        QStringLiteral("Inserting grpId 18 for remotecontact(normalized) \"5550112\"")));
    QVERIFY(lines.contains(QStringLiteral("Calculated grp Id 17")));
}

QTEST_GUILESS_MAIN(TestConversationGroups)
#include "tst_conversationgroups.moc"
