// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Announcements that no store makes. Any program on the bus can make them.

#include "sendtesting.h"

#include <commhistory/eventmarshalling.h>

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMetaType>

#include <limits>

using namespace SendTesting;
using CommHistory::Event;

namespace {

const QString Hello = QStringLiteral("Hello");

using Ids = QList<PendingSmsId *>;

QDBusMessage announcement()
{
    return QDBusMessage::createSignal(QStringLiteral("/forged"),
                                      QStringLiteral("com.quelt.commhistory"),
                                      QStringLiteral("eventsAdded"));
}

//! A list of one event whose numbers are what no Event can hold.
QVariant eventOfNumbers(int number, qint64 time)
{
    QDBusArgument list;
    list.beginArray(qMetaTypeId<Event>());
    list.beginStructure();
    list << number << number << time << time << number << true << true << number << QString()
         << Number << number << number << Hello << QString() << QString() << QString() << QString()
         << time << QList<CommHistory::MessagePart>() << QList<Event::Contact>();
    list.endStructure();
    list.endArray();
    return QVariant::fromValue(list);
}

} // namespace

class TestForgedSignals : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void otherSignaturesAreIgnored_data();
    void otherSignaturesAreIgnored();
    void numbersOutsideTheirRangeAreHarmless_data();
    void numbersOutsideTheirRangeAreHarmless();
    void aHugeListIsHarmless();
    void aHugeTextIsHarmless();
    void aFloodIsHarmless();
    void aNegativeIdIsHandedOn_data();
    void aNegativeIdIsHandedOn();
    void anySenderCounts();
    void aForgedInboundEventFinishesNothing();
};

void TestForgedSignals::otherSignaturesAreIgnored_data()
{
    QTest::addColumn<QVariantList>("arguments");
    qDBusRegisterMetaType<QList<Event::Contact>>();
    const QVariant events = QVariant::fromValue(QList<Event>{sentEvent(42, Hello)});
    QTest::newRow("nothing") << QVariantList();
    QTest::newRow("text") << QVariantList{Hello};
    QTest::newRow("numbers") << QVariantList{QVariant::fromValue(QList<int>{1, 2})};
    QTest::newRow("pairs") << QVariantList{QVariant::fromValue(QList<Event::Contact>{{42, Hello}})};
    QTest::newRow("an event") << QVariantList{QVariant::fromValue(sentEvent(42, Hello))};
    QTest::newRow("a variant") << QVariantList{QVariant::fromValue(QDBusVariant(events))};
    QTest::newRow("second") << QVariantList{1, events};
}

void TestForgedSignals::otherSignaturesAreIgnored()
{
    QFETCH(QVariantList, arguments);
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    QDBusMessage signal = announcement();
    signal.setArguments(arguments);
    sender.history.send(signal);
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("::eventsAdded(")), QStringList());
    QCOMPARE(sender.finished, Ids());
    sender.history.announce({sentEvent(43, Hello)});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 43);
}

void TestForgedSignals::numbersOutsideTheirRangeAreHarmless_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<qint64>("time");
    QTest::newRow("highest") << std::numeric_limits<int>::max()
                             << std::numeric_limits<qint64>::max();
    QTest::newRow("lowest") << std::numeric_limits<int>::min()
                            << std::numeric_limits<qint64>::min();
    QTest::newRow("below") << -1 << qint64(-1);
}

void TestForgedSignals::numbersOutsideTheirRangeAreHarmless()
{
    QFETCH(int, number);
    QFETCH(qint64, time);
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.send(announcement() << eventOfNumbers(number, time));
    QCOMPARE(sender.log.lines(QtDebugMsg).filter(QStringLiteral("::eventsAdded(")).size(), 1);
    QCOMPARE(sender.finished, Ids());
    QCOMPARE(pending->id(), -1);
}

void TestForgedSignals::aHugeListIsHarmless()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    QList<Event> events;
    for (int i = 0; i < 20000; ++i)
        events += sentEvent(i, QStringLiteral("other"));
    sender.history.announce(events);
    QCOMPARE(sender.finished, Ids());
    sender.history.announce(events << sentEvent(42, Hello));
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
}

void TestForgedSignals::aHugeTextIsHarmless()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(42, Hello.repeated(1 << 20))});
    QCOMPARE(sender.finished, Ids());
    QCOMPARE(pending->id(), -1);
}

void TestForgedSignals::aFloodIsHarmless()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    for (int i = 0; i < 1000; ++i)
        sender.history.announce({sentEvent(i, QStringLiteral("other"))});
    QCOMPARE(sender.finished, Ids());
    sender.history.announce({sentEvent(42, Hello)});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
}

void TestForgedSignals::aNegativeIdIsHandedOn_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("none") << -1;
    QTest::newRow("lowest") << std::numeric_limits<int>::min();
}

//! The sender takes ids as they come; who needs certainty looks into the store.
void TestForgedSignals::aNegativeIdIsHandedOn()
{
    QFETCH(int, id);
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    sender.history.announce({sentEvent(id, Hello)});
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), id);
    QCOMPARE(pending->errorCause(), 0);
}

//! The store may be written by any process.
void TestForgedSignals::anySenderCounts()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    BusTesting::roundTrip(QDBusConnection::sessionBus());
    QDBusConnection own = QDBusConnection::sessionBus();
    own.send(announcement() << QVariant::fromValue(QList<Event>{sentEvent(42, Hello)}));
    BusTesting::roundTrip(own);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), 42);
}

void TestForgedSignals::aForgedInboundEventFinishesNothing()
{
    Sender sender;
    PendingSmsId *const pending = sender.send(vMessage(Hello));
    Event inbound = sentEvent(42, Hello);
    inbound.setDirection(Event::Inbound);
    sender.history.announce({inbound});
    QCOMPARE(sender.finished, Ids());
    QVERIFY(sender.waitForTimers(1));
    QCOMPARE(sender.finished, Ids{pending});
    QCOMPARE(pending->id(), -1);
    QCOMPARE(pending->errorCause(), 5);
}

BUS_TEST_MAIN(TestForgedSignals)
#include "tst_forgedsignals.moc"
