// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What the library logs by level, and what a silenced trace costs. This program wraps
// Event::lastModified() (see CMakeLists.txt): reading a message without its modified time calls
// it for the trace line alone, so its calls count how often the line's arguments are evaluated.

#include "eventloop.h"
#include "messagelog.h"
#include "platformfixture.h"
#include "samplerecords.h"
#include "syncstorageif/syncstorageif_p.h"

#include <korvasync/pendingids.h>
#include <korvasync/pendingmsgs.h>

#include <QtCore/QLoggingCategory>
#include <QtTest/QTest>

using namespace KorvaSyncIf;

namespace {

int lastModifiedCalls = 0;

//! Filter rules as long as it lives.
struct LoggingRules
{
    explicit LoggingRules(const char *rules)
    {
        QLoggingCategory::setFilterRules(QString::fromLatin1(rules));
    }
    ~LoggingRules() { QLoggingCategory::setFilterRules(QString()); }

private:
    Q_DISABLE_COPY(LoggingRules)
};

void readOneRecord()
{
    SmsInfo info;
    SyncStorageIfPrivate::fillSmsInfo(messageEvent(9, LocInbox), info, false);
}

} // namespace

// The linker sends every call of the getter to the second function.
QDateTime storedLastModified(const CommHistory::Event *event) __asm__(
    "__real__ZNK11CommHistory5Event12lastModifiedEv");
QDateTime countedLastModified(const CommHistory::Event *event) __asm__(
    "__wrap__ZNK11CommHistory5Event12lastModifiedEv");
QDateTime countedLastModified(const CommHistory::Event *event)
{
    ++lastModifiedCalls;
    return storedLastModified(event);
}

class TestTracing : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void argumentsOfATraceLineAreEvaluatedForItAlone();
    void everyOperationOfTheAdapterIsTraced();
    void theTraceIsOnByDefaultAtDebugLevel();
    void aSilencedTraceLeavesWarningsAndTimes();
};

void TestTracing::argumentsOfATraceLineAreEvaluatedForItAlone()
{
    MessageLog log;
    lastModifiedCalls = 0;
    readOneRecord();
    QCOMPARE(lastModifiedCalls, 1);
    const LoggingRules rules("korvasync.*.debug=false");
    log.clear();
    readOneRecord();
    QCOMPARE(lastModifiedCalls, 1);
    QVERIFY(log.lines(QtDebugMsg).isEmpty());
}

void TestTracing::everyOperationOfTheAdapterIsTraced()
{
    PlatformFixture f;
    f.store.knowConversation(QStringLiteral("5550100"), 7);
    SyncStorageIf &adapter = *f.adapter();
    MessageLog log;
    adapter.modifySms({storedMessage(11, 0, QStringLiteral("5550111"))});
    settle();
    adapter.modifySms({storedMessage(11, 0)});
    settle();
    adapter.storeSms({receivedFrom(QStringLiteral("5550111"), 0)});
    settle();
    adapter.fetchSmsMessages(QDateTime(), LocInbox, false);
    settle();
    adapter.fetchSms(3);
    adapter.deleteSms({storedMessage(11, 0)});
    settle();
    adapter.storeCallLogMsgs({call(QStringLiteral("missed"), 0)});
    settle();
    adapter.deleteAllCallLogMsgs();
    adapter.fetchCallMessages(QDateTime(), QString());
    settle();
    const QStringList lines = log.lines(QtDebugMsg);
    for (const char *const line :
         {"bool KorvaSyncIf::SyncStorageIf::modifySms(const QList<KorvaSyncIf::SmsInfo>&)",
          "Exit bool KorvaSyncIf::SyncStorageIf::modifySms(const QList<KorvaSyncIf::SmsInfo>&) "
          "true",
          "Enter void KorvaSyncIf::SyncStorageIf::startModifyingMessages()",
          "void KorvaSyncIf::SyncStorageIf::modifyEvents()",
          "void KorvaSyncIf::SyncStorageIfPrivate::fillGroupIdsOfMsgs()",
          "Returning from void KorvaSyncIf::SyncStorageIfPrivate::fillGroupIdsOfMsgs()",
          "Enter int KorvaSyncIf::SyncStorageIfPrivate::getGroup(const QString&, const QString&)",
          "Exit ",
          "void KorvaSyncIf::SyncStorageIfPrivate::removeIdsFromPendingMsgs(const QList<int>&)",
          "void KorvaSyncIf::SyncStorageIf::addGroups(QStringList)",
          "void KorvaSyncIf::SyncStorageIf::groupIdsCommittedSlot(QList<int>, bool) true",
          "bool KorvaSyncIf::SyncStorageIf::fetchSmsMessages(const QDateTime&, int, bool)",
          "void KorvaSyncIf::SyncStorageIf::eventsAvailableInModel()",
          "KorvaSyncIf::SmsInfo KorvaSyncIf::SyncStorageIf::fetchSms(int)",
          "bool KorvaSyncIf::SyncStorageIf::deleteSms(const QList<KorvaSyncIf::SmsInfo>&) 1",
          "void KorvaSyncIf::SyncStorageIf::deletedEventsCommitted(QList<CommHistory::Event>, "
          "bool) true",
          "bool KorvaSyncIf::SyncStorageIf::storeCallLogMsgs(const "
          "QList<KorvaSyncIf::CallInfo>&)",
          "QList<CommHistory::Event> "
          "KorvaSyncIf::SyncStorageIfPrivate::constructCallEventList(const "
          "QList<KorvaSyncIf::CallInfo>&)",
          "bool KorvaSyncIf::SyncStorageIf::deleteAllCallLogMsgs()",
          "bool KorvaSyncIf::SyncStorageIf::fetchCallMessages(const QDateTime&, const QString&)",
          "void KorvaSyncIf::SyncStorageIf::callEventsAvailableInModel()"})
        QVERIFY2(lines.contains(QLatin1String(line)), line);
}

void TestTracing::theTraceIsOnByDefaultAtDebugLevel()
{
    MessageLog log;
    PlatformFixture f;
    auto *const pending = new PendingIds(1, &f.parent);
    pending->store({receivedFrom(QStringLiteral("+15550100"), 0)});
    settle();
    QVERIFY(!log.lines(QtDebugMsg).isEmpty());
    QVERIFY(log.lines(QtInfoMsg).isEmpty());
    QVERIFY(log.lines(QtWarningMsg).isEmpty());
    QCOMPARE(int(log.lines(QtCriticalMsg).size()), 1); // the completion's time
}

void TestTracing::aSilencedTraceLeavesWarningsAndTimes()
{
    const LoggingRules rules("korvasync.*.debug=false");
    MessageLog log;
    PlatformFixture f;
    f.store.react(Request::AddGroups, Reaction::failed());
    auto *const pending = new PendingIds(1, &f.parent);
    pending->store({receivedFrom(QStringLiteral("+15550100"), 0)});
    (new PendingMsgs(&f.parent))->messages(QDateTime(), LocInbox, false);
    settle();
    QVERIFY(log.lines(QtDebugMsg).isEmpty());
    // The second warning is of the doubled reference of a new number.
    const auto warning =
        QStringLiteral("Group Id not found for the message at idx 0 setting database error");
    QCOMPARE(log.lines(QtWarningMsg), (QStringList{warning, warning}));
    QCOMPARE(int(log.lines(QtCriticalMsg).size()), 1);
}

QTEST_GUILESS_MAIN(TestTracing)
#include "tst_tracing.moc"
