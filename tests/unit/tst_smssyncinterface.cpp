// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "eventloop.h"
#include "messagelog.h"
#include "samplerecords.h"
#include "scriptedstore.h"
#include "smssyncinterface_p.h"
#include "syncstorageif/syncstorageif.h"
#include "syncstorageif/syncstorageifmanager.h"
#include "vmessagetext.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>

#include <memory>

using namespace KorvaSyncIf;

namespace {

using Errors = QList<SMSSyncError>;
using Ints = QList<int>;

//! A facade on a store; the pool is empty before and, by the facade's destructor, after.
struct Fixture
{
    ScriptedStore store;
    SMSSyncInterface facade;
};

SyncSmsInfo item(int id = -1, const VMessageText &message = {})
{
    SyncSmsInfo result;
    result.id = id;
    result.parentId = 0;
    result.vMessage = message.text();
    return result;
}

VMessageText draft()
{
    VMessageText message;
    message.box = QStringLiteral("DRAFTS");
    return message;
}

SyncSmsInfo broken(int id = -1)
{
    SyncSmsInfo result;
    result.id = id;
    result.vMessage = QStringLiteral("not a message");
    return result;
}

//! What a write says when it has finished.
struct Result
{
    explicit Result(PendingStatus *pending)
    {
        QObject::connect(pending, &PendingStatus::finished, [this](PendingStatus *sender) {
            ++finishedCount;
            status = sender->status();
            isError = sender->isError();
            if (auto *const withIds = qobject_cast<PendingIds *>(sender))
                ids = withIds->ids();
        });
    }

    int finishedCount = 0;
    Errors status;
    Ints ids;
    bool isError = false;
};

} // namespace

class TestSmsSyncInterface : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsDifferInTheFlagAlone();
    void aReadMayBeRefused();
    void oneMessageIsReadAtOnceAsAVMessage();
    void anUnknownMessageHasNoId();
    void addedMessagesAreReportedByReference();
    void itemsAreNotCheckedForIdsOnAdd();
    void theListThatIsAddedIsNotChanged();
    void addingNothingIsAnErrorAtOnce();
    void addingNothingUsableIsAnErrorAtOnce();
    void modifiedMessagesAreReportedByReference();
    void itemsWithoutIdAreNotModified();
    void modifyingNothingIsAnErrorAtOnce();
    void modifyingNothingUsableIsAnErrorAtOnce();
    void invalidIndexesLastUntilTheNextModification();
    void deletedMessagesAreReportedByReference();
    void negativeIdsAreNotDeleted();
    void deletingNothingIsAnErrorAtOnce();
    void deletingNothingValidIsAnErrorAtOnce();
    void anIdOfZeroIsAskedFor();
    void validItemIdsKeepTheOrder();
    void pendingObjectsAreTheFacadesChildren();
    void theFacadeEmptiesThePool();
    void theTraceOfReads();
    void theTraceOfWrites();
    void theTraceOfItsLife();
};

void TestSmsSyncInterface::readsDifferInTheFlagAlone()
{
    Fixture f;
    const QDateTime since(QDate(2010, 11, 3), QTime(0, 0), Qt::UTC);
    f.store.calls.clear();
    f.facade.messages(since, LocSent);
    settle();
    const QStringList all = f.store.calls;
    f.store.calls.clear();
    f.facade.modifiedMessages(since, LocSent);
    settle();
    QStringList modified = f.store.calls;
    const auto flagged =
        QStringLiteral("SyncSMSModel::setSyncSmsFilter(4101, 2010-11-03T00:00:00Z, true)");
    QCOMPARE(int(modified.count(flagged)), 1);
    modified.replace(
        modified.indexOf(flagged),
        QStringLiteral("SyncSMSModel::setSyncSmsFilter(4101, 2010-11-03T00:00:00Z, false)"));
    QCOMPARE(modified, all.mid(3)); // the first three make the adapter
}

void TestSmsSyncInterface::aReadMayBeRefused()
{
    Fixture f;
    f.store.react(Request::ReadMessages, Reaction::refused());
    const QPointer<PendingMsgs> pending = f.facade.messages(QDateTime(), LocInbox);
    QVERIFY(pending->isError());
    settle();
    QVERIFY(pending);
    QVERIFY(!f.facade.messages(QDateTime(), LocInbox)->isError());
}

void TestSmsSyncInterface::oneMessageIsReadAtOnceAsAVMessage()
{
    Fixture f;
    CommHistory::Event event = messageEvent(13, LocInbox);
    event.setMessageToken(QStringLiteral("token-1"));
    f.store.eventsById.insert(13, event);
    const SyncSmsInfo info = f.facade.message(13);
    QCOMPARE(info.id, 13);
    QCOMPARE(info.parentId, 4098);
    QCOMPARE(info.time, QStringLiteral("Wed Nov 3 11:00:00 2010 GMT"));
    QCOMPARE(info.messageToken, QStringLiteral("token-1"));
    QVERIFY(info.vMessage.contains(QStringLiteral("\r\nX-QLT-DT:20101103T110000Z\r\n")));
}

void TestSmsSyncInterface::anUnknownMessageHasNoId()
{
    Fixture f;
    const SyncSmsInfo info = f.facade.message(13);
    QCOMPARE(info.id, -1);
    QCOMPARE(info.parentId, 0);
    QVERIFY(info.vMessage.startsWith(QStringLiteral("BEGIN:VMSG\r\n")));
}

void TestSmsSyncInterface::addedMessagesAreReportedByReference()
{
    Fixture f;
    QList<SyncSmsInfo> items{item(), item(-1, draft()), item(), broken()};
    PendingIds *const pending = f.facade.addNewMessages(items);
    QVERIFY(!pending->isError());
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 1);
    QCOMPARE(result.ids, (Ints{101, -1, 102, -1}));
    QCOMPARE(result.status, (Errors{SmsNoError, SmsDraftNotAllowed, SmsNoError, SmsParseError}));
    QVERIFY(!result.isError);
    QCOMPARE(int(f.store.addedEvents.size()), 2);
}

void TestSmsSyncInterface::itemsAreNotCheckedForIdsOnAdd()
{
    Fixture f;
    QList<SyncSmsInfo> items{item(-1), item(-5), item(7)};
    const Result result(f.facade.addNewMessages(items));
    settle();
    QCOMPARE(result.status, (Errors{SmsNoError, SmsNoError, SmsNoError}));
    QCOMPARE(result.ids, (Ints{101, 102, 103}));
}

void TestSmsSyncInterface::theListThatIsAddedIsNotChanged()
{
    Fixture f;
    QList<SyncSmsInfo> items{item(5), broken(6)};
    f.facade.addNewMessages(items);
    settle();
    QCOMPARE(int(items.size()), 2);
    QCOMPARE(items.at(0).id, 5);
    QCOMPARE(items.at(0).vMessage, VMessageText().text());
    QCOMPARE(items.at(1).id, 6);
}

void TestSmsSyncInterface::addingNothingIsAnErrorAtOnce()
{
    Fixture f;
    QList<SyncSmsInfo> nothing;
    f.store.calls.clear();
    PendingIds *const pending = f.facade.addNewMessages(nothing);
    QVERIFY(pending->isError());
    QCOMPARE(pending->status(), Errors{SmsZeroMessagesPassed});
    QCOMPARE(pending->ids(), Ints{-1});
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 0);
    QVERIFY(f.store.calls.filter(QStringLiteral("Events(")).isEmpty());
}

void TestSmsSyncInterface::addingNothingUsableIsAnErrorAtOnce()
{
    Fixture f;
    QList<SyncSmsInfo> items{broken(), item(-1, draft())};
    PendingIds *const pending = f.facade.addNewMessages(items);
    QVERIFY(pending->isError());
    QCOMPARE(pending->status(), (Errors{SmsParseError, SmsDraftNotAllowed}));
    QCOMPARE(pending->ids(), (Ints{-1, -1}));
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 0);
}

void TestSmsSyncInterface::modifiedMessagesAreReportedByReference()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    PendingStatus *const pending = f.facade.modifyMessages({item(31), broken(32), item(33)});
    QVERIFY(!pending->isError());
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 1);
    QCOMPARE(result.status, (Errors{SmsNoError, SmsParseError, SmsNoError}));
    QVERIFY(!result.isError);
    QCOMPARE(int(f.store.modifiedEvents.size()), 2);
    QCOMPARE(f.store.modifiedEvents.at(0).id(), 31);
    QCOMPARE(f.store.modifiedEvents.at(1).id(), 33);
}

void TestSmsSyncInterface::itemsWithoutIdAreNotModified()
{
    Fixture f;
    MessageLog log;
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    const Result result(f.facade.modifyMessages({item(31), broken(-1)}));
    settle();
    QCOMPARE(result.status, (Errors{SmsNoError, SmsInvalidId}));
    const QStringList lines = log.lines(QtDebugMsg);
    QVERIFY(lines.contains(QStringLiteral("Found an invalid item id -1 @ idx 1")));
    QVERIFY(lines.contains(QStringLiteral("idx 1 already in invalid indexes list, not parsing")));
}

void TestSmsSyncInterface::modifyingNothingIsAnErrorAtOnce()
{
    Fixture f;
    PendingStatus *const pending = f.facade.modifyMessages({});
    QVERIFY(pending->isError());
    QCOMPARE(pending->status(), Errors{SmsZeroMessagesPassed});
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 0);
}

void TestSmsSyncInterface::modifyingNothingUsableIsAnErrorAtOnce()
{
    Fixture f;
    PendingStatus *const pending = f.facade.modifyMessages({item(-1), item(5, draft())});
    QVERIFY(pending->isError());
    QCOMPARE(pending->status(), (Errors{SmsInvalidId, SmsDraftNotAllowed}));
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 0);
}

void TestSmsSyncInterface::invalidIndexesLastUntilTheNextModification()
{
    Fixture f;
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    f.facade.modifyMessages({item(-1)});
    QList<SyncSmsInfo> items{item()};
    const Result added(f.facade.addNewMessages(items));
    settle();
    QCOMPARE(added.status, Errors{SmsNoError});
    const Result modified(f.facade.modifyMessages({item(31)}));
    settle();
    QCOMPARE(modified.status, Errors{SmsNoError});
    QCOMPARE(int(f.store.modifiedEvents.size()), 1);
}

void TestSmsSyncInterface::deletedMessagesAreReportedByReference()
{
    Fixture f;
    f.store.react(Request::DeleteEvents, Reaction::reporting({{{5}}, {{6}, false}}));
    const Result result(f.facade.deleteMessages({5, 6}));
    settle();
    QCOMPARE(result.finishedCount, 1);
    QCOMPARE(result.status, (Errors{SmsNoError, SmsDeleteFailed}));
    QVERIFY(!result.isError);
}

void TestSmsSyncInterface::negativeIdsAreNotDeleted()
{
    Fixture f;
    MessageLog log;
    PendingStatus *const pending = f.facade.deleteMessages({5, -2, 7});
    QVERIFY(!pending->isError());
    QCOMPARE(pending->status(), (Errors{SmsNoError, SmsInvalidId, SmsNoError}));
    QVERIFY(log.lines(QtDebugMsg).contains(QStringLiteral("Found an invalid id -2 @ idx 1")));
    const Result result(pending);
    settle();
    QCOMPARE(f.store.calls.filter(QStringLiteral("deleteEvent")),
             (QStringList{QStringLiteral("EventModel::deleteEvent(5)"),
                          QStringLiteral("EventModel::deleteEvent(7)")}));
    QCOMPARE(result.finishedCount, 1);
    QCOMPARE(result.status, (Errors{SmsNoError, SmsInvalidId, SmsNoError}));
}

void TestSmsSyncInterface::deletingNothingIsAnErrorAtOnce()
{
    Fixture f;
    PendingStatus *const pending = f.facade.deleteMessages({});
    QVERIFY(pending->isError());
    QCOMPARE(pending->status(), Errors{SmsZeroMessagesPassed});
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 0);
}

void TestSmsSyncInterface::deletingNothingValidIsAnErrorAtOnce()
{
    Fixture f;
    PendingStatus *const pending = f.facade.deleteMessages({-1, -7});
    QVERIFY(pending->isError());
    QCOMPARE(pending->status(), (Errors{SmsInvalidId, SmsInvalidId}));
    const Result result(pending);
    settle();
    QCOMPARE(result.finishedCount, 0);
    QVERIFY(f.store.calls.filter(QStringLiteral("deleteEvent")).isEmpty());
}

void TestSmsSyncInterface::anIdOfZeroIsAskedFor()
{
    Fixture f;
    const Result result(f.facade.deleteMessages({0}));
    settle();
    QCOMPARE(f.store.calls.filter(QStringLiteral("deleteEvent")),
             QStringList(QStringLiteral("EventModel::deleteEvent(0)")));
    QCOMPARE(result.status, Errors{SmsNoError});
}

void TestSmsSyncInterface::validItemIdsKeepTheOrder()
{
    QMap<int, SMSSyncError> errors;
    const QList<SmsInfo> records = SMSSyncInterfacePrivate().validItemIds({9, -1, 0, 9}, errors);
    QCOMPARE(int(records.size()), 3);
    QCOMPARE(records.at(0).id, 9);
    QCOMPARE(records.at(0).refId, 0);
    QCOMPARE(records.at(1).id, 0);
    QCOMPARE(records.at(1).refId, 2);
    QCOMPARE(records.at(2).id, 9);
    QCOMPARE(records.at(2).refId, 3);
    QCOMPARE(records.at(2).parentId, 0);
    QCOMPARE(errors, (QMap<int, SMSSyncError>{{1, SmsInvalidId}}));
}

void TestSmsSyncInterface::pendingObjectsAreTheFacadesChildren()
{
    Fixture f;
    QList<SyncSmsInfo> items{item()};
    const QList<QObject *> pending{f.facade.messages(QDateTime(), LocInbox),
                                   f.facade.modifiedMessages(QDateTime(), LocInbox),
                                   f.facade.addNewMessages(items), f.facade.modifyMessages(items),
                                   f.facade.deleteMessages({5})};
    for (const QObject *const object : pending)
        QCOMPARE(object->parent(), &f.facade);
}

void TestSmsSyncInterface::theFacadeEmptiesThePool()
{
    ScriptedStore store;
    const QPointer<SyncStorageIf> adapter = SyncStorageIfManager::getInstance()->syncStorageIf();
    auto facade = std::make_unique<SMSSyncInterface>();
    QVERIFY(adapter);
    facade.reset();
    QVERIFY(adapter.isNull());
}

void TestSmsSyncInterface::theTraceOfReads()
{
    Fixture f;
    MessageLog log;
    for (const bool modified : {false, true}) {
        log.clear();
        if (modified)
            f.facade.modifiedMessages(QDateTime(), LocSent);
        else
            f.facade.messages(QDateTime(), LocSent);
        const QStringList lines = log.lines(QtDebugMsg);
        const auto signature =
            QStringLiteral("KorvaSyncIf::PendingMsgs* KorvaSyncIf::SMSSyncInterface::%1(const "
                           "QDateTime&, KorvaSyncIf::LocationId)")
                .arg(modified ? QStringLiteral("modifiedMessages") : QStringLiteral("messages"));
        QVERIFY(lines.value(0).startsWith(QStringLiteral("Enter %1 QDateTime(").arg(signature)));
        QVERIFY(lines.value(0).endsWith(QStringLiteral(" 4101")));
        QCOMPARE(lines.last(), QStringLiteral("Exit %1").arg(signature));
    }

    log.clear();
    f.facade.message(13);
    QCOMPARE(
        log.lines(QtDebugMsg).value(0),
        QStringLiteral("KorvaSyncIf::SyncSmsInfo KorvaSyncIf::SMSSyncInterface::message(int) 13"));
}

void TestSmsSyncInterface::theTraceOfWrites()
{
    Fixture f;
    MessageLog log;
    QList<SyncSmsInfo> nothing;
    f.facade.addNewMessages(nothing);
    QStringList lines = log.lines(QtDebugMsg);
    const auto add = QStringLiteral(
        "KorvaSyncIf::PendingIds* "
        "KorvaSyncIf::SMSSyncInterface::addNewMessages(QList<KorvaSyncIf::SyncSmsInfo>&)");
    QCOMPARE(lines.value(0), QStringLiteral("Enter %1").arg(add));
    QCOMPARE(lines.last(), QStringLiteral("Exit %1").arg(add));

    log.clear();
    f.facade.modifyMessages(nothing);
    lines = log.lines(QtDebugMsg);
    const auto modify = QStringLiteral(
        "KorvaSyncIf::PendingStatus* KorvaSyncIf::SMSSyncInterface::modifyMessages(const "
        "QList<KorvaSyncIf::SyncSmsInfo>&)");
    QCOMPARE(lines.value(0), QStringLiteral("Enter %1").arg(modify));
    QCOMPARE(lines.last(), QStringLiteral("Exit %1").arg(modify));

    log.clear();
    f.facade.deleteMessages({5, -2, 7});
    lines = log.lines(QtDebugMsg);
    const auto remove =
        QStringLiteral("KorvaSyncIf::PendingStatus* "
                       "KorvaSyncIf::SMSSyncInterface::deleteMessages(const QList<int>&)");
    QVERIFY(lines.value(0).startsWith(QStringLiteral("Enter %1 ").arg(remove)));
    QVERIFY(lines.value(0).endsWith(QStringLiteral("(5, -2, 7)")));
    QCOMPARE(lines.last(), QStringLiteral("Exit %1").arg(remove));
}

void TestSmsSyncInterface::theTraceOfItsLife()
{
    ScriptedStore store;
    MessageLog log;
    {
        const SMSSyncInterface facade;
        QVERIFY(log.lines(QtDebugMsg)
                    .contains(QStringLiteral(
                        "KorvaSyncIf::SMSSyncInterface::SMSSyncInterface(QObject*)")));
        QVERIFY(log.lines(QtDebugMsg)
                    .contains(QStringLiteral(
                        "KorvaSyncIf::SMSSyncInterfacePrivate::SMSSyncInterfacePrivate()")));
        log.clear();
    }
    QCOMPARE(
        log.lines(QtDebugMsg),
        (QStringList{QStringLiteral("virtual KorvaSyncIf::SMSSyncInterface::~SMSSyncInterface()"),
                     QStringLiteral("Deleting SMSSyncInterface Private"),
                     QStringLiteral("KorvaSyncIf::SMSSyncInterfacePrivate::"
                                    "~SMSSyncInterfacePrivate() Destroyed"),
                     QStringLiteral("void KorvaSyncIf::SyncStorageIfManager::deleteAll()")}));
}

QTEST_GUILESS_MAIN(TestSmsSyncInterface)
#include "tst_smssyncinterface.moc"
