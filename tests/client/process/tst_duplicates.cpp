// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"

#include <QtTest/QTest>

#include <csignal>

// What counts as there already.
class TestDuplicates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsThePresentOneApart_data();
    void tellsThePresentOneApart();
    void takesSpellingsOfOneTextForOne_data();
    void takesSpellingsOfOneTextForOne();
    void keepsTrueRepeatsOfOneFile();
    void takesADoubledFolderOnce();
    void takesTheSameMessageOfTwoFilesOnce();
    void takesAPhoneInTwoFormsOnce_data();
    void takesAPhoneInTwoFormsOnce();
    void doesSoInADryRun();
    void completesWhatWasKilled();
    void addsAgainWhenTold();
    void refusesWhenTold();
    void comparesWithoutTheTimeOfTheClock_data();
    void comparesWithoutTheTimeOfTheClock();
    void addsEachOfAFileOnceWithTheTimeOfTheClock();
};

static QByteArray statusesOf(const ClientProcess::Outcome &outcome)
{
    QByteArray letters; // a added, p present, r refused, f failed
    for (const QByteArray &line : outcome.output.split('\n')) {
        const auto start = line.indexOf("\"status\":\"");
        if (start > 0)
            letters += line.at(start + 10);
    }
    return letters;
}

static QStringList add(const QStringList &more = {})
{
    return QStringList{text("add"), text("-o"), text("ndjson")} + more;
}

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");

void TestDuplicates::tellsThePresentOneApart_data()
{
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<QByteArray>("status");
    const QByteArray stamp("20101103T142530Z");
    QTest::newRow("same") << hello << QByteArray("p");
    QTest::newRow("unread") << vMessage("INBOX", stamp, "+15550100", "Hello", "UNREAD")
                            << QByteArray("p");
    QTest::newRow("national") << vMessage("INBOX", stamp, "0155 501-00", "Hello")
                              << QByteArray("p");
    QTest::newRow("local") << vMessage("INBOX", stamp, "(555) 01-00", "Hello") << QByteArray("p");
    QTest::newRow("too-short") << vMessage("INBOX", stamp, "550100", "Hello") << QByteArray("a");
    QTest::newRow("folder") << vMessage("MYFOLDERS", stamp, "+15550100", "Hello")
                            << QByteArray("a");
    QTest::newRow("second") << vMessage("INBOX", "20101103T142531Z", "+15550100", "Hello")
                            << QByteArray("a");
    QTest::newRow("text") << vMessage("INBOX", stamp, "+15550100", "Hello ") << QByteArray("a");
    QTest::newRow("words") << vMessage("INBOX", stamp, "hello", "Hello") << QByteArray("a");
}

void TestDuplicates::tellsThePresentOneApart()
{
    QFETCH(QByteArray, other);
    QFETCH(QByteArray, status);
    ClientProcess client;
    client.fill(hello);
    QCOMPARE(statusesOf(client.run(add(), other)), status);
}

// In quoted-printable a text can have any line ends.
static QByteArray quotedPrintable(const QByteArray &number, const QByteArray &encoded)
{
    return vMessage("INBOX", "20101103T142530Z", number, encoded)
        .replace("X-SMS;TYPE=TEXT;CHARSET=UTF-8:", "TEXT;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:");
}

void TestDuplicates::takesSpellingsOfOneTextForOne_data()
{
    QTest::addColumn<QByteArray>("other");
    const QByteArray bank("B\xC3\xA4nk");
    QTest::newRow("LF") << quotedPrintable(bank, "B=C3=A4r=0A=0ADachs");
    QTest::newRow("CR-LF") << quotedPrintable(bank, "B=C3=A4r=0D=0A=0D=0ADachs");
    QTest::newRow("CR") << quotedPrintable(bank, "B=C3=A4r=0D=0DDachs");
    QTest::newRow("raw") << vMessage("INBOX", "20101103T142530Z", bank, "B\xC3\xA4r\n\nDachs");
    QTest::newRow("mark") << vMessage("INBOX", "20101103T142530Z", bank,
                                      "\xEF\xBB\xBF"
                                      "B\xC3\xA4r\n\nDachs");
    QTest::newRow("marks") << vMessage("INBOX", "20101103T142530Z", bank,
                                       "\xEF\xBB\xBF\xEF\xBB\xBF"
                                       "B\xC3\xA4r\n\nDachs");
    QTest::newRow("NFD-text") << quotedPrintable(bank, "Ba=CC=88r=0A=0ADachs");
    QTest::newRow("NFD-word") << quotedPrintable("Ba\xCC\x88nk", "B=C3=A4r=0A=0ADachs");
}

// Each spelling stored once, and each found by all others.
void TestDuplicates::takesSpellingsOfOneTextForOne()
{
    QFETCH(QByteArray, other);
    const QByteArray plain =
        vMessage("INBOX", "20101103T142530Z", "B\xC3\xA4nk", "B\xC3\xA4r\n\nDachs");
    ClientProcess client;
    QCOMPARE(statusesOf(client.run(add(), other)), QByteArray("a"));
    QCOMPARE(statusesOf(client.run(add(), other)), QByteArray("p"));
    QCOMPARE(statusesOf(client.run(add(), plain)), QByteArray("p"));
}

void TestDuplicates::keepsTrueRepeatsOfOneFile()
{
    ClientProcess client;
    QCOMPARE(statusesOf(client.run(add(), hello + hello)), QByteArray("aa"));
    QCOMPARE(statusesOf(client.run(add(), hello + hello + hello)), QByteArray("ppa"));
    QCOMPARE(client.run(add({text("-q")}), hello + hello).output,
             QByteArray("{\"ref\":0,\"src\":\"-:1\",\"status\":\"present\",\"id\":1}\n"
                        "{\"ref\":1,\"src\":\"-:16\",\"status\":\"present\",\"id\":2}\n"));
}

void TestDuplicates::takesTheSameMessageOfTwoFilesOnce()
{
    ClientProcess client;
    const QString first = client.write(text("1.vmg"), hello + hello);
    const QString second = client.write(text("2.vmg"), hello + hello + hello);
    const auto outcome = client.run(add({first, second}));
    QCOMPARE(statusesOf(outcome), QByteArray("aappa"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("3\n"));
}

// A folder that holds an old copy of itself, true repeats included.
void TestDuplicates::takesADoubledFolderOnce()
{
    ClientProcess client;
    const QByteArray later = vMessage("SENT", "20101103T142531Z", "+15550100", "Bye");
    client.write(text("phone/1.vmg"), hello + later + hello);
    client.write(text("phone/copy/1.vmg"), hello + later + hello);
    const QString phone = client.filePath(text("phone"));
    QCOMPARE(statusesOf(client.run(add({phone}))), QByteArray("aaappp"));
    QCOMPARE(statusesOf(client.run(add({phone}))), QByteArray("pppppp"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("3\n"));
}

void TestDuplicates::takesAPhoneInTwoFormsOnce_data()
{
    QTest::addColumn<QStringList>("order");
    QTest::newRow("vMessages-first") << QStringList{text("phone.vmg"), text("phone.xml")};
    QTest::newRow("XML-first") << QStringList{text("phone.xml"), text("phone.vmg")};
}

// The programs of one phone: one wrote seconds, international numbers, composed letters and
// bare line feeds, the other milliseconds, national numbers, separate accents and CR LF.
void TestDuplicates::takesAPhoneInTwoFormsOnce()
{
    QFETCH(QStringList, order);
    ClientProcess client;
    const QByteArray repeated =
        vMessage("SENT", "20101103T142531Z", "+15550101", "K\xC3\xA4se?\nBrot?");
    client.write(text("phone.vmg"),
                 hello + repeated + repeated
                     + vMessage("OUTBOX", "20101103T142532Z", "InfoPost", "STOP"));
    const QByteArray repeatedElement =
        "<sms address=\"0155 501-01\" date=\"1288794331999\" type=\"2\" "
        "body=\"Ka&#776;se?&#13;&#10;Brot?\" read=\"1\"/>\n";
    client.write(text("phone.xml"),
                 "<smses count=\"4\">\n"
                 "<sms address=\"5550100\" date=\"1288794330123\" type=\"1\" body=\"Hello\" "
                 "read=\"1\"/>\n"
                     + repeatedElement + repeatedElement
                     + "<sms address=\"InfoPost\" date=\"1288794332000\" type=\"5\" "
                       "body=\"STOP\" read=\"1\"/>\n</smses>\n");
    QCOMPARE(statusesOf(
                 client.run(add({client.filePath(order.first()), client.filePath(order.last())}))),
             QByteArray("aaaapppp"));
    QCOMPARE(statusesOf(client.run(add({client.filePath(text("."))}))), QByteArray("pppppppp"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("4\n"));
}

void TestDuplicates::doesSoInADryRun()
{
    ClientProcess client;
    const QString first = client.write(text("1.vmg"), hello + hello);
    const QString second = client.write(text("2.vmg"), hello + hello + hello);
    QCOMPARE(statusesOf(client.run(add({text("-n"), first, second}))), QByteArray("aappa"));
}

// Each round is killed once it has written a chunk, and has not had its whole input by then. Every
// message is there twice.
void TestDuplicates::completesWhatWasKilled()
{
    constexpr int rounds = 5;
    constexpr int perRound = 60;
    constexpr int count = rounds * perRound;
    QByteArray messages;
    QByteArray begun[rounds]; // of which each round adds the last ones
    for (int i = 0; i < count; ++i) {
        messages += vMessage("INBOX", "20101103T1425" + QByteArray::number(10 + i / 2 % 50) + "Z",
                             "+15550100", "Number " + QByteArray::number(i / 2));
        begun[i / perRound] = messages;
    }
    ClientProcess client;
    for (int round = 0; round < rounds; ++round) {
        BusyClient busy(client, add({text("--chunk"), text("10"), text("-")}), begun[round],
                        round * perRound + 1);
        QVERIFY(busy.isBusy());
        QVERIFY(busy.endBySignal(SIGKILL));
        QCOMPARE(busy.process.exitStatus(), QProcess::CrashExit);
    }
    const QByteArray statuses = statusesOf(client.run(add(), messages));
    QVERIFY2(statuses.count('p') >= 50, statuses.constData());
    QCOMPARE(statuses.count('p') + statuses.count('a'), count);
    QCOMPARE(statusesOf(client.run(add(), messages)), QByteArray(count, 'p'));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("300\n"));
}

void TestDuplicates::addsAgainWhenTold()
{
    ClientProcess client;
    client.fill(hello);
    QCOMPARE(statusesOf(client.run(add({text("--on-duplicate"), text("add")}), hello)),
             QByteArray("a"));
    QCOMPARE(client.run({text("list"), text("--ids")}).output, QByteArray("1\n2\n"));
}

void TestDuplicates::refusesWhenTold()
{
    ClientProcess client;
    client.fill(hello);
    const auto outcome =
        client.run(add({text("--on-duplicate"), text("fail")}),
                   hello + vMessage("INBOX", "20101103T142531Z", "+15550100", "Hello"));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"ref\":0,\"src\":\"-:1\",\"status\":\"refused\",\"id\":1,\"code\":\"duplicate\","
            "\"detail\":\"there already\"}\n"
            "{\"ref\":1,\"src\":\"-:16\",\"status\":\"added\",\"id\":2}\n"
            "{\"summary\":{\"read\":2,\"added\":1,\"present\":0,\"refused\":1,\"failed\":0}}\n"));
}

void TestDuplicates::comparesWithoutTheTimeOfTheClock_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("statuses");
    const QByteArray timeless = vMessage("INBOX", "", "+15550100", "Hello");
    QTest::newRow("same") << timeless << QByteArray("p");
    QTest::newRow("a time that cannot be")
        << vMessage("INBOX", "yesterday", "0155 501-00", "Hello", "UNREAD") << QByteArray("p");
    QTest::newRow("android") << QByteArray("<smses><sms address=\"+15550100\" date=\"null\" "
                                           "type=\"1\" body=\"Hello\" read=\"1\"/></smses>")
                             << QByteArray("p");
    QTest::newRow("twice") << timeless + timeless << QByteArray("pa");
    QTest::newRow("its own time is another")
        << vMessage("INBOX", "20101103T142531Z", "+15550100", "Hello") << QByteArray("a");
    QTest::newRow("behind one with a time") << hello + timeless << QByteArray("pa");
    QTest::newRow("folder") << vMessage("SENT", "", "+15550100", "Hello") << QByteArray("a");
    QTest::newRow("number") << vMessage("INBOX", "", "+15550101", "Hello") << QByteArray("a");
    QTest::newRow("text") << vMessage("INBOX", "", "+15550100", "Hello ") << QByteArray("a");
}

// One that got the time of the clock had another one when it was added before.
void TestDuplicates::comparesWithoutTheTimeOfTheClock()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, statuses);
    ClientProcess client;
    client.fill(hello);
    const QStringList now{text("--on-bad-time"), text("now")};
    QCOMPARE(statusesOf(client.run(add(now + QStringList{text("--dry-run")}), input)), statuses);
    QCOMPARE(statusesOf(client.run(add(now), input)), statuses);
    QCOMPARE(statusesOf(client.run(add(now), input)), QByteArray(statuses.size(), 'p'));
}

void TestDuplicates::addsEachOfAFileOnceWithTheTimeOfTheClock()
{
    ClientProcess client;
    const QByteArray timeless = vMessage("INBOX", "", "+15550100", "Hello");
    const QString one = client.write(text("1.vmg"), hello + timeless + timeless);
    const QString two = client.write(text("2.vmg"), timeless + hello);
    const QStringList files{text("--on-bad-time"), text("now"), one, two};
    QCOMPARE(statusesOf(client.run(add(files + QStringList{text("--dry-run")}))),
             QByteArray("aaapp"));
    QCOMPARE(statusesOf(client.run(add(files))), QByteArray("aaapp"));
    QCOMPARE(statusesOf(client.run(add(files))), QByteArray("ppppp"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("3\n"));
}

QTEST_GUILESS_MAIN(TestDuplicates)
#include "tst_duplicates.moc"
