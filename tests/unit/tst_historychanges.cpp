// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyfixture.h"

using namespace HistoryFixture;

class TestHistoryChanges : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tellsAddedFromChangedAndDeleted();
    void goesOnFromACursor();
    void refusesWhatIsNoCursor_data();
    void refusesWhatIsNoCursor();
    void refusesAPortionOutOfItsRange();
    void saysThatAnotherStoreGaveTheCursor();
    void countsByAKey_data();
    void countsByAKey();
};

void TestHistoryChanges::tellsAddedFromChangedAndDeleted()
{
    Fixture f;
    HistoryEntry removed = message(9);
    removed.isRemoved = true;
    removed.text = QStringLiteral("not to be told");
    f.store.historyPortions = {{message(10), message(11)}, {removed}};
    f.changesSince(QStringLiteral("1.abc.5.10"));
    settle();
    QCOMPARE(int(f.changes.size()), 3);
    QVERIFY(f.changes.at(0).kind == HistoryChange::Kind::Changed);
    QCOMPARE(f.changes.at(0).item.id, 10);
    QVERIFY(f.changes.at(1).kind == HistoryChange::Kind::Added);
    QCOMPARE(f.changes.at(1).item.id, 11);
    QVERIFY(f.changes.at(2).kind == HistoryChange::Kind::Deleted);
    QCOMPARE(f.changes.at(2).item.id, 9);
    QCOMPARE(f.changes.at(2).item.change, qint64(1009));
    QCOMPARE(f.changes.at(2).item.text, QString());
}

void TestHistoryChanges::goesOnFromACursor()
{
    Fixture f;
    f.store.historyPosition = {"abc", Q_INT64_C(5000000000), 17};
    f.changesSince(QString());
    settle();
    QCOMPARE(f.cursor, QStringLiteral("1.abc.5000000000.17"));
    f.changesSince(f.cursor);
    settle();
    f.changesSince(HistoryInterface::now());
    settle();
    QCOMPARE(f.store.calls,
             (lines({"HistoryReader::readChanges( 0 0, 500)",
                     "HistoryReader::readChanges(abc 5000000000 17, 500)",
                     "HistoryReader::readChanges( 9223372036854775807 0, 500)"})));
}

void TestHistoryChanges::refusesWhatIsNoCursor_data()
{
    QTest::addColumn<QString>("cursor");
    QTest::newRow("a word") << QStringLiteral("yesterday");
    QTest::newRow("three parts") << QStringLiteral("1.abc.5");
    QTest::newRow("five parts") << QStringLiteral("1.abc.5.6.7");
    QTest::newRow("another form") << QStringLiteral("2.abc.5.6");
    QTest::newRow("no store") << QStringLiteral("1..5.6");
    QTest::newRow("no change") << QStringLiteral("1.abc..6");
    QTest::newRow("change below 0") << QStringLiteral("1.abc.-1.6");
    QTest::newRow("change beyond 64 bits") << QStringLiteral("1.abc.9223372036854775808.6");
    QTest::newRow("id below 0") << QStringLiteral("1.abc.5.-1");
    QTest::newRow("id beyond 32 bits") << QStringLiteral("1.abc.5.2147483648");
}

void TestHistoryChanges::refusesWhatIsNoCursor()
{
    QFETCH(QString, cursor);
    Fixture f;
    const PendingChanges *const pending = f.changesSince(cursor);
    QVERIFY(pending->error() == HistoryError::UnknownCursor);
    settle();
    QCOMPARE(f.emitted, lines({"finished"}));
    QVERIFY(f.error == HistoryError::UnknownCursor);
    QCOMPARE(f.store.calls, QStringList());
}

void TestHistoryChanges::refusesAPortionOutOfItsRange()
{
    Fixture f;
    for (const int portion : {0, 1001})
        QVERIFY(f.history->changes(QString(), portion)->error() == HistoryError::InvalidFilter);
    QVERIFY(!f.history->changes(QString(), 1000)->isError());
}

void TestHistoryChanges::saysThatAnotherStoreGaveTheCursor()
{
    Fixture f;
    f.store.react(Request::ReadHistory, Reaction::failed());
    f.store.historyFailure = CommHistory::HistoryReader::UnknownPosition;
    f.changesSince(QStringLiteral("1.another.5.6"));
    settle();
    QCOMPARE(f.emitted, lines({"finished"}));
    QVERIFY(f.error == HistoryError::UnknownCursor);
}

void TestHistoryChanges::countsByAKey_data()
{
    QTest::addColumn<int>("by");
    QTest::addColumn<int>("key");
    QTest::newRow("folder") << int(HistoryCount::By::Folder) << 0;
    QTest::newRow("year") << int(HistoryCount::By::Year) << 1;
    QTest::newRow("party") << int(HistoryCount::By::Party) << 2;
}

void TestHistoryChanges::countsByAKey()
{
    QFETCH(int, by);
    QFETCH(int, key);
    Fixture f;
    f.store.historyTallies = {
        {LocInbox, QString(), 3, 1, msecs(1), msecs(2)},
        {0, QStringLiteral("+15550100"), 4, 0, CommHistory::NoTime, CommHistory::NoTime}};
    PendingCounts *const pending =
        f.watch(f.history->counts(HistoryFilter(), static_cast<HistoryCount::By>(by)));
    QList<HistoryCount> counts;
    connect(pending, &PendingCounts::finished, &f.receiver,
            [&](PendingCounts *sender) { counts = sender->counts(); });
    settle();
    QCOMPARE(f.emitted, lines({"finished"}));
    QVERIFY(f.store.calls.value(0).endsWith(QStringLiteral(", key %1)").arg(key)));
    QCOMPARE(int(counts.size()), 2);
    QCOMPARE(counts.at(0).number, int(LocInbox));
    QCOMPARE(counts.at(0).count, qint64(3));
    QCOMPARE(counts.at(0).unread, qint64(1));
    QCOMPARE(counts.at(0).first, utc(1));
    QCOMPARE(counts.at(0).last, utc(2));
    QCOMPARE(counts.at(1).party, QStringLiteral("+15550100"));
    QCOMPARE(counts.at(1).count, qint64(4));
    QVERIFY(counts.at(1).first.isNull());
}

QTEST_GUILESS_MAIN(TestHistoryChanges)

#include "tst_historychanges.moc"
