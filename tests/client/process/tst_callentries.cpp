// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

// What call-history entries become, and that calls come back from a backup as they were.
class TestCallEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsTheSamples();
    void foretellsTheSamples();
    void readsTimes_data();
    void readsTimes();
    void readsTimesInTheZoneThatIsSaid();
    void readsEntries_data();
    void readsEntries();
    void refusesEntries_data();
    void refusesEntries();
    void addsWhatIsNotBroken();
    void refusesATimeTooFarAhead();
    void restoresABackupByteForByte_data();
    void restoresABackupByteForByte();
    void restoresThousandsOfCalls();
};

namespace {

const QStringList add{text("calls"), text("add"), text("-o"), text("ndjson")};
const QStringList list{text("calls"), text("-o"), text("ndjson")};
const QStringList backup{text("calls"), text("list"), text("-o"), text("entries")};

QByteArray expected(const char *name)
{
    QFile file(QStringLiteral(EXPECTED_DIRECTORY "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

QStringList samples()
{
    return QDir(QStringLiteral(CALLS_DIRECTORY))
        .entryList({text("*.txt")}, QDir::Files, QDir::Name);
}

QByteArray summary(int read, int added, int present, int refused)
{
    return "{\"summary\":{\"read\":" + QByteArray::number(read)
        + ",\"added\":" + QByteArray::number(added) + ",\"present\":" + QByteArray::number(present)
        + ",\"refused\":" + QByteArray::number(refused) + ",\"failed\":0}}\n";
}

} // namespace

void TestCallEntries::addsTheSamples()
{
    ClientProcess client;
    client.workingDirectory = QStringLiteral(CALLS_DIRECTORY);
    const auto outcome = client.run(add + samples());
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output.split('\n'), expected("calls-added.ndjson").split('\n'));
    QCOMPARE(client.run(list).output.split('\n'), expected("calls-listed.ndjson").split('\n'));
    QVERIFY(client.run(add + samples()).output.endsWith(summary(15, 0, 10, 5)));
}

void TestCallEntries::foretellsTheSamples()
{
    ClientProcess client;
    client.workingDirectory = QStringLiteral(CALLS_DIRECTORY);
    const auto outcome = client.run(add + QStringList{text("-n")} + samples());
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output.split('\n'), expected("calls-added.ndjson").split('\n'));
    QVERIFY(!QFile::exists(client.store()));
}

void TestCallEntries::readsTimes_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QByteArray>("time");
    const auto row = [](const char *name, const char *zone, const char *written, const char *time) {
        QTest::newRow(name) << QByteArray(zone) << QByteArray(written) << QByteArray(time);
    };
    row("utc", "Europe/Helsinki", "20240704T120030Z", "2024-07-04T12:00:30Z");
    row("small-letter", "Europe/Helsinki", "20240704T120030z", "2024-07-04T12:00:30Z");
    row("local", "Europe/Helsinki", "20240704T120030", "2024-07-04T09:00:30Z");
    row("local-winter", "Europe/Helsinki", "20240104T120030", "2024-01-04T10:00:30Z");
    row("half-hour-zone", "America/St_Johns", "20240104T120030", "2024-01-04T15:30:30Z");
    row("quarter-zone", "Asia/Kathmandu", "20240104T120030", "2024-01-04T06:15:30Z");
    row("1-digit-more", "UTC", "20240704T1200300", "2024-07-04T12:00:30Z");
    row("2-digits-more", "UTC", "20240704T12003025", "2024-07-04T12:00:30Z");
    row("3-digits-more", "UTC", "20240704T120030999", "2024-07-04T12:00:30Z");
    row("3-digits-more-utc", "Europe/Helsinki", "20240704T120030999Z", "2024-07-04T12:00:30Z");
    row("skipped", "Europe/Helsinki", "20240331T033000", "2024-03-31T01:30:00Z");
    row("twice", "Europe/Helsinki", "20241027T033000", "2024-10-27T00:30:00Z");
    row("after-twice", "Europe/Helsinki", "20241027T040000", "2024-10-27T02:00:00Z");
    row("first", "UTC", "19900101T000000Z", "1990-01-01T00:00:00Z");
}

void TestCallEntries::readsTimes()
{
    QFETCH(QByteArray, zone);
    QFETCH(QByteArray, written);
    QFETCH(QByteArray, time);
    ClientProcess client;
    client.environment.insert(text("TZ"), QString::fromLatin1(zone));
    const auto outcome =
        client.run(add,
                   callEntry("missed", "+15550100", 0, written) // the start is the end
                       + callEntry("outgoing", "+15550100", 0, written));
    QVERIFY2(outcome.output.endsWith(summary(2, 2, 0, 0)), outcome.output);
    client.environment.insert(text("TZ"), text("Pacific/Apia"));
    QCOMPARE(client.run(list).output,
             "{\"type\":\"missed\",\"number\":\"+15550100\",\"duration\":0,\"time\":\"" + time
                 + "\"}\n{\"type\":\"outgoing\",\"number\":\"+15550100\",\"duration\":0,\"time\":\""
                 + time + "\"}\n");
}

void TestCallEntries::readsTimesInTheZoneThatIsSaid()
{
    ClientProcess client;
    client.run(add + QStringList{text("--assume-tz"), text("America/New_York")},
               callEntry("missed", "+15550100", 0, "20101103T142530")
                   + callEntry("missed", "+15550100", 0, "20101103T142530Z"));
    QCOMPARE(client.run(list).output,
             QByteArray("{\"type\":\"missed\",\"number\":\"+15550100\",\"duration\":0,"
                        "\"time\":\"2010-11-03T14:25:30Z\"}\n"
                        "{\"type\":\"missed\",\"number\":\"+15550100\",\"duration\":0,"
                        "\"time\":\"2010-11-03T18:25:30Z\"}\n"));
}

void TestCallEntries::readsEntries_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("listed");
    const QByteArray plain = callEntry("incoming", "+15550100", 30, "20240704T120030Z");
    const QByteArray listed("{\"type\":\"incoming\",\"number\":\"+15550100\",\"duration\":30,"
                            "\"time\":\"2024-07-04T12:00:00Z\"}\n");
    const auto changed = [](QByteArray text, const char *before, const char *after) {
        return text.replace(before, after);
    };
    QTest::newRow("crlf") << plain << listed;
    QTest::newRow("lf") << changed(plain, "\r\n", "\n") << listed;
    QTest::newRow("no-last-line-end") << plain.chopped(2) << listed;
    QTest::newRow("blank-lines") << changed(plain, "\r\n", "\r\n\r\n") << listed;
    QTest::newRow("byte-order-mark") << "\xEF\xBB\xBF" + plain << listed;
    QTest::newRow("text-around") << "a call\r\n\r\n" + plain + "TEL:+15550199\r\n" << listed;
    QTest::newRow("longer-first-line")
        << changed(plain, "ENTRY\r\nTYPE", "ENTRY:1.0\r\nTYPE") << listed;
    QTest::newRow("later-value-wins")
        << changed(plain, "TYPE:incoming", "TYPE:missed\r\nTEL:1\r\nTYPE:incoming") << listed;
    QTest::newRow("no-duration") << changed(plain, "DURATION:30\r\n", "")
                                 << changed(changed(listed, ":30,", ":0,"), ":00Z", ":30Z");
    QTest::newRow("empty-duration") << changed(plain, "DURATION:30", "DURATION:")
                                    << changed(changed(listed, ":30,", ":0,"), ":00Z", ":30Z");
    QTest::newRow("hidden") << changed(plain, "TEL:+15550100", "TEL:")
                            << changed(listed, "\"number\":\"+15550100\",", "");
    QTest::newRow("no-number") << changed(plain, "TEL:+15550100\r\n", "")
                               << changed(listed, "\"number\":\"+15550100\",", "");
    QTest::newRow("word") << changed(plain, "+15550100", "B\xC3\xA4nk")
                          << changed(listed, "+15550100", "B\xC3\xA4nk");
    QTest::newRow("percent-signs")
        << changed(plain, "+15550100", "%1 %4") << changed(listed, "+15550100", "%1 %4");
}

void TestCallEntries::readsEntries()
{
    QFETCH(QByteArray, entry);
    QFETCH(QByteArray, listed);
    ClientProcess client;
    const auto outcome = client.run(add, entry);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.endsWith(summary(1, 1, 0, 0)), outcome.output);
    QCOMPARE(client.run(list).output, listed);
}

void TestCallEntries::refusesEntries_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QByteArray>("detail");
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &after,
                        const char *code, const char *detail) {
        QByteArray entry = callEntry("incoming", "+15550100", 30, "20240704T120030Z");
        entry.replace(before, after);
        QTest::newRow(name) << entry << QByteArray(code) << QByteArray(detail);
    };
    const char *parse = "call-parse";
    const char *noType = "no TYPE of call that is incoming, outgoing or missed";
    row("no-type", "TYPE:incoming\r\n", "", "call-type", noType);
    row("empty-type", "TYPE:incoming", "TYPE:", "call-type", noType);
    row("unknown-type", "incoming", "voicemail", "call-type", noType);
    row("type-in-capitals", "incoming", "Incoming", "call-type", noType);
    row("colon-in-number", "+15550100", "tel:+15550100", parse, "a value with a colon");
    row("unknown-name", "TEL", "FAX", parse, "a line that an entry does not have");
    row("small-name", "TEL", "tel", parse, "a line that an entry does not have");
    row("first-line-in-small", "BEGIN:VCALLHISTENTRY", "begin:vcallhistentry", parse,
        "the beginning is missing");
    row("no-first-line", "BEGIN:VCALLHISTENTRY", "", parse, "the beginning is missing");
    row("no-last-line", "END:VCALLHISTENTRY\r\n", "", parse, "the end is missing");
    row("cut-last-line", "END:VCALLHISTENTRY\r\n", "END:VCALL", parse,
        "a line that an entry does not have");
    row("nul-in-number", "+15550100", QByteArray("1\0002", 3), parse,
        "a number with unprintable characters");
    row("escape-in-number", "+15550100", "1\x1B[1m", parse, "a number with unprintable characters");
    row("no-utf-8", "+15550100", "B\xE4nk", parse, "a number with unprintable characters");
    const char *noCount = "a duration that is no count of seconds";
    row("duration-word", "DURATION:30", "DURATION:abc", parse, noCount);
    row("duration-clock", "DURATION:30", "DURATION:0.30", parse, noCount);
    row("duration-negative", "DURATION:30", "DURATION:-1", parse, noCount);
    row("duration-overflow", "DURATION:30", "DURATION:2147483648", parse, noCount);
    row("duration-too-long", "DURATION:30", "DURATION:2147483647", parse,
        "a duration that cannot be");
    const char *noTime = "no time, or none that can be";
    for (const char *time :
         {"", "Z20240704T120030", "20240704T1200", "20240704T250030Z", "20240230T120030Z",
          "20240704T1200301234", "20240704 120030", "1720094430", "19700101T000000Z",
          "19891231T235959Z", "99990101T000000Z", "20240704T120030X"}) {
        row(qPrintable(text("time-") + text(time)), "20240704T120030Z", time, "bad-time", noTime);
    }
    row("no-time", "CALL-DATETIME:20240704T120030Z\r\n", "", "bad-time", noTime);
}

void TestCallEntries::refusesEntries()
{
    QFETCH(QByteArray, entry);
    QFETCH(QByteArray, code);
    QFETCH(QByteArray, detail);
    ClientProcess client;
    const auto outcome = client.run(add, entry);
    QCOMPARE(outcome.exitCode, 1);
    const QByteArray line = detail == "the beginning is missing" && !entry.startsWith("begin")
        ? QByteArray("6")
        : QByteArray("1");
    QCOMPARE(outcome.output,
             "{\"ref\":0,\"src\":\"-:" + line + "\",\"status\":\"refused\",\"code\":\"" + code
                 + "\",\"detail\":\"" + detail + "\"}\n" + summary(1, 0, 0, 1));
    QVERIFY(!QFile::exists(client.store()));
}

void TestCallEntries::addsWhatIsNotBroken()
{
    ClientProcess client;
    const QByteArray good = callEntry("missed", "+15550100", 0, "20240704T120030Z");
    QByteArray unclosed = callEntry("missed", "+15550101", 0, "20240704T120030Z");
    unclosed.replace("END:VCALLHISTENTRY\r\n", "");
    const QByteArray wrong = callEntry("lost", "+15550102", 0, "20240704T120030Z");
    const QByteArray last = callEntry("missed", "+15550103", 0, "20240704T120030Z");
    const auto outcome = client.run(add, "\n" + good + unclosed + wrong + "\n" + last);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             "{\"ref\":0,\"src\":\"-:2\",\"status\":\"added\"}\n"
             "{\"ref\":1,\"src\":\"-:8\",\"status\":\"refused\",\"code\":\"call-parse\","
             "\"detail\":\"the end is missing\"}\n"
             "{\"ref\":2,\"src\":\"-:13\",\"status\":\"refused\",\"code\":\"call-type\","
             "\"detail\":\"no TYPE of call that is incoming, outgoing or missed\"}\n"
             "{\"ref\":3,\"src\":\"-:20\",\"status\":\"added\"}\n"
                 + summary(4, 2, 0, 2));
    QCOMPARE(client.run(backup).output, good + last);
}

void TestCallEntries::refusesATimeTooFarAhead()
{
    ClientProcess client;
    const auto stamp = [](int hours) {
        return QDateTime::currentDateTimeUtc()
                   .addSecs(hours * 3600)
                   .toString(text("yyyyMMddThhmmss"))
                   .toLatin1()
            + 'Z';
    };
    const auto outcome = client.run(add,
                                    callEntry("missed", "+15550100", 0, stamp(23))
                                        + callEntry("missed", "+15550100", 0, stamp(25))
                                        + callEntry("outgoing", "+15550100", 7200, stamp(23)));
    QCOMPARE(outcome.output,
             "{\"ref\":0,\"src\":\"-:1\",\"status\":\"added\"}\n"
             "{\"ref\":1,\"src\":\"-:7\",\"status\":\"refused\",\"code\":\"bad-time\","
             "\"detail\":\"no time, or none that can be\"}\n"
             "{\"ref\":2,\"src\":\"-:13\",\"status\":\"refused\",\"code\":\"call-parse\","
             "\"detail\":\"a duration that cannot be\"}\n"
                 + summary(3, 1, 0, 2));
}

void TestCallEntries::restoresABackupByteForByte_data()
{
    QTest::addColumn<QDate>("change");
    const QDate spring(2024, 3, 31);
    const QDate autumn(2024, 10, 27);
    for (const char *zone : {"Europe/Helsinki", "Asia/Kathmandu", "UTC"}) {
        QTest::newRow((QByteArray(zone) + " spring").constData()) << spring;
        QTest::newRow((QByteArray(zone) + " autumn").constData()) << autumn;
    }
    // Half an hour is changed there, in the other half of the year.
    QTest::newRow("Australia/Lord_Howe autumn") << QDate(2024, 4, 6);
    QTest::newRow("Australia/Lord_Howe spring") << QDate(2024, 10, 5);
}

// Each quarter of an hour of the day of a change and the days around, in calls of all kinds.
void TestCallEntries::restoresABackupByteForByte()
{
    QFETCH(QDate, change);
    const QByteArray zone = QByteArray(QTest::currentDataTag()).split(' ').first();
    QByteArray entries;
    QDateTime start(change.addDays(-1), QTime(0, 0), Qt::UTC);
    const auto stamp = [](const QDateTime &time) {
        return time.toString(text("yyyyMMddThhmmss")).toLatin1() + 'Z';
    };
    for (int i = 0; i < 3 * 96; ++i, start = start.addSecs(900)) {
        entries += callEntry("incoming", "+15550100", 3661, stamp(start.addSecs(3661)));
        entries += callEntry("outgoing", "+15550101", 3661, stamp(start));
        entries += callEntry("missed", "", 0, stamp(start));
    }
    ClientProcess first;
    first.environment.insert(text("TZ"), QString::fromLatin1(zone));
    QVERIFY(first.run(add, entries).output.endsWith(summary(864, 864, 0, 0)));
    const QByteArray once = first.run(backup).output;
    QCOMPARE(once, entries);
    ClientProcess second;
    second.environment.insert(text("TZ"), QString::fromLatin1(zone));
    QVERIFY(second.run(add, once).output.endsWith(summary(864, 864, 0, 0)));
    const QByteArray twice = second.run(backup).output;
    QCOMPARE(twice, entries);
    ClientProcess third; // the person has moved
    third.environment.insert(text("TZ"), text("America/St_Johns"));
    QVERIFY(third.run(add, twice).output.endsWith(summary(864, 864, 0, 0)));
    QCOMPARE(third.run(backup).output, entries);
    QCOMPARE(third.run(list).output, first.run(list).output);
    QVERIFY(third.run(add, entries).output.endsWith(summary(864, 0, 864, 0)));
}

void TestCallEntries::restoresThousandsOfCalls()
{
    QByteArray entries;
    const QDateTime start(QDate(2024, 7, 4), QTime(12, 0), Qt::UTC);
    const QList<QByteArray> types{"incoming", "outgoing", "missed"};
    for (int i = 0; i < 5000; ++i) {
        const QByteArray &type = types.at(i % 3);
        const int duration = type == "missed" ? 0 : i % 700;
        const QDateTime begun = start.addSecs(i / 2); // two begin in each second
        const QDateTime time = type == "incoming" ? begun.addSecs(duration) : begun;
        entries += callEntry(type, "+1555" + QByteArray::number(1000 + i % 100), duration,
                             time.toString(text("yyyyMMddThhmmss")).toLatin1() + 'Z');
    }
    ClientProcess client;
    const auto added = client.run(add, entries);
    QCOMPARE(added.exitCode, 0);
    QCOMPARE(added.output.count("\"status\":\"added\""), 5000);
    QVERIFY(added.output.endsWith(summary(5000, 5000, 0, 0)));
    QCOMPARE(client.run(backup).output, entries);
    QVERIFY(client.run(add, entries).output.endsWith(summary(5000, 0, 5000, 0)));
    QCOMPARE(client.run({text("calls"), text("wipe"), text("--yes")}).output,
             QByteArray("5000 call(s) deleted\n"));
}

QTEST_GUILESS_MAIN(TestCallEntries)
#include "tst_callentries.moc"
