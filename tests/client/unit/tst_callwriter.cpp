// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "process/diagnostics.h"
#include "store/callwriter.h"

#include "markedstore.h"
#include "samplerecords.h"
#include "scriptedstore.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>

using namespace KorvaSyncIf;
using CommHistory::Event;

// What the client makes of calls in a store that fails in the library's own ways.
class TestCallWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Diagnostics::install(); }
    void handsOverTheEndOfACall();
    void readsWhatTheLibraryLists_data();
    void readsWhatTheLibraryLists();
    void confirmsWhatWasAdded();
    void tellsOfACallThatIsNotThere();
    void tellsOfANumberStoredOtherwise();
    void findsWhatAFailedCommitStoredAllTheSame();
    void takesNoOlderEqualCallForItsOwn();
    void doesNotKnowWhatItCannotReadBack();
    void tellsOfAStoreThatRefuses();
    void givesUpWhenNoAnswerComes();
    void endsAReadThatTheStoreWarnsOf();
};

namespace {

constexpr std::chrono::milliseconds patience(20000);
constexpr std::chrono::milliseconds shortly(50);

const QDateTime start(QDate(2010, 11, 3), QTime(12, 0), Qt::UTC); // of callEvent()

//! A store whose marker is there, with a scripted platform behind it.
struct Fixture
{
    explicit Fixture(std::chrono::milliseconds timeout = patience)
        : calls(timeout)
    {
    }

    //! The call that callEvent() with the direction is.
    static NewCall call(const char *type = "incoming")
    {
        NewCall added;
        added.call.type = QString::fromLatin1(type);
        added.call.number = QStringLiteral("+15550100");
        added.call.start = start;
        added.call.duration = 30;
        added.fingerprint = Fingerprint::of(added.call);
        return added;
    }

    Answer add(QList<NewCall> &added)
    {
        QList<NewCall *> all;
        for (NewCall &each : added)
            all += &each;
        return writer.add(all);
    }

    MarkedStore marked;
    ScriptedStore scripted;
    StoreLocation location{marked.path()};
    CallStore calls;
    DuplicateIndex index;
    CallWriter writer{location, calls, index};
};

const QString notTaken = QStringLiteral("the store did not take it");

} // namespace

void TestCallWriter::handsOverTheEndOfACall()
{
    Fixture fixture;
    QCOMPARE(fixture.calls.add({Fixture::call("incoming").call, Fixture::call("outgoing").call}),
             Answer::Finished);
    QCOMPARE(fixture.scripted.addedEvents.size(), 2);
    for (const Event &event : fixture.scripted.addedEvents) {
        QCOMPARE(event.startTime().toSecsSinceEpoch(), start.toSecsSinceEpoch());
        QCOMPARE(event.endTime().toSecsSinceEpoch(), start.toSecsSinceEpoch() + 30);
    }
    QCOMPARE(fixture.scripted.addedEvents.at(1).direction(), Event::Outbound);
}

void TestCallWriter::readsWhatTheLibraryLists_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("number") << QStringLiteral("+15550100");
    QTest::newRow("hidden") << QString();
    QTest::newRow("colon") << QStringLiteral("sip:ada@example.org");
    QTest::newRow("line-ends") << QStringLiteral("1\r\nDURATION:5\r\nEND:VCALLHISTENTRY\r\n");
}

void TestCallWriter::readsWhatTheLibraryLists()
{
    QFETCH(QString, number);
    Fixture fixture;
    for (const auto direction : {Event::Outbound, Event::Inbound}) { // newest first
        Event event = callEvent(direction, direction);
        event.setRemoteUid(number);
        event.setEndTime(event.endTime().addMSecs(7));
        fixture.scripted.callRows += event;
    }
    const CallStore::Read read = fixture.calls.calls();
    QCOMPARE(read.answer, Answer::Finished);
    QCOMPARE(read.calls.size(), 2);
    QCOMPARE(read.calls.at(0).type, QStringLiteral("incoming"));
    QCOMPARE(read.calls.at(1).type, QStringLiteral("outgoing"));
    for (const Call &call : read.calls) {
        QCOMPARE(call.number, number);
        QCOMPARE(call.duration, 30);
        QCOMPARE(call.start, start);
    }
}

void TestCallWriter::confirmsWhatWasAdded()
{
    Fixture fixture;
    fixture.scripted.callRows = {callEvent(102, Event::Outbound), callEvent(101, Event::Inbound)};
    QList<NewCall> added{Fixture::call("incoming"), Fixture::call("outgoing")};
    QCOMPARE(fixture.add(added), Answer::Finished);
    QCOMPARE(added.at(0).trouble.english + added.at(1).trouble.english, QString());
    QCOMPARE(fixture.index.storedCount(added.at(1).fingerprint), 1);
}

void TestCallWriter::tellsOfACallThatIsNotThere()
{
    Fixture fixture;
    fixture.scripted.callRows = {callEvent(101, Event::Inbound)};
    QList<NewCall> added{Fixture::call(), Fixture::call()};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, QString());
    QCOMPARE(added.at(1).trouble.english, notTaken);
}

void TestCallWriter::tellsOfANumberStoredOtherwise()
{
    Fixture fixture;
    fixture.scripted.callRows = {callEvent(101, Event::Inbound)};
    fixture.scripted.callRows[0].setRemoteUid(QStringLiteral("5550100"));
    QList<NewCall> added{Fixture::call()};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, QStringLiteral("stored, but with another number"));
    QCOMPARE(fixture.index.storedCount(added.at(0).fingerprint), 1);
}

void TestCallWriter::findsWhatAFailedCommitStoredAllTheSame()
{
    Fixture fixture;
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    fixture.scripted.callRows = {callEvent(101, Event::Outbound)};
    QList<NewCall> added{Fixture::call("incoming"), Fixture::call("outgoing")};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, notTaken);
    QCOMPARE(added.at(1).trouble.english, QString());
}

void TestCallWriter::takesNoOlderEqualCallForItsOwn()
{
    Fixture fixture;
    fixture.scripted.callRows = {callEvent(101, Event::Inbound)};
    QList<NewCall> added{Fixture::call()};
    fixture.index.addStored(added.at(0).fingerprint, NewCall::NoId);
    fixture.scripted.react(Request::AddEvents, Reaction::failed());
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, notTaken);
}

void TestCallWriter::doesNotKnowWhatItCannotReadBack()
{
    Fixture fixture;
    fixture.scripted.react(Request::ReadCalls, Reaction::refused());
    QList<NewCall> added{Fixture::call()};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english,
             QStringLiteral("not known, as the store cannot be read back"));
}

void TestCallWriter::tellsOfAStoreThatRefuses()
{
    Fixture fixture;
    fixture.scripted.react(Request::AddEvents, Reaction::refused());
    QList<NewCall> added{Fixture::call()};
    QCOMPARE(fixture.add(added), Answer::Refused);
    QCOMPARE(added.at(0).trouble.english, notTaken);
}

void TestCallWriter::givesUpWhenNoAnswerComes()
{
    Fixture fixture(shortly);
    fixture.scripted.react(Request::AddEvents, Reaction::silent());
    QList<NewCall> added{Fixture::call()};
    QCOMPARE(fixture.add(added), Answer::TimedOut);
    QCOMPARE(added.at(0).trouble.english, QStringLiteral("no answer in time; not stored so far"));
}

void TestCallWriter::endsAReadThatTheStoreWarnsOf()
{
    Fixture fixture;
    fixture.scripted.react(Request::ReadCalls, Reaction::silent());
    QTimer::singleShot(0, this, [] {
        QMessageLogger(nullptr, 0, nullptr, "korvasync.store")
            .warning("The store is gone; look for it.");
    });
    QCOMPARE(fixture.calls.calls().answer, Answer::Refused);
}

QTEST_GUILESS_MAIN(TestCallWriter)
#include "tst_callwriter.moc"
