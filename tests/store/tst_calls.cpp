// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storetesting.h"

#include <commhistory/callmodel.h>

using namespace CommHistory;
using namespace StoreTesting;

//! The call log. Each function begins with an empty one.
class TestCalls : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void kindsAreToldApart_data();
    void kindsAreToldApart();
    void callsAreNewestFirstAndEqualTimesByDescendingId();
    void sinceGoesByTheStartAndIncludesIt();
    void aCallComesBack();
    void deleteAllRemovesCallsOnly();
    void deleteAllComesAfterTheRequestsBefore();
};

namespace {

Event call(Event::Direction direction, bool isMissed, const QString &number,
           const QDateTime &start = utc(2026, 3, 1, 12))
{
    Event event;
    event.setType(Event::CallEvent);
    event.setDirection(direction);
    if (isMissed)
        event.setIsMissedCall(true);
    event.setStartTime(start);
    event.setEndTime(start.addSecs(60));
    event.setRemoteUid(number);
    return event;
}

QString numbers(CallEvent::CallType type, const QDateTime &since = QDateTime())
{
    CallModel model;
    model.setFilter(CallModel::SortByTime, type, since);
    QSignalSpy ready(&model, &CallModel::modelReady);
    if (!model.getEvents() || !ready.wait(Patience))
        return QStringLiteral("no answer");
    QStringList numbers;
    for (const Event &event : eventsOf(model))
        numbers.append(event.remoteUid());
    return numbers.join(QLatin1Char(' '));
}

} // namespace

void TestCalls::init()
{
    QVERIFY(makeStore());
    QVERIFY(CallModel().deleteAll());
}

void TestCalls::kindsAreToldApart_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all") << int(CallEvent::AllCalls) << QStringLiteral("4 3 2 1");
    QTest::newRow("outgoing") << int(CallEvent::OutgoingCall) << QStringLiteral("3");
    QTest::newRow("missed") << int(CallEvent::MissedCall) << QStringLiteral("2");
    QTest::newRow("incoming") << int(CallEvent::IncomingCall) << QStringLiteral("1");
}

void TestCalls::kindsAreToldApart()
{
    QFETCH(int, type);
    QFETCH(QString, expected);
    add({call(Event::Inbound, false, QStringLiteral("1")),
         call(Event::Inbound, true, QStringLiteral("2")),
         call(Event::Outbound, false, QStringLiteral("3")),
         call(Event::UnknownDirection, false, QStringLiteral("4"))});
    QCOMPARE(numbers(CallEvent::CallType(type)), expected);
}

void TestCalls::callsAreNewestFirstAndEqualTimesByDescendingId()
{
    add({call(Event::Inbound, false, QStringLiteral("b"), utc(2026, 1, 2)),
         call(Event::Inbound, false, QStringLiteral("d"), utc(2026, 1, 1)),
         call(Event::Inbound, false, QStringLiteral("a"), utc(2026, 1, 2)),
         call(Event::Inbound, false, QStringLiteral("c"), utc(2026, 1, 1, 1))});
    QCOMPARE(numbers(CallEvent::AllCalls), QStringLiteral("a b c d"));
}

void TestCalls::sinceGoesByTheStartAndIncludesIt()
{
    add({call(Event::Inbound, false, QStringLiteral("a"), utc(2026, 1, 1, 12))});
    QCOMPARE(numbers(CallEvent::IncomingCall, utc(2026, 1, 1, 12)), QStringLiteral("a"));
    QCOMPARE(numbers(CallEvent::IncomingCall, utc(2026, 1, 1, 12, 0, 1)), QString());
}

void TestCalls::aCallComesBack()
{
    add({call(Event::Outbound, false, QStringLiteral("+15550100"), utc(2026, 1, 1, 12))});
    CallModel model;
    QSignalSpy ready(&model, &CallModel::modelReady);
    QVERIFY(model.getEvents());
    QVERIFY(ready.wait(Patience));
    QCOMPARE(model.rowCount(), 1);
    const Event event = model.event(model.index(0, 0));
    QCOMPARE(event.type(), Event::CallEvent);
    QCOMPARE(event.startTime(), utc(2026, 1, 1, 12));
    QCOMPARE(event.endTime(), utc(2026, 1, 1, 12, 1));
    QCOMPARE(event.direction(), Event::Outbound);
}

void TestCalls::deleteAllRemovesCallsOnly()
{
    const int before = int(read(5201).size());
    add({message(QStringLiteral("kept"), 5201), call(Event::Inbound, false, QStringLiteral("1")),
         call(Event::Outbound, false, QStringLiteral("2"))});
    QVERIFY(CallModel().deleteAll());
    QCOMPARE(numbers(CallEvent::AllCalls), QString());
    QCOMPARE(int(read(5201).size()), before + 1);
}

void TestCalls::deleteAllComesAfterTheRequestsBefore()
{
    CallModel model;
    QList<Event> events{call(Event::Inbound, false, QStringLiteral("1"))};
    model.addEvents(events, false);
    QVERIFY(model.deleteAll());
    QCOMPARE(numbers(CallEvent::AllCalls), QString());
}

STORE_TEST_MAIN(TestCalls)
#include "tst_calls.moc"
