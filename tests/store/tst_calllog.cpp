// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The call log of the real store, through the library. Run with "list", "add" or "wipe", the
// program is a process of its own on the store of KORVASYNC_STORE and prints what came of it.

#include "messagelog.h"
#include "storeprocess.h"
#include "storetesting.h"
#include "timezone.h"
#include "vmessagetext.h"

#include <korvasync/callsyncinterface.h>
#include <korvasync/smssyncinterface.h>

#include <commhistory/trackerio.h>

#include <QtCore/QLoggingCategory>

#include <cstdio>

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
    void aCallThatWasReadIsAddedWithoutItsTime();
    void anOutgoingCallComesBackWithItsStart();
    void anOutgoingCallComesBackWithItsStartBeforeAClockChange();
    void everyHalfHourComesBack_data();
    void everyHalfHourComesBack();
    void aMomentIsReadInTheReadersZone();
    void callsWithoutTimeComeBack();
    void callsBefore1970ComeBack();
    void oddNumbersComeBack();
    void oddDurationsComeBack();
    void deletionRemovesCallsAndNothingElse();
    void otherProcessesSeeWhatWasWritten();
    void aDeletionIsOnTheDiskBeforeItsAnswer();
    void anUnusableStoreRefusesReadsAndFailsWrites();
};

namespace {

constexpr CallType AllCalls = CallType(3);

QString entry(const QString &type, const QString &number, int duration, const QString &time)
{
    return QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:%1\r\nTEL:").arg(type) + number
        + QStringLiteral("\r\nDURATION:%1\r\nCALL-DATETIME:%2\r\nEND:VCALLHISTENTRY\r\n")
              .arg(QString::number(duration), time);
}

QString incoming(const QString &number, const QString &time, int duration = 60)
{
    return entry(QStringLiteral("incoming"), number, duration, time);
}

QString outgoing(const QString &number, const QString &time, int duration = 60)
{
    return entry(QStringLiteral("outgoing"), number, duration, time);
}

QString missed(const QString &number, const QString &time)
{
    return entry(QStringLiteral("missed"), number, 0, time);
}

//! Error flag, then the result of each entry; or that finished() did not come.
QString add(const QStringList &entries)
{
    CallSyncInterface facade;
    PendingStatus *const pending = facade.addNewCalls(entries);
    if (pending->isError())
        return QStringLiteral("refused");
    QString result = QStringLiteral("no answer");
    QSignalSpy finished(pending, &PendingStatus::finished);
    QObject::connect(pending, &PendingStatus::finished, &facade, [&result](PendingStatus *ended) {
        result = ended->isError() ? QStringLiteral("failed") : QStringLiteral("added");
        const QList<CallSyncError> errors = ended->statusCallMsgs();
        for (const CallSyncError error : errors)
            result += QStringLiteral(" %1").arg(int(error));
        if (!ended->status().isEmpty())
            result += QStringLiteral(", results of messages");
    });
    finished.wait(Patience);
    return result;
}

QStringList read(CallType type = AllCalls, const QDateTime &since = QDateTime())
{
    CallSyncInterface facade;
    PendingMsgs *const pending = facade.calls(type, since);
    if (pending->isError())
        return {QStringLiteral("refused")};
    QStringList entries{QStringLiteral("no answer")};
    QSignalSpy finished(pending, &PendingMsgs::finished);
    QObject::connect(pending, &PendingMsgs::finished, &facade,
                     [&entries](PendingMsgs *ended) { entries = ended->callLogs(); });
    finished.wait(Patience);
    return entries;
}

//! The numbers of the calls, in order; or why there are none.
QString numbers(CallType type = AllCalls, const QDateTime &since = QDateTime())
{
    QStringList result;
    const QStringList entries = read(type, since);
    for (const QString &text : entries) {
        if (!text.startsWith(QLatin1String("BEGIN:")))
            return text;
        result.append(text.section(QStringLiteral("\r\nTEL:"), 1).section(QLatin1Char('\r'), 0, 0));
    }
    return result.join(QLatin1Char(' '));
}

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

QString stamp(const QDate &day, int minute)
{
    return day.addDays(minute / 1440).toString(QStringLiteral("yyyyMMdd"))
        + QStringLiteral("T%1%2")
              .arg(minute % 1440 / 60, 2, 10, QLatin1Char('0'))
              .arg(minute % 60, 2, 10, QLatin1Char('0'));
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

void TestCallLog::aCallThatWasReadIsAddedWithoutItsTime()
{
    add({incoming(QStringLiteral("1"), QStringLiteral("20260301T120000"), 7)});
    const QStringList got = read();
    QCOMPARE(got,
             QStringList(incoming(QStringLiteral("1"), QStringLiteral("20260301T1200000"), 7)));
    QCOMPARE(add(got), QStringLiteral("added 0"));
    QVERIFY(read().contains(incoming(QStringLiteral("1"), QString(), 7)));
}

void TestCallLog::anOutgoingCallComesBackWithItsStart()
{
    add({outgoing(QStringLiteral("1"), QStringLiteral("20260301T120100"), 60),
         incoming(QStringLiteral("2"), QStringLiteral("20260301T120200"), 60)});
    QCOMPARE(read(),
             (QStringList{incoming(QStringLiteral("2"), QStringLiteral("20260301T1202000"), 60),
                          outgoing(QStringLiteral("1"), QStringLiteral("20260301T1200000"), 60)}));
}

void TestCallLog::anOutgoingCallComesBackWithItsStartBeforeAClockChange()
{
    const TimeZone zone("America/St_Johns");
    // In the spring the clock jumps from 02:00 to 03:00, in the autumn back to 01:00.
    add({outgoing(QStringLiteral("1"), QStringLiteral("20260308T031500"), 1800),
         outgoing(QStringLiteral("2"), QStringLiteral("20261101T021500"), 7200)});
    QCOMPARE(
        read(),
        (QStringList{outgoing(QStringLiteral("2"), QStringLiteral("20261101T0115000"), 7200),
                     outgoing(QStringLiteral("1"), QStringLiteral("20260308T0145000"), 1800)}));
}

// A clock reading that is skipped or comes twice is no moment; these alone are left out.
void TestCallLog::everyHalfHourComesBack_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<int>("leftOutFrom"); // minute of the day
    QTest::addColumn<int>("leftOutTo");   // not included
    const auto row = [](const char *zone, const QDate &day, int from = 0, int to = 0) {
        QTest::addRow("%s-%d-%d", zone, day.year(), day.month())
            << QByteArray(zone) << day << from << to;
    };
    row("Asia/Kathmandu", {2026, 3, 1});
    row("Asia/Kathmandu", {1986, 1, 1}, 0, 15);
    row("Asia/Kolkata", {2026, 3, 1});
    row("Pacific/Marquesas", {2026, 3, 1});
    row("America/St_Johns", {2026, 3, 8}, 120, 180);
    row("America/St_Johns", {2026, 11, 1}, 60, 120);
    row("Australia/Lord_Howe", {2026, 10, 4}, 120, 150);
    row("Australia/Lord_Howe", {2026, 4, 5}, 90, 120);
    row("Australia/Adelaide", {2026, 10, 4}, 120, 180);
    row("Australia/Adelaide", {2026, 4, 5}, 120, 180);
    row("Pacific/Chatham", {2026, 9, 27}, 165, 225);
    row("Pacific/Chatham", {2026, 4, 5}, 165, 225);
    row("America/Caracas", {2016, 5, 1}, 150, 180);
    row("America/Caracas", {2007, 12, 9}, 150, 180);
    row("Europe/Helsinki", {2026, 3, 29}, 180, 240);
    row("UTC", {2026, 3, 29});
}

void TestCallLog::everyHalfHourComesBack()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDate, day);
    QFETCH(int, leftOutFrom);
    QFETCH(int, leftOutTo);
    const TimeZone here(zone);
    QStringList given;
    QStringList expected;
    // From the day before to the day after.
    for (int minute = -1440; minute < 2880; minute += 30) {
        if (minute >= leftOutFrom && minute < leftOutTo)
            continue;
        const QString time = stamp(day.addDays(-1), minute + 1440);
        given.append(incoming(QStringLiteral("1"), time + QStringLiteral("30Z"), 45));
        expected.prepend(incoming(QStringLiteral("1"), time + QStringLiteral("300"), 45));
    }
    QVERIFY(add(given).startsWith(QLatin1String("added ")));
    const QStringList got = read();
    QCOMPARE(int(got.size()), int(expected.size()));
    for (int i = 0; i < got.size(); ++i)
        QCOMPARE(got.at(i), expected.at(i));
}

void TestCallLog::aMomentIsReadInTheReadersZone()
{
    {
        const TimeZone zone("Asia/Kathmandu");
        add({missed(QStringLiteral("1"), QStringLiteral("20260301T001500"))});
    }
    const TimeZone zone("America/St_Johns");
    QCOMPARE(read(), QStringList(missed(QStringLiteral("1"), QStringLiteral("20260228T1500000"))));
}

// A missing end counts as the last second that 32 bits hold.
void TestCallLog::callsWithoutTimeComeBack()
{
    const TimeZone zone("UTC");
    QCOMPARE(add({QString(), incoming(QStringLiteral("1"), QString(), 30),
                  outgoing(QStringLiteral("2"), QStringLiteral("soon"), 31)}),
             QStringLiteral("added 0 0 0"));
    const QStringList expected{
        outgoing(QString(), QStringLiteral("21060207T0628150"), 0),
        incoming(QStringLiteral("1"), QString(), 30),
        outgoing(QStringLiteral("2"), QStringLiteral("21060207T0627440"), 31)};
    QCOMPARE(read(), expected);
    QCOMPARE(read(AllCalls, QDateTime(QDate(2026, 3, 1), QTime(0, 0))), expected);
}

void TestCallLog::callsBefore1970ComeBack()
{
    const TimeZone zone("UTC");
    add({incoming(QStringLiteral("1"), QStringLiteral("19601103T142530"), 30),
         outgoing(QStringLiteral("2"), QStringLiteral("19601103T142530"), 31),
         incoming(QStringLiteral("3"), QStringLiteral("19700101T000010"), 60)});
    QCOMPARE(read(),
             (QStringList{incoming(QStringLiteral("1"), QStringLiteral("19601103T1425300"), 30),
                          outgoing(QStringLiteral("2"), QStringLiteral("21060207T0627440"), 31),
                          incoming(QStringLiteral("3"), QStringLiteral("19700101T0000100"), 60)}));
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
