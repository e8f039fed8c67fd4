// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What the store tells the session bus of events that were added. The program is its own
// second process, which adds and ends at once.

#include "bustesting.h"
#include "eventloop.h"
#include "storetesting.h"

#include <commhistory/eventmarshalling.h>

#include <QtCore/QProcess>
#include <QtDBus/QDBusMetaType>

#include <unistd.h>

using namespace BusTesting;
using namespace StoreTesting;
using CommHistory::Event;
using CommHistory::EventModel;

namespace {

//! Adds so many messages, more than a socket takes at once, and ends with the last report,
//! inside its slot.
int addAndEnd(int count)
{
    EventModel model;
    int reported = 0;
    QObject::connect(&model, &EventModel::eventsCommitted, &model,
                     [&](const QList<Event> &events, bool status) {
                         reported += int(events.size());
                         if (!status || reported == count)
                             _exit(status ? 0 : 1);
                     });
    QList<Event> events = messages(count, QString(5000, QLatin1Char('a')));
    model.addEvents(events, false);
    return QCoreApplication::exec();
}

//! An upper bound of what the event takes in a message: its texts, and 160 bytes for numbers,
//! lengths and gaps.
qint64 messageSize(const Event &event)
{
    return 160 + event.freeText().toUtf8().size() + event.remoteUid().toUtf8().size();
}

} // namespace

class TestAnnouncement : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase() { QDBusConnection::disconnectFromBus(QStringLiteral("listener")); }
    void addedMessagesAreAnnounced();
    void addedCallsAreAnnounced();
    void otherWritesAreNot();
    void portionsStayBelowOneMebibyte_data();
    void portionsStayBelowOneMebibyte();
    void nothingIsLostWhenTheProcessEnds();

public Q_SLOTS:
    void take(const QList<CommHistory::Event> &events) { announcements.append(events); }

private:
    //! All that the bus was told until now.
    QList<QList<Event>> heard()
    {
        roundTrip(QDBusConnection(QStringLiteral("listener")));
        QCoreApplication::sendPostedEvents();
        return announcements;
    }

    QList<QList<Event>> announcements;
};

void TestAnnouncement::initTestCase()
{
    qDBusRegisterMetaType<Event>();
    qDBusRegisterMetaType<QList<Event>>();
    qDBusRegisterMetaType<CommHistory::MessagePart>();
    qDBusRegisterMetaType<QList<CommHistory::MessagePart>>();
    qDBusRegisterMetaType<Event::Contact>();
    QDBusConnection listener =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("listener"));
    QVERIFY(listener.connect(QString(), QString(), QStringLiteral("com.quelt.commhistory"),
                             QStringLiteral("eventsAdded"), this,
                             SLOT(take(QList<CommHistory::Event>))));
    roundTrip(listener);
    settle(); // a new connection delivers signals from the first turn of the event loop on
}

void TestAnnouncement::init()
{
    heard();
    announcements.clear();
}

void TestAnnouncement::addedMessagesAreAnnounced()
{
    Event sent = message(QStringLiteral("H\u00e9llo"), Sent);
    sent.setStatus(Event::SentStatus);
    const QList<int> ids = add({message(QStringLiteral("first")), sent});
    QCOMPARE(int(ids.size()), 2);
    QCOMPARE(int(heard().size()), 1);
    const QList<Event> events = announcements.at(0);
    QCOMPARE(int(events.size()), 2);
    QCOMPARE(events.at(0).id(), ids.at(0));
    QCOMPARE(events.at(0).direction(), Event::Inbound);
    QCOMPARE(events.at(0).freeText(), QStringLiteral("first"));
    QCOMPARE(events.at(1).id(), ids.at(1));
    QCOMPARE(events.at(1).type(), Event::SmsEvent);
    QCOMPARE(events.at(1).direction(), Event::Outbound);
    QCOMPARE(events.at(1).status(), Event::SentStatus);
    QCOMPARE(events.at(1).freeText(), QStringLiteral("H\u00e9llo"));
    QCOMPARE(events.at(1).remoteUid(), QStringLiteral("+15550100"));
    QCOMPARE(events.at(1).parentId(), Sent);
    QCOMPARE(events.at(1).startTime(), utc(2026, 3, 1, 12));
}

void TestAnnouncement::addedCallsAreAnnounced()
{
    Event call;
    call.setType(Event::CallEvent);
    call.setDirection(Event::Inbound);
    call.setIsMissedCall(true);
    call.setRemoteUid(QStringLiteral("+15550100"));
    call.setStartTime(utc(2026, 3, 1, 12));
    call.setEndTime(utc(2026, 3, 1, 12));
    const QList<int> ids = add({call});
    QCOMPARE(int(heard().size()), 1);
    QCOMPARE(int(announcements.at(0).size()), 1);
    QCOMPARE(announcements.at(0).at(0).id(), ids.value(0));
    QCOMPARE(announcements.at(0).at(0).type(), Event::CallEvent);
    QCOMPARE(announcements.at(0).at(0).isMissedCall(), true);
}

void TestAnnouncement::otherWritesAreNot()
{
    const QList<int> ids = add({message(QStringLiteral("first"))});
    QCOMPARE(int(heard().size()), 1);
    EventModel model;
    Reports reports(&model);
    Event change;
    change.setId(ids.at(0));
    change.setFreeText(QStringLiteral("changed"));
    QList<Event> changes{change};
    QList<Event> nothing;
    model.modifyEvents(changes);
    model.addEvents(nothing, false);
    QList<Event> shown = messages(1);
    model.addEvents(shown, true);
    model.deleteEvent(ids.at(0));
    QCOMPARE(int(reports.wait(3).size()), 3);
    QCOMPARE(int(heard().size()), 1);
}

void TestAnnouncement::portionsStayBelowOneMebibyte_data()
{
    QTest::addColumn<QString>("character");
    QTest::addColumn<int>("length");
    QTest::newRow("ascii") << QStringLiteral("a") << 6000;
    QTest::newRow("three-bytes") << QStringLiteral("\u20ac") << 2000;
    QTest::newRow("four-bytes") << QStringLiteral("\U0001F600") << 1500;
    QTest::newRow("short") << QStringLiteral("a") << 1;
}

void TestAnnouncement::portionsStayBelowOneMebibyte()
{
    QFETCH(QString, character);
    QFETCH(int, length);
    const QString text = character.repeated(length);
    const QList<int> ids = add(messages(1001, text));
    QCOMPARE(int(ids.size()), 1001);
    QList<int> announced;
    const QList<QList<Event>> portions = heard();
    for (const QList<Event> &portion : portions) {
        qint64 size = 0;
        for (const Event &event : portion) {
            size += messageSize(event);
            QVERIFY(event.freeText().startsWith(text));
            announced.append(event.id());
        }
        QVERIFY(size < 1024 * 1024);
    }
    QCOMPARE(announced, ids);
}

void TestAnnouncement::nothingIsLostWhenTheProcessEnds()
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("add-and-end")});
    QVERIFY(process.waitForFinished(StoreTesting::Patience));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    int count = 0;
    const QList<QList<Event>> portions = heard();
    for (const QList<Event> &portion : portions)
        count += int(portion.size());
    QCOMPARE(count, 1500);
}

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "add-and-end") == 0) {
        const QCoreApplication application(argc, argv);
        return addAndEnd(1500);
    }
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    const PrivateBus bus("DBUS_SESSION_BUS_ADDRESS");
    QCoreApplication application(argc, argv);
    TestAnnouncement test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_announcement.moc"
