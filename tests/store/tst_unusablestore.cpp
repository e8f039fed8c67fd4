// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagelog.h"
#include "storetesting.h"

#include <commhistory/callmodel.h>

#include <QtCore/QFile>

#include <memory>

using namespace CommHistory;
using namespace StoreTesting;

//! A file stands where the store would be. No write is refused at once: each is reported as
//! failed.
class TestUnusableStore : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { log = std::make_unique<MessageLog>(); }
    void cleanup() { log.reset(); }
    void anAdditionIsReportedAsFailed();
    void aModificationIsReportedAsFailed();
    void everyDeletionIsReportedAsFailedWithItsId();
    void newConversationsAreReportedAsFailed();
    void callsAreNotWiped();

private:
    std::unique_ptr<MessageLog> log; // the warning is another test's
};

void TestUnusableStore::initTestCase()
{
    QFile file(qEnvironmentVariable("KORVASYNC_STORE"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("no store"), qint64(8));
}

void TestUnusableStore::anAdditionIsReportedAsFailed()
{
    EventModel model;
    Reports reports(&model);
    QList<Event> events = messages(2);
    QVERIFY(model.addEvents(events, false));
    QCOMPARE(reports.waiting(), 0);
    const QList<Report> failed = reports.wait(1);
    QCOMPARE(int(failed.size()), 1);
    QVERIFY(!failed.first().status);
}

void TestUnusableStore::aModificationIsReportedAsFailed()
{
    EventModel model;
    Reports reports(&model);
    QList<Event> events = messages(1);
    events.first().setId(7);
    QVERIFY(model.modifyEvents(events));
    QCOMPARE(reports.waiting(), 0);
    const QList<Report> failed = reports.wait(1);
    QCOMPARE(int(failed.size()), 1);
    QVERIFY(!failed.first().status);
}

void TestUnusableStore::everyDeletionIsReportedAsFailedWithItsId()
{
    EventModel model;
    Reports reports(&model);
    for (const int id : {7, 9, 7})
        QVERIFY(model.deleteEvent(id));
    QCOMPARE(reports.waiting(), 0);
    QList<int> ids;
    while (ids.size() < 3) {
        const QList<Report> failed = reports.wait(1);
        QCOMPARE(int(failed.size()), 1);
        QVERIFY(!failed.first().status);
        ids += failed.first().ids();
    }
    QCOMPARE(ids, (QList<int>{7, 9, 7}));
}

void TestUnusableStore::newConversationsAreReportedAsFailed()
{
    GroupModel model;
    QSignalSpy reports(&model, &GroupModel::groupsCommitted);
    Group group;
    group.setLocalUid(QStringLiteral("account"));
    group.setRemoteUids({QStringLiteral("5550100")});
    QList<Group> groups{group};
    QVERIFY(model.addGroups(groups));
    QCOMPARE(int(reports.count()), 0);
    QVERIFY(reports.wait(Patience));
    QCOMPARE(int(reports.count()), 1);
    QCOMPARE(reports.first().at(1).toBool(), false);
}

void TestUnusableStore::callsAreNotWiped() { QVERIFY(!CallModel().deleteAll()); }

STORE_TEST_MAIN(TestUnusableStore)
#include "tst_unusablestore.moc"
