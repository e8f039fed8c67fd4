// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

//! A fault of the disk at any moment of the first add, which makes the store: the client does not
//! crash, what it reports is there, and the same command again completes the work. Some moments of
//! each kind, and every one with KORVASYNC_TEST_LONG.
class TestFirstAdd : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aFaultIsMadeGoodByTheNextAdd_data();
    void aFaultIsMadeGoodByTheNextAdd();
};

namespace {

constexpr int count = 6;

QByteArray messages()
{
    QByteArray all;
    for (int i = 0; i < count; ++i) {
        all += vMessage("INBOX", "20101103T14253" + QByteArray::number(i) + "Z",
                        "+1555010" + QByteArray::number(i % 2), "text " + QByteArray::number(i));
    }
    return all;
}

//! Adds while one system call fails. \return false when there are not so many of them
bool addWithFault(const ClientProcess &client, const QString &call, const QString &fault,
                  ClientProcess::Outcome *outcome)
{
    const QString trace = client.filePath(text("trace"));
    *outcome = client.runProgram(
        text("strace"),
        {text("-f"), text("-qq"), text("-o"), trace, text("-e"), text("trace=") + call, text("-e"),
         text("inject=%1:%2").arg(call, fault), text(KORVASYNC_CLIENT), text("--store"),
         client.store(), text("add"), text("-o"), text("ndjson"), text("--chunk"), text("3"),
         client.filePath(text("messages.vmsg"))});
    QFile file(trace);
    return file.open(QIODevice::ReadOnly) && file.readAll().contains("(INJECTED)");
}

} // namespace

void TestFirstAdd::aFaultIsMadeGoodByTheNextAdd_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("step");
    const struct
    {
        const char *call;
        const char *fault;
        int step;
    } kinds[] = {
        {"pwrite64", "error=EIO:when=%1", 83}, {"pwrite64", "error=EDQUOT:when=%1", 97},
#ifndef SANITIZED // the sanitizers' runtime writes into pipes to probe memory, and must not fail
        {"write", "error=EIO:when=%1", 3},
#endif
        {"fdatasync", "error=EIO:when=%1", 3}, {"fsync", "error=EIO:when=%1", 2},
        {"ftruncate", "error=EIO:when=%1", 2}, {"pread64", "error=EIO:when=%1", 11},
        {"renameat", "error=EIO:when=%1", 1},  {"mkdirat", "error=ENOSPC:when=%1", 1},
    };
    for (const auto &kind : kinds) {
        QTest::addRow("%s %s", kind.call, kind.fault)
            << text(kind.call) << text(kind.fault) << kind.step;
    }
}

void TestFirstAdd::aFaultIsMadeGoodByTheNextAdd()
{
    QFETCH(QString, call);
    QFETCH(QString, fault);
    QFETCH(int, step);
    if (qEnvironmentVariableIsSet("KORVASYNC_TEST_LONG"))
        step = 1;
    const QByteArray all = messages();
    for (int n = 1;; n += step) {
        ClientProcess client;
        // No leaks can be looked for in what is traced.
        client.environment.insert(text("ASAN_OPTIONS"), text("detect_leaks=0"));
        const QStringList again{text("add"), text("-q"), client.write(text("messages.vmsg"), all)};
        ClientProcess::Outcome outcome;
        if (!addWithFault(client, call, fault.arg(n), &outcome))
            break;
        if (outcome.exitCode == 127) // the program could not even be loaded
            continue;
        const QByteArray where = QByteArray::number(n) + ": " + outcome.output + outcome.errors;
        QVERIFY2(outcome.exitCode == 0 || outcome.exitCode == 1 || outcome.exitCode == 3, where);
        const QByteArray listed = client.listed();
        QVERIFY2(listed.count('\n') >= outcome.output.count("\"status\":\"added\""), where);
        QVERIFY2(outcome.exitCode != 0 || listed.count('\n') == count, where);
        const ClientProcess::Outcome next = client.run(again);
        QVERIFY2(next.exitCode == 0, where + next.errors);
        QVERIFY2(client.listed().count('\n') == count, where);
    }
}

QTEST_GUILESS_MAIN(TestFirstAdd)
#include "tst_firstadd.moc"
