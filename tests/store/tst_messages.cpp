// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "fullevent.h"
#include "storetesting.h"

#include <commhistory/trackerio.h>

#include <functional>

using namespace CommHistory;
using namespace StoreTesting;

//! Reading text messages: what comes back, which ones, in which order. Each function uses a
//! folder of its own.
class TestMessages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(makeStore()); }
    void everyFieldComesBack();
    void absentValuesComeBackAbsent();
    void textComesBackExactly_data();
    void textComesBackExactly();
    void inboxAndUserFoldersGoByEndTime_data();
    void inboxAndUserFoldersGoByEndTime();
    void rowsAreOldestFirstAndEqualTimesById();
    void sinceIncludesItsBound();
    void modifiedSinceExcludesItsBound();
    void newMessagesCountAsModified();
    void aMessageWithoutTimeIsReadFromTheBeginningOnly();
    void callsAreNoMessages();
    void fiveThousandMessages();
    void modelOnlyRowsAreNotStored();
    void aModelKeepsEveryField();
    void eventsAreEqualWhenEveryFieldIs();
    void outsideTheRowsThereIsNothing();
    void anUnknownIdIsNotFound();
    void aReadReplacesTheRowsBefore();
};

void TestMessages::everyFieldComesBack()
{
    Event event = fullEvent();
    event.setParentId(5001); // where nothing else is
    const int id = add({event}).value(0, -1);
    QVERIFY(id > 0);

    Event single;
    QVERIFY(TrackerIO::instance()->getEvent(id, single));
    const QList<Event> found = read(5001);
    QCOMPARE(found.size(), 1);
    for (const Event &e : {single, found.first()}) {
        QVERIFY(e.isValid());
        QCOMPARE(e.id(), id);
        QCOMPARE(e.type(), Event::SmsEvent);
        QCOMPARE(e.startTime(), utc(2010, 11, 3, 10, 0, 1));
        QCOMPARE(e.endTime(), utc(2010, 11, 3, 11, 0, 2));
        QCOMPARE(e.startTime().timeSpec(), Qt::LocalTime);
        QCOMPARE(e.endTime().timeSpec(), Qt::LocalTime);
        QCOMPARE(e.direction(), Event::Outbound);
        QCOMPARE(e.isRead(), true);
        QCOMPARE(e.isMissedCall(), true);
        QCOMPARE(e.status(), Event::FailedStatus);
        QCOMPARE(e.localUid(), QStringLiteral("ring/tel/account0"));
        QCOMPARE(e.remoteUid(), QStringLiteral("+15550100"));
        QCOMPARE(e.parentId(), 5001);
        QCOMPARE(e.groupId(), 7);
        QCOMPARE(e.freeText(), QStringLiteral("H\u00e9llo\n\U0001F600"));
        QCOMPARE(e.messageToken(), QStringLiteral("token"));
        QCOMPARE(e.encoding(), QStringLiteral("QUOTED-PRINTABLE"));
        QCOMPARE(e.characterSet(), QStringLiteral("UTF-8"));
        QCOMPARE(e.language(), QStringLiteral("en"));
        QVERIFY(e.lastModified().isValid());
    }
}

void TestMessages::absentValuesComeBackAbsent()
{
    Event event;
    event.setType(Event::SmsEvent);
    event.setParentId(5002);
    add({event});
    const QList<Event> found = read(5002);
    QCOMPARE(found.size(), 1);
    QVERIFY(found.first().startTime().isNull());
    QVERIFY(found.first().endTime().isNull());
    QCOMPARE(found.first().groupId(), -1);
    QCOMPARE(found.first().status(), Event::UnknownStatus);
    QCOMPARE(found.first().direction(), Event::UnknownDirection);
    QCOMPARE(found.first().freeText(), QString());
}

void TestMessages::textComesBackExactly_data()
{
    QTest::addColumn<QString>("text");
    const QChar zero(0);
    const QChar mark(0x1a);
    const QChar high(0xd83d);
    const QChar low(0xde00);
    QTest::newRow("empty") << QString();
    QTest::newRow("quotes") << QStringLiteral("'\"\\ } ; DROP <x> ?y ~z %1 $ {\r\n\t");
    QTest::newRow("zero byte") << QString(QLatin1Char('a') + zero + QLatin1Char('b'));
    QTest::newRow("zero bytes only") << QString(2, zero);
    QTest::newRow("mark") << QString(mark) + QStringLiteral("0000") + mark;
    QTest::newRow("pair") << QString(QString(high) + low);
    QTest::newRow("high half at the end") << QString(QLatin1Char('a') + high);
    QTest::newRow("low half at the start") << QString(low) + QLatin1Char('a');
    QTest::newRow("halves in the wrong order") << QString(QString(low) + high);
    QTest::newRow("two highs and a low") << QString(QString(high) + high + low);
    QTest::newRow("no characters")
        << QString(QString(QChar(0xfffe)) + QChar(0xffff) + QChar(0xfdd0));
    QTest::newRow("byte order mark") << QString(QString(QChar(0xfeff)) + QLatin1Char('a'));
    QTest::newRow("decomposed") << QString(QStringLiteral("e") + QChar(0x301));
    QTest::newRow("one MiB of marks") << QString(1 << 20, mark);
    QTest::newRow("one MiB") << QString(1 << 20, QChar(0x20ac));
}

void TestMessages::textComesBackExactly()
{
    QFETCH(QString, text);
    Event event = message(text, 5003);
    event.setRemoteUid(text);
    event.setMessageToken(text);
    const int id = add({event}).value(0, -1);
    Event found;
    QVERIFY(TrackerIO::instance()->getEvent(id, found));
    QVERIFY(found.freeText() == text);
    QVERIFY(found.remoteUid() == text);
    QVERIFY(found.messageToken() == text);
}

void TestMessages::inboxAndUserFoldersGoByEndTime_data()
{
    QTest::addColumn<int>("folder");
    QTest::addColumn<bool>("byEnd");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("before the inbox") << 4097 << false;
    QTest::newRow("inbox") << 4098 << true;
    QTest::newRow("outbox") << 4099 << false;
    QTest::newRow("drafts") << 4100 << false;
    QTest::newRow("sent") << 4101 << false;
    QTest::newRow("last system folder") << 4103 << false;
    QTest::newRow("user folder") << 4104 << true;
    QTest::newRow("further user folder") << 4200 << true;
}

void TestMessages::inboxAndUserFoldersGoByEndTime()
{
    QFETCH(int, folder);
    QFETCH(bool, byEnd);
    Event first = message(QStringLiteral("starts first"), folder);
    first.setStartTime(utc(2025, 1, 1));
    first.setEndTime(utc(2025, 1, 4));
    Event second = message(QStringLiteral("ends first"), folder);
    second.setStartTime(utc(2025, 1, 2));
    second.setEndTime(utc(2025, 1, 3));
    QCOMPARE(add({first, second}).size(), 2);

    const QList<Event> all = read(folder);
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.first().freeText(),
             byEnd ? QStringLiteral("ends first") : QStringLiteral("starts first"));
    const QList<Event> late = read(folder, byEnd ? utc(2025, 1, 4) : utc(2025, 1, 2));
    QCOMPARE(late.size(), 1);
    QCOMPARE(late.first().freeText(),
             byEnd ? QStringLiteral("starts first") : QStringLiteral("ends first"));

    // Leave the system folders as they were.
    EventModel model;
    Reports reports(&model);
    for (const Event &event : all)
        model.deleteEvent(event.id());
    QCOMPARE(reports.wait(1).size(), 1);
}

void TestMessages::rowsAreOldestFirstAndEqualTimesById()
{
    add({message(QStringLiteral("c"), 5004, utc(2026, 1, 2)),
         message(QStringLiteral("a"), 5004, utc(2026, 1, 1)),
         message(QStringLiteral("d"), 5004, utc(2026, 1, 2)),
         message(QStringLiteral("b"), 5004, utc(1969, 1, 1))});
    QStringList texts;
    for (const Event &event : read(5004))
        texts.append(event.freeText());
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("b a c d"));
}

void TestMessages::sinceIncludesItsBound()
{
    const QDateTime time = utc(2026, 5, 1, 10, 0, 0);
    add({message(QStringLiteral("text"), 5005, time)});
    QCOMPARE(read(5005, time).size(), 1);
    QCOMPARE(read(5005, time.toOffsetFromUtc(7200)).size(), 1);
    QCOMPARE(read(5005, time.addMSecs(1)).size(), 0);
    QCOMPARE(read(5005).size(), 1);
}

void TestMessages::modifiedSinceExcludesItsBound()
{
    add({message(QStringLiteral("text"), 5006, utc(2001, 1, 1))});
    const QDateTime modified = read(5006).first().lastModified();
    QCOMPARE(read(5006, modified.addMSecs(-1), true).size(), 1);
    QCOMPARE(read(5006, modified, true).size(), 0);
    QCOMPARE(read(5006, QDateTime(), true).size(), 1);
}

void TestMessages::newMessagesCountAsModified()
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addMSecs(-1);
    add({message(QStringLiteral("old"), 5007, utc(2001, 1, 1))});
    QCOMPARE(read(5007, before, true).size(), 1);
    QCOMPARE(read(5007, before, false).size(), 0);
}

void TestMessages::aMessageWithoutTimeIsReadFromTheBeginningOnly()
{
    add({message(QStringLiteral("with"), 5008),
         message(QStringLiteral("without"), 5008, QDateTime())});
    const QList<Event> all = read(5008);
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.first().freeText(), QStringLiteral("without"));
    QCOMPARE(read(5008, utc(1900, 1, 1)).size(), 1);
}

void TestMessages::callsAreNoMessages()
{
    Event call;
    call.setType(Event::CallEvent);
    call.setParentId(5009);
    add({call});
    QCOMPARE(read(5009).size(), 0);
}

void TestMessages::fiveThousandMessages()
{
    QList<Event> events;
    for (int i = 0; i < 5000; ++i)
        events.append(message(QString::number(i), 5010, utc(2026, 1, 1).addSecs(i)));
    QCOMPARE(add(events).size(), 5000);
    const QList<Event> found = read(5010);
    QCOMPARE(found.size(), 5000);
    for (int i = 0; i < 5000; ++i)
        QCOMPARE(found.at(i).freeText(), QString::number(i));
    QCOMPARE(read(5010, utc(2026, 1, 1).addSecs(4990)).size(), 10);
}

void TestMessages::modelOnlyRowsAreNotStored()
{
    EventModel model;
    Reports reports(&model);
    QSignalSpy inserted(&model, &EventModel::rowsInserted);
    Event event = message(QStringLiteral("shown"), 5011);
    event.setId(7);
    QList<Event> events{event};
    QVERIFY(model.addEvents(events, true));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(model.event(model.index(0, 0)).freeText(), QStringLiteral("shown"));
    QCOMPARE(model.event(model.index(0, 0)).id(), 7);
    QCOMPARE(read(5011).size(), 0); // every request before this read is done
    QCOMPARE(reports.waiting(), 0);
}

void TestMessages::aModelKeepsEveryField()
{
    Event event = fullEvent();
    event.setId(7);
    event.setLastModified(utc(2010, 11, 3, 12, 0, 3));
    EventModel model;
    QList<Event> events{event};
    QVERIFY(model.addEvents(events, true));
    const Event kept = model.event(model.index(0, 0));
    QVERIFY(kept == event);
    QCOMPARE(kept.setProperties() | Event::MessageParts | Event::Contacts,
             Event::Properties(0xfffff));
    QCOMPARE(kept.startTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(kept.endTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(kept.lastModified().timeSpec(), Qt::UTC);
}

void TestMessages::eventsAreEqualWhenEveryFieldIs()
{
    Event full = fullEvent();
    full.setId(7);
    full.setLastModified(utc(2010, 11, 3));
    full.setMessageParts({MessagePart()});
    full.setContacts({{5, QStringLiteral("Ann")}});
    QCOMPARE(full.setProperties(), Event::Properties(0xfffff)); // each of them
    const QList<std::function<void(Event &)>> changes{
        [](Event &e) { e.setId(8); },
        [](Event &e) { e.setType(Event::CallEvent); },
        [](Event &e) { e.setStartTime(QDateTime()); },
        [](Event &e) { e.setEndTime(QDateTime()); },
        [](Event &e) { e.setDirection(Event::Inbound); },
        [](Event &e) { e.setIsRead(false); },
        [](Event &e) { e.setIsMissedCall(false); },
        [](Event &e) { e.setStatus(Event::SentStatus); },
        [](Event &e) { e.setLocalUid(QStringLiteral("other")); },
        [](Event &e) { e.setRemoteUid(QStringLiteral("other")); },
        [](Event &e) { e.setParentId(8); },
        [](Event &e) { e.setGroupId(8); },
        [](Event &e) { e.setFreeText(QStringLiteral("other")); },
        [](Event &e) { e.setMessageToken(QStringLiteral("other")); },
        [](Event &e) { e.setEncoding(QStringLiteral("other")); },
        [](Event &e) { e.setCharacterSet(QStringLiteral("other")); },
        [](Event &e) { e.setLanguage(QStringLiteral("other")); },
        [](Event &e) { e.setLastModified(QDateTime()); },
        [](Event &e) { e.setMessageParts({}); },
        [](Event &e) { e.setContacts({}); },
    };
    QCOMPARE(int(changes.size()), 20);
    for (int i = 0; i < changes.size(); ++i) {
        Event changed = full;
        QVERIFY(changed == full);
        changes.at(i)(changed);
        QVERIFY2(changed != full, qPrintable(QString::number(i)));
    }
    QVERIFY(Event() == Event());
}

void TestMessages::outsideTheRowsThereIsNothing()
{
    EventModel model;
    QList<Event> events{message(QStringLiteral("shown"))};
    model.addEvents(events, true);
    QVERIFY(!model.event(QModelIndex()).isValid());
    QVERIFY(!model.event(model.index(1, 0)).isValid());
    QVERIFY(!model.data(model.index(0, 0), Qt::DisplayRole).isValid());
    QCOMPARE(model.data(model.index(0, 0), Qt::UserRole).value<Event>().freeText(),
             QStringLiteral("shown"));
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
}

void TestMessages::anUnknownIdIsNotFound()
{
    add({message(QStringLiteral("text"), 5012)});
    Event event;
    event.setFreeText(QStringLiteral("as it was"));
    QVERIFY(!TrackerIO::instance()->getEvent(2000000000, event));
    QVERIFY(!TrackerIO::instance()->getEvent(-1, event));
    QVERIFY(!TrackerIO::instance()->getEvent(0, event));
    QCOMPARE(event.freeText(), QStringLiteral("as it was"));
}

void TestMessages::aReadReplacesTheRowsBefore()
{
    add({message(QStringLiteral("one"), 5013), message(QStringLiteral("two"), 5014)});
    SyncSMSModel model(5013, QDateTime(), false);
    QSignalSpy ready(&model, &SyncSMSModel::modelReady);
    QVERIFY(model.getEvents());
    model.setSyncSmsFilter(SyncSMSFilter(5014, QDateTime(), false));
    QVERIFY(model.getEvents());
    QVERIFY(ready.wait(Patience));
    QVERIFY(ready.count() == 2 || ready.wait(Patience));
    QCOMPARE(ready.at(1).first().toBool(), true);
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.event(model.index(0, 0)).freeText(), QStringLiteral("two"));
}

STORE_TEST_MAIN(TestMessages)
#include "tst_messages.moc"
