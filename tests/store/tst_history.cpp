// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historytesting.h"

#include <commhistory/trackerio.h>

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

using namespace HistoryTesting;

//! Queries and counts on the real store. The functions share one store, and leave in it what they
//! add.
class TestHistory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aStoreThatIsNotThereIsAnError();
    void initStore();
    void messagesComeByTimeThenId();
    void portionsAreOfTheSizeAskedFor();
    void aLimitTakesTheFirstInTheOrder();
    void timesAreBoundsOfTheirOwn();
    void whatHasNoTimeIsBeforeEveryTime();
    void everyFieldComesBack();
    void foldersAreAnyOfSeveral();
    void unreadOnlyLeavesOutTheRead();
    void aPartyIsTheSameNumberInAnotherForm();
    void aPartyIsAWordButForCase();
    void anEndingJoinsStrangers();
    void modifiedSinceExcludesItsBound();
    void aConversationIsOneOfMany();
    void callsAreReadByTheirStart();
    void aChangeBetweenPortionsLosesNothing();
    void countsAreByFolderYearAndParty();
    void aStoreThatGoesAwayEndsTheRead();
};

void TestHistory::aStoreThatIsNotThereIsAnError()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no store")));
    QVERIFY(ask(HistoryFilter()).error == HistoryError::StoreUnavailable);
    QVERIFY(follow(QString()).error == HistoryError::StoreUnavailable);
}

void TestHistory::initStore() { QVERIFY(makeStore()); }

void TestHistory::messagesComeByTimeThenId()
{
    const int folder = FirstFolder + 1;
    QVERIFY(!add({message(QStringLiteral("m2"), folder, utc(2026, 1, 2)),
                  message(QStringLiteral("m3"), folder, utc(2026, 1, 3)),
                  message(QStringLiteral("m1"), folder, utc(2026, 1, 1)),
                  message(QStringLiteral("m4"), folder, utc(2026, 1, 3))})
                 .isEmpty());
    HistoryFilter filter = inFolder(folder);
    for (const int portion : {1, 2, 3, 500}) {
        filter.portion = portion;
        filter.order = HistoryFilter::Order::OldestFirst;
        QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("m"), {1, 2, 3, 4}));
        filter.order = HistoryFilter::Order::NewestFirst;
        QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("m"), {4, 3, 2, 1}));
    }
}

void TestHistory::portionsAreOfTheSizeAskedFor()
{
    const int folder = FirstFolder + 2;
    QCOMPARE(int(add(messages(25, QStringLiteral("p"), folder)).size()), 25);
    HistoryFilter filter = inFolder(folder);
    filter.portion = 10;
    QCOMPARE(ask(filter).sizes, (QList<int>{10, 10, 5}));
    filter.portion = 25;
    QCOMPARE(ask(filter).sizes, QList<int>{25});
    QCOMPARE(ask(inFolder(FirstFolder + 999)).sizes, QList<int>());
}

void TestHistory::aLimitTakesTheFirstInTheOrder()
{
    const int folder = FirstFolder + 3;
    QVERIFY(!add(messages(9, QStringLiteral("l"), folder)).isEmpty());
    HistoryFilter filter = inFolder(folder);
    filter.limit = 3;
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("l"), {0, 1, 2}));
    filter.order = HistoryFilter::Order::NewestFirst;
    filter.portion = 2;
    const Answer newest = ask(filter);
    QCOMPARE(newest.texts(), numbered(QStringLiteral("l"), {8, 7, 6}));
    QCOMPARE(newest.sizes, (QList<int>{2, 1}));
    filter.limit = 0;
    QCOMPARE(ask(filter).texts(), QStringList());
}

void TestHistory::timesAreBoundsOfTheirOwn()
{
    const int folder = FirstFolder + 4;
    QVERIFY(!add({message(QStringLiteral("t1"), folder, utc(2026, 1, 1)),
                  message(QStringLiteral("t2"), folder, utc(2026, 1, 2)),
                  message(QStringLiteral("t3"), folder, utc(2026, 1, 3))})
                 .isEmpty());
    HistoryFilter filter = inFolder(folder);
    filter.from = utc(2026, 1, 2);
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("t"), {2, 3}));
    filter.to = utc(2026, 1, 3);
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("t"), {2}));
    filter.from = QDateTime();
    filter.order = HistoryFilter::Order::NewestFirst;
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("t"), {2, 1}));
    filter.from = utc(2026, 1, 3);
    QCOMPARE(ask(filter).texts(), QStringList());
}

void TestHistory::whatHasNoTimeIsBeforeEveryTime()
{
    const int folder = FirstFolder + 5;
    QVERIFY(!add({message(QStringLiteral("w2"), folder, utc(1969, 12, 31)),
                  message(QStringLiteral("w1"), folder, QDateTime())})
                 .isEmpty());
    HistoryFilter filter = inFolder(folder);
    const Answer all = ask(filter);
    QCOMPARE(all.texts(), numbered(QStringLiteral("w"), {1, 2}));
    QVERIFY(all.items.first().time.isNull());
    QCOMPARE(all.items.last().time, utc(1969, 12, 31));
    QCOMPARE(all.items.last().time.timeSpec(), Qt::UTC);
    filter.order = HistoryFilter::Order::NewestFirst;
    filter.portion = 1;
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("w"), {2, 1}));
    filter.to = utc(1950, 1, 1);
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("w"), {1}));
    filter.from = utc(1940, 1, 1);
    QCOMPARE(ask(filter).texts(), QStringList());
}

void TestHistory::everyFieldComesBack()
{
    const int folder = FirstFolder + 6;
    Event event = message(QStringLiteral("H\u00e9llo\n\U0001F600"), folder);
    event.setEndTime(utc(2026, 3, 1, 12, 30)); // a user's folder goes by this one
    event.setIsRead(true);
    event.setGroupId(77);
    event.setStatus(Event::FailedStatus);
    event.setMessageToken(QStringLiteral("token"));
    event.setEncoding(QStringLiteral("8BIT"));
    event.setCharacterSet(QStringLiteral("UTF-8"));
    event.setLanguage(QStringLiteral("en"));
    const int id = add({event}).value(0);
    const Answer answer = ask(inFolder(folder));
    QCOMPARE(int(answer.items.size()), 1);
    const HistoryItem item = answer.items.first();
    QCOMPARE(item.id, id);
    QVERIFY(item.kind == HistoryItem::Kind::Message);
    QCOMPARE(item.folder, folder);
    QVERIFY(item.direction == HistoryItem::Direction::Inbound);
    QVERIFY(item.status == HistoryItem::Status::Failed);
    QCOMPARE(item.isRead, true);
    QCOMPARE(item.isMissed, false);
    QCOMPARE(item.conversation, 77);
    QCOMPARE(item.party, QStringLiteral("+15550100"));
    QCOMPARE(item.time, utc(2026, 3, 1, 12, 30));
    QCOMPARE(item.text, QStringLiteral("H\u00e9llo\n\U0001F600"));
    QCOMPARE(item.token, QStringLiteral("token"));
    QCOMPARE(item.charset, QStringLiteral("UTF-8"));
    QCOMPARE(item.encoding, QStringLiteral("8BIT"));
    QCOMPARE(item.language, QStringLiteral("en"));
    QVERIFY(item.change > 0);
}

void TestHistory::foldersAreAnyOfSeveral()
{
    const int folder = FirstFolder + 10;
    QVERIFY(!add({message(QStringLiteral("f1"), folder, utc(2026, 1, 1)),
                  message(QStringLiteral("f2"), folder + 1, utc(2026, 1, 2)),
                  message(QStringLiteral("f3"), folder + 2, utc(2026, 1, 3))})
                 .isEmpty());
    HistoryFilter filter;
    filter.folders = {folder + 2, folder};
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("f"), {1, 3}));
    filter.folders.clear();
    const QStringList all = ask(filter).texts();
    for (const QString &text : numbered(QStringLiteral("f"), {1, 2, 3}))
        QVERIFY(all.contains(text));
}

void TestHistory::unreadOnlyLeavesOutTheRead()
{
    const int folder = FirstFolder + 13;
    Event read = message(QStringLiteral("read"), folder);
    read.setIsRead(true);
    QVERIFY(!add({read, message(QStringLiteral("unread"), folder)}).isEmpty());
    HistoryFilter filter = inFolder(folder);
    filter.unreadOnly = true;
    QCOMPARE(ask(filter).texts(), QStringList(QStringLiteral("unread")));
}

void TestHistory::aPartyIsTheSameNumberInAnotherForm()
{
    QVERIFY(!add({from(QStringLiteral("+1 555 012 3001"), QStringLiteral("n1")),
                  from(QStringLiteral("5550123001"), QStringLiteral("n2")),
                  from(QStringLiteral("+49 555 012 3001"), QStringLiteral("n3")),
                  from(QStringLiteral("0123001"), QStringLiteral("n4"))})
                 .isEmpty());
    HistoryFilter filter;
    filter.party = QStringLiteral("+15550123001");
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("n"), {1, 2}));
    filter.limit = 1;
    filter.order = HistoryFilter::Order::NewestFirst;
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("n"), {2}));
}

void TestHistory::aPartyIsAWordButForCase()
{
    QVERIFY(!add({from(QStringLiteral("InfoPost"), QStringLiteral("w1")),
                  from(QStringLiteral("INFOPOST"), QStringLiteral("w2")),
                  from(QStringLiteral("InfoPost2"), QStringLiteral("w3"))})
                 .isEmpty());
    HistoryFilter filter;
    filter.party = QStringLiteral("infopost");
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("w"), {1, 2}));
}

void TestHistory::anEndingJoinsStrangers()
{
    QVERIFY(!add({from(QStringLiteral("+15550124001"), QStringLiteral("e1")),
                  from(QStringLiteral("+495550124001"), QStringLiteral("e2")),
                  from(QStringLiteral("0124001"), QStringLiteral("e3")),
                  from(QStringLiteral("124001"), QStringLiteral("e4"))})
                 .isEmpty());
    HistoryFilter filter;
    filter.party = QStringLiteral("+445550124001");
    filter.partyMatch = HistoryFilter::PartyMatch::SameEnding;
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("e"), {1, 2, 3}));
}

void TestHistory::modifiedSinceExcludesItsBound()
{
    const int folder = FirstFolder + 14;
    const QList<int> ids = add(messages(2, QStringLiteral("s"), folder));
    Event stored;
    QVERIFY(CommHistory::TrackerIO::instance()->getEvent(ids.value(0), stored));
    HistoryFilter filter = inFolder(folder);
    filter.modifiedSince = stored.lastModified();
    QCOMPARE(ask(filter).texts(), QStringList()); // both were added at that time
    filter.modifiedSince = stored.lastModified().addMSecs(-1);
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("s"), {0, 1}));
}

void TestHistory::aConversationIsOneOfMany()
{
    Event first = message(QStringLiteral("c1"), FirstFolder);
    first.setGroupId(501);
    Event second = message(QStringLiteral("c2"), FirstFolder);
    second.setGroupId(502);
    QVERIFY(!add({first, second}).isEmpty());
    HistoryFilter filter;
    filter.conversation = 502;
    QCOMPARE(ask(filter).texts(), numbered(QStringLiteral("c"), {2}));
}

void TestHistory::callsAreReadByTheirStart()
{
    const QString party = QStringLiteral("+15550125001");
    const QList<int> ids =
        add({call(party, utc(2026, 2, 2), 60), call(party, utc(2026, 2, 1), 86400 * 3)});
    HistoryFilter filter;
    filter.kind = HistoryItem::Kind::Call;
    filter.party = party;
    const Answer answer = ask(filter);
    QCOMPARE(int(answer.items.size()), 2);
    QCOMPARE(answer.items.first().id, ids.value(1));
    QCOMPARE(answer.items.first().time, utc(2026, 2, 1));
    QCOMPARE(answer.items.first().duration, 86400 * 3);
    QVERIFY(answer.items.first().kind == HistoryItem::Kind::Call);
    QVERIFY(answer.items.first().direction == HistoryItem::Direction::Inbound);
    QCOMPARE(answer.items.last().id, ids.value(0));
    filter.kind = HistoryItem::Kind::Message;
    QCOMPARE(int(ask(filter).items.size()), 0);
}

// The second portion is read while the receiver works on the first one. It waits for the receiver,
// which runs the event loop to write, and so what is written appears from the third one on.
void TestHistory::aChangeBetweenPortionsLosesNothing()
{
    const int folder = FirstFolder + 15;
    QList<Event> events;
    for (int i = 0; i < 8; ++i)
        events.append(message(QStringLiteral("b%1").arg(i), folder, utc(2026, 1, 1 + i)));
    const QList<int> ids = add(events);
    HistoryFilter filter = inFolder(folder);
    filter.portion = 2;
    HistoryInterface history;
    PendingHistory *const pending = history.query(filter);
    QStringList texts;
    bool isWritten = false;
    connect(pending, &PendingHistory::portion, this, [&](const QList<HistoryItem> &items) {
        for (const HistoryItem &item : items)
            texts.append(item.text);
        if (isWritten)
            return;
        isWritten = true;
        QVERIFY(remove({ids.value(0), ids.value(1), ids.value(5)}));
        QVERIFY(!add({message(QStringLiteral("b9"), folder, utc(2026, 1, 30))}).isEmpty());
    });
    QVERIFY(wait(pending) == HistoryError::None);
    QCOMPARE(texts, numbered(QStringLiteral("b"), {0, 1, 2, 3, 4, 6, 7, 9}));
}

void TestHistory::countsAreByFolderYearAndParty()
{
    const QString party = QStringLiteral("+15550127001");
    Event read = from(party, QStringLiteral("q1"), FirstFolder + 21);
    read.setIsRead(true);
    read.setStartTime(utc(2024, 12, 31, 23, 59, 59));
    read.setEndTime(utc(2024, 12, 31, 23, 59, 59));
    Event old = from(QStringLiteral("5550127001"), QStringLiteral("q2"), FirstFolder + 22);
    old.setStartTime(utc(1969, 12, 31, 23));
    old.setEndTime(utc(1969, 12, 31, 23));
    Event timeless = from(party, QStringLiteral("q3"), FirstFolder + 22);
    timeless.setStartTime(QDateTime());
    timeless.setEndTime(QDateTime());
    const Event stranger = from(QStringLiteral("+495550127001"), QStringLiteral("q4"));
    QVERIFY(!add({read, old, timeless, stranger}).isEmpty());
    HistoryFilter filter;
    filter.party = party;

    const auto folders = countBy(HistoryCount::By::Folder, filter);
    QCOMPARE(int(folders.size()), 2);
    QCOMPARE(folders.at(0).number, FirstFolder + 21);
    QCOMPARE(folders.at(0).count, qint64(1));
    QCOMPARE(folders.at(0).unread, qint64(0));
    QCOMPARE(folders.at(1).number, FirstFolder + 22);
    QCOMPARE(folders.at(1).count, qint64(2));
    QCOMPARE(folders.at(1).unread, qint64(2));
    QCOMPARE(folders.at(1).first, utc(1969, 12, 31, 23));
    QCOMPARE(folders.at(1).last, utc(1969, 12, 31, 23));

    const auto years = countBy(HistoryCount::By::Year, filter);
    QCOMPARE(int(years.size()), 3);
    QCOMPARE(years.at(0).number, 0);
    QVERIFY(years.at(0).first.isNull());
    QCOMPARE(years.at(1).number, 1969);
    QCOMPARE(years.at(2).number, 2024);

    const auto parties = countBy(HistoryCount::By::Party, filter);
    QCOMPARE(int(parties.size()), 2);
    QCOMPARE(parties.at(0).party, party);
    QCOMPARE(parties.at(0).count, qint64(2));
    QCOMPARE(parties.at(1).party, QStringLiteral("5550127001"));
}

void TestHistory::aStoreThatGoesAwayEndsTheRead()
{
    HistoryFilter filter;
    filter.portion = 2;
    HistoryInterface history;
    PendingHistory *const pending = history.query(filter);
    const QString path = qEnvironmentVariable("KORVASYNC_STORE");
    int count = 0;
    connect(pending, &PendingHistory::portion, this, [&](const QList<HistoryItem> &items) {
        if (count == 0)
            QVERIFY(QDir().rename(path, path + QStringLiteral(".away")));
        count += int(items.size());
    });
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("replaced|moved")));
    QVERIFY(wait(pending) == HistoryError::ReadFailed);
    QVERIFY(count == 2 || count == 4); // the second portion may have been read ahead
}

STORE_TEST_MAIN(TestHistory)

#include "tst_history.moc"
