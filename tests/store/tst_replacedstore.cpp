// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "heldstore.h"
#include "messagelog.h"
#include "storeprocess.h"
#include "storetesting.h"

#include <commhistory/trackerio.h>

#include <QtCore/QDir>

#include <memory>

using namespace CommHistory;
using namespace StoreTesting;

//! The store's directory is removed, moved or replaced while the process has it open. Each
//! function begins with an open store of three messages.
class TestReplacedStore : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void theNextRequestFails_data();
    void theNextRequestFails();
    void aRemovedStoreIsMadeAnewByALaterWrite();
    void aMovedStoreTakesNoMoreWrites();
    void aReplacingStoreIsReadAndWritten();
    void aReadOfARemovedStoreIsToldOnce();
    void aWriteThatWaitedWhileTheStoreWasMovedFails();

private:
    QString other(const char *name) const { return m_other->filePath(QString::fromLatin1(name)); }
    std::unique_ptr<QTemporaryDir> m_other;
};

namespace {

const QString First = QStringLiteral("1");
const QString Three = QStringLiteral("3");
const QString Four = QStringLiteral("4");

const QString Replaced =
    QStringLiteral("The store in %1 was moved or replaced while it was in use; "
                   "see which one is there now, and repeat what it does not hold.");

QString store() { return qEnvironmentVariable("KORVASYNC_STORE"); }

bool move(const QString &from, const QString &to) { return QDir().rename(from, to); }

QStringList makeOther(const QString &path, int count)
{
    return StoreProcess(path).run({QStringLiteral("add"), QString::number(count)}).lines;
}

} // namespace

void TestReplacedStore::init()
{
    m_other = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(store()).removeRecursively());
    Event event;
    TrackerIO::instance()->getEvent(1, event); // which finds out
    QCOMPARE(add(messages(3)).size(), 3);
    QCOMPARE(StoreProcess(store()).list(), Three);
}

// The request may name what the other store holds, so it must not reach the one that is there now.
void TestReplacedStore::theNextRequestFails_data()
{
    QTest::addColumn<QString>("replaced");
    QTest::newRow("store") << QString();
    for (const char *name : {"lock", "db", "db/meta.db", "db/urn%3Akorvasync%3Ahistory.db"})
        QTest::newRow(name) << QLatin1Char('/') + QString::fromLatin1(name);
}

void TestReplacedStore::theNextRequestFails()
{
    QFETCH(QString, replaced);
    MessageLog log;
    const QString moved = other("moved");
    QVERIFY(move(store() + replaced, moved));
    QCOMPARE(
        QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-a"), moved, store() + replaced}),
        0);
    EventModel model;
    Reports reports(&model);
    model.deleteEvent(1);
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(!got.first().status);
    QCOMPARE(log.lines(QtWarningMsg), QStringList{Replaced.arg(store())});
    QCOMPARE(read(Inbox).size(), 3);
    QCOMPARE(add(messages(1)), QList<int>{4});
    QCOMPARE(StoreProcess(store()).list(), Four);
}

void TestReplacedStore::aRemovedStoreIsMadeAnewByALaterWrite()
{
    QVERIFY(QDir(store()).removeRecursively());
    QCOMPARE(add(messages(1)), QList<int>());
    QCOMPARE(add(messages(1)), QList<int>{1});
    QCOMPARE(StoreProcess(store()).list(), First);
    QCOMPARE(read(Inbox).size(), 1);
}

void TestReplacedStore::aMovedStoreTakesNoMoreWrites()
{
    const QString moved = other("moved");
    QVERIFY(move(store(), moved));
    QCOMPARE(add(messages(1)), QList<int>());
    QCOMPARE(add(messages(1)), QList<int>{1});
    QCOMPARE(StoreProcess(store()).list(), First);
    QCOMPARE(StoreProcess(moved).list(), Three);
}

void TestReplacedStore::aReplacingStoreIsReadAndWritten()
{
    QCOMPARE(makeOther(other("other"), 5).size(), 5);
    QVERIFY(move(store(), other("moved")));
    QVERIFY(move(other("other"), store()));
    Event event;
    QVERIFY(!TrackerIO::instance()->getEvent(1, event));
    QCOMPARE(read(Inbox).size(), 5);
    QCOMPARE(add(messages(1)), QList<int>{6}); // no id is given twice
    QCOMPARE(StoreProcess(store()).list(), QStringLiteral("6"));
    QCOMPARE(StoreProcess(other("moved")).list(), Three);
}

void TestReplacedStore::aReadOfARemovedStoreIsToldOnce()
{
    QVERIFY(QDir(store()).removeRecursively());
    MessageLog log;
    SyncSMSModel model(Inbox, QDateTime(), false);
    QSignalSpy ready(&model, &SyncSMSModel::modelReady);
    QVERIFY(model.getEvents()); // the store was open when last it was used
    Event event;
    QVERIFY(!TrackerIO::instance()->getEvent(1, event)); // requests are carried out in order
    QVERIFY(!model.getEvents());
    QCoreApplication::processEvents();
    QCOMPARE(ready.count(), 0);
    QCOMPARE(log.lines(QtWarningMsg),
             (QStringList{Replaced.arg(store()),
                          QStringLiteral("There is no store in %1 yet; add something first, or "
                                         "name the directory of another store.")
                              .arg(store())}));
    QVERIFY(!QFileInfo::exists(store()));
}

void TestReplacedStore::aWriteThatWaitedWhileTheStoreWasMovedFails()
{
    MessageLog log;
    const QString moved = other("moved");
    EventModel model;
    Reports reports(&model);
    {
        const HeldStore lock(store());
        QVERIFY(lock.isHeld());
        QList<Event> events = messages(1);
        model.addEvents(events, false);
        QTRY_VERIFY_WITH_TIMEOUT(lock.isWaitedFor(), Patience);
        QVERIFY(move(store(), moved));
    }
    const QList<Report> got = reports.wait(1);
    QCOMPARE(got.size(), 1);
    QVERIFY(!got.first().status);
    QCOMPARE(log.lines(QtWarningMsg).size(), 1);
    QCOMPARE(log.lines(QtWarningMsg), QStringList{Replaced.arg(store())});
    QCOMPARE(StoreProcess(moved).list(), Three);
    QCOMPARE(add(messages(1)), QList<int>());
    QCOMPARE(add(messages(1)), QList<int>{1}); // the next write makes a store
}

STORE_TEST_MAIN(TestReplacedStore)
#include "tst_replacedstore.moc"
