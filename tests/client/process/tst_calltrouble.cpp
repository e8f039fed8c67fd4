// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"
#include "trouble.h"

#include "heldstore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace Trouble;

// "calls" on a store that is missing, broken, full, closed or held, and interrupted.
class TestCallTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesNoStoreByReading_data();
    void makesNoStoreByReading();
    void leavesAFolderOfOtherThingsAlone_data();
    void leavesAFolderOfOtherThingsAlone();
    void writesNothingOnAReadOnlyDisk();
    void keepsWhatWentInOnAFullDisk();
    void givesUpAddingToAHeldStore();
    void givesUpWipingAHeldStore();
    void endsTruthfullyWhenInterrupted();
    void failsWhenItsOutputDoesNotFit();
};

namespace {

const QByteArray missed = callEntry("missed", "+15550100", 0, "20101103T142530Z");
constexpr int chunkSize = 500; // so many results come at once

QByteArray many(int count)
{
    QByteArray entries;
    const QDateTime start(QDate(2010, 11, 3), QTime(14, 25), Qt::UTC);
    for (int i = 0; i < count; ++i) {
        entries += callEntry("missed", "+15550100", 0,
                             start.addSecs(i).toString(text("yyyyMMddThhmmss")).toLatin1() + 'Z');
    }
    return entries;
}

const QList<const char *> readers{"calls", "calls wipe --yes", "calls wipe -n"};
const QList<const char *> all = readers + QList<const char *>{"calls add -", "calls add -n -"};

QByteArray lastLines(const QByteArray &output, int count)
{
    return output.split('\n').mid(output.count('\n') - count).join('\n');
}

} // namespace

void TestCallTrouble::makesNoStoreByReading_data() { addCommandRows(readers); }

void TestCallTrouble::makesNoStoreByReading()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    const auto outcome = client.run(arguments);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.startsWith("korvasync: there is no store at "), outcome.errors);
    QVERIFY(!QFile::exists(client.store()));
}

void TestCallTrouble::leavesAFolderOfOtherThingsAlone_data() { addCommandRows(all); }

void TestCallTrouble::leavesAFolderOfOtherThingsAlone()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    client.write(text("store/photo.jpg"), "x");
    const auto outcome = client.run(arguments, missed);
    QCOMPARE(outcome.exitCode, 3);
    QCOMPARE(outcome.output, QByteArray());
    verifySentence(outcome.errors);
    QCOMPARE(QDir(client.store()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{text("photo.jpg")});
}

void TestCallTrouble::writesNothingOnAReadOnlyDisk()
{
    ClientProcess client;
    client.write(text("one.txt"), missed);
    client.workingDirectory = client.filePath(QString());
    const auto outcome =
        runOnReadOnlyDisk(client, "calls add one.txt", "calls wipe --yes", "calls -o ndjson");
    const QList<QByteArray> lines = outcome.output.split('\n');
    QCOMPARE(lines.first(), QByteArray("added  one.txt:1"));
    QCOMPARE(lines.count("3"), 2);
    QVERIFY(!outcome.output.contains("deleted"));
    QCOMPARE(lines.mid(lines.size() - 2),
             (QList<QByteArray>{"{\"type\":\"missed\",\"number\":\"+15550100\",\"duration\":0,"
                                "\"time\":\"2010-11-03T14:25:30Z\"}",
                                ""}));
    verifySentence(outcome.errors);
}

void TestCallTrouble::keepsWhatWentInOnAFullDisk()
{
    ClientProcess client;
    client.write(text("many.txt"), many(40000));
    client.workingDirectory = client.filePath(QString());
    const auto outcome = runOnFullDisk(client, "calls add many.txt", "calls -o ndjson | wc -l",
                                       "calls -o entries | cmp - many.txt; echo $?");
    verifySentence(outcome.errors);
    const int added = static_cast<int>(outcome.output.count("\"status\":\"added\""));
    const int failed =
        static_cast<int>(outcome.output.count("\"status\":\"failed\",\"code\":\"call-store\""));
    QVERIFY(added > 0 && failed > 0);
    const auto number = [](int count) { return QByteArray::number(count); };
    QVERIFY2(outcome.output.endsWith(
                 "{\"summary\":{\"read\":" + number(added + failed) + ",\"added\":" + number(added)
                 + ",\"present\":0,\"refused\":0,\"failed\":" + number(failed)
                 + ",\"complete\":false}}\n3\n" + number(added)
                 + "\n{\"summary\":{\"read\":40000,\"added\":" + number(40000 - added)
                 + ",\"present\":" + number(added) + ",\"refused\":0,\"failed\":0}}\n0\n"),
             outcome.output.right(400));
}

void TestCallTrouble::givesUpAddingToAHeldStore()
{
    ClientProcess client;
    // A chunk is written within the patience below on any machine.
    BusyClient busy(client,
                    {text("calls"), text("add"), text("-o"), text("ndjson"), text("--timeout"),
                     text("5"), text("-")},
                    many(chunkSize), chunkSize);
    QVERIFY(busy.isBusy());
    const HeldStore holder(client.store());
    QVERIFY(holder.isHeld());
    QVERIFY(busy.finish(callEntry("incoming", "+15550100", 5, "20101103T142530Z")));
    QCOMPARE(busy.process.exitCode(), 5);
    QCOMPARE(
        lastLines(busy.output(), 2),
        QByteArray(
            "{\"ref\":500,\"src\":\"-:3001\",\"status\":\"failed\",\"code\":\"call-store\","
            "\"detail\":\"not known, as the store cannot be read back\"}\n"
            "{\"summary\":{\"read\":501,\"added\":500,\"present\":0,\"refused\":0,\"failed\":1}}"
            "\n"));
    verifySentence(busy.process.readAllStandardError());
}

void TestCallTrouble::givesUpWipingAHeldStore()
{
    ClientProcess client;
    QCOMPARE(client.run({text("calls"), text("add")}, missed).exitCode, 0);
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    QProcess process;
    process.setStandardInputFile(QFile::decodeName(ptsname(terminal)));
    client.start(process, {text("calls"), text("wipe"), text("--timeout"), text("0.5")});
    process.setReadChannel(QProcess::StandardError);
    QVERIFY(process.waitForReadyRead(20000)); // the question: the store is open by now
    {
        const HeldStore holder(client.store());
        QVERIFY(holder.isHeld());
        QCOMPARE(write(terminal, "y\n", 2), ssize_t(2));
        QVERIFY(process.waitForFinished(20000));
    }
    close(terminal);
    QCOMPARE(process.exitCode(), 5);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QVERIFY(process.readAllStandardError().contains("gave no answer in time"));
    QCOMPARE(client.run({text("calls")}).output.count('\n'), 1);
}

void TestCallTrouble::endsTruthfullyWhenInterrupted()
{
    ClientProcess client;
    // It is interrupted within an entry.
    BusyClient busy(client, {text("calls"), text("add"), text("-o"), text("ndjson"), text("-")},
                    many(chunkSize) + "BEGIN:VCALLHISTENTRY\r\nTYPE:missed\r\n", chunkSize);
    QVERIFY(busy.isBusy());
    QVERIFY(busy.endBySignal(SIGTERM));
    QCOMPARE(busy.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(busy.process.exitCode(), 128 + SIGTERM);
    QCOMPARE(lastLines(busy.output(), 1),
             QByteArray("{\"summary\":{\"read\":500,\"added\":500,\"present\":0,\"refused\":0,"
                        "\"failed\":0,\"complete\":false}}\n"));
    QCOMPARE(client.run({text("calls")}).output.count('\n'), 500);
}

void TestCallTrouble::failsWhenItsOutputDoesNotFit()
{
    ClientProcess client;
    QCOMPARE(client.run({text("calls"), text("add")}, missed).exitCode, 0);
    client.environment.insert(text("STORE"), client.store());
    const auto outcome = client.runProgram(
        text("sh"),
        {text("-c"), text(KORVASYNC_CLIENT " --store $STORE calls > /dev/full; echo $?")});
    QCOMPARE(outcome.output, QByteArray("1\n"));
    QCOMPARE(outcome.errors,
             QByteArray("korvasync: standard output cannot be written: No space left on device; "
                        "see where it goes\n"));
}

QTEST_GUILESS_MAIN(TestCallTrouble)
#include "tst_calltrouble.moc"
