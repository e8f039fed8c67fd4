// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historytesting.h"

#include <commhistory/callmodel.h>

using namespace HistoryTesting;

//! Changes of the real store. The functions share one store, and leave in it what they add.
class TestHistoryChanges : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initStore();
    void changesFollowAddingChangingAndDeleting();
    void nowIsACursorWithoutChanges();
    void changesFromTheBeginningHaveNoDeletions();
    void whatCameAndWentIsNotTold();
    void changesComeInPortions();
    void aDeletionWhileChangesAreReadIsTold();
    void wipedCallsAreTold();
    void anotherStoresCursorIsUnknown();
};

void TestHistoryChanges::initStore() { QVERIFY(makeStore()); }

void TestHistoryChanges::changesFollowAddingChangingAndDeleting()
{
    const QList<int> before = add(messages(2, QStringLiteral("d"), FirstFolder + 16));
    const QString cursor = follow(QString()).cursor;
    QCOMPARE(follow(cursor).told, QStringList());
    QCOMPARE(follow(cursor).cursor, cursor);

    const QList<int> added = add(messages(1, QStringLiteral("new"), FirstFolder + 16));
    Event event = message(QStringLiteral("other text"), FirstFolder + 16);
    event.setId(before.value(1));
    QVERIFY(modify(event));
    QVERIFY(remove({before.value(0)}));
    const Steps steps = follow(cursor);
    QVERIFY(steps.error == HistoryError::None);
    QCOMPARE(steps.told,
             (QStringList{QStringLiteral("added %1").arg(added.value(0)),
                          QStringLiteral("changed %1").arg(before.value(1)),
                          QStringLiteral("deleted %1").arg(before.value(0))}));
    QVERIFY(steps.cursor != cursor);
    QCOMPARE(follow(steps.cursor).told, QStringList());
    QVERIFY(!remove({before.value(0)})); // there is none to be told a second time
    QCOMPARE(follow(steps.cursor).told, QStringList());
}

void TestHistoryChanges::nowIsACursorWithoutChanges()
{
    const Steps now = follow(HistoryInterface::now());
    QVERIFY(now.error == HistoryError::None);
    QCOMPARE(now.told, QStringList());
    QCOMPARE(now.cursor, follow(QString()).cursor);
    const QList<int> ids = add(messages(1, QStringLiteral("n"), FirstFolder + 23));
    QCOMPARE(follow(now.cursor).told, QStringList(QStringLiteral("added %1").arg(ids.value(0))));
}

void TestHistoryChanges::changesFromTheBeginningHaveNoDeletions()
{
    const QList<int> ids = add(messages(2, QStringLiteral("g"), FirstFolder + 17));
    QVERIFY(remove({ids.value(0)}));
    const QStringList told = follow(QString(), 3).told;
    QVERIFY(told.contains(QStringLiteral("added %1").arg(ids.value(1))));
    for (const QString &step : told)
        QVERIFY(step.startsWith(QStringLiteral("added ")));
}

void TestHistoryChanges::whatCameAndWentIsNotTold()
{
    const QString cursor = follow(QString()).cursor;
    const QList<int> ids = add(messages(2, QStringLiteral("h"), FirstFolder + 18));
    QVERIFY(remove({ids.value(0)}));
    QCOMPARE(follow(cursor).told, QStringList(QStringLiteral("added %1").arg(ids.value(1))));
}

void TestHistoryChanges::changesComeInPortions()
{
    const QList<int> old = add(messages(6, QStringLiteral("i"), FirstFolder + 19));
    const QString cursor = follow(QString()).cursor;
    const QList<int> ids = add(messages(3, QStringLiteral("j"), FirstFolder + 19));
    QVERIFY(remove(old));
    QStringList expected;
    for (const int id : ids)
        expected.append(QStringLiteral("added %1").arg(id));
    for (const int id : old)
        expected.append(QStringLiteral("deleted %1").arg(id));
    for (const int portion : {1, 2, 4, 5, 9, 500}) {
        const Steps steps = follow(cursor, portion);
        QCOMPARE(steps.told, expected);
        for (const int size : steps.sizes)
            QVERIFY(size >= 1 && size <= portion);
    }
}

void TestHistoryChanges::aDeletionWhileChangesAreReadIsTold()
{
    const QString begin = follow(QString()).cursor;
    const QList<int> ids = add(messages(6, QStringLiteral("k"), FirstFolder + 20));
    for (const QString &cursor : {begin, QString()}) {
        HistoryInterface history;
        PendingChanges *const pending = history.changes(cursor, 1);
        QStringList told;
        int removed = -1;
        connect(pending, &PendingChanges::portion, this, [&](const QList<HistoryChange> &changes) {
            for (const HistoryChange &change : changes)
                told.append(tell(change));
            if (removed >= 0)
                return;
            removed = changes.first().item.id;
            QVERIFY(remove({removed}));
        });
        QVERIFY(wait(pending) == HistoryError::None);
        QCOMPARE(told.first(), QStringLiteral("added %1").arg(removed));
        QCOMPARE(told.last(), QStringLiteral("deleted %1").arg(removed));
        QVERIFY(told.contains(QStringLiteral("added %1").arg(ids.value(5))));
    }
}

void TestHistoryChanges::wipedCallsAreTold()
{
    const QList<int> ids = add({call(QStringLiteral("+15550126001"), utc(2026, 1, 1), 1),
                                call(QStringLiteral("+15550126001"), utc(2026, 1, 2), 1)});
    const QString cursor = follow(QString()).cursor;
    QVERIFY(CommHistory::CallModel().deleteAll());
    const QStringList told = follow(cursor).told;
    for (const int id : ids)
        QCOMPARE(int(told.count(QStringLiteral("deleted %1").arg(id))), 1);
    HistoryFilter calls;
    calls.kind = HistoryItem::Kind::Call;
    QCOMPARE(int(ask(calls).items.size()), 0);
}

void TestHistoryChanges::anotherStoresCursorIsUnknown()
{
    const QStringList parts = follow(QString()).cursor.split(QLatin1Char('.'));
    QCOMPARE(int(parts.size()), 4);
    QStringList other = parts;
    other[1] = QStringLiteral("0123456789abcdef-1");
    QVERIFY(follow(other.join(QLatin1Char('.'))).error == HistoryError::UnknownCursor);
    QStringList ahead = parts; // as after an old copy of the store was put back
    ahead[2] = QString::number(parts.at(2).toLongLong() + 1);
    QVERIFY(follow(ahead.join(QLatin1Char('.'))).error == HistoryError::UnknownCursor);
    ahead = parts;
    ahead[3] = QString::number(parts.at(3).toInt() + 1);
    QVERIFY(follow(ahead.join(QLatin1Char('.'))).error == HistoryError::UnknownCursor);
}

STORE_TEST_MAIN(TestHistoryChanges)

#include "tst_historychanges.moc"
