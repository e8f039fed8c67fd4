// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyfixture.h"

#include <climits>

using namespace HistoryFixture;

class TestHistoryInterface : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void handsOutPortionsAndFinishesOnce();
    void emitsNothingInsideTheCall();
    void deletesItselfWhenFinished();
    void asksTheStoreForWhatTheFilterSays();
    void asksForCallsByTheDefaultsOfAFilter();
    void givesEveryFieldOfAMessage();
    void givesTheDurationOfACall();
    void tellsTheDirectionOfAMessageByItsFolder_data();
    void tellsTheDirectionOfAMessageByItsFolder();
    void givesAMessageToTheEncoder();
    void refusesAFilterOutOfItsRanges_data();
    void refusesAFilterOutOfItsRanges();
    void finishesWithAnErrorWithoutAStore();
    void keepsWhatCameBeforeAFailure();
    void finishesOnceWhenTheStoreAnswersTwice();
    void waitsForAStoreThatAnswersLate();
    void mayBeDeletedByItsReceiver_data();
    void mayBeDeletedByItsReceiver();
    void endsWithTheInterface();
    void keepsTwoRequestsApart();
};

void TestHistoryInterface::handsOutPortionsAndFinishesOnce()
{
    Fixture f;
    f.store.historyPortions = {{message(1), message(2)}, {message(3)}};
    const PendingHistory *const pending = f.query();
    QVERIFY(!pending->isError());
    settle();
    QCOMPARE(f.emitted, (lines({"portion 1 2", "portion 3", "finished"})));
    QVERIFY(f.error == HistoryError::None);
}

void TestHistoryInterface::emitsNothingInsideTheCall()
{
    Fixture f;
    f.store.historyPortions = {{message(1)}};
    f.store.react(Request::ReadHistory, Reaction::reporting({{}}, Reaction::AtOnce));
    f.query();
    QCOMPARE(f.emitted, QStringList());
    settle();
    QCOMPARE(f.emitted, (lines({"portion 1", "finished"})));
}

void TestHistoryInterface::deletesItselfWhenFinished()
{
    Fixture f;
    const QPointer<PendingHistory> query = f.query();
    const QPointer<PendingChanges> changes = f.changesSince(QString());
    const QPointer<PendingCounts> counts =
        f.history->counts(HistoryFilter(), HistoryCount::By::Folder);
    settle();
    QVERIFY(!query);
    QVERIFY(!changes);
    QVERIFY(!counts);
}

void TestHistoryInterface::asksTheStoreForWhatTheFilterSays()
{
    Fixture f;
    HistoryFilter filter;
    filter.folders = {LocInbox, LocSent};
    filter.party = QStringLiteral("+15550100");
    filter.partyMatch = HistoryFilter::PartyMatch::SameEnding;
    filter.conversation = 7;
    filter.from = utc(1);
    filter.to = utc(2);
    filter.modifiedSince = utc(3);
    filter.unreadOnly = true;
    filter.order = HistoryFilter::Order::NewestFirst;
    filter.limit = 20;
    filter.portion = 10;
    f.query(filter);
    settle();
    QCOMPARE(f.store.calls,
             lines({"HistoryReader::read(type 2, folders [4098 4101], party +15550100 1, "
                    "conversation 7, 2026-03-01T01:00:00Z to 2026-03-01T02:00:00Z, modified "
                    "2026-03-01T03:00:00Z, unread 1, newest 1, limit 20, portion 10)"}));
}

void TestHistoryInterface::asksForCallsByTheDefaultsOfAFilter()
{
    Fixture f;
    HistoryFilter filter;
    filter.kind = HistoryItem::Kind::Call;
    f.query(filter);
    settle();
    QCOMPARE(f.store.calls,
             lines({"HistoryReader::read(type 3, folders [], party  0, conversation -1, null "
                    "to null, modified null, unread 0, newest 0, limit -1, portion 500)"}));
}

void TestHistoryInterface::givesEveryFieldOfAMessage()
{
    Fixture f;
    HistoryEntry entry = message(5, LocSent);
    entry.direction = Event::Outbound;
    entry.status = Event::SentStatus;
    entry.isRead = true;
    entry.conversation = 9;
    entry.time = msecs(4);
    entry.startTime = msecs(4);
    entry.endTime = msecs(5);
    entry.remoteUid = QStringLiteral("+15550101");
    entry.text = QStringLiteral("text");
    entry.token = QStringLiteral("token");
    entry.encoding = QStringLiteral("8BIT");
    entry.characterSet = QStringLiteral("UTF-8");
    entry.language = QStringLiteral("en");
    f.store.historyPortions = {{entry}};
    f.query();
    settle();
    QCOMPARE(int(f.items.size()), 1);
    const HistoryItem item = f.items.first();
    QCOMPARE(item.id, 5);
    QVERIFY(item.kind == HistoryItem::Kind::Message);
    QCOMPARE(item.folder, int(LocSent));
    QVERIFY(item.direction == HistoryItem::Direction::Outbound);
    QVERIFY(item.status == HistoryItem::Status::Sent);
    QCOMPARE(item.isRead, true);
    QCOMPARE(item.isMissed, false);
    QCOMPARE(item.conversation, 9);
    QCOMPARE(item.party, QStringLiteral("+15550101"));
    QCOMPARE(item.time, utc(4));
    QCOMPARE(item.duration, 0);
    QCOMPARE(item.text, QStringLiteral("text"));
    QCOMPARE(item.token, QStringLiteral("token"));
    QCOMPARE(item.charset, QStringLiteral("UTF-8"));
    QCOMPARE(item.encoding, QStringLiteral("8BIT"));
    QCOMPARE(item.language, QStringLiteral("en"));
    QCOMPARE(item.change, qint64(1005));
}

void TestHistoryInterface::givesTheDurationOfACall()
{
    Fixture f;
    HistoryEntry call = message(6, 0);
    call.type = Event::CallEvent;
    call.direction = Event::Inbound;
    call.isMissedCall = true;
    call.time = msecs(4);
    call.startTime = msecs(4);
    call.endTime = msecs(4, 2);
    HistoryEntry backwards = call;
    backwards.endTime = msecs(3);
    HistoryEntry endless = call;
    endless.endTime = CommHistory::NoTime;
    f.store.historyPortions = {{call, backwards, endless}};
    f.query();
    settle();
    QCOMPARE(int(f.items.size()), 3);
    QVERIFY(f.items.at(0).kind == HistoryItem::Kind::Call);
    QVERIFY(f.items.at(0).direction == HistoryItem::Direction::Inbound);
    QVERIFY(f.items.at(0).isMissed);
    QCOMPARE(f.items.at(0).duration, 120);
    QCOMPARE(f.items.at(1).duration, 0);
    QCOMPARE(f.items.at(2).duration, 0);
}

void TestHistoryInterface::tellsTheDirectionOfAMessageByItsFolder_data()
{
    QTest::addColumn<int>("folder");
    QTest::addColumn<bool>("isOutbound");
    QTest::newRow("inbox") << int(LocInbox) << false;
    QTest::newRow("outbox") << int(LocOutbox) << true;
    QTest::newRow("drafts") << int(LocDrafts) << true;
    QTest::newRow("sent") << int(LocSent) << true;
    QTest::newRow("own folder") << int(LocMyFolder) << false;
    QTest::newRow("none") << 0 << false;
}

void TestHistoryInterface::tellsTheDirectionOfAMessageByItsFolder()
{
    QFETCH(int, folder);
    QFETCH(bool, isOutbound);
    Fixture f;
    HistoryEntry entry = message(1, folder);
    entry.direction = isOutbound ? Event::Inbound : Event::Outbound; // as other programs store it
    f.store.historyPortions = {{entry}};
    f.query();
    settle();
    QVERIFY(f.items.value(0).direction
            == (isOutbound ? HistoryItem::Direction::Outbound : HistoryItem::Direction::Inbound));
}

void TestHistoryInterface::givesAMessageToTheEncoder()
{
    HistoryItem item;
    item.id = 3;
    item.folder = LocDrafts;
    item.conversation = 4;
    item.party = QStringLiteral("+15550100");
    item.time = utc(4);
    item.text = QStringLiteral("text");
    item.token = QStringLiteral("token");
    item.charset = QStringLiteral("UTF-8");
    item.encoding = QStringLiteral("8BIT");
    item.language = QStringLiteral("en");
    const SmsInfo sent = item.toSmsInfo();
    QCOMPARE(sent.id, 3);
    QCOMPARE(sent.parentId, int(LocDrafts));
    QCOMPARE(sent.groupId, 4);
    QCOMPARE(sent.toNumber, QStringLiteral("+15550100"));
    QCOMPARE(sent.fromNumber, QString());
    QCOMPARE(sent.time, utc(4));
    QCOMPARE(sent.readStatus, QStringLiteral("UNREAD"));
    QCOMPARE(sent.body, QStringLiteral("text"));
    QCOMPARE(sent.messageToken, QStringLiteral("token"));
    QCOMPARE(sent.charset, QStringLiteral("UTF-8"));
    QCOMPARE(sent.encoding, QStringLiteral("8BIT"));
    QCOMPARE(sent.language, QStringLiteral("en"));
    item.folder = LocInbox;
    item.isRead = true;
    const SmsInfo received = item.toSmsInfo();
    QCOMPARE(received.fromNumber, QStringLiteral("+15550100"));
    QCOMPARE(received.toNumber, QString());
    QCOMPARE(received.readStatus, QStringLiteral("READ"));
}

void TestHistoryInterface::refusesAFilterOutOfItsRanges_data()
{
    QTest::addColumn<int>("folders");
    QTest::addColumn<bool>("isOfCalls");
    QTest::addColumn<int>("conversation");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("portion");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("all at their lower bounds") << 0 << true << -1 << -1 << 1 << false;
    QTest::newRow("all at their upper bounds")
        << 32 << false << INT_MAX << INT_MAX << 1000 << false;
    QTest::newRow("limit 0") << 0 << false << -1 << 0 << 500 << false;
    QTest::newRow("too many folders") << 33 << false << -1 << -1 << 500 << true;
    QTest::newRow("calls in a folder") << 1 << true << -1 << -1 << 500 << true;
    QTest::newRow("conversation -2") << 0 << false << -2 << -1 << 500 << true;
    QTest::newRow("limit -2") << 0 << false << -1 << -2 << 500 << true;
    QTest::newRow("portion 0") << 0 << false << -1 << -1 << 0 << true;
    QTest::newRow("portion 1001") << 0 << false << -1 << -1 << 1001 << true;
}

void TestHistoryInterface::refusesAFilterOutOfItsRanges()
{
    QFETCH(int, folders);
    QFETCH(bool, isOfCalls);
    QFETCH(int, conversation);
    QFETCH(int, limit);
    QFETCH(int, portion);
    QFETCH(bool, isRefused);
    HistoryFilter filter;
    for (int i = 0; i < folders; ++i)
        filter.folders.append(LocMyFolder + i);
    filter.kind = isOfCalls ? HistoryItem::Kind::Call : HistoryItem::Kind::Message;
    filter.conversation = conversation;
    filter.limit = limit;
    filter.portion = portion;
    const HistoryError expected = isRefused ? HistoryError::InvalidFilter : HistoryError::None;
    Fixture f;
    QCOMPARE(f.query(filter)->isError(), isRefused);
    settle();
    QCOMPARE(f.emitted, lines({"finished"}));
    QVERIFY(f.error == expected);
    QCOMPARE(f.store.calls.isEmpty(), isRefused);
    f.watch(f.history->counts(filter, HistoryCount::By::Year));
    settle();
    QCOMPARE(f.emitted, (lines({"finished", "finished"})));
    QVERIFY(f.error == expected);
}

void TestHistoryInterface::finishesWithAnErrorWithoutAStore()
{
    Fixture f;
    f.store.react(Request::ReadHistory, Reaction::refused());
    QVERIFY(!f.query()->isError());
    settle();
    QCOMPARE(f.emitted, lines({"finished"}));
    QVERIFY(f.error == HistoryError::StoreUnavailable);
}

void TestHistoryInterface::keepsWhatCameBeforeAFailure()
{
    Fixture f;
    f.store.historyPortions = {{message(1)}};
    f.store.react(Request::ReadHistory, Reaction::failed());
    f.query();
    settle();
    QCOMPARE(f.emitted, (lines({"portion 1", "finished"})));
    QVERIFY(f.error == HistoryError::ReadFailed);
}

void TestHistoryInterface::finishesOnceWhenTheStoreAnswersTwice()
{
    Fixture f;
    f.store.react(Request::ReadHistory, Reaction::reporting({{}, {{}, false}}));
    f.query();
    settle();
    QCOMPARE(f.emitted, lines({"finished"}));
    QVERIFY(f.error == HistoryError::None);
}

void TestHistoryInterface::waitsForAStoreThatAnswersLate()
{
    Fixture f;
    f.store.historyPortions = {{message(1)}};
    f.store.react(Request::ReadHistory, Reaction::reporting({{}}, Reaction::WhenReleased));
    f.query();
    settle();
    QCOMPARE(f.emitted, QStringList());
    f.store.release();
    settle();
    QCOMPARE(f.emitted, (lines({"portion 1", "finished"})));
}

void TestHistoryInterface::mayBeDeletedByItsReceiver_data()
{
    QTest::addColumn<bool>("inPortion");
    QTest::addColumn<bool>("withInterface");
    QTest::newRow("itself in portion()") << true << false;
    QTest::newRow("itself in finished()") << false << false;
    QTest::newRow("the interface in portion()") << true << true;
    QTest::newRow("the interface in finished()") << false << true;
}

void TestHistoryInterface::mayBeDeletedByItsReceiver()
{
    QFETCH(bool, inPortion);
    QFETCH(bool, withInterface);
    Fixture f;
    f.store.historyPortions = {{message(1)}, {message(2)}};
    QPointer<PendingHistory> pending = f.query();
    const auto destroy = [&] {
        if (withInterface)
            f.history.reset();
        else
            delete pending;
    };
    if (inPortion)
        QObject::connect(pending, &PendingHistory::portion, &f.receiver, destroy);
    else
        QObject::connect(pending, &PendingHistory::finished, &f.receiver, destroy);
    settle();
    QVERIFY(!pending);
    const QStringList all = lines({"portion 1", "portion 2", "finished"});
    QCOMPARE(f.emitted, inPortion ? QStringList(all.mid(0, 1)) : all);
}

void TestHistoryInterface::endsWithTheInterface()
{
    Fixture f;
    f.store.historyPortions = {{message(1)}};
    f.query();
    f.changesSince(QString());
    f.history.reset();
    settle();
    QCOMPARE(f.emitted, QStringList());
    QCOMPARE(f.store.calls, QStringList());
}

void TestHistoryInterface::keepsTwoRequestsApart()
{
    Fixture f;
    f.store.historyPortions = {{message(1)}};
    f.store.react(Request::ReadHistory, Reaction::reporting({{}}, Reaction::WhenReleased));
    f.query();
    f.query();
    settle();
    QCOMPARE(f.emitted, (lines({"portion 1", "finished"})));
    f.store.release();
    settle();
    QCOMPARE(f.emitted, (lines({"portion 1", "finished", "portion 1", "finished"})));
}

QTEST_GUILESS_MAIN(TestHistoryInterface)

#include "tst_historyinterface.moc"
