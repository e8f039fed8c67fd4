// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What finishes a send, and what does not: the events that the store announces on the session
// bus, and the timer.

#include "sendtesting.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

using namespace SendTesting;
using CommHistory::Event;

namespace {

const QString Hello = QStringLiteral("Hello");
const QString Bye = QStringLiteral("Bye");

using Ids = QList<PendingSmsId *>;

} // namespace

class TestSending : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void finishesWithTheStoredEvent();
    void finishesAfterTwoSecondsWithoutAnEvent();
    void finishesBeforeATimerOfTwoAndAHalfSeconds();
    void anyPathCounts_data();
    void anyPathCounts();
    void otherEventsAreIgnored_data();
    void otherEventsAreIgnored();
    void otherSignalsAreIgnored_data();
    void otherSignalsAreIgnored();
    void theLastMatchingEventGivesTheId();
    void aFailedEventFinishesToo();
    void theTimerStillFiresAfterSuccess();
    void nothingIsHeardAfterSuccess();
    void nothingIsHeardAfterTheTimer();
    void finishesOnceWhenTwoAnnouncementsAreQueued();
    void finishesOnceWhenTheTimerComesBeforeAQueuedAnnouncement();
    void aQueuedAnnouncementFinishesASendThatCameMeanwhile();
    void whatWasRefusedAtOnceNeverFinishes_data();
    void whatWasRefusedAtOnceNeverFinishes();
    void theNextSendReplacesThePendingObject();
    void theFirstTimerFinishesTheReplacementOnce();
    void aSubscriptionIsMadeOnce();
    void onceSeenAnyAnnouncementFinishesALaterSend();
    void onceSeenNoTimerReportsAFailure();
    void onceSeenAMatchStillGivesTheId();
    void anEarlierTimerEndsALaterSubscription();
};

void TestSending::finishesWithTheStoredEvent()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    QVERIFY(pending);
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 0);
    QCOMPARE(pending->isError(), false);
    QCOMPARE(sender.finished, Ids());
    sender.history.announce({sentEvent(42, Hello)});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
    QCOMPARE(pending->errorCause(), 0);
    QCOMPARE(pending->isError(), false);
}

void TestSending::finishesAfterTwoSecondsWithoutAnEvent()
{
    Sender sender;
    QElapsedTimer time;
    time.start();
    PendingSmsId *const pending = sender.service.sendSms(vMessage(Hello));
    QSignalSpy finished(pending, &PendingSmsId::finished);
    QVERIFY(finished.wait(Patience));
    QVERIFY(time.elapsed() >= 2000);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).value<PendingSmsId *>(), pending);
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 5);
    QCOMPARE(pending->isError(), true);
}

//! Both timers are started in one turn of the event loop, so however late they are noticed, they
//! fire in the order of their times.
void TestSending::finishesBeforeATimerOfTwoAndAHalfSeconds()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    QTimer later;
    later.setSingleShot(true);
    later.setTimerType(Qt::PreciseTimer);
    Ids finishedBefore;
    connect(&later, &QTimer::timeout, this, [&] { finishedBefore = sender.finished; });
    QSignalSpy fired(&later, &QTimer::timeout);
    later.start(2500);
    QVERIFY(fired.wait(Patience));
    QCOMPARE(finishedBefore, Ids{pending});
}

void TestSending::anyPathCounts_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("root") << QStringLiteral("/");
    QTest::newRow("other") << QStringLiteral("/any/other");
    QTest::newRow("own") << QStringLiteral("/SendSmsInterface");
}

void TestSending::anyPathCounts()
{
    QFETCH(QString, path);
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)}, path);
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
}

void TestSending::otherEventsAreIgnored_data()
{
    QTest::addColumn<QList<Event>>("events");
    const auto event = [](const QString &text, const QString &number) {
        return QList<Event>{sentEvent(42, text, number)};
    };
    QList<Event> inbound = event(Hello, Number);
    inbound[0].setDirection(Event::Inbound);
    QList<Event> undirected = event(Hello, Number);
    undirected[0].setDirection(Event::UnknownDirection);
    QTest::newRow("none") << QList<Event>();
    QTest::newRow("inbound") << inbound;
    QTest::newRow("undirected") << undirected;
    QTest::newRow("other-text") << event(Bye, Number);
    QTest::newRow("other-case") << event(QStringLiteral("hello"), Number);
    QTest::newRow("longer-text") << event(QStringLiteral("Hello "), Number);
    QTest::newRow("no-text") << event(QString(), Number);
    QTest::newRow("other-number") << event(Hello, QStringLiteral("+15550101"));
    QTest::newRow("national-number") << event(Hello, QStringLiteral("5550100"));
    QTest::newRow("number-without-plus") << event(Hello, QStringLiteral("15550100"));
    QTest::newRow("separated-number") << event(Hello, QStringLiteral("+1 555-0100"));
    QTest::newRow("no-number") << event(Hello, QString());
    QTest::newRow("halves") << event(Hello, QStringLiteral("+15550101")) + event(Bye, Number);
}

void TestSending::otherEventsAreIgnored()
{
    QFETCH(QList<Event>, events);
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.announce(events);
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("::eventsAdded(")).size(), 1);
    QCOMPARE(sender.finished, Ids());
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 0);
    sender.history.announce({sentEvent(43, Hello)});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 43);
}

void TestSending::otherSignalsAreIgnored_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasEvents");
    const QString history = QStringLiteral("com.quelt.commhistory");
    const QString added = QStringLiteral("eventsAdded");
    QTest::newRow("other-interface") << QStringLiteral("com.quelt.other") << added << true;
    QTest::newRow("other-signal") << history << QStringLiteral("eventsUpdated") << true;
    QTest::newRow("other-arguments") << history << added << false;
}

void TestSending::otherSignalsAreIgnored()
{
    QFETCH(QString, interface);
    QFETCH(QString, name);
    QFETCH(bool, hasEvents);
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/"), interface, name);
    if (hasEvents)
        signal << QVariant::fromValue(QList<Event>{sentEvent(42, Hello)});
    else
        signal << Hello << 42;
    sender.history.send(signal);
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("::eventsAdded(")), QStringList());
    QCOMPARE(sender.finished, Ids());
    QCOMPARE(pending->id(), -1);
}

void TestSending::theLastMatchingEventGivesTheId()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    Event inbound = sentEvent(45, Hello);
    inbound.setDirection(Event::Inbound);
    sender.history.announce(
        {sentEvent(42, Hello), sentEvent(43, Bye), sentEvent(41, Hello), inbound});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 41);
}

void TestSending::aFailedEventFinishesToo()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    Event failed = sentEvent(42, Hello);
    failed.setStatus(Event::FailedStatus);
    sender.history.announce({failed});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
    QCOMPARE(pending->errorCause(), 0);
    QVERIFY(sender.log.lines(QtDebugMsg)
                .contains(QStringLiteral("Received the event which was sent 3")));
}

void TestSending::theTimerStillFiresAfterSuccess()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    sender.log.clear();
    QVERIFY(sender.waitForTimers(1));
    QVERIFY(
        sender.log.lines(QtDebugMsg).contains(QStringLiteral("Events Added Disconnected false")));
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
    QCOMPARE(pending->errorCause(), 0);
}

void TestSending::nothingIsHeardAfterSuccess()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    sender.log.clear();
    sender.history.announce({sentEvent(43, Hello)});
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("::eventsAdded(")), QStringList());
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
}

void TestSending::nothingIsHeardAfterTheTimer()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    QVERIFY(sender.waitForTimers(1));
    QCOMPARE(sender.finished, Ids{pending});
    sender.log.clear();
    sender.history.announce({sentEvent(42, Hello)});
    QCOMPARE(sender.log.lines(QtDebugMsg), QStringList());
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 5);
}

void TestSending::finishesOnceWhenTwoAnnouncementsAreQueued()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.post({sentEvent(42, Hello)});
    sender.history.post({sentEvent(43, Hello)});
    sender.history.deliver();
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
    settle();
    QCOMPARE(sender.finished, Ids{pending});
}

void TestSending::finishesOnceWhenTheTimerComesBeforeAQueuedAnnouncement()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.post({sentEvent(42, Hello)});
    QVERIFY(QMetaObject::invokeMethod(&sender.service, "timeOut", Qt::DirectConnection));
    QCOMPARE(sender.finished, Ids{pending});
    sender.history.deliver();
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 5);
}

//! It is the next one that is delivered.
void TestSending::aQueuedAnnouncementFinishesASendThatCameMeanwhile()
{
    Sender sender;
    Ids sent{sender.send(vMessage(Hello))};
    connect(sent.first(), &PendingSmsId::finished, &sender.service,
            [&] { sent.append(sender.send(vMessage(Bye))); });
    sender.history.post({sentEvent(42, Hello)});
    sender.history.post({sentEvent(43, QStringLiteral("Other"))});
    sender.history.deliver();
    QCOMPARE(int(sent.size()), 2);
    QCOMPARE(sender.finished, sent);
    QCOMPARE(sent.last()->id(), -1);
    QCOMPARE(sent.last()->errorCause(), 0);
}

void TestSending::whatWasRefusedAtOnceNeverFinishes_data()
{
    QTest::addColumn<QString>("refused");
    QTest::addColumn<int>("cause");
    QTest::newRow("unreadable") << QStringLiteral("BEGIN:VMSG") << 1;
    QTest::newRow("no-text") << vMessage(QString()) << 2;
}

//! Neither by an announcement nor by the timer of the send before.
void TestSending::whatWasRefusedAtOnceNeverFinishes()
{
    QFETCH(QString, refused);
    QFETCH(int, cause);
    Sender sender;
    sender.send(vMessage(Hello));
    PendingSmsId *const afterASend = sender.send(refused);
    QVERIFY(QMetaObject::invokeMethod(&sender.service, "timeOut", Qt::DirectConnection));
    QCOMPARE(sender.finished, Ids());
    QCOMPARE(afterASend->errorCause(), cause);
    PendingSmsId *const seen = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    QCOMPARE(sender.finished, Ids{seen});
    PendingSmsId *const afterASuccess = sender.send(refused);
    sender.history.announce({sentEvent(43, QStringLiteral("Other"))});
    QCOMPARE(sender.finished, Ids{seen});
    QCOMPARE(afterASuccess->errorCause(), cause);
}

void TestSending::theNextSendReplacesThePendingObject()
{
    Sender sender;
    PendingSmsId *const first = sender.send(vMessage(Hello));
    PendingSmsId *const second = sender.send(vMessage(Bye));
    QVERIFY(first != second);
    sender.history.announce({sentEvent(42, Hello)});
    QCOMPARE(sender.finished, Ids());
    sender.history.announce({sentEvent(42, Hello), sentEvent(43, Bye)});
    QCOMPARE(sender.finished, Ids{second});
    QCOMPARE(second->id(), 43);
    QVERIFY(sender.waitForTimers(2));
    QCOMPARE(sender.finished, Ids{second});
    QCOMPARE(first->id(), -1);
    QCOMPARE(first->errorCause(), 0);
}

void TestSending::theFirstTimerFinishesTheReplacementOnce()
{
    Sender sender;
    PendingSmsId *const first = sender.send(vMessage(Hello));
    PendingSmsId *const second = sender.send(vMessage(Bye));
    QVERIFY(sender.waitForTimers(2));
    QCOMPARE(sender.finished, Ids{second});
    QCOMPARE(second->errorCause(), 5);
    QCOMPARE(first->errorCause(), 0);
}

void TestSending::aSubscriptionIsMadeOnce()
{
    Sender sender;
    sender.send(vMessage(Hello));
    PendingSmsId *const second = sender.send(vMessage(Hello));
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("eventsAdded got connected")),
             (QStringList{QStringLiteral("eventsAdded got connected  true"),
                          QStringLiteral("eventsAdded got connected  true")}));
    sender.history.announce({sentEvent(42, Hello)});
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("::eventsAdded(")).size(), 1);
    QCOMPARE(sender.finished, Ids{second});
}

void TestSending::onceSeenAnyAnnouncementFinishesALaterSend()
{
    Sender sender;
    PendingSmsId *const first = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    PendingSmsId *const second = sender.send(vMessage(Bye));
    QCOMPARE(sender.finished, Ids{first});
    Event other = sentEvent(43, QStringLiteral("Other"), QStringLiteral("+15550199"));
    other.setDirection(Event::Inbound);
    sender.history.announce({other});
    QCOMPARE(sender.finished, (Ids{first, second}));
    QCOMPARE(second->id(), -1);
    QCOMPARE(second->errorCause(), 0);
    PendingSmsId *const third = sender.send(vMessage(Bye));
    sender.history.announce({});
    QCOMPARE(sender.finished, (Ids{first, second, third}));
    QCOMPARE(first->id(), 42);
}

void TestSending::onceSeenNoTimerReportsAFailure()
{
    Sender sender;
    PendingSmsId *const first = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    PendingSmsId *const second = sender.send(vMessage(Bye));
    QVERIFY(sender.waitForTimers(2));
    QCOMPARE(sender.finished, Ids{first});
    QCOMPARE(second->errorCause(), 0);
    QCOMPARE(second->id(), -1);
}

void TestSending::onceSeenAMatchStillGivesTheId()
{
    Sender sender;
    PendingSmsId *const first = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    PendingSmsId *const second = sender.send(vMessage(Bye));
    sender.history.announce({sentEvent(43, Bye)});
    QCOMPARE(sender.finished, (Ids{first, second}));
    QCOMPARE(second->id(), 43);
    QCOMPARE(first->id(), 42);
}

void TestSending::anEarlierTimerEndsALaterSubscription()
{
    Sender sender;
    PendingSmsId *const first = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello)});
    sender.send(vMessage(Bye));
    QVERIFY(sender.waitForTimers(1));
    QVERIFY(
        sender.log.lines(QtDebugMsg).contains(QStringLiteral("Events Added Disconnected true")));
    sender.history.announce({sentEvent(43, Bye)});
    QCOMPARE(sender.finished, Ids{first});
}

BUS_TEST_MAIN(TestSending)
#include "tst_sending.moc"
