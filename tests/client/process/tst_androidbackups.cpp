// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

// Backups of Android phones: what becomes of them, alone and among other files.
class TestAndroidBackups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsWhatABackupHolds_data();
    void addsWhatABackupHolds();
    void findsABackupPresent();
    void takesACallOfTheStoreForADuplicate();
    void addsCallsAlone();
    void takesBackupsFromAFolder();
    void readsOnlyTheFormThatIsSaid_data();
    void readsOnlyTheFormThatIsSaid();
    void foretellsABackup();
    void keepsRejectsOfAllKinds();
    void findsMendedRejectsBehindCutOnes();
    void knowsMessagesOfMyFolderAgain();
    void knowsTextsThatXmlCannotHoldAgain();
    void knowsAnExportAgainInTheSameRun();
    void readsLongTextsOfReferences_data();
    void readsLongTextsOfReferences();
    void refusesABackupOfUnknownElements();
    void keepsRejectsOfCalls();
    void writesInChunksInTheOrderOfTheInput();
};

namespace {

const QStringList add{text("add"), text("-o"), text("ndjson")};
const QStringList addCalls{text("calls"), text("add"), text("-o"), text("ndjson")};
const QStringList listCalls{text("calls"), text("-o"), text("ndjson")};

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

QByteArray sms(const QByteArray &type, const QByteArray &milliseconds, const QByteArray &body)
{
    return "<sms address=\"+15550100\" date=\"" + milliseconds + "\" type=\"" + type + "\" body=\""
        + body + "\" read=\"1\" />\r\n";
}

QByteArray call(const QByteArray &type)
{
    return "<call number=\"+15550100\" duration=\"65\" date=\"1288794330000\" type=\"" + type
        + "\" presentation=\"1\" />\r\n";
}

QByteArray summary(int read, int added, int present, int refused)
{
    return "{\"summary\":{\"read\":" + QByteArray::number(read)
        + ",\"added\":" + QByteArray::number(added) + ",\"present\":" + QByteArray::number(present)
        + ",\"refused\":" + QByteArray::number(refused) + ",\"failed\":0}}\n";
}

} // namespace

void TestAndroidBackups::addsWhatABackupHolds_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names =
        QDir(QStringLiteral(ANDROID_DIRECTORY)).entryList({text("*.xml")}, QDir::Files, QDir::Name);
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name.chopped(4);
}

void TestAndroidBackups::addsWhatABackupHolds()
{
    QFETCH(QString, name);
    ClientProcess client;
    client.workingDirectory = QStringLiteral(ANDROID_DIRECTORY);
    const auto outcome = client.run(add + QStringList{name + text(".xml")});
    QCOMPARE(outcome.exitCode, outcome.output.contains("\"refused\":0") ? 0 : 1);
    const QByteArray found = outcome.output + client.listed() + client.run(listCalls).output;
    QCOMPARE(
        found.split('\n'),
        read(client.workingDirectory + QLatin1Char('/') + name + text(".expected")).split('\n'));
}

void TestAndroidBackups::findsABackupPresent()
{
    ClientProcess client;
    client.workingDirectory = QStringLiteral(ANDROID_DIRECTORY);
    const QStringList twice{text("calls-among-messages.xml"), text("equal-messages.xml")};
    QVERIFY(client.run(add + twice).output.endsWith(summary(8, 7, 1, 0)));
    const QByteArray before = client.listed() + client.run(listCalls).output;
    QVERIFY(client.run(add + twice).output.endsWith(summary(8, 0, 8, 0)));
    QCOMPARE(client.listed() + client.run(listCalls).output, before);
}

void TestAndroidBackups::takesACallOfTheStoreForADuplicate()
{
    ClientProcess client;
    client.run(addCalls, callEntry("incoming", "+15550100", 65, "20101103T142635Z"));
    QCOMPARE(client.run(add, call("1") + call("1") + call("3")).output,
             QByteArray("{\"ref\":0,\"src\":\"-:1\",\"status\":\"present\"}\n"
                        "{\"ref\":1,\"src\":\"-:2\",\"status\":\"added\"}\n"
                        "{\"ref\":2,\"src\":\"-:3\",\"status\":\"added\"}\n")
                 + summary(3, 2, 1, 0));
}

void TestAndroidBackups::addsCallsAlone()
{
    ClientProcess client;
    const auto outcome = client.run(
        addCalls,
        "<calls>\r\n" + call("2") + sms("1", "1288794330000", "Hello") + "<mms date=\"1\" />\r\n"
            + callEntry("missed", "+15550101", 0, "20101103T142530Z") + "</calls>\r\n");
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"src\":\"-:2\",\"status\":\"added\"}\n"
                        "{\"ref\":1,\"src\":\"-:3\",\"status\":\"refused\",\"code\":\"foreign-"
                        "object\",\"detail\":\"a message, which korvasync add takes\"}\n"
                        "{\"ref\":2,\"src\":\"-:4\",\"status\":\"refused\",\"code\":\"foreign-"
                        "object\",\"detail\":\"a message, which korvasync add takes\"}\n"
                        "{\"ref\":3,\"src\":\"-:5\",\"status\":\"added\"}\n")
                 + summary(4, 2, 0, 2));
    QCOMPARE(client.run(listCalls).output,
             QByteArray("{\"type\":\"outgoing\",\"number\":\"+15550100\",\"duration\":65,"
                        "\"time\":\"2010-11-03T14:25:30Z\"}\n"
                        "{\"type\":\"missed\",\"number\":\"+15550101\",\"duration\":0,"
                        "\"time\":\"2010-11-03T14:25:30Z\"}\n"));
}

void TestAndroidBackups::takesBackupsFromAFolder()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("old/sms.xml"),
                 "<smses>" + sms("1", "1288794330000", "Hello") + call("1") + "</smses>");
    client.write(text("old/a.vmg"), vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello"));
    QCOMPARE(client.run(add + QStringList{text("old")}).output,
             QByteArray("{\"ref\":0,\"src\":\"old/a.vmg:1\",\"status\":\"added\",\"id\":1}\n"
                        "{\"ref\":1,\"src\":\"old/sms.xml:1\",\"status\":\"present\",\"id\":1}\n"
                        "{\"ref\":2,\"src\":\"old/sms.xml:2\",\"status\":\"added\"}\n")
                 + summary(3, 2, 1, 0));
}

void TestAndroidBackups::readsOnlyTheFormThatIsSaid_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray message = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
    const QByteArray backup = "<smses>" + sms("1", "1288794330000", "Hello") + "</smses>";
    const QByteArray entry = callEntry("missed", "+15550101", 0, "20101103T142530Z");
    const auto from = [](const QStringList &command, const char *form) {
        return command + QStringList{text("--from"), text(form)};
    };
    const QByteArray added = "\"status\":\"added\"";
    QTest::newRow("auto-vmsg") << from(add, "auto") << message << 0 << added;
    QTest::newRow("auto-xml") << from(add, "auto") << backup << 0 << added;
    QTest::newRow("vmsg") << from(add, "vmsg") << message << 0 << added;
    QTest::newRow("xml") << from(add, "android-xml") << backup << 0 << added;
    QTest::newRow("vmsg-wrong") << from(add, "vmsg") << backup << 1
                                << QByteArray("\"code\":\"sms-parse\",\"detail\":\"not a whole "
                                              "vMessage\"");
    QTest::newRow("xml-wrong") << from(add, "android-xml") << message << 1
                               << QByteArray("\"code\":\"sms-parse\",\"detail\":\"not an Android "
                                             "backup, as --from says\"");
    QTest::newRow("unknown") << from(add, "csv") << message << 2 << QByteArray();
    QTest::newRow("entries") << from(addCalls, "entries") << entry << 0 << added;
    QTest::newRow("entries-wrong") << from(addCalls, "entries") << call("1") << 1
                                   << QByteArray("\"code\":\"call-parse\",\"detail\":\"not a "
                                                 "whole call-history entry\"");
    QTest::newRow("calls-xml") << from(addCalls, "android-xml") << call("1") << 0 << added;
    QTest::newRow("calls-unknown") << from(addCalls, "vmsg") << entry << 2 << QByteArray();
}

void TestAndroidBackups::readsOnlyTheFormThatIsSaid()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, input);
    ClientProcess client;
    const auto outcome = client.run(arguments, input);
    QTEST(outcome.exitCode, "exitCode");
    QFETCH(QByteArray, expected);
    QVERIFY2(outcome.output.contains(expected), outcome.output);
}

void TestAndroidBackups::foretellsABackup()
{
    ClientProcess client;
    const QByteArray input = sms("1", "1288794330000", "Hello") + call("1") + call("4");
    const auto outcome = client.run(add + QStringList{text("-n")}, input + input);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.output.endsWith(summary(6, 4, 0, 2)));
    QVERIFY(!QFile::exists(client.store()));
}

// What was refused of all kinds comes back whole, each behind its reason, and what is mended
// is added although its neighbours are not.
void TestAndroidBackups::keepsRejectsOfAllKinds()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    const QByteArray timeless = vMessage("INBOX", "", "+15550100", "no time");
    const QByteArray broken("<sms address=\"+15550100\" body=\"He said \"no\"\" />");
    const QByteArray mms("<mms date=\"1288794330000\"><parts>\n<part text=\"a\" /></parts></mms>");
    const QByteArray foreign("BEGIN:BMSG\r\nVERSION:1.0\r\nEND:BMSG\r\n");
    client.write(text("a.vmg"), timeless + foreign);
    client.write(text("b.xml"),
                 "<smses>\r\n" + sms("3", "1288794330000", "draft") + broken + "\r\n" + mms + "\r\n"
                     + call("4") + "</smses>");
    client.write(text("note.txt"), "Hello\n");
    client.write(text("z.vmg"), timeless);
    const auto outcome = client.run(add + QStringList{text("--rejects"), text("r.txt"), text(".")});
    QCOMPARE(outcome.exitCode, 1);
    const QByteArray noTime("bad-time: no time, or none that can be; --on-bad-time now takes the "
                            "time of the clock\r\n");
    const QByteArray rejects = "# ./a.vmg:1: " + noTime + timeless
        + "# ./a.vmg:15: foreign-object: not a text message but an object that begins with "
          "BEGIN:BMSG\r\n"
        + foreign + "# ./b.xml:2: sms-draft: a draft, and drafts cannot be written\r\n"
        + sms("3", "1288794330000", "draft") + "# ./b.xml:3: sms-parse: not a whole sms element\r\n"
        + broken + "\r\n# ./b.xml:4: mms-not-supported: a multimedia message\r\n" + mms
        + "\r\n# ./b.xml:6: call-type: a voice mail, which is no call\r\n" + call("4").trimmed()
        + "\r\n# ./note.txt:1: sms-parse: not a whole vMessage\r\nHello\n# ./z.vmg:1: " + noTime
        + timeless;
    QCOMPARE(read(client.filePath(text("r.txt"))), rejects);

    QByteArray mended = rejects;
    mended.replace("type=\"3\"", "type=\"1\"").replace("type=\"4\"", "type=\"1\"");
    const auto again = client.run(add, mended);
    QVERIFY2(again.output.contains("\"src\":\"-:21\",\"status\":\"added\",\"id\":1"), again.output);
    QVERIFY2(again.output.endsWith(summary(7, 2, 0, 5)), again.output);
}

void TestAndroidBackups::findsMendedRejectsBehindCutOnes()
{
    ClientProcess client;
    const QByteArray message = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
    const QByteArray cut = message.left(message.indexOf("END:VBODY"));
    const auto outcome = client.run(
        add,
        "# a:1: sms-parse: a cut one, so that's what it is\r\n" + cut
            + "# a:2: bad-time: mended\r\n" + sms("1", "1288794330000", "one")
            + "# a:3: sms-parse: cut\r\n<sms body=\"two\r\n# a:4: bad-time: that's whole\r\n"
            + message
            + "# a:5: call-parse: cut\r\nBEGIN:VCALLHISTENTRY\r\n# a:6: call-type: mended\r\n"
            + call("1") + "# a:7: sms-parse: cut\r\n" + cut + "# a:8: call-type: mended\r\n"
            + call("2"));
    QCOMPARE(
        outcome.output,
        QByteArray("{\"ref\":0,\"src\":\"-:2\",\"status\":\"refused\",\"code\":\"sms-parse\","
                   "\"detail\":\"END:VBODY is missing; BEGIN:VBODY is in line 12\"}\n"
                   "{\"ref\":1,\"src\":\"-:15\",\"status\":\"added\",\"id\":1}\n"
                   "{\"ref\":2,\"src\":\"-:17\",\"status\":\"refused\",\"code\":\"sms-parse\","
                   "\"detail\":\"not a whole sms element\"}\n"
                   "{\"ref\":3,\"src\":\"-:19\",\"status\":\"added\",\"id\":2}\n"
                   "{\"ref\":4,\"src\":\"-:35\",\"status\":\"refused\",\"code\":\"foreign-object\","
                   "\"detail\":\"a call, which korvasync calls add takes\"}\n"
                   "{\"ref\":5,\"src\":\"-:37\",\"status\":\"added\"}\n"
                   "{\"ref\":6,\"src\":\"-:39\",\"status\":\"refused\",\"code\":\"sms-parse\","
                   "\"detail\":\"END:VBODY is missing; BEGIN:VBODY is in line 49\"}\n"
                   "{\"ref\":7,\"src\":\"-:52\",\"status\":\"added\"}\n")
            + summary(8, 4, 0, 4));
}

void TestAndroidBackups::knowsMessagesOfMyFolderAgain()
{
    ClientProcess client;
    const QByteArray stamp("20101103T142530Z");
    client.fill(vMessage("MYFOLDERS", stamp, "+15550100", "both")
                + vMessage("INBOX", stamp, "+15550100", "both")
                + vMessage("MYFOLDERS", stamp, "+15550100", "mine"));
    const QByteArray before = client.listed();
    const QByteArray exported = client.run({text("list"), text("-o"), text("android-xml")}).output;
    const auto again = client.run(add, exported);
    QVERIFY2(again.output.endsWith(summary(3, 0, 3, 0)), again.output);
    QCOMPARE(client.listed(), before);
    QCOMPARE(client.run({text("verify"), text("-")}, exported).exitCode, 0);

    // A true repeat is one message more, once.
    const QByteArray repeat =
        exported + sms("1", "1288794330000", "mine") + sms("1", "1288794330000", "mine");
    QVERIFY(client.run(add, repeat).output.endsWith(summary(5, 2, 3, 0)));
    QVERIFY(client.run(add, repeat).output.endsWith(summary(5, 0, 5, 0)));
}

// XML holds no control characters, so they go out as U+FFFD.
void TestAndroidBackups::knowsTextsThatXmlCannotHoldAgain()
{
    ClientProcess client;
    const QByteArray stamp("20101103T142530Z");
    const QByteArray given = vMessage("INBOX", stamp, "+15550100", "a\x07 b")
        + vMessage("INBOX", stamp, "+15550100", "a\x08 b")
        + vMessage("MYFOLDERS", stamp, "+15550100", "\x1B[1m")
        + vMessage("SENT", stamp, "+15550100", "\xEF\xBF\xBF");
    client.fill(given);
    const QByteArray before = client.listed();
    const QByteArray exported = client.run({text("list"), text("-o"), text("android-xml")}).output;
    QCOMPARE(exported.count("\xEF\xBF\xBD"), 4);
    const auto again = client.run(add, exported);
    QVERIFY2(again.output.endsWith(summary(4, 0, 4, 0)), again.output);
    QCOMPARE(client.listed(), before);
    QCOMPARE(client.run({text("verify"), text("-")}, exported).exitCode, 0);

    // What has such a text itself is another message, and so is one more of it.
    const QByteArray own = vMessage("INBOX", stamp, "+15550100", "a\xEF\xBF\xBD b");
    QVERIFY(client.run(add + QStringList{text("-n")}, own).output.endsWith(summary(1, 1, 0, 0)));
    const QByteArray third = exported + sms("1", "1288794330000", "a\xEF\xBF\xBD b");
    QVERIFY(client.run(add, third).output.endsWith(summary(5, 1, 4, 0)));
    QVERIFY(client.run(add, third).output.endsWith(summary(5, 0, 5, 0)));
}

void TestAndroidBackups::knowsAnExportAgainInTheSameRun()
{
    ClientProcess client;
    const QByteArray message = vMessage("MYFOLDERS", "20101103T142530Z", "+15550100", "a\x07 b");
    const QString first = client.write(text("first.vmsg"), message);
    const QString second =
        client.write(text("second.xml"), sms("1", "1288794330000", "a\xEF\xBF\xBD b"));
    for (const bool isDry : {true, false}) {
        const QStringList options = isDry ? QStringList{text("-n")} : QStringList();
        const auto outcome = client.run(add + options + QStringList{first, second});
        QVERIFY2(outcome.output.endsWith(summary(2, 1, 1, 0)), outcome.output);
    }
    QCOMPARE(client.listed().count('\n'), 1);
}

void TestAndroidBackups::readsLongTextsOfReferences_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QByteArray>("body");
    constexpr int count = 1000000;
    QTest::newRow("bare") << "body=\"" + QByteArray(count, '&') + '"' << QByteArray(count, '&');
    QTest::newRow("named") << "body=\"" + QByteArray("&amp;").repeated(count) + '"'
                           << QByteArray(count, '&');
    QTest::newRow("numeric") << "body=\"" + QByteArray("&#97;").repeated(count) + '"'
                             << QByteArray(count, 'a');
    QByteArray others;
    for (int i = 0; i < count / 10; ++i)
        others += 'a' + QByteArray::number(i) + "=\"\" ";
    QTest::newRow("attributes") << others + "body=\"b\"" << QByteArray("b");
}

// What takes the square of the time for these takes hours.
void TestAndroidBackups::readsLongTextsOfReferences()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QByteArray, body);
    ClientProcess client;
    const auto outcome = client.run(add + QStringList{text("-q")},
                                    "<sms address=\"+15550100\" date=\"1288794330000\" type=\"1\" "
                                        + attributes + " />");
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"src\":\"-:1\",\"status\":\"added\",\"id\":1}\n"));
    QVERIFY(client.listed().endsWith("\"body\":\"" + body + "\"}\n"));
}

void TestAndroidBackups::refusesABackupOfUnknownElements()
{
    ClientProcess client;
    const auto outcome = client.run(add, "<smses count=\"1\"><note body=\"a\" /></smses>");
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.output.endsWith(summary(1, 0, 0, 1)), outcome.output);
}

void TestAndroidBackups::keepsRejectsOfCalls()
{
    ClientProcess client;
    const QString rejects = client.filePath(text("r.txt"));
    const QByteArray lost = callEntry("lost", "+15550100", 0, "20101103T142530Z");
    const auto outcome =
        client.run(addCalls + QStringList{text("--rejects"), rejects}, lost + call("9"));
    QCOMPARE(outcome.exitCode, 1);
    const QByteArray reason("call-type: no TYPE of call that is incoming, outgoing or missed\r\n");
    QCOMPARE(read(rejects), "# -:1: " + reason + lost + "# -:7: " + reason + call("9"));
}

void TestAndroidBackups::writesInChunksInTheOrderOfTheInput()
{
    ClientProcess client;
    QByteArray input;
    for (int i = 0; i < 8; ++i) {
        const QByteArray number = QByteArray::number(i);
        input += i % 3 == 1 ? call("1") : sms("1", "128879433" + number + "000", "no. " + number);
    }
    const auto outcome = client.run(add + QStringList{text("--chunk"), text("3")}, input);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.endsWith(summary(8, 8, 0, 0)), outcome.output);
    const QList<QByteArray> lines = outcome.output.split('\n');
    for (int i = 0; i < 8; ++i) {
        const QByteArray start = "{\"ref\":" + QByteArray::number(i)
            + ",\"src\":\"-:" + QByteArray::number(i + 1) + "\",\"status\":\"added\"";
        QVERIFY2(lines.at(i).startsWith(start), lines.at(i));
        QCOMPARE(lines.at(i).contains("\"id\":"), i % 3 != 1);
    }
}

QTEST_GUILESS_MAIN(TestAndroidBackups)
#include "tst_androidbackups.moc"
