// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "bustesting.h"

#include <bus/messagebus.h>

#include <memory>

using BusTesting::Patience;
using State = MessageBus::State;

namespace {

constexpr int Short = 100; // milliseconds, for what never answers

} // namespace

//! A bus that is absent, silent, open, silent again and gone, asked in either way.
class TestMessageBus : public QObject
{
    Q_OBJECT
public:
    //! The buses are in the environment when the bus library first looks there.
    TestMessageBus()
        : sessionBus(std::make_unique<PrivateBus>("DBUS_SESSION_BUS_ADDRESS"))
        , systemBus(std::make_unique<PrivateBus>("DBUS_SYSTEM_BUS_ADDRESS"))
    {
    }

private Q_SLOTS:
    void tellsWithinTheLimitWhatTheSessionBusDoes();
    void tellsOnTheEventLoopWhatTheSystemBusDoes();

private:
    std::unique_ptr<PrivateBus> sessionBus;
    std::unique_ptr<PrivateBus> systemBus;
};

void TestMessageBus::tellsWithinTheLimitWhatTheSessionBusDoes()
{
    MessageBus &bus = MessageBus::session();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QCOMPARE(int(bus.open(Patience)), int(State::Absent));
    QVERIFY(!bus.isOpen());

    qputenv("DBUS_SESSION_BUS_ADDRESS", sessionBus->address().toLatin1());
    sessionBus->stop();
    QCOMPARE(int(bus.open(Short)), int(State::Silent));
    QCOMPARE(int(bus.open(Short)), int(State::Silent));
    QVERIFY(!bus.isOpen());

    sessionBus->goOn();
    QCOMPARE(int(bus.open(Patience)), int(State::Open));
    QVERIFY(bus.isOpen());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
    QCOMPARE(int(bus.flush(Patience)), int(State::Open));

    sessionBus->stop();
    QCOMPARE(int(bus.open(Short)), int(State::Open)); // which asks nothing any more
    QCOMPARE(int(bus.flush(Short)), int(State::Silent));
    sessionBus->goOn();
    QCOMPARE(int(bus.flush(Patience)), int(State::Open));

    sessionBus.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!bus.isOpen(), Patience);
    QCOMPARE(int(bus.open(Patience)), int(State::Absent));
    QCOMPARE(int(bus.flush(Patience)), int(State::Absent));
}

void TestMessageBus::tellsOnTheEventLoopWhatTheSystemBusDoes()
{
    MessageBus &bus = MessageBus::system();
    QList<int> told;
    const auto tell = [&told](State state) { told += int(state); };
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    bus.open(Patience, this, tell);
    QCOMPARE(told, QList<int>{int(State::Absent)});
    told.clear();

    qputenv("DBUS_SYSTEM_BUS_ADDRESS", systemBus->address().toLatin1());
    systemBus->stop();
    bus.open(Short, this, tell);
    bus.open(Patience, this, tell); // waits for the same answer
    {
        const QObject gone;
        bus.open(Short, &gone, tell); // never told
    }
    QCOMPARE(told, QList<int>());
    const QList<int> twiceSilent{int(State::Silent), int(State::Silent)};
    QTRY_COMPARE_WITH_TIMEOUT(told, twiceSilent, Patience);
    told.clear();

    systemBus->goOn();
    bus.open(Patience, this, tell);
    QTRY_COMPARE_WITH_TIMEOUT(told, QList<int>{int(State::Open)}, Patience);
    QVERIFY(QDBusConnection::systemBus().isConnected());
    told.clear();
    bus.open(Patience, this, tell);
    QCOMPARE(told, QList<int>{int(State::Open)});
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    TestMessageBus test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_messagebus.moc"
