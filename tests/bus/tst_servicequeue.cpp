// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What becomes of the calls that come while the modem is slow: a program that was not told that
// its message went out asks again, and it must not go out twice.

#include "modemtest.h"
#include "senderservice.h"
#include "sendservice.h"

#include <shared/delivery.h>

#include <commhistory/eventmarshalling.h>

#include <QtCore/QDeadlineTimer>
#include <QtDBus/QDBusConnectionInterface>

#include <memory>

using BusTesting::roundTrip;
using SenderService::answer;
using SenderService::call;
using SenderService::vMessage;
using StoreTesting::Patience;

namespace {

constexpr std::chrono::minutes Long(10);
constexpr std::chrono::milliseconds Short(200); //!< below the two seconds of a served call
const QList<int> Unknown{-1, 5};

QDBusMessage request(const QString &text)
{
    return QDBusMessage::createMethodCall(
               SenderService::BusName, QStringLiteral("/SendSmsInterface"),
               QStringLiteral("org.korvasync.SendSms1"), QStringLiteral("SendSms"))
        << vMessage(text);
}

//! The error's text; nothing when none comes, or another.
QString refusal(const QDBusPendingCall &call)
{
    const bool isFinished = QTest::qWaitFor([&] { return call.isFinished(); }, Patience);
    const bool isRefused =
        isFinished && call.error().name() == QLatin1String("org.korvasync.SendSms1.Error.NotSent");
    return isRefused ? call.error().message() : QString();
}

} // namespace

class TestServiceQueue : public ModemTest
{
    Q_OBJECT
public:
    using ModemTest::ModemTest;

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void equalCallsThatWaitAreOne();
    void aRepeatBehindASlowModemIsOneMessage();
    void aRepeatOfWhatIsUnknownGetsTheSameReply();
    void aCallThatWaitedTooLongIsNeverHandedOver();
    void aCallWhoseCallerHasGoneIsNotHandedOver();
    void aCallThatOneOfTwoCallersStillWaitsForIsHandedOver();
    void aCallThatWantsNoReplyIsHandedOverWithoutItsCaller();
    void aFloodIsRefusedAtOnce();
    void aFloodOfEqualCallsIsOneMessage();
    void muchTextIsRefusedAtOnce();
    void aForgedAnnouncementSendsNothingTwice();
    void refusesNumbersThatTheClientRefuses_data();
    void refusesNumbersThatTheClientRefuses();
    void sendsATextWithoutItsByteOrderMark();

private:
    void serve(std::chrono::milliseconds waitingLimit);
    //! Calls with a message that is being served from then on; its modem does not answer yet.
    QDBusPendingCall occupy();
    //! Returns when the service has got all calls. The event loop does not run meanwhile, so that
    //! the two seconds of a served call cannot pass.
    void deliver(const QDBusConnection &bus);
    //! Has a program call and go; the service has got the call and the bus knows that it is gone.
    void callAndGo(const QString &text, bool wantsReply = true);
    bool waitForMessages(int count);
    bool waitUntilNoneIsUnderWay();

    std::unique_ptr<ScriptedModem> modem;
    std::unique_ptr<SendService> service;
    QDBusConnection caller{QString()};
};

void TestServiceQueue::initTestCase()
{
    QVERIFY(StoreTesting::makeStore());
    caller = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("caller"));
}

void TestServiceQueue::init()
{
    modem = std::make_unique<ScriptedModem>(systemBus.address());
    serve(Long);
}

void TestServiceQueue::cleanup()
{
    QSignalSpy ended(service.get(), &SendService::ended);
    service->finish();
    modem->accept(true);
    QVERIFY(!ended.isEmpty() || ended.wait(Patience));
    service.reset();
    modem.reset();
}

void TestServiceQueue::serve(std::chrono::milliseconds waitingLimit)
{
    service.reset();
    service = std::make_unique<SendService>(Long, waitingLimit);
    QVERIFY(service->start());
}

QDBusPendingCall TestServiceQueue::occupy()
{
    const QDBusPendingCall first = call(vMessage(QStringLiteral("first")), caller);
    return waitForMessages(1) ? first : QDBusPendingCall::fromError(QDBusError());
}

void TestServiceQueue::deliver(const QDBusConnection &bus)
{
    roundTrip(bus);
    roundTrip(QDBusConnection::sessionBus());
    QCoreApplication::sendPostedEvents();
}

void TestServiceQueue::callAndGo(const QString &text, bool wantsReply)
{
    const QString name = QStringLiteral("going");
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    const QString busName = bus.baseService();
    if (wantsReply)
        call(vMessage(text), bus);
    else
        bus.send(request(text));
    deliver(bus);
    bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
    const QDeadlineTimer deadline(Patience);
    while (caller.interface()->isServiceRegistered(busName).value() && !deadline.hasExpired()) { }
}

bool TestServiceQueue::waitForMessages(int count)
{
    return QTest::qWaitFor([=] { return modem->messages().size() >= count; }, Patience);
}

bool TestServiceQueue::waitUntilNoneIsUnderWay()
{
    return QTest::qWaitFor([this] { return service->findChildren<Delivery *>().isEmpty(); },
                           Patience);
}

void TestServiceQueue::equalCallsThatWaitAreOne()
{
    const QString text = QStringLiteral("equal");
    const QDBusPendingCall first = occupy();
    const QDBusPendingCall one = call(vMessage(text), caller);
    const QDBusPendingCall other = call(vMessage(text), caller);
    const QDBusPendingCall toAnother = call(vMessage(text, QStringLiteral("+15550101")), caller);
    QTRY_VERIFY_WITH_TIMEOUT(first.isFinished(), Patience);
    modem->accept(true);
    const QList<int> result = answer(one);
    QVERIFY(result.value(0) > 0);
    QCOMPARE(result.value(1), 0);
    QCOMPARE(answer(other), result);
    QCOMPARE(answer(toAnother).value(1), 0);
    QVERIFY(answer(toAnother) != result);
    QCOMPARE(modem->texts(), (QStringList{QStringLiteral("first"), text, text}));
}

//! By a caller that has less patience than the service.
void TestServiceQueue::aRepeatBehindASlowModemIsOneMessage()
{
    const QString text = QStringLiteral("repeated");
    const QDBusPendingCall first = occupy();
    const QDBusPendingCall firstTry = caller.asyncCall(request(text), 1);
    deliver(caller);
    QCOMPARE(answer(firstTry), QList<int>());
    QCOMPARE(firstTry.error().type(), QDBusError::NoReply);
    const QDBusPendingCall secondTry = call(vMessage(text), caller);
    QTRY_VERIFY_WITH_TIMEOUT(first.isFinished(), Patience);
    modem->accept(true);
    QVERIFY(answer(secondTry).value(0) > 0);
    QCOMPARE(modem->texts(), (QStringList{QStringLiteral("first"), text}));
}

void TestServiceQueue::aRepeatOfWhatIsUnknownGetsTheSameReply()
{
    const QString text = QStringLiteral("first");
    const QDBusPendingCall first = occupy();
    const QDBusPendingCall whileServed = call(vMessage(text), caller);
    QCOMPARE(answer(first), Unknown);
    QCOMPARE(answer(whileServed), Unknown);
    QCOMPARE(answer(call(vMessage(text), caller)), Unknown);
    QCOMPARE(modem->messages().size(), 1);
    // It is a new message when it is known what became of the other.
    modem->accept();
    QVERIFY(waitUntilNoneIsUnderWay());
    const QDBusPendingCall later = call(vMessage(text), caller);
    QVERIFY(waitForMessages(2));
    modem->accept();
    QVERIFY(answer(later).value(0) > 0);
    QCOMPARE(modem->messages().size(), 2);
}

void TestServiceQueue::aCallThatWaitedTooLongIsNeverHandedOver()
{
    serve(Short);
    const QDBusPendingCall first = occupy();
    const QDBusPendingCall late = call(vMessage(QStringLiteral("late")), caller);
    deliver(caller);
    QCOMPARE(refusal(late), QStringLiteral("The message was not sent, as others went before it."));
    QCOMPARE(answer(first), Unknown);
    modem->accept(true);
    QCOMPARE(answer(call(vMessage(QStringLiteral("last")), caller)).value(1), 0);
    QCOMPARE(modem->texts(), (QStringList{QStringLiteral("first"), QStringLiteral("last")}));
}

void TestServiceQueue::aCallWhoseCallerHasGoneIsNotHandedOver()
{
    const QDBusPendingCall first = occupy();
    callAndGo(QStringLiteral("of nobody"));
    const QDBusPendingCall last = call(vMessage(QStringLiteral("last")), caller);
    QCOMPARE(answer(first), Unknown);
    modem->accept(true);
    QVERIFY(answer(last).value(0) > 0);
    QCOMPARE(modem->texts(), (QStringList{QStringLiteral("first"), QStringLiteral("last")}));
}

void TestServiceQueue::aCallThatOneOfTwoCallersStillWaitsForIsHandedOver()
{
    const QString text = QStringLiteral("of one");
    const QDBusPendingCall first = occupy();
    const QDBusPendingCall other = call(vMessage(text), caller);
    deliver(caller);
    callAndGo(text);
    QCOMPARE(answer(first), Unknown);
    modem->accept(true);
    QVERIFY(answer(other).value(0) > 0);
    QCOMPARE(modem->texts(), (QStringList{QStringLiteral("first"), text}));
}

void TestServiceQueue::aCallThatWantsNoReplyIsHandedOverWithoutItsCaller()
{
    const QString text = QStringLiteral("and forget");
    const QDBusPendingCall first = occupy();
    callAndGo(text, false);
    QCOMPARE(answer(first), Unknown);
    modem->accept(true);
    QVERIFY(waitForMessages(2));
    QCOMPARE(modem->texts(), (QStringList{QStringLiteral("first"), text}));
}

void TestServiceQueue::aFloodIsRefusedAtOnce()
{
    occupy();
    QList<QDBusPendingCall> calls;
    for (int i = 0; i < 1000; ++i)
        calls += call(vMessage(QStringLiteral("flood %1").arg(i)), caller);
    deliver(caller);
    service->finish();
    for (int i = 0; i < 1000; ++i) {
        QCOMPARE(refusal(calls.at(i)),
                 i < 99 ? QStringLiteral("The message was not sent, as the service ends.")
                        : QStringLiteral("The message was not sent, as too many calls wait."));
    }
    QCOMPARE(modem->texts(), QStringList{QStringLiteral("first")});
}

//! What has no room is told that its message may go out.
void TestServiceQueue::aFloodOfEqualCallsIsOneMessage()
{
    QList<QDBusPendingCall> calls{occupy()};
    for (int i = 0; i < 1000; ++i)
        calls += call(vMessage(QStringLiteral("first")), caller);
    for (const QDBusPendingCall &one : std::as_const(calls))
        QCOMPARE(answer(one), Unknown);
    QCOMPARE(modem->texts(), QStringList{QStringLiteral("first")});
}

void TestServiceQueue::muchTextIsRefusedAtOnce()
{
    occupy();
    const QString most(3 << 20, QLatin1Char('a'));
    const QDBusPendingCall fits = call(vMessage(most), caller);
    const QDBusPendingCall doesNot = call(vMessage(most + QLatin1Char('b')), caller);
    deliver(caller);
    service->finish();
    QCOMPARE(refusal(fits), QStringLiteral("The message was not sent, as the service ends."));
    QCOMPARE(refusal(doesNot), QStringLiteral("The message was not sent, as too many calls wait."));
}

//! Any program can announce that a message was sent. Another one does not go out for that.
void TestServiceQueue::aForgedAnnouncementSendsNothingTwice()
{
    serve(Short);
    const QDBusPendingCall first = occupy();
    CommHistory::Event event;
    event.setId(42);
    event.setDirection(CommHistory::Event::Outbound);
    event.setRemoteUid(QStringLiteral("+15550100"));
    event.setFreeText(QStringLiteral("first"));
    QVERIFY(caller.send(QDBusMessage::createSignal(QStringLiteral("/"),
                                                   QStringLiteral("com.quelt.commhistory"),
                                                   QStringLiteral("eventsAdded"))
                        << QVariant::fromValue(QList<CommHistory::Event>{event})));
    QCOMPARE(answer(first), (QList<int>{42, 0}));
    QCOMPARE(refusal(call(vMessage(QStringLiteral("first")), caller)),
             QStringLiteral("The message was not sent, as an equal one is still on its way."));
    QCOMPARE(modem->messages().size(), 1);
}

void TestServiceQueue::refusesNumbersThatTheClientRefuses_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("error");
    QTest::newRow("escape") << QStringLiteral("+1555\u001b[31m0100") << QString();
    QTest::newRow("bell") << QStringLiteral("\u0007+15550100") << QString();
    QTest::newRow("C1 control") << QStringLiteral("+1555\u009b0100") << QString();
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("several")
        << QStringLiteral("+15550100~+15550199")
        << QStringLiteral("The message was not sent: more than one other party; a message can be "
                          "kept for one.");
}

void TestServiceQueue::refusesNumbersThatTheClientRefuses()
{
    QFETCH(QString, number);
    QFETCH(QString, error);
    const auto stored = StoreTesting::read(StoreTesting::Outbox).size();
    const QDBusPendingCall refused = call(vMessage(QStringLiteral("Hello"), number), caller);
    if (error.isEmpty())
        QCOMPARE(answer(refused), (QList<int>{-1, 3}));
    else
        QCOMPARE(refusal(refused), error);
    QCOMPARE(modem->messages().size(), 0);
    QCOMPARE(StoreTesting::read(StoreTesting::Outbox).size(), stored);
}

void TestServiceQueue::sendsATextWithoutItsByteOrderMark()
{
    modem->accept(true);
    const QList<int> result = answer(call(vMessage(QStringLiteral("\uFEFF\uFEFFmarked")), caller));
    QCOMPARE(result,
             (QList<int>{StoreTesting::idIn(StoreTesting::Sent, QStringLiteral("marked")), 0}));
    QVERIFY(result.first() > 0);
    QCOMPARE(modem->texts(), QStringList{QStringLiteral("marked")});
}

MODEM_TEST_MAIN(TestServiceQueue)
#include "tst_servicequeue.moc"
