// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtTest/QTest>

#include <cstdio>

// The options of "add", its results and what it leaves behind.
class TestAdd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsTheSourceOfEachMessage();
    void printsResultsForPeople();
    void refusesWhatIsCutAndGoesOn();
    void readsStandardInputWithoutArguments();
    void hasNothingToDoForAnEmptyFile();
    void goesOnAfterAnUnreadableFile();
    void readsAFileWhoseNameIsNoText();
    void putsMessagesWithoutAFolderWhereItIsTold();
    void refusesDraftsAlsoByOption();
    void takesTheClockForABadTime();
    void marksAllAsRead();
    void writesInChunksInTheOrderOfTheInput();
    void keepsRejectsThatCanBeMended();
    void readsItsOwnRejectsWhileReplacingThem();
    void writesNothingInADryRun();
    void addsTwentyThousandMessages();
    void showsProgressWhenAsked();
};

static const QByteArray good = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");

static QStringList add(const QStringList &more = {})
{
    return QStringList{text("add"), text("-o"), text("ndjson")} + more;
}

void TestAdd::tellsTheSourceOfEachMessage()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    client.write(text("old/b.vmg"),
                 "some rubbish\n\n" + good + "\n"
                     + vMessage("SENT", "20101103T142531Z", "+15550100", "Hello"));
    client.write(text("old/a.vmg"), vMessage("DRAFTS", "20101103T142530Z", "+15550100", "Hel"));
    const auto outcome = client.run(add({text("old")}));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"ref\":0,\"src\":\"old/a.vmg:1\",\"status\":\"refused\",\"code\":\"sms-draft\","
            "\"detail\":\"a draft, and drafts cannot be written\"}\n"
            "{\"ref\":1,\"src\":\"old/b.vmg:3\",\"status\":\"added\",\"id\":1}\n"
            "{\"ref\":2,\"src\":\"old/b.vmg:19\",\"status\":\"added\",\"id\":2}\n"
            "{\"summary\":{\"read\":3,\"added\":2,\"present\":0,\"refused\":1,\"failed\":0}}\n"));
    QCOMPARE(
        outcome.errors,
        QByteArray("korvasync: 1 not done (sms-draft): a draft, and drafts cannot be written\n"));
}

void TestAdd::printsResultsForPeople()
{
    ClientProcess client;
    const auto outcome =
        client.run({text("add")}, good + vMessage("", "20101103T142530Z", "+15550100", "x"));
    QCOMPARE(outcome.output,
             QByteArray("added  1  -:1\n"
                        "refused  -:16  sms-no-folder: no known folder; --folder names one\n"
                        "2 read, 1 added, 0 present, 1 refused, 0 failed\n"));
}

void TestAdd::refusesWhatIsCutAndGoesOn()
{
    ClientProcess client;
    const QByteArray cut = good.left(good.indexOf("lo\r\nEND:VBODY"));
    const auto outcome = client.run(
        add(), cut + "\r\n" + vMessage("INBOX", "20101103T142531Z", "+15550101", "whole"));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"ref\":0,\"src\":\"-:1\",\"status\":\"refused\",\"code\":\"sms-parse\","
            "\"detail\":\"END:VBODY is missing; BEGIN:VBODY is in line 11\"}\n"
            "{\"ref\":1,\"src\":\"-:13\",\"status\":\"added\",\"id\":1}\n"
            "{\"summary\":{\"read\":2,\"added\":1,\"present\":0,\"refused\":1,\"failed\":0}}\n"));
}

void TestAdd::readsStandardInputWithoutArguments()
{
    ClientProcess client;
    QCOMPARE(client.run({text("add"), text("-q")}, good).output, QByteArray("added  1  -:1\n"));
    QCOMPARE(client.run({text("add"), text("-q"), text("-")}, good).output,
             QByteArray("present  1  -:1\n"));
}

void TestAdd::hasNothingToDoForAnEmptyFile()
{
    ClientProcess client;
    const QString path = client.write(text("empty.vmg"), "");
    const auto outcome = client.run(add({path}));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"summary\":{\"read\":0,\"added\":0,\"present\":0,\"refused\":0,\"failed\":0}}\n"));
    QVERIFY(outcome.errors.endsWith("empty.vmg is empty\n"));
    QVERIFY(!QFile::exists(client.store()));
}

void TestAdd::goesOnAfterAnUnreadableFile()
{
    ClientProcess client;
    client.workingDirectory = client.filePath(QString());
    const QString secret = client.write(text("in/secret.vmg"), good);
    client.write(text("in/z.vmg"), good);
    QVERIFY(QFile::setPermissions(secret, QFile::Permissions()));
    // Root can read everything, so the client runs as somebody else.
    QVERIFY(QFile::setPermissions(client.filePath(QString()),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                      | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther));
    const auto outcome =
        client.runProgram(text("setpriv"),
                          {text("--reuid=65534"), text("--regid=65534"), text("--clear-groups"),
                           text(KORVASYNC_CLIENT), text("--store"), text("store"), text("add"),
                           text("-o"), text("ndjson"), text("in"), text("missing.vmg")});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"ref\":0,\"src\":\"in/secret.vmg\",\"status\":\"refused\",\"code\":\"unreadable\","
            "\"detail\":\"Permission denied\"}\n"
            "{\"ref\":1,\"src\":\"in/z.vmg:1\",\"status\":\"added\",\"id\":1}\n"
            "{\"ref\":2,\"src\":\"missing.vmg\",\"status\":\"refused\",\"code\":\"unreadable\","
            "\"detail\":\"No such file or directory\"}\n"
            "{\"summary\":{\"read\":3,\"added\":1,\"present\":0,\"refused\":2,\"failed\":0}}\n"));
}

void TestAdd::readsAFileWhoseNameIsNoText()
{
    ClientProcess client;
    client.environment.insert(text("LC_ALL"), text("C.UTF-8"));
    client.workingDirectory = client.filePath(QString());
    client.write(text("in/z.vmg"), good);
    const QByteArray odd = QFile::encodeName(client.filePath(text("in/"))) + "\xE4.vmg";
    QVERIFY(std::rename(QFile::encodeName(client.write(text("in/a.vmg"), good)).constData(),
                        odd.constData())
            == 0);
    const auto outcome = client.run(add({text("in")}));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(
        outcome.output,
        QByteArray(
            "{\"ref\":0,\"src\":\"in/z.vmg:1\",\"status\":\"added\",\"id\":1}\n"
            "{\"ref\":1,\"src\":\"in/?.vmg:1\",\"status\":\"present\",\"id\":1}\n"
            "{\"summary\":{\"read\":2,\"added\":1,\"present\":1,\"refused\":0,\"failed\":0}}\n"));
    const auto named = client.runProgram(
        text("bash"),
        {text("-c"),
         text("exec " KORVASYNC_CLIENT " --store %1 add -q in/$'\\xE4'.vmg").arg(client.store())});
    QCOMPARE(named.output, QByteArray("present  1  in/?.vmg:1\n"));
    QCOMPARE(named.exitCode, 0);
    QVERIFY(std::remove(odd.constData()) == 0); // the folder of the test cannot
}

void TestAdd::putsMessagesWithoutAFolderWhereItIsTold()
{
    ClientProcess client;
    const auto outcome = client.run(add({text("--folder"), text("my"), text("-q")}),
                                    vMessage("", "20101103T142530Z", "+15550100", "no box") + good);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(client.listed(),
             QByteArray("{\"id\":1,\"folder\":\"my\",\"number\":\"+15550100\",\"time\":\"2010-11-"
                        "03T14:25:30Z\","
                        "\"read\":true,\"body\":\"no box\"}\n"
                        "{\"id\":2,\"folder\":\"inbox\",\"number\":\"+15550100\",\"time\":\"2010-"
                        "11-03T14:25:30Z\","
                        "\"read\":true,\"body\":\"Hello\"}\n"));
}

void TestAdd::refusesDraftsAlsoByOption()
{
    ClientProcess client;
    const auto outcome = client.run(add({text("--folder"), text("drafts")}),
                                    vMessage("", "20101103T142530Z", "+15550100", "no box"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.output.contains("\"code\":\"sms-draft\""));
}

void TestAdd::takesTheClockForABadTime()
{
    ClientProcess client;
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    const auto outcome = client.run(add({text("--on-bad-time"), text("now")}),
                                    vMessage("INBOX", "19700000T000000Z", "+15550100", "when?"));
    QCOMPARE(outcome.exitCode, 0);
    const QByteArray listed = client.listed();
    const auto start = listed.indexOf("\"time\":\"") + 8;
    const QDateTime time =
        QDateTime::fromString(QString::fromLatin1(listed.mid(start, 20)), Qt::ISODate);
    QVERIFY(time >= before && time <= QDateTime::currentDateTimeUtc());
}

void TestAdd::marksAllAsRead()
{
    ClientProcess client;
    client.run(add({text("--mark-read")}),
               vMessage("INBOX", "20101103T142530Z", "+15550100", "x", "UNREAD"));
    QVERIFY(client.listed().contains("\"read\":true"));
}

void TestAdd::writesInChunksInTheOrderOfTheInput()
{
    ClientProcess client;
    QByteArray input;
    QByteArray results;
    for (int i = 0; i < 7; ++i) {
        const QByteArray number = QByteArray::number(i);
        const bool isDraft = i == 2 || i == 3;
        input += vMessage(isDraft ? "DRAFT" : "INBOX", "20101103T14253" + number + 'Z', "+15550100",
                          "no. " + number);
        results += "{\"ref\":" + number + ",\"src\":\"-:" + QByteArray::number(1 + 15 * i)
            + "\",\"status\":"
            + (isDraft ? QByteArray("\"refused\",\"code\":\"sms-draft\",\"detail\":\"a draft, and "
                                    "drafts cannot be written\"}\n")
                       : "\"added\",\"id\":" + QByteArray::number(i < 2 ? i + 1 : i - 1) + "}\n");
    }
    results += "{\"summary\":{\"read\":7,\"added\":5,\"present\":0,\"refused\":2,\"failed\":0}}\n";
    QCOMPARE(client.run(add({text("--chunk"), text("3")}), input).output, results);
}

void TestAdd::keepsRejectsThatCanBeMended()
{
    ClientProcess client;
    const QByteArray cut = good.left(good.indexOf("lo\r\nEND:VBODY"));
    const QByteArray unplaced = vMessage("", "20101103T142531Z", "+15550101", "no box");
    const QByteArray timeless = vMessage("INBOX", "", "+15550102", "no time");
    const QString rejects = client.filePath(text("rejects.vmsg"));
    const auto outcome =
        client.run(add({text("--rejects"), rejects}), good + cut + "\r\n" + unplaced + timeless);
    QCOMPARE(outcome.exitCode, 1);
    QFile file(rejects);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             "# -:16: sms-parse: END:VBODY is missing; BEGIN:VBODY is in line 26\r\n" + cut
                 + "\r\n"
                   "# -:28: sms-no-folder: no known folder; --folder names one\r\n"
                 + unplaced
                 + "# -:43: bad-time: no time, or none that can be; --on-bad-time now takes the "
                   "time of the clock\r\n"
                 + timeless);
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFileInfo(rejects).permissions() & others));

    const auto again = client.run(
        add({text("--folder"), text("my"), text("--on-bad-time"), text("now"), rejects}));
    QVERIFY2(
        again.output.endsWith(
            "{\"summary\":{\"read\":3,\"added\":2,\"present\":0,\"refused\":1,\"failed\":0}}\n"),
        again.output);
}

void TestAdd::readsItsOwnRejectsWhileReplacingThem()
{
    ClientProcess client;
    const QByteArray timeless = vMessage("INBOX", "", "+15550102", "no time");
    const QString path = client.write(text("r.vmsg"), good + timeless);
    const auto outcome = client.run(add({path, text("--rejects"), path}));
    QCOMPARE(outcome.exitCode, 1);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray rejects = file.readAll();
    QVERIFY(rejects.startsWith("# "));
    QVERIFY(rejects.endsWith("time of the clock\r\n" + timeless));
    QCOMPARE(rejects.count("BEGIN:VMSG"), 1);
}

void TestAdd::writesNothingInADryRun()
{
    ClientProcess client;
    const QString rejects = client.filePath(text("rejects.vmsg"));
    const QByteArray input = good + vMessage("DRAFT", "20101103T142530Z", "+15550100", "x");
    const auto outcome =
        client.run(add({text("--dry-run"), text("--rejects"), rejects}), input + input);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.output.startsWith("{\"ref\":0,\"src\":\"-:1\",\"status\":\"added\"}\n"));
    QVERIFY(outcome.output.endsWith(
        "{\"summary\":{\"read\":4,\"added\":2,\"present\":0,\"refused\":2,\"failed\":0}}\n"));
    QVERIFY(!QFile::exists(client.store()));
    QVERIFY(!QFile::exists(rejects));
}

void TestAdd::addsTwentyThousandMessages()
{
    ClientProcess client;
    QByteArray input;
    for (int i = 0; i < 20000; ++i) {
        const QByteArray second = QByteArray::number(100 + i % 60).right(2);
        const QByteArray minute = QByteArray::number(100 + i / 60 % 60).right(2);
        const QByteArray hour = QByteArray::number(10 + i / 3600);
        input += vMessage(i % 3 ? "INBOX" : "SENT", "20101103T" + hour + minute + second + 'Z',
                          "+1555" + QByteArray::number(1000 + i % 300),
                          "message " + QByteArray::number(i));
    }
    const auto outcome = client.run(add(), input);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output.count('\n'), 20001);
    QVERIFY(outcome.output.endsWith("{\"summary\":{\"read\":20000,\"added\":20000,\"present\":0,"
                                    "\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("20000\n"));
    const auto again = client.run(add({text("--chunk"), text("1000")}), input);
    QVERIFY(again.output.endsWith("{\"summary\":{\"read\":20000,\"added\":0,\"present\":20000,"
                                  "\"refused\":0,\"failed\":0}}\n"));
}

void TestAdd::showsProgressWhenAsked()
{
    ClientProcess client;
    const QByteArray second = vMessage("INBOX", "20101103T142531Z", "+15550100", "Hello");
    const QString path = client.write(text("two.vmg"), good + second);
    const auto outcome =
        client.run(add({text("--progress"), text("always"), text("--chunk"), text("1"), path}));
    QVERIFY2(outcome.errors.contains("\r2 done of about 2, "), outcome.errors);
    QVERIFY(outcome.errors.endsWith("\n"));
    const auto silent = client.run(add({text("--progress"), text("auto"), path}));
    QCOMPARE(silent.errors, QByteArray());
}

QTEST_GUILESS_MAIN(TestAdd)
#include "tst_add.moc"
