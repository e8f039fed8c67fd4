// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <korvasync/pendingids.h>
#include <korvasync/smssyncinterface.h>

#include <QtCore/QFile>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

// "modify" with --read, --unread and --folder.
class TestMarking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marksAsRead();
    void marksAsUnread();
    void moves_data();
    void moves();
    void marksAndMovesAtOnce();
    void changesNothingElse_data();
    void changesNothingElse();
    void readsIdsFromStandardInput();
    void doesTheOthersWhenAnIdIsUnknown();
    void leavesAloneWhatIsSoAlready();
    void marksNoCalls();
    void writesNothingInADryRun();
    void marksManyMessages();
    void refusesDraftsAndKeepsFoldersOfPeople();
};

static const QByteArray first =
    vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello", "UNREAD");
static const QByteArray second = vMessage("SENT", "20101103T142531Z", "+15550101", "Good bye");

static QStringList mark(const char *options)
{
    return QStringList{text("modify")} + text(options).split(QLatin1Char(' '));
}

static QByteArray shown(const ClientProcess &client, const char *id = "1")
{
    return client.run({text("show"), text(id)}).output;
}

void TestMarking::marksAsRead()
{
    ClientProcess client;
    client.fill(first + second);
    const QByteArray before = shown(client);
    QVERIFY2(before.contains("X-IRMC-STATUS:UNREAD\r\n"), before);
    const auto outcome = client.run(mark("--read -o ndjson 1"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"status\":\"changed\",\"id\":1}\n"
                        "{\"summary\":{\"read\":1,\"changed\":1,\"refused\":0,\"failed\":0}}\n"));
    QCOMPARE(shown(client), QByteArray(before).replace("STATUS:UNREAD", "STATUS:READ"));
}

void TestMarking::marksAsUnread()
{
    ClientProcess client;
    client.fill(first + second);
    const QByteArray before = shown(client, "2");
    QCOMPARE(client.run(mark("--unread 2")).output,
             QByteArray("changed  2\n1 read, 1 changed, 0 refused, 0 failed\n"));
    QCOMPARE(shown(client, "2"), QByteArray(before).replace("STATUS:READ", "STATUS:UNREAD"));
    QCOMPARE(client.run({text("list"), text("--ids"), text("--unread")}).output,
             QByteArray("1\n2\n"));
}

void TestMarking::moves_data()
{
    QTest::addColumn<QByteArray>("from");
    for (const char *folder : {"inbox", "outbox", "sent", "my"}) {
        for (const char *box : {"INBOX", "OUTBOX", "SENT", "MYFOLDERS"}) {
            if (!QByteArray(box).toLower().startsWith(folder))
                QTest::addRow("%s to %s", box, folder) << QByteArray(box);
        }
    }
}

void TestMarking::moves()
{
    QFETCH(QByteArray, from);
    const QByteArray to = QByteArray(QTest::currentDataTag()).split(' ').last();
    ClientProcess client;
    client.fill(vMessage(from, "20101103T142530Z", "+15550100", "Hello", "UNREAD"));
    const auto outcome =
        client.run(QStringList{text("modify"), text("--folder"), text(to.constData()), text("1")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("changed  1\n1 read, 1 changed, 0 refused, 0 failed\n"));
    QCOMPARE(client.listed(),
             "{\"id\":1,\"folder\":\"" + to
                 + "\",\"number\":\"+15550100\",\"time\":\"2010-11-03T14:25:30Z\","
                   "\"read\":false,\"body\":\"Hello\"}\n");
}

void TestMarking::marksAndMovesAtOnce()
{
    ClientProcess client;
    client.fill(first);
    QCOMPARE(client.run(mark("--read --folder my -q 1")).output, QByteArray("changed  1\n"));
    QCOMPARE(client.listed(),
             QByteArray("{\"id\":1,\"folder\":\"my\",\"number\":\"+15550100\","
                        "\"time\":\"2010-11-03T14:25:30Z\",\"read\":true,\"body\":\"Hello\"}\n"));
}

void TestMarking::changesNothingElse_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char *name, const QByteArray &number, const QByteArray &body) {
        QTest::newRow(name) << number << body;
    };
    const QByteArray number("+15550100");
    row("empty", number, "");
    row("lines", number, "One\r\nTwo\r\n\r\nFour");
    row("accents", number,
        "Gr\xC3\xBC\xC3\x9F"
        "e e\xCC\x81 \xF0\x9F\x8D\xB5");
    row("mark", number, "\xEF\xBB\xBFHello");
    row("blanks", number, "  Hello \t ");
    row("like-a-message", number, "BEGIN:VMSG\r\nX-IRMC-BOX:SENT\r\nX-IRMC-STATUS:READ");
    row("long", number, QByteArray(100000, 'x'));
    row("word", "InfoPost", "Hello");
    row("word-with-accent", "B\xC3\xA4nk", "Hello");
    row("punctuation", "0155 501-00", "Hello");
    // Signs that mean something in an expression, and a word that is too long for one.
    row("quote", "McDonald's", "Hello");
    row("sign", "Pos+t", "Hello");
    row("long-word", QByteArray(65, 'x'), "Hello");
}

void TestMarking::changesNothingElse()
{
    QFETCH(QByteArray, number);
    QFETCH(QByteArray, body);
    ClientProcess client;
    client.fill(vMessage("INBOX", "20101103T142530Z", number, body, "UNREAD"));
    const QByteArray before = shown(client);
    QCOMPARE(client.run(mark("--read -q 1")).output, QByteArray("changed  1\n"));
    QByteArray expected = before;
    expected.replace(expected.indexOf("STATUS:UNREAD"), 13, "STATUS:READ");
    QCOMPARE(shown(client), expected);
    QCOMPARE(client.run(mark("--unread --folder sent -q 1")).output, QByteArray("changed  1\n"));
    QCOMPARE(client.run(mark("--folder inbox -q 1")).output, QByteArray("changed  1\n"));
    QCOMPARE(shown(client), before);
    QCOMPARE(client.run({text("list"), text("--ids"), text("--conversation"), text("1")}).output,
             QByteArray("1\n"));
}

void TestMarking::readsIdsFromStandardInput()
{
    ClientProcess client;
    client.fill(first + second);
    QCOMPARE(client.run(mark("--folder my -q -"), "2\n\n1\n").output,
             QByteArray("changed  2\nchanged  1\n"));
    const auto none = client.run(mark("--read -"), "");
    QCOMPARE(none.exitCode, 0);
    QCOMPARE(none.output, QByteArray("0 read, 0 changed, 0 refused, 0 failed\n"));
}

void TestMarking::doesTheOthersWhenAnIdIsUnknown()
{
    ClientProcess client;
    client.fill(first + second);
    const auto outcome = client.run(mark("--folder my -o ndjson 99 1 -4 2"));
    QCOMPARE(outcome.exitCode, 4);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"status\":\"refused\",\"id\":99,\"code\":\"sms-bad-id\","
                        "\"detail\":\"no message has this id\"}\n"
                        "{\"ref\":1,\"status\":\"changed\",\"id\":1}\n"
                        "{\"ref\":2,\"status\":\"refused\",\"id\":-4,\"code\":\"sms-bad-id\","
                        "\"detail\":\"no message has this id\"}\n"
                        "{\"ref\":3,\"status\":\"changed\",\"id\":2}\n"
                        "{\"summary\":{\"read\":4,\"changed\":2,\"refused\":2,\"failed\":0}}\n"));
}

void TestMarking::leavesAloneWhatIsSoAlready()
{
    ClientProcess client;
    client.fill(first + second);
    const QByteArray before = client.run({text("changes")}).output; // ends with the store's number
    const auto outcome = client.run(mark("--read --folder sent -o ndjson 2"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output,
             QByteArray("{\"ref\":0,\"status\":\"unchanged\",\"id\":2}\n"
                        "{\"summary\":{\"read\":1,\"changed\":0,\"unchanged\":1,\"refused\":0,"
                        "\"failed\":0}}\n"));
    QCOMPARE(client.run({text("changes")}).output, before);
    QCOMPARE(client.run(mark("--unread 2 1 2")).output,
             QByteArray("changed  2\nunchanged  1\nunchanged  2\n"
                        "3 read, 1 changed, 2 unchanged, 0 refused, 0 failed\n"));
}

void TestMarking::marksNoCalls()
{
    ClientProcess client;
    client.fill(first);
    QCOMPARE(client
                 .run({text("calls"), text("add"), text("-q")},
                      callEntry("missed", "+15550100", 0, "20101103T142532Z"))
                 .exitCode,
             0);
    const QByteArray before = client.run({text("changes")}).output;
    const auto outcome = client.run(mark("--read --folder my 2"));
    QCOMPARE(outcome.exitCode, 4);
    QCOMPARE(outcome.output,
             QByteArray("refused  2  sms-bad-id: no message has this id\n"
                        "1 read, 0 changed, 1 refused, 0 failed\n"));
    QCOMPARE(client.run({text("changes")}).output, before);
}

void TestMarking::writesNothingInADryRun()
{
    ClientProcess client;
    client.fill(first + second);
    const QByteArray before = client.run({text("changes")}).output;
    const QStringList command = mark("--read 1 2 99");
    const auto foreseen = client.run(command + QStringList{text("-n")});
    QCOMPARE(
        foreseen.output,
        QByteArray("changed  1\nunchanged  2\nrefused  99  sms-bad-id: no message has this id\n"
                   "3 read, 1 changed, 1 unchanged, 1 refused, 0 failed\n"));
    QCOMPARE(client.run({text("changes")}).output, before);
    const auto done = client.run(command);
    QCOMPARE(done.output, foreseen.output);
    QCOMPARE(done.exitCode, foreseen.exitCode);
}

void TestMarking::marksManyMessages()
{
    ClientProcess client;
    QByteArray messages;
    for (int i = 0; i < 1201; ++i) {
        const QByteArray number = i % 300 == 7 ? QByteArray("McDonald's") : QByteArray("+15550100");
        messages += vMessage("INBOX", "20101103T142530Z", number, QByteArray::number(i), "UNREAD");
    }
    client.fill(messages);
    const QByteArray before = client.listed();
    const QByteArray ids = client.run({text("list"), text("--ids")}).output;
    const auto outcome = client.run(mark("--read -"), ids);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.endsWith("\n1201 read, 1201 changed, 0 refused, 0 failed\n"),
             outcome.output.right(200));
    QCOMPARE(client.listed(), QByteArray(before).replace("\"read\":false", "\"read\":true"));
}

// Only the library itself can store these.
void TestMarking::refusesDraftsAndKeepsFoldersOfPeople()
{
    using namespace KorvaSyncIf;
    ClientProcess client;
    qputenv("KORVASYNC_STORE", QFile::encodeName(client.store()));
    {
        SMSSyncInterface facade;
        QList<SyncSmsInfo> records;
        for (const int folder : {int(LocDrafts), LocMyFolder + 7}) {
            SyncSmsInfo record;
            record.parentId = folder;
            record.messageToken = text("token");
            record.vMessage =
                QString::fromUtf8(vMessage("", "20101103T142530Z", "+15550100", "x", "UNREAD"));
            records += record;
        }
        PendingIds *const pending = facade.addNewMessages(records);
        QSignalSpy finished(pending, &PendingIds::finished);
        QVERIFY(finished.wait(20000));
    }
    const QByteArray draft = shown(client, "1");
    const QByteArray own = shown(client, "2");
    const auto outcome = client.run(mark("--read 1 2"));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.output,
             QByteArray("refused  1  sms-draft: a draft, and drafts cannot be written\n"
                        "changed  2\n2 read, 1 changed, 1 refused, 0 failed\n"));
    QCOMPARE(shown(client, "1"), draft);
    QCOMPARE(shown(client, "2"), QByteArray(own).replace("STATUS:UNREAD", "STATUS:READ"));
    QCOMPARE(client.listed({text("--folder"), text("my")}), QByteArray());
    QVERIFY2(client.listed().contains("\"token\":\"token\""), client.listed());
}

QTEST_GUILESS_MAIN(TestMarking)
#include "tst_marking.moc"
