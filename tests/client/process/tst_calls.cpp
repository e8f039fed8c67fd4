// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtTest/QTest>

// "calls": listing, what counts as there already, and wiping.
class TestCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void selects_data();
    void selects();
    void countsWhatItSelects_data();
    void countsWhatItSelects();
    void findsNumbersAsTheyAreMeant();
    void printsATable();
    void printsNdjson();
    void printsEntries();
    void keepsTerminalsSafe();
    void listsNothingOfAStoreWithoutCalls();
    void leavesMessagesAlone();
    void tellsThePresentOneApart_data();
    void tellsThePresentOneApart();
    void keepsTrueRepeatsOfOneFile();
    void takesTheSameCallOfTwoFilesOnce();
    void addsAgainWhenTold();
    void refusesWhenTold();
    void readsStandardInputWithoutBeingTold();
    void warnsOfAnEmptyFile();
    void refusesWhatIsNoFileOfEntries();
    void printsResultsForPeople();
    void keepsNumbersOffStderr();
    void wipes();
    void wipesNothingInADryRun();
    void needsAYesToWipeWithoutATerminal();
    void asksBeforeItWipes_data();
    void asksBeforeItWipes();
    void wipesNoLogThatHasChanged();

private:
    ClientProcess client;
};

namespace {

// Lasts from 14:25:00 to 14:25:30.
const QByteArray answered = callEntry("incoming", "+15550100", 30, "20101103T142530Z");
const QByteArray dialled = callEntry("outgoing", "InfoPost", 3725, "20101103T142500Z");
const QByteArray missed = callEntry("missed", "", 0, "20101103T142530Z");
const QByteArray older = callEntry("missed", "0155 501-00", 0, "20091103T142530Z");

const QStringList add{text("calls"), text("add"), text("-o"), text("ndjson")};
const QStringList wipe{text("calls"), text("wipe"), text("--yes")};

QByteArray statusesOf(const ClientProcess::Outcome &outcome)
{
    QByteArray letters; // a added, p present, r refused, f failed
    for (const QByteArray &line : outcome.output.split('\n')) {
        const auto start = line.indexOf("\"status\":\"");
        if (start > 0)
            letters += line.at(start + 10);
    }
    return letters;
}

} // namespace

void TestCalls::initTestCase()
{
    QCOMPARE(client.run(add, missed + answered + dialled + older).exitCode, 0);
}

void TestCalls::selects_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("entries");
    const auto row = [](const char *options, const QByteArray &entries) {
        QTest::newRow(options) << QString::fromUtf8(options).split(QLatin1Char(' ')) << entries;
    };
    row("calls", older + answered + dialled + missed);
    row("calls list", older + answered + dialled + missed);
    row("calls --type in", answered);
    row("calls --type out", dialled);
    row("calls list --type missed", older + missed);
    row("calls --since 2010-11-03T14:25:00Z", answered + dialled + missed);
    row("calls --since 2010-11-03T16:25:01+02:00", missed);
    row("calls --since 2010-11-03", answered + dialled + missed);
    row("calls --since @1288794330", missed);
    row("calls --since 2010-11-03T14:25:31Z", "");
    row("calls --type missed --since 2010-01-01", missed);
    row("calls --until 2010-11-03T14:25:30Z", older + answered + dialled);
    row("calls --since 2010-11-03T14:25:00Z --until 2010-11-03T14:25:30Z", answered + dialled);
    row("calls --since 2010-11-04 --assume-tz Pacific/Kiritimati", answered + dialled + missed);
    row("calls --since 2010-11-04 --assume-tz UTC", "");
    row("calls --number +15550100", answered);
    row("calls --number +1-555-0100", answered);
    row("calls list --number 5550100", answered);
    row("calls --number infopost", dialled);
    row("calls --number InfoPos", "");
    row("calls --number-tail +15550100", older + answered);
    row("calls --number-tail 5550100 --limit 1", answered);
    row("calls --limit 1", missed);
    row("calls --limit 2", dialled + missed);
    row("calls --limit 0", "");
    row("calls --limit 99", older + answered + dialled + missed);
    row("calls --limit 1 --type missed", missed);
    row("calls --limit 1 --type in", answered);
    row("calls --limit 0 --type in", "");
}

void TestCalls::selects()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, entries);
    const auto outcome = client.run(options + QStringList{text("-o"), text("entries")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, entries);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCalls::countsWhatItSelects_data()
{
    QTest::addColumn<QByteArray>("count");
    const auto row = [](const char *options, const char *count) {
        QTest::newRow(options) << QByteArray(count);
    };
    row("calls --count", "4\n");
    row("calls list --count -o ndjson", "4\n");
    row("calls --count --limit 3", "3\n");
    row("calls --count --limit 0", "0\n");
    row("calls --count --type missed", "2\n");
    row("calls --count --type missed --limit 1", "1\n");
    row("calls --count --type missed --limit 0", "0\n");
    row("calls --count --number 5550100", "1\n");
    row("calls --count --since 2011-01-01", "0\n");
}

void TestCalls::countsWhatItSelects()
{
    QFETCH(QByteArray, count);
    const QStringList words = QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    const auto outcome = client.run(words);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, count);
}

void TestCalls::findsNumbersAsTheyAreMeant()
{
    ClientProcess other;
    const QByteArray bank = callEntry("missed", "B\xC3\xA4nk", 0, "20101103T142530Z");
    QCOMPARE(other.run(add, bank + answered).exitCode, 0);
    QCOMPARE(other
                 .run({text("calls"), text("-o"), text("entries"), text("--number"),
                       text("B\xC3\xA4nk")})
                 .output,
             bank);
}

void TestCalls::printsATable()
{
    QCOMPARE(client.run({text("calls")}).output,
             QByteArray("2009-11-03T14:25:30Z  missed       0:00  0155 501-00\n"
                        "2010-11-03T14:25:00Z  incoming     0:30  +15550100\n"
                        "2010-11-03T14:25:00Z  outgoing  1:02:05  InfoPost\n"
                        "2010-11-03T14:25:30Z  missed       0:00  hidden\n"));
}

void TestCalls::printsNdjson()
{
    QCOMPARE(
        client.run({text("calls"), text("-o"), text("ndjson")}).output,
        QByteArray("{\"type\":\"missed\",\"number\":\"0155 501-00\",\"duration\":0,"
                   "\"time\":\"2009-11-03T14:25:30Z\"}\n"
                   "{\"type\":\"incoming\",\"number\":\"+15550100\",\"duration\":30,"
                   "\"time\":\"2010-11-03T14:25:00Z\"}\n"
                   "{\"type\":\"outgoing\",\"number\":\"InfoPost\",\"duration\":3725,"
                   "\"time\":\"2010-11-03T14:25:00Z\"}\n"
                   "{\"type\":\"missed\",\"duration\":0,\"time\":\"2010-11-03T14:25:30Z\"}\n"));
}

void TestCalls::printsEntries()
{
    QCOMPARE(client.run({text("calls"), text("-o"), text("entries"), text("--type"), text("out")})
                 .output,
             QByteArray("BEGIN:VCALLHISTENTRY\r\nTYPE:outgoing\r\nTEL:InfoPost\r\n"
                        "DURATION:3725\r\nCALL-DATETIME:20101103T142500Z\r\n"
                        "END:VCALLHISTENTRY\r\n"));
}

void TestCalls::keepsTerminalsSafe()
{
    ClientProcess other;
    QCOMPARE(other.run(add, callEntry("missed", "1\xE2\x80\xAE", 0, "20101103T142530Z")).exitCode,
             0);
    QCOMPARE(other.run({text("calls")}).output,
             QByteArray("2010-11-03T14:25:30Z  missed       0:00  1\xEF\xBF\xBD\n"));
}

void TestCalls::listsNothingOfAStoreWithoutCalls()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello"));
    const auto outcome = other.run({text("calls")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray());
}

void TestCalls::leavesMessagesAlone()
{
    ClientProcess other;
    other.fill(vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello"));
    QCOMPARE(statusesOf(other.run(add, answered + older)), QByteArray("aa"));
    const QByteArray messages = other.listed();
    QCOMPARE(messages.count('\n'), 1);
    QCOMPARE(other.run(wipe).exitCode, 0);
    QCOMPARE(other.listed(), messages);
    QCOMPARE(other.run({text("calls")}).output, QByteArray());
}

void TestCalls::tellsThePresentOneApart_data()
{
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<QByteArray>("status");
    const auto row = [](const char *name, const char *type, const char *number, int duration,
                        const char *time, const char *status) {
        QTest::newRow(name) << callEntry(type, number, duration, time) << QByteArray(status);
    };
    row("same", "incoming", "+15550100", 30, "20101103T142530Z", "p");
    row("local-time", "incoming", "+15550100", 30, "20101103T162530", "p");
    row("milliseconds", "incoming", "+15550100", 30, "20101103T162530250", "p");
    row("national", "incoming", "0155 501-00", 30, "20101103T142530Z", "p");
    row("too-short", "incoming", "550100", 30, "20101103T142530Z", "a");
    row("hidden", "incoming", "", 30, "20101103T142530Z", "a");
    row("type", "outgoing", "+15550100", 30, "20101103T142500Z", "a");
    row("start", "incoming", "+15550100", 30, "20101103T142531Z", "a");
    row("duration", "incoming", "+15550100", 31, "20101103T142531Z", "a");
}

void TestCalls::tellsThePresentOneApart()
{
    QFETCH(QByteArray, other);
    QFETCH(QByteArray, status);
    ClientProcess process;
    QCOMPARE(process.run(add, answered).exitCode, 0);
    QCOMPARE(statusesOf(process.run(add, other)), status);
}

void TestCalls::keepsTrueRepeatsOfOneFile()
{
    ClientProcess other;
    QCOMPARE(statusesOf(other.run(add, missed + missed)), QByteArray("aa"));
    QCOMPARE(statusesOf(other.run(add, missed + missed + missed)), QByteArray("ppa"));
    QCOMPARE(other.run({text("calls"), text("-o"), text("entries")}).output,
             missed + missed + missed);
}

void TestCalls::takesTheSameCallOfTwoFilesOnce()
{
    ClientProcess other;
    const QStringList files{other.write(text("1.txt"), missed + missed),
                            other.write(text("2.txt"), missed + missed + missed)};
    QCOMPARE(statusesOf(other.run(add + QStringList{text("-n")} + files)), QByteArray("aappa"));
    QCOMPARE(statusesOf(other.run(add + files)), QByteArray("aappa"));
    QCOMPARE(other.run({text("calls")}).output.count('\n'), 3);
}

void TestCalls::addsAgainWhenTold()
{
    ClientProcess other;
    QCOMPARE(statusesOf(other.run(add, missed)), QByteArray("a"));
    QCOMPARE(statusesOf(other.run(add + QStringList{text("--on-duplicate"), text("add")}, missed)),
             QByteArray("a"));
    QCOMPARE(other.run({text("calls")}).output.count('\n'), 2);
}

void TestCalls::refusesWhenTold()
{
    ClientProcess other;
    QCOMPARE(statusesOf(other.run(add, missed)), QByteArray("a"));
    const auto outcome =
        other.run(add + QStringList{text("--on-duplicate"), text("fail")}, missed + older);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"ref\":0,\"src\":\"-:1\",\"status\":\"refused\",\"code\":\"duplicate\","
            "\"detail\":\"there already\"}\n"
            "{\"ref\":1,\"src\":\"-:7\",\"status\":\"added\"}\n"
            "{\"summary\":{\"read\":2,\"added\":1,\"present\":0,\"refused\":1,\"failed\":0}}\n"));
}

void TestCalls::readsStandardInputWithoutBeingTold()
{
    ClientProcess other;
    QCOMPARE(statusesOf(other.run(add, missed)), QByteArray("a"));
    QCOMPARE(statusesOf(other.run(add + QStringList{text("-")}, missed)), QByteArray("p"));
}

void TestCalls::warnsOfAnEmptyFile()
{
    ClientProcess other;
    const auto outcome = other.run({text("calls"), text("add")}, "\n\r\n");
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("0 read, 0 added, 0 present, 0 refused, 0 failed\n"));
    QCOMPARE(outcome.errors, QByteArray("korvasync: - is empty\n"));
}

void TestCalls::refusesWhatIsNoFileOfEntries()
{
    ClientProcess other;
    other.workingDirectory = other.filePath(QString());
    other.write(text("1.txt"), "hello\n");
    other.write(text("3.txt"), "BEGIN:VCALLHISTENTRY\r\n" + QByteArray(3000000, 'x'));
    const auto outcome =
        other.run(add + QStringList{text("1.txt"), text("2.txt"), text("."), text("3.txt")});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"src\":\"1.txt:1\",\"status\":\"refused\","
                        "\"code\":\"call-parse\",\"detail\":\"not a whole call-history entry\"}\n"
                        "{\"ref\":1,\"src\":\"2.txt\",\"status\":\"refused\","
                        "\"code\":\"unreadable\",\"detail\":\"No such file or directory\"}\n"
                        "{\"ref\":2,\"src\":\".\",\"status\":\"refused\","
                        "\"code\":\"unreadable\",\"detail\":\"Is a directory\"}\n"
                        "{\"ref\":3,\"src\":\"3.txt:1\",\"status\":\"refused\",\"code\":"
                        "\"call-parse\",\"detail\":\"a line that an entry does not have\"}\n"
                        "{\"summary\":{\"read\":4,\"added\":0,\"present\":0,\"refused\":4,"
                        "\"failed\":0}}\n"));
}

void TestCalls::printsResultsForPeople()
{
    ClientProcess other;
    const QByteArray broken = callEntry("lost", "+15550100", 0, "20101103T142530Z");
    const auto outcome = other.run({text("calls"), text("add")}, missed + missed + broken);
    QCOMPARE(outcome.output,
             QByteArray("added  -:1\nadded  -:7\n"
                        "refused  -:13  call-type: no TYPE of call that is incoming, outgoing or "
                        "missed\n3 read, 2 added, 0 present, 1 refused, 0 failed\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: 1 not done (call-type): no TYPE of call that is incoming, "
                        "outgoing or missed\n"));
}

void TestCalls::keepsNumbersOffStderr()
{
    ClientProcess other;
    QCOMPARE(other.run(add, answered).errors, QByteArray());
    QCOMPARE(other.run({text("calls")}).errors, QByteArray());
    QCOMPARE(other.run(wipe).errors, QByteArray());
}

void TestCalls::wipes()
{
    ClientProcess other;
    QCOMPARE(other.run(add, answered + missed).exitCode, 0);
    const auto outcome = other.run(wipe);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("2 call(s) deleted\n"));
    QCOMPARE(other.run({text("calls")}).output, QByteArray());
    QCOMPARE(other.run(wipe + QStringList{text("-o"), text("ndjson")}).output,
             QByteArray("{\"summary\":{\"read\":0,\"deleted\":0,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(other.run(wipe + QStringList{text("-q")}).output, QByteArray());
    QCOMPARE(statusesOf(other.run(add, answered)), QByteArray("a"));
}

void TestCalls::wipesNothingInADryRun()
{
    ClientProcess other;
    QCOMPARE(other.run(add, answered).exitCode, 0);
    const auto outcome =
        other.run({text("calls"), text("wipe"), text("-n"), text("-o"), text("ndjson")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("{\"summary\":{\"read\":1,\"deleted\":1,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(other.run({text("calls")}).output.count('\n'), 1);
}

void TestCalls::needsAYesToWipeWithoutATerminal()
{
    ClientProcess other;
    QCOMPARE(other.run(add, answered).exitCode, 0);
    const auto outcome = other.run({text("calls"), text("wipe")}, "y\n");
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: calls wipe needs --yes where it cannot ask on a terminal\n"));
    QCOMPARE(other.run({text("calls")}).output.count('\n'), 1);
}

void TestCalls::asksBeforeItWipes_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("left");
    QTest::addColumn<QByteArray>("told");
    const QByteArray nothing("korvasync: nothing was deleted\n");
    QTest::newRow("yes") << QByteArray("y\n") << QByteArray("1 call(s) deleted\n") << 0
                         << QByteArray();
    QTest::newRow("no") << QByteArray("n\n") << QByteArray() << 1 << nothing;
    QTest::newRow("neither") << QByteArray("\n") << QByteArray() << 1 << nothing;
    QTest::newRow("end") << QByteArray("\x04") << QByteArray() << 1 << "\n" + nothing;
}

void TestCalls::asksBeforeItWipes()
{
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, output);
    QFETCH(int, left);
    QFETCH(QByteArray, told);
    ClientProcess other;
    QCOMPARE(other.run(add, answered).exitCode, 0);
    const auto outcome = other.runAtTerminal({text("calls"), text("wipe")}, answer);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, "Delete 1 call(s)? [y/N] " + told);
    QCOMPARE(outcome.output, output);
    QCOMPARE(other.run({text("calls")}).output.count('\n'), left);
}

void TestCalls::wipesNoLogThatHasChanged()
{
    ClientProcess other;
    QCOMPARE(other.run(add, answered).exitCode, 0);
    const auto outcome =
        other.runAtTerminal({text("calls"), text("wipe"), text("-o"), text("ndjson")}, "y\n", [&] {
            QCOMPARE(
                other.run(add, callEntry("missed", "+15550177", 0, "20101103T142530Z")).exitCode,
                0);
        });
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors,
             QByteArray("Delete 1 call(s)? [y/N] korvasync: the call log changed meanwhile, so "
                        "nothing was deleted; look at it and repeat\n"));
    QCOMPARE(outcome.output,
             QByteArray("{\"summary\":{\"read\":2,\"deleted\":0,\"refused\":2,\"failed\":0}}\n"));
    QCOMPARE(other.run({text("calls")}).output.count('\n'), 2);
}

QTEST_GUILESS_MAIN(TestCalls)
#include "tst_calls.moc"
