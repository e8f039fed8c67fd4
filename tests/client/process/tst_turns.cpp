// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"
#include "trouble.h"

#include "heldstore.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <array>
#include <csignal>

// Several clients at a time, and one that waits for a store that another process holds.
class TestTurns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storesNothingTwiceOnAFreshStore();
    void deletesNothingTwice();
    void waitsForAClientThatAdds();
    void givesUpOnAClientThatAdds();
    void addsAgainWithoutATurn();
    void leavesNoFolderWithoutAStore();
    void givesUpOnAHeldStore_data();
    void givesUpOnAHeldStore();
    void endsAtOnceWhenInterruptedOnAHeldStore_data();
    void endsAtOnceWhenInterruptedOnAHeldStore();
    void endsAWriteThatIsHeldWhenInterrupted();
    void closesNoStoreThatIsHeld();
    void stopsShowingWhenInterrupted();
};

static QByteArray message(int second)
{
    return vMessage("INBOX", "20101103T1425" + QByteArray::number(second) + "Z", "+15550100",
                    "Hello");
}

static QByteArray messages(int count)
{
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += message(10 + i);
    return all;
}

static void interrupt(const QProcess &process, int signalNumber)
{
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), signalNumber), 0);
}

void TestTurns::storesNothingTwiceOnAFreshStore()
{
    ClientProcess client;
    const QString file = client.write(text("same.vmg"), messages(40));
    std::array<QProcess, 4> processes;
    for (QProcess &process : processes)
        client.start(process, {text("add"), text("-q"), file});
    QByteArray output;
    for (QProcess &process : processes) {
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 0);
        output += process.readAllStandardOutput();
    }
    QCOMPARE(output.count("added"), 40);
    QCOMPARE(output.count("present"), 120);
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("40\n"));
}

// Each message is deleted by one of them, whichever that is.
void TestTurns::deletesNothingTwice()
{
    constexpr int count = 700; // more than are deleted at once
    ClientProcess client;
    QByteArray all;
    QByteArray ids;
    for (int i = 1; i <= count; ++i) {
        all += vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray::number(i));
        ids += QByteArray::number(i) + '\n';
    }
    client.fill(all);
    std::array<QProcess, 3> processes;
    for (QProcess &process : processes) {
        client.start(process, {text("delete"), text("--yes"), text("-q"), text("-")});
        process.write(ids);
        process.closeWriteChannel();
    }
    QByteArray output;
    for (QProcess &process : processes) {
        QVERIFY(process.waitForFinished(60000));
        output += process.readAllStandardOutput();
    }
    QCOMPARE(output.count("deleted"), count);
    QCOMPARE(output.count("sms-bad-id"), 2 * count);
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("0\n"));
}

void TestTurns::waitsForAClientThatAdds()
{
    ClientProcess client;
    BusyClient first(client, message(10));
    QVERIFY(first.isBusy());
    QProcess second;
    client.start(second, {text("add"), text("-q"), text("-")});
    second.write(message(11));
    second.closeWriteChannel();
    QVERIFY(second.waitForStarted());
    QVERIFY(first.finish(message(11)));
    QVERIFY(second.waitForFinished(20000));
    QCOMPARE(first.output(), QByteArray("added  1  -:1\nadded  2  -:16\n"));
    QCOMPARE(second.readAllStandardOutput(), QByteArray("present  2  -:1\n"));
}

void TestTurns::givesUpOnAClientThatAdds()
{
    ClientProcess client;
    BusyClient first(client, message(10));
    QVERIFY(first.isBusy());
    const auto outcome =
        client.run({text("add"), text("--timeout"), text("0.5"), text("-")}, message(11));
    QCOMPARE(outcome.exitCode, 5);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.contains("gave no answer in time"), outcome.errors);
    // A dry run and a look at the store need no turn.
    QCOMPARE(client.run({text("add"), text("-n"), text("-")}, message(11)).exitCode, 0);
    QCOMPARE(client.run({text("list"), text("--ids")}).output, QByteArray("1\n"));
    QVERIFY(first.finish());
}

void TestTurns::addsAgainWithoutATurn()
{
    ClientProcess client;
    BusyClient first(client, message(10));
    QVERIFY(first.isBusy());
    const auto outcome = client.run(
        {text("add"), text("-q"), text("--on-duplicate"), text("add"), text("-")}, message(10));
    QCOMPARE(outcome.output, QByteArray("added  2  -:1\n"));
    QVERIFY(first.finish());
}

void TestTurns::leavesNoFolderWithoutAStore()
{
    ClientProcess client;
    const auto outcome = client.run({text("add"), text("-qq"), text("-")},
                                    vMessage("DRAFTS", "20101103T142530Z", "+15550100", "unsent"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(!QFile::exists(client.store()));
}

void TestTurns::givesUpOnAHeldStore_data()
{
    Trouble::addCommandRows({"list", "show 1", "list --modified-since 2024-01-01", "modify 1 -",
                             "modify --read 1", "delete --yes 1", "add -", "calls",
                             "calls wipe --yes", "calls add -", "changes"});
}

void TestTurns::givesUpOnAHeldStore()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    client.fill(message(10));
    const HeldStore holder(client.store());
    QVERIFY(holder.isHeld());
    const auto outcome =
        client.run(QStringList{text("--timeout"), text("0.5")} + arguments, message(11));
    QCOMPARE(outcome.exitCode, 5);
    QCOMPARE(outcome.output, QByteArray());
    Trouble::verifySentence(outcome.errors);
    QVERIFY2(outcome.errors.contains("gave no answer in time"), outcome.errors);
}

void TestTurns::endsAtOnceWhenInterruptedOnAHeldStore_data()
{
    Trouble::addCommandRows({"list", "show 1", "delete --yes 1", "calls", "changes"});
}

void TestTurns::endsAtOnceWhenInterruptedOnAHeldStore()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    client.fill(message(10));
    const HeldStore holder(client.store());
    QVERIFY(holder.isHeld());
    QProcess process;
    client.start(process, arguments);
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(holder.isWaitedFor(), 20000);
    interrupt(process, SIGTERM);
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 143);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    // It did not wait until the library gave up, which it says.
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestTurns::endsAWriteThatIsHeldWhenInterrupted()
{
    ClientProcess client;
    BusyClient busy(client, {text("add"), text("--chunk"), text("1"), text("-")}, message(10));
    QVERIFY(busy.isBusy());
    {
        const HeldStore holder(client.store());
        QVERIFY(holder.isHeld());
        busy.process.write(message(11));
        QVERIFY(busy.process.waitForBytesWritten());
        QTRY_VERIFY_WITH_TIMEOUT(holder.isWaitedFor(), 20000);
        QVERIFY(busy.endBySignal(SIGINT));
    }
    QCOMPARE(busy.process.exitCode(), 130);
    QCOMPARE(busy.output(),
             QByteArray("added  1  -:1\n"
                        "failed  -:16  sms-store: not known, as the store cannot be read back\n"
                        "2 read, 1 added, 0 present, 0 refused, 1 failed\n"));
}

void TestTurns::closesNoStoreThatIsHeld()
{
    ClientProcess client;
    BusyClient busy(client, message(10));
    QVERIFY(busy.isBusy());
    {
        const HeldStore holder(client.store());
        QVERIFY(holder.isHeld());
        QVERIFY(busy.finish());
    }
    QCOMPARE(busy.process.exitCode(), 0);
    QCOMPARE(client.run({text("list"), text("--ids")}).output, QByteArray("1\n"));
}

void TestTurns::stopsShowingWhenInterrupted()
{
    constexpr int count = 300000;
    ClientProcess client;
    client.fill(message(10));
    QProcess process;
    client.start(process, {text("show"), text("-o"), text("ndjson"), text("-")});
    process.write(QByteArray("1\n").repeated(count));
    process.closeWriteChannel();
    QVERIFY(process.waitForStarted());
    // The store is open once the client has its database mapped.
    const auto isOpen = [&] {
        QFile maps(text("/proc/%1/maps").arg(process.processId()));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/store/db/");
    };
    QTRY_VERIFY_WITH_TIMEOUT(isOpen(), 20000);
    interrupt(process, SIGINT);
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 130);
    QVERIFY(process.readAllStandardOutput().count('\n') < count);
}

QTEST_GUILESS_MAIN(TestTurns)
#include "tst_turns.moc"
