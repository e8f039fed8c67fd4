// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"
#include "trouble.h"

#include "heldstore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtTest/QTest>

#include <csignal>

using namespace Trouble;

// A store that is missing, broken, full, closed or held, and the client interrupted.
class TestTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesNoStoreByReading_data();
    void makesNoStoreByReading();
    void leavesAFolderOfOtherThingsAlone_data();
    void leavesAFolderOfOtherThingsAlone();
    void leavesAFolderThatOnlyLooksUnfinishedAlone_data();
    void leavesAFolderThatOnlyLooksUnfinishedAlone();
    void leavesALetterAmongItsOwnFilesAlone_data();
    void leavesALetterAmongItsOwnFilesAlone();
    void refusesALinkToNothing_data();
    void refusesALinkToNothing();
    void makesNoFreshStoreForALostDatabase_data();
    void makesNoFreshStoreForALostDatabase();
    void refusesAStoreOfSomebodyElse();
    void refusesAPlaceThatIsAFile();
    void writesNothingOnAReadOnlyDisk();
    void keepsWhatWentInOnAFullDisk();
    void changesNothingOnAFullDisk();
    void makesNoHalfStoreOnAFullDisk();
    void givesUpOnAHeldStore();
    void endsTruthfullyWhenInterrupted_data();
    void endsTruthfullyWhenInterrupted();
    void endsQuietlyWhenItsReaderIsGone();
    void failsWhenItsOutputDoesNotFit();
    void failsWithoutAThread_data();
    void failsWithoutAThread();
    void tellsOfAFileThatMayNotGrow();
    void claimsNoAbsenceOfWhatCannotBeRead_data();
    void claimsNoAbsenceOfWhatCannotBeRead();

private:
    static QByteArray many(int count);
};

static const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");

QByteArray TestTrouble::many(int count)
{
    QByteArray messages;
    for (int i = 0; i < count; ++i)
        messages +=
            vMessage("INBOX", "20101103T142530Z", "+15550100", "message " + QByteArray::number(i));
    return messages;
}

static const QList<const char *> commands{"list",
                                          "list --modified-since 2024-01-01",
                                          "show 1",
                                          "modify 1 -",
                                          "delete --yes 1",
                                          "stats",
                                          "numbers",
                                          "dups",
                                          "dups --delete --yes",
                                          "changes",
                                          "changes --follow",
                                          "conversations",
                                          "verify -",
                                          "add -",
                                          "add -n -"};

void TestTrouble::makesNoStoreByReading_data()
{
    addCommandRows({"list", "show 1", "modify 1 -", "delete --yes 1", "stats", "numbers", "dups",
                    "dups --delete --yes", "changes", "changes --follow", "conversations",
                    "verify -"});
}

void TestTrouble::makesNoStoreByReading()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    auto outcome = client.run(arguments, hello);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.startsWith("korvasync: there is no store at "), outcome.errors);
    QVERIFY(!QFile::exists(client.store()));
    QVERIFY(QDir().mkpath(client.store()));
    outcome = client.run(arguments, hello);
    QCOMPARE(outcome.exitCode, 3);
    QVERIFY(QDir(client.store()).isEmpty());
}

void TestTrouble::leavesAFolderOfOtherThingsAlone_data() { addCommandRows(commands); }

void TestTrouble::leavesAFolderOfOtherThingsAlone()
{
    QFETCH(QStringList, arguments);
    const QList<QMap<QString, QByteArray>> others{{{text("photo.jpg"), "x"}},
                                                  {{text("lock"), "123\n"}}, // of another program
                                                  {{text("lock"), ""}, {text("photo.jpg"), "x"}}};
    for (const auto &files : others) {
        ClientProcess client;
        for (auto file = files.cbegin(); file != files.cend(); ++file)
            client.write(text("store/") + file.key(), file.value());
        const auto outcome = client.run(arguments, hello);
        QCOMPARE(outcome.exitCode, 3);
        QCOMPARE(outcome.output, QByteArray());
        verifySentence(outcome.errors);
        QCOMPARE(QDir(client.store()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList(files.keys()));
    }
}

void TestTrouble::leavesAFolderThatOnlyLooksUnfinishedAlone_data() { addCommandRows(commands); }

void TestTrouble::leavesAFolderThatOnlyLooksUnfinishedAlone()
{
    QFETCH(QStringList, arguments);
    for (const bool isLink : {false, true}) {
        ClientProcess client;
        client.write(text("letters/first"), "Dear Ann");
        client.write(text("store/lock"), QByteArray());
        QVERIFY(QDir(client.store()).mkdir(text("db.new")));
        const QString folder = client.store() + text("/db.new/letters");
        QVERIFY(isLink ? QFile::link(client.filePath(text("letters")), folder)
                       : QDir().rename(client.filePath(text("letters")), folder));
        const auto outcome = client.run(arguments, hello);
        QCOMPARE(outcome.exitCode, 3);
        QCOMPARE(outcome.output, QByteArray());
        verifySentence(outcome.errors);
        QVERIFY(QFile::exists(folder + text("/first")));
    }
}

void TestTrouble::leavesALetterAmongItsOwnFilesAlone_data() { addCommandRows(commands); }

void TestTrouble::leavesALetterAmongItsOwnFilesAlone()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    client.write(text("store/lock"), QByteArray());
    const QString letter = client.write(text("store/db.new/letter"), "Dear Ann");
    const auto outcome = client.run(arguments, hello);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    verifySentence(outcome.errors);
    QVERIFY2(outcome.errors.contains(" is no store, and not empty"), outcome.errors);
    QVERIFY(QFile::exists(letter));
}

void TestTrouble::refusesALinkToNothing_data() { addCommandRows(commands); }

// To a disk that is not there: nothing is made on this one.
void TestTrouble::refusesALinkToNothing()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    const QString disk = client.filePath(text("disk"));
    QVERIFY(QFile::link(disk, client.store()));
    const auto outcome = client.run(arguments, hello);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    verifySentence(outcome.errors);
    QVERIFY2(outcome.errors.contains("cannot be opened: "), outcome.errors);
    QVERIFY(!QFile::exists(disk));
}

void TestTrouble::makesNoFreshStoreForALostDatabase_data() { addCommandRows(commands); }

void TestTrouble::makesNoFreshStoreForALostDatabase()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    client.write(text("store/korvasync-store"), "1\n");
    const auto outcome = client.run(arguments, hello);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    verifySentence(outcome.errors);
    for (const QString &name :
         QDir(client.store()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        QVERIFY2(name == text("korvasync-store") || name == text("lock"), qPrintable(name));
}

void TestTrouble::refusesAStoreOfSomebodyElse()
{
    ClientProcess client;
    client.fill(hello);
    QVERIFY(QFile::setPermissions(client.filePath(QString()),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                      | QFile::ReadOther | QFile::ExeOther));
    for (const QStringList &arguments :
         {QStringList{text("list")}, QStringList{text("show"), text("1")},
          QStringList{text("add"), text("-")}, QStringList{text("add"), text("-n"), text("-")}}) {
        const auto outcome = client.runProgram(
            text("setpriv"),
            QStringList{text("--reuid=65534"), text("--regid=65534"), text("--clear-groups"),
                        text(KORVASYNC_CLIENT), text("--store"), client.store()}
                + arguments,
            hello);
        QCOMPARE(outcome.exitCode, 3);
        QCOMPARE(outcome.output, QByteArray());
        verifySentence(outcome.errors);
    }
}

void TestTrouble::refusesAPlaceThatIsAFile()
{
    ClientProcess client;
    client.write(text("store"), "x");
    for (const char *command : {"list", "add"}) {
        const auto outcome = client.run({QString::fromLatin1(command)}, hello);
        QCOMPARE(outcome.exitCode, 3);
        verifySentence(outcome.errors);
    }
}

void TestTrouble::writesNothingOnAReadOnlyDisk()
{
    ClientProcess client;
    client.write(text("hello.vmg"), hello);
    client.workingDirectory = client.filePath(QString());
    const auto outcome = runOnReadOnlyDisk(client, "add hello.vmg", "delete --yes 1", "list --ids");
    const QList<QByteArray> lines = outcome.output.split('\n');
    QCOMPARE(lines.first(), QByteArray("added  1  hello.vmg:1"));
    QCOMPARE(lines.mid(lines.size() - 2), (QList<QByteArray>{"1", ""}));
    QCOMPARE(lines.count("3"), 2);
    verifySentence(outcome.errors);
}

void TestTrouble::keepsWhatWentInOnAFullDisk()
{
    ClientProcess client;
    client.write(text("many.vmsg"), many(20000));
    client.workingDirectory = client.filePath(QString());
    const auto outcome = runOnFullDisk(client, "add many.vmsg", "list --ids", "list --count");
    verifySentence(outcome.errors);
    const QList<QByteArray> lines = outcome.output.split('\n');
    int line = 0;
    QByteArray added;
    int failed = 0;
    for (; line < lines.size() && !lines.at(line).startsWith("{\"summary\""); ++line) {
        const QByteArray &result = lines.at(line);
        if (result.contains("\"status\":\"added\""))
            added += result.mid(result.indexOf("\"id\":") + 5).chopped(1) + '\n';
        else if (result.contains("\"status\":\"failed\"")
                 && result.contains("\"code\":\"sms-store\""))
            ++failed;
    }
    const int addedCount = static_cast<int>(added.count('\n'));
    QVERIFY(addedCount > 0 && failed > 0);
    QCOMPARE(lines.at(line),
             "{\"summary\":{\"read\":" + QByteArray::number(addedCount + failed) + ",\"added\":"
                 + QByteArray::number(addedCount) + ",\"present\":0,\"refused\":0,\"failed\":"
                 + QByteArray::number(failed) + ",\"complete\":false}}");
    QVERIFY(
        outcome.errors.contains("korvasync: the input was not read to its end; add it again\n"));
    QCOMPARE(lines.at(line + 1), QByteArray("3"));
    // Just what was reported is there, and with room the rest goes in.
    QCOMPARE(lines.mid(line + 2, addedCount).join('\n') + '\n', added);
    QCOMPARE(lines.at(line + 2 + addedCount),
             "{\"summary\":{\"read\":20000,\"added\":" + QByteArray::number(20000 - addedCount)
                 + ",\"present\":" + QByteArray::number(addedCount)
                 + ",\"refused\":0,\"failed\":0}}");
    QCOMPARE(lines.at(line + 3 + addedCount), QByteArray("20000"));
}

void TestTrouble::changesNothingOnAFullDisk()
{
    ClientProcess client;
    client.write(text("hello.vmg"), hello);
    client.write(text("long.vmg"), vMessage("INBOX", "", "+15550100", QByteArray(1000000, 'x')));
    client.workingDirectory = client.filePath(QString());
    const auto outcome = client.runOnDisk("20m",
                                          "$KORVASYNC add -q hello.vmg; "
                                          "USED=$(df -k --output=used $DISK | tail -1); "
                                          "mount -o remount,size=$((USED + 200))k $DISK; "
                                          "$KORVASYNC modify -q 1 long.vmg; echo $?; "
                                          "$KORVASYNC list -o ndjson");
    QCOMPARE(outcome.output,
             QByteArray("added  1  hello.vmg:1\n"
                        "failed  1  long.vmg:1  sms-store: the store did not take it\n3\n"
                        "{\"id\":1,\"folder\":\"inbox\",\"number\":\"+15550100\","
                        "\"time\":\"2010-11-03T14:25:30Z\",\"read\":true,\"body\":\"Hello\"}\n"));
    verifySentence(outcome.errors);
}

void TestTrouble::makesNoHalfStoreOnAFullDisk()
{
    ClientProcess client;
    client.write(text("hello.vmg"), hello);
    client.workingDirectory = client.filePath(QString());
    const auto outcome =
        client.runOnDisk("64k",
                         "$KORVASYNC add hello.vmg; echo $?; $KORVASYNC list; echo $?; "
                         "mount -o remount,size=20m $DISK; $KORVASYNC add -q hello.vmg; echo $?");
    QCOMPARE(outcome.output,
             QByteArray("failed  hello.vmg:1  sms-store: the store did not take it\n"
                        "1 read, 0 added, 0 present, 0 refused, 1 failed\n"
                        "3\n3\nadded  1  hello.vmg:1\n0\n"));
    verifySentence(outcome.errors);
}

void TestTrouble::givesUpOnAHeldStore()
{
    ClientProcess client;
    // To make a store takes a slow machine longer than the patience below.
    client.write(text("first.vmg"), vMessage("INBOX", "20101103T142529Z", "+15550100", "First"));
    QCOMPARE(client.run({text("add"), client.filePath(text("first.vmg"))}).exitCode, 0);
    BusyClient busy(client,
                    {text("add"), text("-o"), text("ndjson"), text("--chunk"), text("1"),
                     text("--timeout"), text("2"), text("-")},
                    hello);
    QVERIFY(busy.isBusy());
    // Now another process writes, and does not come to an end.
    const HeldStore holder(client.store());
    QVERIFY(holder.isHeld());
    QVERIFY(busy.finish(vMessage("INBOX", "20101103T142531Z", "+15550100", "Hello")));
    QCOMPARE(busy.process.exitCode(), 5);
    QCOMPARE(
        busy.output(),
        QByteArray("{\"ref\":0,\"src\":\"-:1\",\"status\":\"added\",\"id\":2}\n"
                   "{\"ref\":1,\"src\":\"-:16\",\"status\":\"failed\",\"code\":\"sms-store\","
                   "\"detail\":\"not known, as the store cannot be read back\"}\n"
                   "{\"summary\":{\"read\":2,\"added\":1,\"present\":0,\"refused\":0,\"failed\":1,"
                   "\"complete\":false}}\n"));
    verifySentence(busy.process.readAllStandardError());
}

void TestTrouble::endsTruthfullyWhenInterrupted_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("terminate") << SIGTERM;
    QTest::newRow("hang-up") << SIGHUP;
}

void TestTrouble::endsTruthfullyWhenInterrupted()
{
    QFETCH(int, signalNumber);
    ClientProcess client;
    BusyClient busy(
        client, {text("add"), text("-o"), text("ndjson"), text("--chunk"), text("1"), text("-")},
        many(3));
    QVERIFY(busy.isBusy());
    QVERIFY(busy.endBySignal(signalNumber));
    QCOMPARE(busy.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(busy.process.exitCode(), 128 + signalNumber);
    const QByteArray output = busy.output();
    const int added = static_cast<int>(output.count("\"status\":\"added\""));
    QVERIFY(added > 0);
    const QByteArray count = QByteArray::number(added);
    QVERIFY2(output.endsWith("{\"summary\":{\"read\":" + count + ",\"added\":" + count
                             + ",\"present\":0,\"refused\":0,\"failed\":0,\"complete\":false}}\n"),
             output);
    QCOMPARE(busy.process.readAllStandardError(),
             QByteArray("korvasync: the input was not read to its end; add it again\n"));
    QCOMPARE(client.run({text("list"), text("--count")}).output, count + '\n');
}

void TestTrouble::endsQuietlyWhenItsReaderIsGone()
{
    ClientProcess client;
    client.fill(many(2000));
    client.environment.insert(text("STORE"), client.store());
    const auto outcome = client.runProgram(
        text("bash"),
        {text("-c"),
         text("{ " KORVASYNC_CLIENT " --store $STORE list -o vmsg; echo $? >&2; } | head -c 10")});
    QCOMPARE(outcome.errors, QByteArray("141\n"));
}

void TestTrouble::failsWhenItsOutputDoesNotFit()
{
    ClientProcess client;
    client.environment.insert(text("STORE"), client.store());
    const auto outcome = client.runProgram(
        text("bash"),
        {text("-c"), text(KORVASYNC_CLIENT " --store $STORE add - > /dev/full; echo $?")}, hello);
    QCOMPARE(outcome.output, QByteArray("1\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: standard output cannot be written: No space left on device; "
                        "see where it goes\n"));
}

void TestTrouble::failsWithoutAThread_data()
{
    QTest::addColumn<QString>("which");
    for (const char *which : {"1", "2", "3", "1+"})
        QTest::newRow(which) << QString::fromLatin1(which);
}

// The file's, the store's and that which bounds the time.
void TestTrouble::failsWithoutAThread()
{
    QFETCH(QString, which);
    ClientProcess client;
    client.environment.insert(text("ASAN_OPTIONS"), text("detect_leaks=0"));
    client.fill(hello);
    const QString file =
        client.write(text("other.vmg"), QByteArray(hello).replace("Hello", "Other"));
    const auto outcome = client.runProgram(
        text("strace"),
        {text("-f"), text("-qq"), text("-o"), text("/dev/null"), text("-e"), text("trace=clone3"),
         text("-e"), text("inject=clone3:error=EAGAIN:when=") + which, text(KORVASYNC_CLIENT),
         text("--store"), client.store(), text("add"), file});
    QVERIFY2(outcome.exitCode == 1 || outcome.exitCode == 3, outcome.errors);
    QVERIFY2(outcome.errors.contains("thread"), outcome.errors);
    QCOMPARE(client.listed().count('\n'), 1);
}

void TestTrouble::tellsOfAFileThatMayNotGrow()
{
    const ClientProcess client;
    const QString command =
        text("ulimit -f 20; exec %1 --store %2 add -").arg(text(KORVASYNC_CLIENT), client.store());
    const auto outcome = client.runProgram(text("sh"), {text("-c"), command}, hello);
    QCOMPARE(outcome.exitCode, 3);
    verifySentence(outcome.errors);
    QCOMPARE(client.run({text("add"), text("-q"), text("-")}, hello).exitCode, 0);
}

void TestTrouble::claimsNoAbsenceOfWhatCannotBeRead_data()
{
    Trouble::addCommandRows(
        {"show 1", "modify 1 -", "modify -n 1 -", "delete --yes 1", "delete -n 1"});
}

// At one look at the database, by which a store is known to be the same, it is gone. The first
// two come before the answer.
void TestTrouble::claimsNoAbsenceOfWhatCannotBeRead()
{
    QFETCH(QStringList, arguments);
    constexpr int looks = 6;
    QList<int> refused;
    for (int look = 1; look <= looks; ++look) {
        ClientProcess client;
        client.fill(hello);
        client.environment.insert(text("LD_PRELOAD"), text(VANISHING_FILE_LIBRARY));
        client.environment.insert(text("VANISHING_FILE"), client.store() + text("/db/meta.db"));
        client.environment.insert(text("VANISHING_LOOK"), QString::number(look));
        const auto outcome = client.run(arguments, hello);
        QVERIFY2(!outcome.output.contains("sms-bad-id"), outcome.output);
        QVERIFY2(!outcome.output.contains("refused  1"), outcome.output);
        QVERIFY2(!outcome.errors.contains("there is no message"), outcome.errors);
        QVERIFY2(outcome.exitCode == 0 || outcome.exitCode == 3, outcome.errors);
        if (outcome.exitCode == 3)
            refused += look;
    }
    QCOMPARE(refused.mid(0, 2), QList<int>({1, 2}));
}

QTEST_GUILESS_MAIN(TestTrouble)
#include "tst_trouble.moc"
