// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "import/importstore.h"
#include "process/diagnostics.h"
#include "store/messagewriter.h"

#include "markedstore.h"
#include "samplerecords.h"
#include "scriptedstore.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>

using namespace KorvaSyncIf;

// What the client makes of a store that fails in the library's own ways.
class TestMessageWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Diagnostics::install(); }
    void confirmsWhatWasAdded();
    void tellsOfAMessageStoredOtherwise();
    void tellsOfAMessageThatIsNotThere();
    void findsWhatAFailedCommitStoredAllTheSame();
    void believesAFailedCommitThatStoredNothing();
    void writesNothingWhereTheStoreCannotBeAsked();
    void takesNoOlderEqualMessageForItsOwn();
    void takesNoMessageOfItsOwnTwice();
    void doesNotKnowWhatItCannotReadBack();
    void givesUpWhenNoAnswerComes();
    void waitsForAStoreThatIsBroughtUpToDate();
    void doesNotWaitForConversationsThatCannotBeMade();
    void addsAgainAfterConversationsCouldNotBeMade();
    void endsAReadThatTheStoreWarnsOf();
    void handsOutWhatWasReadBeforeAFailure();
    void takesNoCallForAMessage();
    void indexesWhatIsLookedFor();
    void keepsNoIndexWhereNobodyLooksIntoIt();
};

namespace {

constexpr std::chrono::milliseconds patience(20000);
constexpr std::chrono::milliseconds shortly(50);

//! A store whose marker is there, with a scripted platform behind it. The number of the
//! messages has a conversation.
struct Fixture
{
    explicit Fixture(std::chrono::milliseconds timeout = patience)
        : messages(timeout)
    {
        scripted.knowConversation(QStringLiteral("5550100"), 7);
        scripted.historyPosition = {"store", 1, 100};
    }

    //! The store holds these messages, with the ids from 101 on.
    void hold(const QStringList &bodies)
    {
        int id = 101;
        for (const QString &body : bodies) {
            CommHistory::Event event = messageEvent(id, LocInbox);
            event.setFreeText(body);
            event.setIsRead(true);
            event.setEndTime(QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC));
            scripted.eventsById.insert(id, event);
            scripted.messageRows += event;
            CommHistory::HistoryEntry entry;
            entry.id = id;
            entry.type = CommHistory::Event::SmsEvent;
            entry.folder = LocInbox;
            entry.remoteUid = event.remoteUid();
            entry.time = event.endTime().toMSecsSinceEpoch();
            entry.text = body;
            scripted.historyPortions += QList<CommHistory::HistoryEntry>{entry};
            ++id;
        }
    }

    static NewMessage message(const char *body, const char *number = "+15550100")
    {
        NewMessage added;
        added.message = receivedFrom(QString::fromLatin1(number), -1);
        added.message.body = QString::fromLatin1(body);
        added.fingerprint = Fingerprint::of(added.message.parentId, added.number(),
                                            added.message.time, added.message.body);
        return added;
    }

    Answer add(QList<NewMessage> &added)
    {
        QList<NewMessage *> all;
        for (NewMessage &each : added)
            all += &each;
        return writer.add(all);
    }

    MarkedStore marked;
    ScriptedStore scripted;
    StoreLocation location{marked.path()};
    MessageStore messages;
    MessageWriter writer{location, messages};
};

//! How often the index has a message that the store holds, then with one added.
QList<int> countsInIndex(ImportStore::Equals equals)
{
    Fixture fixture;
    fixture.hold({QStringLiteral("one")});
    const QCommandLineParser options;
    GlobalOptions global;
    global.timeout = patience;
    StandardOutput output;
    const Invocation invocation{options, {}, global, fixture.location, output};
    const ItemJudge judge(ItemJudge::Messages, NormalisingRules());
    ImportStore store(invocation, judge, equals);
    const NewMessage message = fixture.message("one");
    std::vector<NewItem> added(1);
    added.front().content = message;
    added.front().stored.append(message.fingerprint);
    added.front().second = message.message.time.toSecsSinceEpoch();
    if (equals == ImportStore::AreFound && store.readAround(added.front()) != Answer::Finished)
        qFatal("the store cannot be read");
    const int ofStore = store.index.storedCount(message.fingerprint);
    if (store.add(added) != Answer::Finished)
        qFatal("the store takes nothing");
    return {ofStore, store.index.storedCount(message.fingerprint)};
}

const QString notTaken = QStringLiteral("the store did not take it");

} // namespace

void TestMessageWriter::confirmsWhatWasAdded()
{
    Fixture fixture;
    fixture.hold({QStringLiteral("one"), QStringLiteral("two")});
    QList<NewMessage> added{fixture.message("one"), fixture.message("two")};
    QCOMPARE(fixture.add(added), Answer::Finished);
    QCOMPARE(added.at(0).id, 101);
    QCOMPARE(added.at(1).id, 102);
    QCOMPARE(added.at(0).trouble.english + added.at(1).trouble.english, QString());
}

void TestMessageWriter::tellsOfAMessageStoredOtherwise()
{
    Fixture fixture;
    fixture.hold({QStringLiteral("on")});
    fixture.scripted.eventsById[101].setIsRead(false);
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::Finished);
    QCOMPARE(added.at(0).id, 101);
    QCOMPARE(added.at(0).trouble.english,
             QStringLiteral("stored, but with another read status and text"));
}

void TestMessageWriter::tellsOfAMessageThatIsNotThere()
{
    Fixture fixture;
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::Finished);
    QCOMPARE(added.at(0).trouble.english, QStringLiteral("the store does not have it"));
}

void TestMessageWriter::findsWhatAFailedCommitStoredAllTheSame()
{
    Fixture fixture;
    fixture.hold({QStringLiteral("two")});
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    QList<NewMessage> added{fixture.message("one"), fixture.message("two")};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).id, -1);
    QCOMPARE(added.at(0).trouble.english, notTaken);
    QCOMPARE(added.at(1).id, 101);
    QCOMPARE(added.at(1).trouble.english, QString());
}

void TestMessageWriter::believesAFailedCommitThatStoredNothing()
{
    Fixture fixture;
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, notTaken);
}

void TestMessageWriter::writesNothingWhereTheStoreCannotBeAsked()
{
    Fixture fixture;
    fixture.scripted.react(Request::ReadHistory, Reaction::refused());
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, notTaken);
    QVERIFY(fixture.scripted.addedEvents.isEmpty());
}

void TestMessageWriter::takesNoOlderEqualMessageForItsOwn()
{
    Fixture fixture;
    fixture.hold({QStringLiteral("one")});
    QList<NewMessage> added{fixture.message("one")};
    fixture.scripted.historyPosition.lastId = 101;
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).id, -1);
}

void TestMessageWriter::takesNoMessageOfItsOwnTwice()
{
    Fixture fixture;
    fixture.hold({QStringLiteral("one")});
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::Finished);
    QCOMPARE(added.at(0).id, 101);
    fixture.scripted.historyPosition.lastId = 101;
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    QList<NewMessage> again{fixture.message("one")};
    QCOMPARE(fixture.add(again), Answer::Refused);
    QCOMPARE(again.at(0).id, -1);
}

void TestMessageWriter::doesNotKnowWhatItCannotReadBack()
{
    Fixture fixture;
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    fixture.scripted.react(Request::ReadHistory, Reaction::reporting({Report()}));
    fixture.scripted.react(Request::ReadHistory, Reaction::refused());
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english,
             QStringLiteral("not known, as the store cannot be read back"));
}

void TestMessageWriter::givesUpWhenNoAnswerComes()
{
    for (const Reaction &reaction : {Reaction::silent(), Reaction::refused()}) {
        Fixture fixture(shortly);
        fixture.scripted.react(Request::AddEvents, reaction);
        QList<NewMessage> added{fixture.message("one")};
        QCOMPARE(fixture.add(added), Answer::TimedOut);
        QCOMPARE(added.at(0).trouble.english,
                 QStringLiteral("no answer in time; not stored so far"));
    }
}

void TestMessageWriter::waitsForAStoreThatIsBroughtUpToDate()
{
    Fixture fixture(shortly);
    fixture.scripted.isBeingUpgraded = true;
    fixture.scripted.react(Request::AddEvents, Reaction::silent());
    bool isOver = false;
    QTimer::singleShot(10 * shortly, this, [&] {
        isOver = true;
        fixture.scripted.isBeingUpgraded = false;
    });
    QList<NewMessage> added{fixture.message("one")};
    QCOMPARE(fixture.add(added), Answer::TimedOut);
    QVERIFY(isOver);
}

void TestMessageWriter::doesNotWaitForConversationsThatCannotBeMade()
{
    Fixture fixture(patience);
    fixture.scripted.react(Request::AddGroups, Reaction::failed());
    QList<NewMessage> added{fixture.message("one"), fixture.message("two", "+15550199")};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, notTaken);
    QCOMPARE(added.at(1).trouble.english, notTaken);
    QVERIFY(fixture.scripted.addedEvents.isEmpty());
}

void TestMessageWriter::addsAgainAfterConversationsCouldNotBeMade()
{
    Fixture fixture;
    fixture.scripted.react(Request::AddGroups, Reaction::failed());
    QList<NewMessage> lost{fixture.message("one", "+15550199")};
    QCOMPARE(fixture.add(lost), Answer::Refused);
    fixture.hold({QStringLiteral("two")});
    QList<NewMessage> added{fixture.message("two")};
    QCOMPARE(fixture.add(added), Answer::Finished);
    QCOMPARE(added.at(0).id, 101);
    QCOMPARE(lost.at(0).id, -1);
}

void TestMessageWriter::endsAReadThatTheStoreWarnsOf()
{
    Fixture fixture(patience);
    fixture.scripted.react(Request::ReadMessages, Reaction::silent());
    QTimer::singleShot(0, this, [] {
        QMessageLogger(nullptr, 0, nullptr, "korvasync.store")
            .warning("The store is gone; look for it.");
    });
    QCOMPARE(fixture.messages.messages(QDateTime(), LocInbox).answer, Answer::Refused);
    QCOMPARE(Diagnostics::storeTrouble(), QStringLiteral("The store is gone; look for it."));
}

void TestMessageWriter::handsOutWhatWasReadBeforeAFailure()
{
    Fixture fixture(patience);
    CommHistory::HistoryEntry first;
    first.text = QStringLiteral("first");
    CommHistory::HistoryEntry second;
    second.text = QStringLiteral("second");
    fixture.scripted.historyPortions = {{first}, {second}};
    fixture.scripted.react(Request::ReadHistory, Reaction::failed());
    QStringList taken;
    const Answer answer = fixture.messages.forEach(
        HistoryFilter(), [&](const StoredMessage &message) { taken += message.body; });
    QCOMPARE(taken, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
    QCOMPARE(answer, Answer::Refused);
}

void TestMessageWriter::takesNoCallForAMessage()
{
    Fixture fixture;
    fixture.scripted.eventsById.insert(5, callEvent(5, CommHistory::Event::Inbound));
    QCOMPARE(fixture.messages.message(5).id, -1); // a call is no message
    QCOMPARE(fixture.messages.message(6).id, -1);
}

void TestMessageWriter::indexesWhatIsLookedFor()
{
    QCOMPARE(countsInIndex(ImportStore::AreFound), QList<int>({1, 2}));
}

// Of a big file it would take as much memory as nothing else does.
void TestMessageWriter::keepsNoIndexWhereNobodyLooksIntoIt()
{
    QCOMPARE(countsInIndex(ImportStore::AreAdded), QList<int>({0, 0}));
}

QTEST_GUILESS_MAIN(TestMessageWriter)
#include "tst_messagewriter.moc"
