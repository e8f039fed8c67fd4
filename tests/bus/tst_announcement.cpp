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

#include <cstdio>

#include <unistd.h>

using namespace BusTesting;
using namespace StoreTesting;
using CommHistory::Event;
using CommHistory::EventModel;
using CommHistory::MessagePart;

namespace {

//! Adds so many messages, prints the id of each that is reported as added, and ends with the
//! last report, inside its slot.
int addAndEnd(int count, int length)
{
    EventModel model;
    int reported = 0;
    QObject::connect(&model, &EventModel::eventsCommitted, &model,
                     [&](const QList<Event> &events, bool status) {
                         if (status) {
                             for (const Event &event : events)
                                 std::printf("%d\n", event.id());
                             std::fflush(stdout);
                         }
                         reported += int(events.size());
                         if (!status || reported == count)
                             _exit(status ? 0 : 1);
                     });
    QList<Event> events = messages(count, QString(length, QLatin1Char('a')));
    model.addEvents(events, false);
    return QCoreApplication::exec();
}

struct Outcome
{
    int exitCode;
    QList<int> ids; //!< that were reported as added
};

//! Has a process of its own add so many messages of such a length.
//! \param mount  shell commands that run before it in a mount namespace of its own
Outcome addInProcess(int count, int length, const QString &mount, const QString &store)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KORVASYNC_STORE"), store);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("unshare"),
                  {QStringLiteral("-m"), QStringLiteral("sh"), QStringLiteral("-c"),
                   mount + QStringLiteral(" && exec \"$0\" \"$@\""),
                   QCoreApplication::applicationFilePath(), QStringLiteral("add-and-end"),
                   QString::number(count), QString::number(length)});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}};
    QList<int> ids;
    const QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            ids.append(line.toInt());
    }
    return {process.exitCode(), ids};
}

constexpr qint64 Mebibyte = 1 << 20;

qint64 sizeOf(const QString &text) { return text.toUtf8().size(); }

//! A lower bound of what the events take in a message: their texts.
qint64 sizeOf(const QList<Event> &events)
{
    qint64 size = 0;
    for (const Event &event : events) {
        for (const QString &text :
             {event.localUid(), event.remoteUid(), event.freeText(), event.messageToken(),
              event.encoding(), event.characterSet(), event.language()})
            size += sizeOf(text);
        const QList<MessagePart> parts = event.messageParts();
        for (const MessagePart &part : parts)
            size += sizeOf(part.contentId) + sizeOf(part.contentType) + sizeOf(part.path)
                + sizeOf(part.plainText) + sizeOf(part.contentLocation);
        const QList<Event::Contact> contacts = event.contacts();
        for (const Event::Contact &contact : contacts)
            size += sizeOf(contact.second);
    }
    return size;
}

QList<int> idsOf(const QList<QList<Event>> &portions)
{
    QList<int> ids;
    for (const QList<Event> &portion : portions) {
        for (const Event &event : portion)
            ids.append(event.id());
    }
    return ids;
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
    void everyFieldCountsInAPortion_data();
    void everyFieldCountsInAPortion();
    void anEventAboveThePortionGoesAlone();
    void anEventThatNoMessageHoldsIsLeftOut();
    void whatIsReportedIsAnnouncedOnceWhenTheProcessEnds_data();
    void whatIsReportedIsAnnouncedOnceWhenTheProcessEnds();
    void theBusOfTheUserIsFoundByItsPlace();
    void anAddThatFailsIsNotAnnounced();
    void onAFullDiskOnlyWhatWasStoredIsAnnounced();

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
    const QList<QList<Event>> portions = heard();
    for (const QList<Event> &portion : portions) {
        QVERIFY(sizeOf(portion) < Mebibyte);
        for (const Event &event : portion)
            QVERIFY(event.freeText().startsWith(text));
    }
    QCOMPARE(idsOf(portions), ids);
}

void TestAnnouncement::everyFieldCountsInAPortion_data()
{
    QTest::addColumn<Event>("event");
    const QString text(3000, QChar(0x20ac)); // 9,000 bytes, so that 200 take 1.8 MB
    const auto row = [](const char *name, void (Event::*set)(const QString &),
                        const QString &value) {
        Event event = message(QStringLiteral("text"));
        (event.*set)(value);
        QTest::newRow(name) << event;
    };
    row("local uid", &Event::setLocalUid, text);
    row("remote uid", &Event::setRemoteUid, text);
    row("token", &Event::setMessageToken, text);
    row("encoding", &Event::setEncoding, text);
    row("character set", &Event::setCharacterSet, text);
    row("language", &Event::setLanguage, text);
    const auto partRow = [](const char *name, QString MessagePart::*field, const QString &value) {
        MessagePart part;
        part.*field = value;
        Event event = message(QStringLiteral("text"));
        event.setMessageParts({part});
        QTest::newRow(name) << event;
    };
    partRow("content id", &MessagePart::contentId, text);
    partRow("content type", &MessagePart::contentType, text);
    partRow("path", &MessagePart::path, text);
    partRow("plain text", &MessagePart::plainText, text);
    partRow("content location", &MessagePart::contentLocation, text);
    Event known = message(QStringLiteral("text"));
    known.setContacts({{1, text}});
    QTest::newRow("contact") << known;
}

void TestAnnouncement::everyFieldCountsInAPortion()
{
    QFETCH(Event, event);
    QList<Event> events;
    for (int i = 0; i < 200; ++i)
        events.append(event);
    const QList<int> ids = add(events);
    const QList<QList<Event>> portions = heard();
    QCOMPARE(int(portions.size()), 2);
    for (const QList<Event> &portion : portions)
        QVERIFY(sizeOf(portion) < Mebibyte);
    QCOMPARE(idsOf(portions), ids);
    QCOMPARE(portions.at(0).at(0).messageParts(), event.messageParts());
    QCOMPARE(portions.at(0).at(0).contacts(), event.contacts());
}

void TestAnnouncement::anEventAboveThePortionGoesAlone()
{
    const QString large(2000000, QLatin1Char('a'));
    const QList<int> ids =
        add({message(QStringLiteral("before")), message(large), message(QStringLiteral("after"))});
    QCOMPARE(int(ids.size()), 3);
    const QList<QList<Event>> portions = heard();
    QCOMPARE(int(portions.size()), 3);
    QCOMPARE(idsOf(portions), ids);
    QVERIFY(portions.at(1).at(0).freeText() == large);
}

void TestAnnouncement::anEventThatNoMessageHoldsIsLeftOut()
{
    MessagePart part;
    part.plainText = QString(70000000, QLatin1Char('a'));
    Event large = message(QStringLiteral("large"));
    large.setMessageParts({part});
    QList<int> ids =
        add({message(QStringLiteral("before")), large, message(QStringLiteral("after"))});
    QCOMPARE(int(ids.size()), 3);
    ids.removeAt(1);
    QCOMPARE(idsOf(heard()), ids);
    // Alone, and nothing later is lost.
    QCOMPARE(int(add({large}).size()), 1);
    ids += add({message(QStringLiteral("later"))});
    QCOMPARE(idsOf(heard()), ids);
}

void TestAnnouncement::whatIsReportedIsAnnouncedOnceWhenTheProcessEnds_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("length");
    QTest::newRow("one") << 1 << 10;
    QTest::newRow("more than a socket takes at once") << 1500 << 5000;
}

void TestAnnouncement::whatIsReportedIsAnnouncedOnceWhenTheProcessEnds()
{
    QFETCH(int, count);
    QFETCH(int, length);
    const Outcome outcome = addInProcess(count, length, QStringLiteral("true"),
                                         qEnvironmentVariable("KORVASYNC_STORE"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(int(outcome.ids.size()), count);
    QCOMPARE(idsOf(heard()), outcome.ids);
}

// Where no variable names it, as on most systems for what cron starts.
void TestAnnouncement::theBusOfTheUserIsFoundByItsPlace()
{
    const QTemporaryDir directory;
    const QString runtime = directory.filePath(QStringLiteral("a place~%"));
    const QString socket = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")
                               .section(QLatin1Char('='), 1, 1)
                               .section(QLatin1Char(','), 0, 0);
    const Outcome outcome =
        addInProcess(1, 10,
                     QStringLiteral("mkdir '%1' && touch '%1/bus' && mount --bind '%2' '%1/bus' && "
                                    "unset DBUS_SESSION_BUS_ADDRESS && export XDG_RUNTIME_DIR='%1'")
                         .arg(runtime, socket),
                     qEnvironmentVariable("KORVASYNC_STORE"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(int(outcome.ids.size()), 1);
    QCOMPARE(idsOf(heard()), outcome.ids);
}

void TestAnnouncement::anAddThatFailsIsNotAnnounced()
{
    const QTemporaryDir directory;
    const Outcome outcome =
        addInProcess(10, 10, QStringLiteral("mount -t tmpfs -o ro none '%1'").arg(directory.path()),
                     directory.filePath(QStringLiteral("store")));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.ids, QList<int>());
    QCOMPARE(idsOf(heard()), QList<int>());
}

void TestAnnouncement::onAFullDiskOnlyWhatWasStoredIsAnnounced()
{
    const QTemporaryDir directory;
    const Outcome outcome = addInProcess(
        100000, 100, QStringLiteral("mount -t tmpfs -o size=6m none '%1'").arg(directory.path()),
        directory.filePath(QStringLiteral("store")));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.ids.size() >= 1000);
    QCOMPARE(idsOf(heard()), outcome.ids);
}

int main(int argc, char *argv[])
{
    if (argc == 4 && qstrcmp(argv[1], "add-and-end") == 0) {
        const QCoreApplication application(argc, argv);
        return addAndEnd(QByteArray(argv[2]).toInt(), QByteArray(argv[3]).toInt());
    }
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    const PrivateBus bus("DBUS_SESSION_BUS_ADDRESS");
    QCoreApplication application(argc, argv);
    TestAnnouncement test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_announcement.moc"
