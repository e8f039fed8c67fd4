// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

// "verify".
class TestVerify : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsEverything();
    void findsATextBehindByteOrderMarks();
    void tellsWhatIsMissing();
    void tellsWhatIsRefused();
    void countsRepeats_data();
    void countsRepeats();
    void comparesEachFileAnew();
    void readsCalls_data();
    void readsCalls();
    void agreesWithAddOverTheSamples();
    void tellsOfAFileThatCannotBeRead();
    void takesTheFolderOfTheMessages();
    void failsWhenThereIsNothingToLookFor_data();
    void failsWhenThereIsNothingToLookFor();
    void namesAndCountsWhatItPassesOver();
};

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
static const QByteArray other = vMessage("SENT", "20101103T142531Z", "+15550101", "Good bye");
static const QByteArray call = callEntry("incoming", "+15550100", 65, "20101103T142530Z");

static QStringList verify(const QStringList &more)
{
    return QStringList{text("verify"), text("-o"), text("ndjson")} + more;
}

void TestVerify::findsEverything()
{
    ClientProcess client;
    client.fill(hello + other);
    const QByteArray before = client.listed();
    const auto outcome =
        client.run({text("verify"), text("-")},
                   other + vMessage("INBOX", "20101103T142530Z", "0155 501-00", "Hello", "UNREAD"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output, QByteArray("2 read, 2 present, 0 missing, 0 refused, 0 failed\n"));
    QCOMPARE(client.listed(), before);
}

// Of which the library drops one in all that it stores.
void TestVerify::findsATextBehindByteOrderMarks()
{
    const QByteArray mark("\xEF\xBB\xBF");
    const QByteArray marked = vMessage("INBOX", "20101103T142530Z", "+15550100", mark + "Hello")
        + vMessage("INBOX", "20101103T142531Z", "+15550100", mark + mark + "Hello");
    ClientProcess client;
    client.fill(marked);
    const auto outcome = client.run({text("verify"), text("-")}, marked);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("2 read, 2 present, 0 missing, 0 refused, 0 failed\n"));
}

void TestVerify::tellsWhatIsMissing()
{
    ClientProcess client;
    client.fill(hello);
    const QByteArray before = client.listed();
    const auto outcome = client.run(verify({text("-")}), hello + other);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":1,\"src\":\"-:16\",\"status\":\"missing\"}\n"
                        "{\"summary\":{\"read\":2,\"present\":1,\"missing\":1,\"refused\":0,"
                        "\"failed\":0}}\n"));
    QCOMPARE(client.listed(), before);
    QCOMPARE(client.run({text("verify"), text("-q"), text("-")}, other).output,
             QByteArray("missing  -:1\n"));
}

void TestVerify::tellsWhatIsRefused()
{
    ClientProcess client;
    client.fill(hello);
    const auto outcome = client.run(
        verify({text("-")}), vMessage("DRAFTS", "20101103T142530Z", "+15550100", "Hi") + hello);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"src\":\"-:1\",\"status\":\"refused\",\"code\":\"sms-draft\","
                        "\"detail\":\"a draft, and drafts cannot be written\"}\n"
                        "{\"summary\":{\"read\":2,\"present\":1,\"missing\":0,\"refused\":1,"
                        "\"failed\":0}}\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: 1 not done (sms-draft): a draft, and drafts cannot be "
                        "written\n"));
}

void TestVerify::countsRepeats_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("two") << 2 << 0;
    QTest::newRow("three") << 3 << 0;
}

// The n-th equal message of a file is the n-th stored one.
void TestVerify::countsRepeats()
{
    QFETCH(int, stored);
    QFETCH(int, exitCode);
    ClientProcess client;
    client.fill(hello.repeated(stored));
    QCOMPARE(client.run(verify({text("-")}), hello + hello).exitCode, exitCode);
}

void TestVerify::comparesEachFileAnew()
{
    ClientProcess client;
    client.fill(hello);
    client.write(text("phone/a.vmg"), hello);
    client.write(text("phone/b.vmg"), hello);
    const auto outcome = client.run({text("verify"), client.filePath(text("phone"))});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("2 read, 2 present, 0 missing, 0 refused, 0 failed\n"));
    client.write(text("phone/c.vmg"), other + other);
    QCOMPARE(client.run({text("verify"), client.filePath(text("phone"))}).exitCode, 1);
}

void TestVerify::readsCalls_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("entries") << hello + call;
    QTest::newRow("android") << QByteArray(
        "<calls count=\"1\"><call number=\"+15550100\" duration=\"65\" date=\"1288794265000\" "
        "type=\"1\" /></calls>");
}

// An incoming entry names the end of the call, an Android backup its start.
void TestVerify::readsCalls()
{
    QFETCH(QByteArray, file);
    ClientProcess client;
    client.fill(hello);
    QCOMPARE(client.run(verify({text("-")}), file).exitCode, 1);
    QCOMPARE(client.run({text("calls"), text("add"), text("-")}, call).exitCode, 0);
    const auto outcome = client.run(verify({text("-")}), file);
    QVERIFY2(outcome.exitCode == 0, outcome.output);
}

// What "add" finds present or adds is there afterwards, and what it refuses is refused.
void TestVerify::agreesWithAddOverTheSamples()
{
    ClientProcess client;
    const QStringList files{text(SAMPLES_DIRECTORY), text(ANDROID_DIRECTORY)};
    const auto added = client.run(QStringList{text("add"), text("-o"), text("ndjson")} + files);
    const auto verified = client.run(verify(files));
    QCOMPARE(verified.exitCode, 1);
    QByteArray refused;
    for (const QByteArray &line : added.output.split('\n')) {
        if (line.contains("\"status\":\"refused\""))
            refused += line + '\n';
    }
    QVERIFY(!refused.isEmpty());
    QVERIFY2(verified.output.startsWith(refused + "{\"summary\":"), verified.output);
    QVERIFY2(verified.output.contains("\"missing\":0"), verified.output);
}

void TestVerify::tellsOfAFileThatCannotBeRead()
{
    ClientProcess client;
    client.fill(hello);
    client.workingDirectory = client.filePath(QString());
    const auto outcome = client.run({text("verify"), text("none.vmg")});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("refused  none.vmg  unreadable: No such file or directory\n"
                        "1 read, 0 present, 0 missing, 1 refused, 0 failed\n"));
}

void TestVerify::takesTheFolderOfTheMessages()
{
    ClientProcess client;
    client.fill(hello);
    const QByteArray nowhere = vMessage("", "20101103T142530Z", "+15550100", "Hello");
    QCOMPARE(client.run(verify({text("-")}), nowhere).exitCode, 1);
    QCOMPARE(client.run(verify({text("--folder"), text("inbox"), text("-")}), nowhere).exitCode, 0);
    QCOMPARE(client.run(verify({text("--folder"), text("my"), text("-")}), nowhere).exitCode, 1);
}

void TestVerify::failsWhenThereIsNothingToLookFor_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("told");
    QTest::addColumn<QByteArray>("passedOver");
    QTest::newRow("no bytes") << QStringList{text("-")} << QByteArray("korvasync: - is empty\n")
                              << QByteArray();
    QTest::newRow("empty file") << QStringList{text("empty.vmg")}
                                << QByteArray("korvasync: empty.vmg is empty\n") << QByteArray();
    QTest::newRow("empty backup") << QStringList{text("none.xml")}
                                  << QByteArray("korvasync: none.xml is empty\n") << QByteArray();
    QTest::newRow("empty folder") << QStringList{text("bare")} << QByteArray() << QByteArray();
    QTest::newRow("folder of other files")
        << QStringList{text("photos")}
        << QByteArray("korvasync: passed over: photos/1.jpg\n"
                      "korvasync: passed over: photos/more/messages.zip\n")
        << QByteArray(",\"passed over\":2");
}

// "Everything is there" would be said of nothing.
void TestVerify::failsWhenThereIsNothingToLookFor()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, told);
    QFETCH(QByteArray, passedOver);
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.fill(hello);
    client.write(text("empty.vmg"), QByteArray());
    client.write(text("none.xml"), "<smses count=\"0\"></smses>");
    client.write(text("photos/1.jpg"), "x");
    client.write(text("photos/more/messages.zip"), "x");
    QVERIFY(QDir(client.workingDirectory).mkdir(text("bare")));
    const auto outcome = client.run(verify(arguments));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors,
             told
                 + "korvasync: there were no messages or calls to look for; name the files "
                   "that were added\n");
    QCOMPARE(outcome.output,
             "{\"summary\":{\"read\":0,\"present\":0,\"missing\":0,\"refused\":0,\"failed\":0"
                 + passedOver + "}}\n");
}

void TestVerify::namesAndCountsWhatItPassesOver()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("phone/a.vmg"), hello);
    client.write(text("phone/a\nb.jpg"), "x");
    QVERIFY(QFile::link(text("a.vmg"), client.filePath(text("phone/link.vmg"))));
    const QByteArray told("korvasync: passed over: phone/a\xE2\x86\xB5"
                          "b.jpg\nkorvasync: passed over: phone/link.vmg\n");
    const auto added = client.run({text("add"), text("phone")});
    QCOMPARE(added.exitCode, 0);
    QCOMPARE(added.errors, told);
    QCOMPARE(added.output,
             QByteArray("added  1  phone/a.vmg:1\n"
                        "1 read, 1 added, 0 present, 0 refused, 0 failed, 2 passed over\n"));
    const auto verified = client.run({text("verify"), text("phone")});
    QCOMPARE(verified.exitCode, 0);
    QCOMPARE(verified.errors, told);
    QCOMPARE(verified.output,
             QByteArray("1 read, 1 present, 0 missing, 0 refused, 0 failed, 2 passed over\n"));
    QCOMPARE(client.run({text("verify"), text("-qq"), text("phone")}).errors, QByteArray());
}

QTEST_GUILESS_MAIN(TestVerify)
#include "tst_verify.moc"
