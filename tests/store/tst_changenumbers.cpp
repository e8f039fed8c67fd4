// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storetesting.h"

#include <commhistory/callmodel.h>

#include <QtCore/QProcess>

using namespace CommHistory;
using namespace StoreTesting;

//! What the store keeps beside the fields of an event: the numbers of its changes, what is left of
//! deleted events, and the keys by which indexes find them.
class TestChangeNumbers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(makeStore()); }
    void theStoreHasAnIdOfItsOwn();
    void addingGivesEachTheNextNumber();
    void modifyingGivesTheNextNumber();
    void aFailedWriteGivesNone();
    void aDeletionLeavesATombstone();
    void deletingWhatIsNotThereLeavesNone();
    void eachWipedCallLeavesATombstone();
    void theOwnTimeIsThatOfItsFolder_data();
    void theOwnTimeIsThatOfItsFolder();
    void theOwnTimeFollowsEachChange();
    void changesOfOneRequestAddUp();
    void partiesThatMayBeOneHaveOneKey_data();
    void partiesThatMayBeOneHaveOneKey();
    void thePartyKeyFollowsTheParty();
    void conversationsAreFoundByTheirEnds_data();
    void conversationsAreFoundByTheirEnds();

private:
    QByteArray query(const QString &text) const;
    qint64 lastChange() const;
    QByteArray of(int id, const char *property) const;
    bool modify(const QList<Event> &events) const;
};

namespace {

Event change(int id)
{
    Event event;
    event.setId(id);
    return event;
}

QByteArray msecs(const QDateTime &time) { return QByteArray::number(time.toMSecsSinceEpoch()); }

} // namespace

//! What the database holds, as SQLite prints it.
QByteArray TestChangeNumbers::query(const QString &text) const
{
    QProcess sqlite;
    sqlite.start(QStringLiteral("sqlite3"),
                 {QFile::decodeName(qgetenv("KORVASYNC_STORE"))
                      + QStringLiteral("/db/urn%3Akorvasync%3Ahistory.db"),
                  text});
    return sqlite.waitForFinished(Patience) ? sqlite.readAllStandardOutput().trimmed()
                                            : QByteArray();
}

qint64 TestChangeNumbers::lastChange() const
{
    return query(QStringLiteral("SELECT \"kv:lastChange\" FROM \"kv:IdCounter\"")).toLongLong();
}

QByteArray TestChangeNumbers::of(int id, const char *property) const
{
    return query(QStringLiteral("SELECT \"%1\" FROM \"kv:Event\" WHERE \"kv:id\" = %2")
                     .arg(QLatin1String(property), QString::number(id)));
}

bool TestChangeNumbers::modify(const QList<Event> &events) const
{
    EventModel model;
    Reports reports(&model);
    QList<Event> changes = events;
    model.modifyEvents(changes);
    const QList<Report> got = reports.wait(1);
    return !got.isEmpty() && got.first().status;
}

void TestChangeNumbers::theStoreHasAnIdOfItsOwn()
{
    const QByteArray id = query(QStringLiteral("SELECT \"kv:storeId\" FROM \"kv:IdCounter\""));
    QCOMPARE(int(id.size()), 16);
    QCOMPARE(QByteArray::fromHex(id).toHex(), id);
}

void TestChangeNumbers::addingGivesEachTheNextNumber()
{
    const qint64 before = lastChange();
    const QList<int> ids = add(messages(3));
    QCOMPARE(int(ids.size()), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(of(ids.at(i), "kv:change"), QByteArray::number(before + 1 + i));
    QCOMPARE(lastChange(), before + 3);
}

void TestChangeNumbers::modifyingGivesTheNextNumber()
{
    const QList<int> ids = add(messages(3));
    const qint64 before = lastChange();
    Event first = change(ids.value(2));
    first.setIsRead(true);
    QVERIFY(modify({first, change(ids.value(0))}));
    QCOMPARE(of(ids.at(2), "kv:change"), QByteArray::number(before + 1));
    QCOMPARE(of(ids.at(0), "kv:change"), QByteArray::number(before + 2));
    QCOMPARE(of(ids.at(1), "kv:change"), QByteArray::number(before - 1));
    QCOMPARE(lastChange(), before + 2);
}

void TestChangeNumbers::aFailedWriteGivesNone()
{
    const int id = add(messages(1)).value(0, -1);
    const qint64 before = lastChange();
    QVERIFY(!modify({change(id), change(2000000000)}));
    QCOMPARE(of(id, "kv:change"), QByteArray::number(before));
    QCOMPARE(lastChange(), before);
}

void TestChangeNumbers::aDeletionLeavesATombstone()
{
    Event call = message(QString(), 0);
    call.setType(Event::CallEvent);
    const QList<int> ids = add({message(QStringLiteral("m")), call});
    QCOMPARE(int(ids.size()), 2);
    const qint64 before = lastChange();
    EventModel model;
    Reports reports(&model);
    model.deleteEvent(ids.at(1));
    model.deleteEvent(ids.at(0));
    QCOMPARE(int(reports.wait(1).size()), 1);
    QCOMPARE(query(QStringLiteral(
                       "SELECT \"kv:deletedId\", \"kv:deletedType\", \"kv:deletedChange\" FROM"
                       " \"kv:Tombstone\" WHERE \"kv:deletedChange\" > %1 ORDER BY 3")
                       .arg(before)),
             QStringLiteral("%1|3|%2\n%3|2|%4")
                 .arg(ids.at(1))
                 .arg(before + 1)
                 .arg(ids.at(0))
                 .arg(before + 2)
                 .toUtf8());
    QCOMPARE(lastChange(), before + 2);
}

void TestChangeNumbers::deletingWhatIsNotThereLeavesNone()
{
    const int id = add(messages(1)).value(0, -1);
    const qint64 before = lastChange();
    EventModel model;
    Reports reports(&model);
    for (const int removed : {2000000000, id, id, -1})
        model.deleteEvent(removed);
    QCOMPARE(int(reports.wait(3).size()), 3);
    QCOMPARE(query(QStringLiteral("SELECT \"kv:deletedId\" FROM \"kv:Tombstone\" WHERE"
                                  " \"kv:deletedChange\" > %1")
                       .arg(before)),
             QByteArray::number(id));
    QCOMPARE(lastChange(), before + 1);
}

void TestChangeNumbers::eachWipedCallLeavesATombstone()
{
    Event call = message(QString(), 0);
    call.setType(Event::CallEvent);
    const QList<int> ids = add({call, message(QStringLiteral("m"), 5901), call, call});
    QCOMPARE(int(ids.size()), 4);
    const qint64 before = lastChange();
    QVERIFY(CallModel().deleteAll());
    QCOMPARE(
        query(QStringLiteral("SELECT \"kv:deletedId\", \"kv:deletedType\" FROM"
                             " \"kv:Tombstone\" WHERE \"kv:deletedChange\" > %1 ORDER BY 1")
                  .arg(before)),
        QStringLiteral("%1|3\n%2|3\n%3|3").arg(ids.at(0)).arg(ids.at(2)).arg(ids.at(3)).toUtf8());
    // None stands beyond the last number, and none has another's.
    QCOMPARE(
        query(QStringLiteral("SELECT max(\"kv:deletedChange\") <= %1, count(*) = count(DISTINCT"
                             " \"kv:deletedChange\") FROM \"kv:Tombstone\"")
                  .arg(lastChange())),
        QByteArray("1|1"));
    const qint64 after = lastChange();
    const int next = add(messages(1)).value(0, -1);
    QCOMPARE(of(next, "kv:change"), QByteArray::number(after + 1));
    QCOMPARE(int(read(5901).size()), 1);
}

void TestChangeNumbers::theOwnTimeIsThatOfItsFolder_data()
{
    QTest::addColumn<int>("folder");
    QTest::addColumn<bool>("isCall");
    QTest::addColumn<bool>("isEnd");
    QTest::newRow("none") << 0 << false << false;
    QTest::newRow("inbox") << 4098 << false << true;
    QTest::newRow("outbox") << 4099 << false << false;
    QTest::newRow("sent") << 4101 << false << false;
    QTest::newRow("last system folder") << 4103 << false << false;
    QTest::newRow("user folder") << 4104 << false << true;
    QTest::newRow("call") << 0 << true << false;
    QTest::newRow("call in the inbox") << 4098 << true << false;
}

void TestChangeNumbers::theOwnTimeIsThatOfItsFolder()
{
    QFETCH(int, folder);
    QFETCH(bool, isCall);
    QFETCH(bool, isEnd);
    Event event = message(QStringLiteral("m"), folder, utc(2026, 1, 1));
    event.setEndTime(utc(2026, 1, 2));
    if (isCall)
        event.setType(Event::CallEvent);
    const int id = add({event}).value(0, -1);
    QCOMPARE(of(id, "kv:time"), isEnd ? QByteArray("1767312000000") : QByteArray("1767225600000"));
}

void TestChangeNumbers::theOwnTimeFollowsEachChange()
{
    Event event = message(QStringLiteral("m"), Inbox, utc(2026, 1, 1));
    event.setEndTime(utc(2026, 1, 2));
    const int id = add({event}).value(0, -1);
    Event start = change(id);
    start.setStartTime(utc(2026, 1, 3));
    QVERIFY(modify({start}));
    QCOMPARE(of(id, "kv:time"), msecs(utc(2026, 1, 2)));
    Event end = change(id);
    end.setEndTime(utc(2026, 1, 4));
    QVERIFY(modify({end}));
    QCOMPARE(of(id, "kv:time"), msecs(utc(2026, 1, 4)));
    Event folder = change(id);
    folder.setParentId(Sent);
    QVERIFY(modify({folder}));
    QCOMPARE(of(id, "kv:time"), msecs(utc(2026, 1, 3)));
    Event none = change(id);
    none.setStartTime(QDateTime());
    QVERIFY(modify({none}));
    QCOMPARE(of(id, "kv:time"), QByteArray("-9223372036854775808"));
    Event text = change(id);
    text.setFreeText(QStringLiteral("other"));
    QVERIFY(modify({text}));
    QCOMPARE(of(id, "kv:time"), QByteArray("-9223372036854775808"));
}

void TestChangeNumbers::changesOfOneRequestAddUp()
{
    Event event = message(QStringLiteral("m"), Inbox, utc(2026, 1, 1));
    const int id = add({event}).value(0, -1);
    Event start = change(id);
    start.setStartTime(utc(2026, 2, 1));
    Event folder = change(id);
    folder.setParentId(Sent);
    QVERIFY(modify({start, folder}));
    QCOMPARE(of(id, "kv:time"), msecs(utc(2026, 2, 1)));
    QCOMPARE(of(id, "kv:change"), QByteArray::number(lastChange()));
}

void TestChangeNumbers::partiesThatMayBeOneHaveOneKey_data()
{
    QTest::addColumn<QString>("party");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("number") << QStringLiteral("+15550100") << QByteArray("15550100");
    QTest::newRow("with signs") << QStringLiteral("(01) 555-0100") << QByteArray("15550100");
    QTest::newRow("seven digits") << QStringLiteral("5550100") << QByteArray("15550100");
    QTest::newRow("zeros") << QStringLiteral("0000100") << QByteArray("10000100");
    QTest::newRow("short") << QStringLiteral("100") << QByteArray("1100");
    QTest::newRow("short with zeros") << QStringLiteral("0100") << QByteArray("10100");
    QTest::newRow("none") << QString() << QByteArray("-31767794950950");
    QTest::newRow("signs only") << QStringLiteral("***") << QByteArray("-6700143860814");
    QTest::newRow("word") << QStringLiteral("InfoPost") << QByteArray("-17250519270440");
    QTest::newRow("in capitals") << QStringLiteral("INFOPOST") << QByteArray("-17250519270440");
    QTest::newRow("with digits") << QStringLiteral("Bank24") << QByteArray("-129406813847538");
    QTest::newRow("composed") << QStringLiteral("J\u00fcrgen") << QByteArray("-89566217721259");
    QTest::newRow("decomposed") << QStringLiteral("JU\u0308RGEN") << QByteArray("-89566217721259");
}

void TestChangeNumbers::partiesThatMayBeOneHaveOneKey()
{
    QFETCH(QString, party);
    QFETCH(QByteArray, key);
    Event event = message(QStringLiteral("m"));
    event.setRemoteUid(party);
    QCOMPARE(of(add({event}).value(0, -1), "kv:partyKey"), key);
}

void TestChangeNumbers::thePartyKeyFollowsTheParty()
{
    const int id = add(messages(1)).value(0, -1);
    Event other = change(id);
    other.setRemoteUid(QStringLiteral("+15550199"));
    QVERIFY(modify({other}));
    QCOMPARE(of(id, "kv:partyKey"), QByteArray("15550199"));
    Event text = change(id);
    text.setFreeText(QStringLiteral("other"));
    QVERIFY(modify({text}));
    QCOMPARE(of(id, "kv:partyKey"), QByteArray("15550199"));
}

void TestChangeNumbers::conversationsAreFoundByTheirEnds_data()
{
    QTest::addColumn<QString>("party");
    QTest::addColumn<QByteArray>("key"); // bytes from the end on, in hexadecimal digits
    QTest::newRow("seven signs") << QStringLiteral("5550177") << QByteArray("37373130353535");
    QTest::newRow("more") << QStringLiteral("+15550177") << QByteArray("37373130353535");
    QTest::newRow("fewer") << QStringLiteral("177") << QByteArray("37373100000000");
    QTest::newRow("none") << QString() << QByteArray("0");
    QTest::newRow("bytes") << QStringLiteral("caf\u00e9") << QByteArray("a9c36661630000");
    QTest::newRow("a line's end") << QStringLiteral("177\n") << QByteArray("37373100000000");
    QTest::newRow("another line's end")
        << QStringLiteral("177\r\n") << QByteArray("37373100000000");
    QTest::newRow("two line's ends")
        << QStringLiteral("177\n\u2028") << QByteArray("a373731000000");
}

void TestChangeNumbers::conversationsAreFoundByTheirEnds()
{
    QFETCH(QString, party);
    QFETCH(QByteArray, key);
    Group group;
    group.setLocalUid(QStringLiteral("of ") + QString::fromUtf8(QTest::currentDataTag()));
    group.setRemoteUids({party});
    QList<Group> groups{group};
    GroupModel model;
    QSignalSpy committed(&model, &GroupModel::groupsCommitted);
    model.addGroups(groups);
    QVERIFY(committed.wait(Patience));
    const QByteArray found = query(QStringLiteral("SELECT \"kv:endKey\" FROM"
                                                  " \"nmo:CommunicationChannel\" ORDER BY ID DESC"
                                                  " LIMIT 1"));
    QCOMPARE(QByteArray::number(found.toLongLong(), 16), key);
}

STORE_TEST_MAIN(TestChangeNumbers)
#include "tst_changenumbers.moc"
