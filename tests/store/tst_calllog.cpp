// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The call log of the real store, through the library. Run with "list", "add" or "wipe", the
// program is a process of its own on the store of KORVASYNC_STORE and prints what came of it.

#include "callloghelpers.h"
#include "messagelog.h"
#include "storeprocess.h"
#include "timezone.h"
#include "vmessagetext.h"

#include <korvasync/smssyncinterface.h>

#include <commhistory/trackerio.h>

#include <QtCore/QLoggingCategory>

#include <cstdio>

using namespace CallLog;
using namespace KorvaSyncIf;
using CommHistory::Event;
using CommHistory::TrackerIO;
using StoreTesting::Patience;

//! Each function begins with an empty call log.
class TestCallLog : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void fiveThousandCallsComeBackNewestFirst();
    void kindsAreToldApart_data();
    void kindsAreToldApart();
    void sinceGoesByTheStartAndIncludesIt();
    void equalCallsAreKeptApart();
    void theEntriesAroundABrokenOneAreStored();
    void oddNumbersComeBack();
    void oddDurationsComeBack();
    void deletionRemovesCallsAndNothingElse();
    void otherProcessesSeeWhatWasWritten();
    void aDeletionIsOnTheDiskBeforeItsAnswer();
    void anUnusableStoreRefusesReadsAndFailsWrites();
};

namespace {

//! Database id of a new message from +15550100; -1 when it was not stored.
int addMessage()
{
    SMSSyncInterface facade;
    SyncSmsInfo item;
    item.vMessage = VMessageText().text();
    QList<SyncSmsInfo> items{item};
    PendingIds *const pending = facade.addNewMessages(items);
    QList<int> ids;
    QSignalSpy finished(pending, &PendingStatus::finished);
    QObject::connect(pending, &PendingStatus::finished, &facade, [&] { ids = pending->ids(); });
    finished.wait(Patience);
    return ids.value(0, -1);
}

Event stored(int id)
{
    Event event;
    TrackerIO::instance()->getEvent(id, event);
    return event;
}

StoreProcess otherProcess() { return StoreProcess(QFile::decodeName(qgetenv("KORVASYNC_STORE"))); }

QStringList wordsOf(const StoreProcess &process, const char *verb)
{
    return process.run({QString::fromLatin1(verb)}).lines;
}

//! What this program does as another process. False for any other argument.
bool runVerb(const QString &verb)
{
    QString outcome;
    if (verb == QLatin1String("list"))
        outcome = numbers();
    else if (verb == QLatin1String("add"))
        outcome = add({missed(QStringLiteral("9"), QStringLiteral("20260301T120000"))});
    else if (verb == QLatin1String("wipe"))
        outcome = CallSyncInterface(nullptr).deleteAllCalls() ? QStringLiteral("wiped")
                                                              : QStringLiteral("not wiped");
    else
        return false;
    std::puts(qPrintable(outcome));
    std::fflush(stdout); // before the store is closed
    return true;
}

} // namespace

void TestCallLog::init()
{
    QVERIFY(StoreTesting::makeStore());
    QVERIFY(CallSyncInterface(nullptr).deleteAllCalls());
}

void TestCallLog::fiveThousandCallsComeBackNewestFirst()
{
    QStringList given;
    QStringList expected;
    QString result = QStringLiteral("added");
    for (int i = 0; i < 5000; ++i) {
        const QString time = QStringLiteral("20260301T12%1%2")
                                 .arg(i / 100, 2, 10, QLatin1Char('0'))
                                 .arg(i % 100 / 2, 2, 10, QLatin1Char('0'));
        const QString number = QStringLiteral("+1555%1").arg(i);
        given.append(incoming(number, time + QLatin1Char('Z')));
        expected.prepend(incoming(number, time + QLatin1Char('0')));
        result += QStringLiteral(" 0");
    }
    const MessageLog log;
    QCOMPARE(add(given), result);
    const QStringList got = read(IncomingCall);
    // All of the store's reports were waited for.
    const QString times = log.lines(QtCriticalMsg).join(QLatin1Char('\n'));
    QVERIFY2(times.contains(QStringLiteral("write/modify 5000 msgs is ")), qPrintable(times));
    QVERIFY2(times.contains(QStringLiteral("retrieve  5000 calls ")), qPrintable(times));
    QCOMPARE(int(got.size()), 5000);
    for (int i = 0; i < 5000; ++i)
        QCOMPARE(got.at(i), expected.at(i));
}

void TestCallLog::kindsAreToldApart_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    QTest::newRow("incoming") << 0 << QStringLiteral("7 4 1");
    QTest::newRow("outgoing") << 1 << QStringLiteral("6 3");
    QTest::newRow("missed") << 2 << QStringLiteral("5 2");
    QTest::newRow("any") << 3 << QStringLiteral("7 6 5 4 3 2 1");
}

void TestCallLog::kindsAreToldApart()
{
    QFETCH(int, type);
    QFETCH(QString, expected);
    const auto time = [](int hour) {
        return QStringLiteral("20260301T%1").arg(hour * 10000, 6, 10, QLatin1Char('0'));
    };
    // Not in the order of time.
    QCOMPARE(add({outgoing(QStringLiteral("6"), time(6)), missed(QStringLiteral("2"), time(2)),
                  incoming(QStringLiteral("1"), time(1)), incoming(QStringLiteral("7"), time(7)),
                  outgoing(QStringLiteral("3"), time(3)), incoming(QStringLiteral("4"), time(4)),
                  missed(QStringLiteral("5"), time(5))}),
             QStringLiteral("added 0 0 0 0 0 0 0"));
    QCOMPARE(numbers(CallType(type)), expected);
}

void TestCallLog::sinceGoesByTheStartAndIncludesIt()
{
    add({incoming(QStringLiteral("1"), QStringLiteral("20260301T120100"), 60),
         outgoing(QStringLiteral("2"), QStringLiteral("20260301T120300"), 181),
         missed(QStringLiteral("3"), QStringLiteral("20260301T120000"))});
    const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0));
    QCOMPARE(numbers(AllCalls, noon), QStringLiteral("3 1"));
    QCOMPARE(numbers(AllCalls, noon.toUTC()), QStringLiteral("3 1"));
    QCOMPARE(numbers(AllCalls, noon.addSecs(-1)), QStringLiteral("3 1 2"));
    QCOMPARE(numbers(AllCalls, noon.addSecs(1)), QString());
    QCOMPARE(numbers(OutgoingCall, noon), QString());
}

void TestCallLog::equalCallsAreKeptApart()
{
    const QString call = missed(QStringLiteral("1"), QStringLiteral("20260301T120000"));
    QCOMPARE(add({call, call}), QStringLiteral("added 0 0"));
    QCOMPARE(add({call}), QStringLiteral("added 0"));
    QCOMPARE(numbers(), QStringLiteral("1 1 1"));
}

void TestCallLog::theEntriesAroundABrokenOneAreStored()
{
    QCOMPARE(add({missed(QStringLiteral("1"), QStringLiteral("20260301T120000")),
                  entry(QStringLiteral("unknown"), QStringLiteral("2"), 0,
                        QStringLiteral("20260301T120100")),
                  missed(QStringLiteral("3"), QStringLiteral("20260301T120200"))}),
             QStringLiteral("added 0 1 0"));
    QCOMPARE(numbers(), QStringLiteral("3 1"));
    QCOMPARE(add({QStringLiteral("BEGIN:VCARD")}), QStringLiteral("refused"));
    QCOMPARE(add({}), QStringLiteral("refused"));
    QCOMPARE(numbers(), QStringLiteral("3 1"));
}

void TestCallLog::oddNumbersComeBack()
{
    const QStringList odd{QString(),
                          QStringLiteral(" +1 (555) 0100 "),
                          QStringLiteral("Bank24"),
                          QStringLiteral("' } DROP ALL"),
                          QStringLiteral("\"\\?x . %1 <b>~since"),
                          QStringLiteral("😀"),
                          QStringLiteral("1\0002"),
                          QChar(0xFEFF) + QStringLiteral("1"),
                          QStringLiteral("1") + QChar(0xD83D),
                          QStringLiteral("1\n2\t3\r4"),
                          QStringLiteral("001a"),
                          QChar(0x1a) + QStringLiteral("0041"),
                          QString(100000, QLatin1Char('7'))};
    QStringList given;
    QStringList expected;
    for (int i = 0; i < odd.size(); ++i) {
        const QString time = QStringLiteral("20260301T1200%1").arg(i, 2, 10, QLatin1Char('0'));
        given.append(incoming(odd.at(i), time));
        expected.prepend(incoming(odd.at(i), time + QLatin1Char('0')));
    }
    add(given);
    const QStringList got = read();
    QCOMPARE(int(got.size()), int(expected.size()));
    for (int i = 0; i < got.size(); ++i)
        QCOMPARE(got.at(i), expected.at(i));
}

// Seconds without sign: what leaves 32 bits comes round at the other end, and back.
void TestCallLog::oddDurationsComeBack()
{
    const TimeZone zone("UTC");
    const auto time = QStringLiteral("20260301T120000");
    for (const int duration : {0, -60, 86400 * 400, 2147483647, -2147483647 - 1}) {
        QVERIFY(CallSyncInterface(nullptr).deleteAllCalls());
        add({incoming(QStringLiteral("1"), time, duration)});
        QCOMPARE(read(),
                 QStringList(incoming(QStringLiteral("1"), time + QLatin1Char('0'), duration)));
    }
}

void TestCallLog::deletionRemovesCallsAndNothingElse()
{
    const int before = addMessage();
    QVERIFY(before > 0);
    const int messages = int(StoreTesting::read(StoreTesting::Inbox).size());
    add({incoming(QStringLiteral("+15550100"), QStringLiteral("20260301T120000")),
         missed(QStringLiteral("+15550100"), QStringLiteral("20260301T120000")),
         outgoing(QStringLiteral("+15550100"), QStringLiteral("20260301T120000")), QString()});
    QVERIFY(CallSyncInterface(nullptr).deleteAllCalls());
    QCOMPARE(read(), QStringList());
    QCOMPARE(int(StoreTesting::read(StoreTesting::Inbox).size()), messages);
    QCOMPARE(stored(before).freeText(), QStringLiteral("Hello"));
    // The conversation is still there too: the next message joins it.
    const int after = addMessage();
    QVERIFY(stored(after).groupId() > 0);
    QCOMPARE(stored(after).groupId(), stored(before).groupId());
    // Nothing is left to delete, which is no failure.
    QVERIFY(CallSyncInterface(nullptr).deleteAllCalls());
}

void TestCallLog::otherProcessesSeeWhatWasWritten()
{
    const StoreProcess other = otherProcess();
    add({missed(QStringLiteral("1"), QStringLiteral("20260301T120000")),
         missed(QStringLiteral("2"), QStringLiteral("20260301T120100"))});
    QCOMPARE(wordsOf(other, "list"), QStringList(QStringLiteral("2 1")));
    QVERIFY(CallSyncInterface(nullptr).deleteAllCalls());
    QCOMPARE(wordsOf(other, "list"), QStringList(QString()));
    QCOMPARE(wordsOf(other, "add"), QStringList(QStringLiteral("added 0")));
    QCOMPARE(numbers(), QStringLiteral("9"));
    QCOMPARE(wordsOf(other, "wipe"), QStringList(QStringLiteral("wiped")));
    QCOMPARE(numbers(), QString());
}

void TestCallLog::aDeletionIsOnTheDiskBeforeItsAnswer()
{
    add({missed(QStringLiteral("1"), QStringLiteral("20260301T120000"))});
    const QTemporaryDir directory;
    const QString trace = directory.filePath(QStringLiteral("trace"));
    const StoreProcess traced(QFile::decodeName(qgetenv("KORVASYNC_STORE")),
                              {QStringLiteral("strace"), QStringLiteral("-f"), QStringLiteral("-y"),
                               QStringLiteral("-o"), trace, QStringLiteral("-e"),
                               QStringLiteral("trace=pwrite64,fdatasync,write")});
    QCOMPARE(wordsOf(traced, "wipe"), QStringList(QStringLiteral("wiped")));
    QFile file(trace);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray before = file.readAll();
    before.truncate(before.indexOf("wiped\\n"));
    // Nothing is written to the calls' log after it was last brought to the disk.
    QByteArray lastCall;
    for (const QByteArray &line : before.split('\n')) {
        if (line.contains("history.db-wal"))
            lastCall = line;
    }
    QVERIFY2(lastCall.contains("fdatasync"), lastCall.constData());
}

void TestCallLog::anUnusableStoreRefusesReadsAndFailsWrites()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("store"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly)); // a file where the directory should be
    const StoreProcess other(path);
    QCOMPARE(wordsOf(other, "list"), QStringList(QStringLiteral("refused")));
    QCOMPARE(wordsOf(other, "add"), QStringList(QStringLiteral("failed 0")));
    QCOMPARE(wordsOf(other, "wipe"), QStringList(QStringLiteral("not wiped")));
}

int main(int argc, char *argv[])
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*.debug=false"));
    QCoreApplication application(argc, argv);
    if (runVerb(application.arguments().value(1)))
        return 0;
    const QTemporaryDir directory;
    qputenv("KORVASYNC_STORE", QFile::encodeName(directory.filePath(QStringLiteral("store"))));
    TestCallLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_calllog.moc"
