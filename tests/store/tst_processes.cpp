// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "heldstore.h"
#include "storeprocess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDirIterator>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>
#include <vector>

//! Several processes on one store, and processes that are killed. Each function has a store
//! of its own.
class TestProcesses : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void severalProcessesAddAtOnce();
    void severalProcessesMakeOneStore();
    void severalProcessesAddTheSameConversations();
    void processesThatStayAgreeWithThoseThatComeAndGo();
    void readersDoNotHoldUpWriters();
    void whatIsReportedIsOnDisk();
    void aKilledProcessLosesNothingReported();
    void aKilledWriterLeavesTheOthersAlone();
    void readsOfABusyStoreAreRefusedWithoutWaitingAgain();
    void aReadGivesUpBeforeAWriteDoes();
    void aReadGivesUpBeforeTheWriteBeforeItDoes();
    void aKilledCreationIsRedone();
    void whatWasTakenIsWrittenBeforeTheProcessEnds();
    void aDeletionDoesNotWaitForTheEndOfTheProcess();
    void theStoreIsPrivateUnderAnyMask();
    void anOpenStoreIsClosedToOthers();
    void worksWithoutTheGlibEventLoop();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_store;
};

namespace {

const QString Add = QStringLiteral("add");

using Processes = std::vector<std::unique_ptr<QProcess>>;

Processes startMany(const StoreProcess &program, int count, const QStringList &arguments)
{
    Processes processes;
    for (int i = 0; i < count; ++i) {
        processes.push_back(std::make_unique<QProcess>());
        program.start(processes.back().get(), arguments);
    }
    return processes;
}

//! The paths below the directory that others than the owner may use in any way.
QStringList openToOthers(const QString &directory)
{
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QStringList open;
    if (QFile::permissions(directory) & others)
        open.append(directory);
    QDirIterator entry(directory, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QString path = entry.next();
        if (QFile::permissions(path) & others)
            open.append(path);
    }
    return open;
}

} // namespace

void TestProcesses::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_store = m_directory->filePath(QStringLiteral("store"));
}

void TestProcesses::severalProcessesAddAtOnce()
{
    const StoreProcess program(m_store);
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    Processes processes = startMany(program, 4, {Add, QStringLiteral("2000")});
    QSet<int> ids{1};
    for (const auto &process : processes) {
        const auto outcome = StoreProcess::finish(process.get());
        QVERIFY(outcome.ended);
        QCOMPARE(outcome.lines.size(), 2000);
        for (const QString &line : outcome.lines)
            ids.insert(line.section(QLatin1Char(' '), 0, 0).toInt());
    }
    QCOMPARE(ids.size(), 8001); // none was given twice
    QCOMPARE(program.list(), QStringLiteral("8001"));
}

void TestProcesses::severalProcessesMakeOneStore()
{
    for (int round = 0; round < 5; ++round) {
        init();
        const StoreProcess program(m_store);
        for (const auto &process : startMany(program, 4, {Add, QStringLiteral("10")})) {
            const auto outcome = StoreProcess::finish(process.get());
            QCOMPARE(outcome.errors, QString());
            QCOMPARE(outcome.lines.size(), 10);
        }
        QCOMPARE(program.list(), QStringLiteral("40"));
    }
}

void TestProcesses::severalProcessesAddTheSameConversations()
{
    const StoreProcess program(m_store);
    QStringList first;
    const Processes processes =
        startMany(program, 3, {QStringLiteral("add-conversations"), QStringLiteral("100")});
    for (const auto &process : processes) {
        const auto outcome = StoreProcess::finish(process.get());
        QCOMPARE(outcome.lines.size(), 100);
        if (first.isEmpty())
            first = outcome.lines;
        QCOMPARE(outcome.lines, first);
    }
}

void TestProcesses::processesThatStayAgreeWithThoseThatComeAndGo()
{
    const StoreProcess program(m_store);
    const QString churn = QStringLiteral("churn");
    const Processes stay = startMany(program, 2, {churn, QStringLiteral("100")});
    for (int i = 0; i < 10; ++i)
        QCOMPARE(program.run({churn, QStringLiteral("2")}).first(), QStringLiteral("agreed"));
    for (const auto &process : stay)
        QCOMPARE(StoreProcess::finish(process.get()).first(), QStringLiteral("agreed"));
    QCOMPARE(program.list(), QStringLiteral("220"));
}

void TestProcesses::readersDoNotHoldUpWriters()
{
    const StoreProcess program(m_store);
    QCOMPARE(program.run({Add, QStringLiteral("2000")}).lines.size(), 2000);
    const Processes writers = startMany(program, 2, {Add, QStringLiteral("2000")});
    for (int i = 0; i < 5; ++i)
        QVERIFY(program.list().toInt() >= 2000);
    for (const auto &process : writers)
        QCOMPARE(StoreProcess::finish(process.get()).lines.size(), 2000);
    QCOMPARE(program.list(), QStringLiteral("6000"));
}

void TestProcesses::whatIsReportedIsOnDisk()
{
    const QString trace = m_directory->filePath(QStringLiteral("trace"));
    const StoreProcess program(
        m_store,
        {QStringLiteral("strace"), QStringLiteral("-f"), QStringLiteral("-y"), QStringLiteral("-o"),
         trace, QStringLiteral("-e"), QStringLiteral("trace=pwrite64,fdatasync,write")});
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines,
             QStringList{QStringLiteral("1 text00")});
    QFile file(trace);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray before = file.readAll();
    before.truncate(before.indexOf("1 text00\\n"));
    // Nothing is written to a log after it was last brought to the disk.
    for (const char *log : {"meta.db-wal", "history.db-wal"}) {
        QList<QByteArray> calls;
        for (const QByteArray &line : before.split('\n')) {
            if (line.contains(log) && (line.contains("pwrite64") || line.contains("fdatasync")))
                calls.append(line);
        }
        QVERIFY(!calls.isEmpty());
        QVERIFY2(calls.last().contains("fdatasync"), calls.last().constData());
    }
}

void TestProcesses::aKilledProcessLosesNothingReported()
{
    const StoreProcess program(m_store);
    QStringList reported;
    for (int round = 0; round < 5; ++round) {
        QProcess process;
        program.start(&process,
                      {Add, QStringLiteral("1000000"), QStringLiteral("r%1-").arg(round)});
        QVERIFY(process.waitForReadyRead(60000));
        for (int i = 0; i < round * 3; ++i)
            QVERIFY(process.waitForReadyRead(60000));
        process.kill();
        QVERIFY(process.waitForFinished(60000));
        QString output = QString::fromUtf8(process.readAllStandardOutput());
        output.truncate(output.lastIndexOf(QLatin1Char('\n'))); // whole lines only
        reported += output.split(QLatin1Char('\n'));
    }
    QStringList stored = program.run({QStringLiteral("list")}).lines;
    stored.removeFirst();
    const QSet<QString> lines(stored.cbegin(), stored.cend());
    for (const QString &line : std::as_const(reported))
        QVERIFY2(lines.contains(line), qPrintable(line));
    // What was not reported is there in whole transactions, and no id twice.
    QCOMPARE(stored.size() % 100, 0);
    QSet<int> ids;
    for (const QString &line : std::as_const(stored))
        ids.insert(line.section(QLatin1Char(' '), 0, 0).toInt());
    QCOMPARE(int(ids.size()), int(stored.size()));
}

void TestProcesses::aKilledWriterLeavesTheOthersAlone()
{
    const StoreProcess program(m_store);
    const Processes processes = startMany(program, 2, {Add, QStringLiteral("5000")});
    QProcess *const killed = processes.at(0).get();
    QVERIFY(killed->waitForReadyRead(60000));
    killed->kill();
    const auto outcome = StoreProcess::finish(processes.at(1).get());
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.lines.size(), 5000);
    QStringList reported = StoreProcess::finish(killed).lines + outcome.lines;
    QStringList stored = program.run({QStringLiteral("list")}).lines;
    QVERIFY(stored.takeFirst().toInt() >= reported.size());
    const QSet<QString> lines(stored.cbegin(), stored.cend());
    QCOMPARE(lines.size(), stored.size());
    for (const QString &line : std::as_const(reported))
        QVERIFY2(lines.contains(line), qPrintable(line));
}

void TestProcesses::readsOfABusyStoreAreRefusedWithoutWaitingAgain()
{
    const StoreProcess program(m_store);
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    {
        const HeldStore lock(m_store);
        QVERIFY(lock.isHeld());
        // With a wait for each this would take ten minutes.
        const auto outcome = program.run({QStringLiteral("count-refused"), QStringLiteral("200")});
        QVERIFY(outcome.ended);
        QCOMPARE(outcome.first(), QStringLiteral("200"));
        QVERIFY2(outcome.errors.contains(QLatin1String("is kept busy")),
                 qPrintable(outcome.errors));
        QCOMPARE(outcome.errors.count(QLatin1Char('\n')), 1);
    }
    QCOMPARE(program.list(), QStringLiteral("1"));
}

void TestProcesses::aReadGivesUpBeforeAWriteDoes()
{
    const StoreProcess program(m_store);
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    QProcess writer;
    {
        const HeldStore lock(m_store);
        QVERIFY(lock.isHeld());
        program.start(&writer, {Add, QStringLiteral("1")});
        QTRY_VERIFY_WITH_TIMEOUT(lock.isWaitedFor(), 20000);
        QCOMPARE(program.list(), QStringLiteral("refused"));
        QVERIFY(lock.isWaitedFor());
    }
    QCOMPARE(StoreProcess::finish(&writer).first(), QStringLiteral("2 text00"));
}

void TestProcesses::aReadGivesUpBeforeTheWriteBeforeItDoes()
{
    const StoreProcess program(m_store);
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    QProcess process;
    {
        const HeldStore lock(m_store);
        QVERIFY(lock.isHeld());
        program.start(&process, {QStringLiteral("read-behind-a-write")});
        QVERIFY(process.waitForReadyRead(60000));
        QVERIFY(lock.isWaitedFor());
    }
    QCOMPARE(StoreProcess::finish(&process).lines,
             (QStringList{QStringLiteral("refused"), QStringLiteral("added")}));
}

void TestProcesses::aKilledCreationIsRedone()
{
    // strace kills the process at a given call of one that creation makes on its way.
    const char *const stops[] = {
        "mkdirat:when=1", // the database's directory
        "fdatasync:when=1",  "fsync:when=1",  "rename:when=1", "fdatasync:when=8",
        "fdatasync:when=11", "unlink:when=2", "unlink:when=5", "unlink:when=7",
        "fsync:when=2", // the look at what was made
        "fsync:when=4",      "fsync:when=7",
        "renameat:when=1", // the marker
        "renameat:when=2", // the database takes its place
        "fsync:when=8",
    };
    for (const char *name : stops) {
        init();
        const QString stop = QString::fromLatin1(name);
        const QString calls = stop.section(QLatin1Char(':'), 0, 0);
        const StoreProcess killed(
            m_store,
            {QStringLiteral("strace"), QStringLiteral("-f"), QStringLiteral("-o"),
             QStringLiteral("/dev/null"), QStringLiteral("-e"), QStringLiteral("trace=") + calls,
             QStringLiteral("-e"), QStringLiteral("inject=%1:signal=KILL").arg(stop)});
        QVERIFY2(!killed.run({Add, QStringLiteral("1")}).ended, qPrintable(stop));
        const StoreProcess program(m_store);
        const auto outcome = program.run({Add, QStringLiteral("1")});
        QVERIFY2(outcome.lines.size() == 1, qPrintable(stop + QLatin1Char(' ') + outcome.errors));
        QVERIFY2(program.list().toInt() >= 1, qPrintable(stop));
        const QStringList names = QDir(m_store).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        QCOMPARE(names.filter(QStringLiteral("db")), QStringList{QStringLiteral("db")});
    }
}

void TestProcesses::whatWasTakenIsWrittenBeforeTheProcessEnds()
{
    const StoreProcess program(m_store);
    const auto outcome = program.run({QStringLiteral("add-and-leave"), QStringLiteral("3000")});
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(program.list(), QStringLiteral("3000"));
}

void TestProcesses::aDeletionDoesNotWaitForTheEndOfTheProcess()
{
    const StoreProcess program(m_store);
    QCOMPARE(program.run({Add, QStringLiteral("1")}).first(), QStringLiteral("1 text00"));
    QProcess process;
    program.start(&process, {QStringLiteral("remove-and-stay"), QStringLiteral("1")});
    QVERIFY(process.waitForReadyRead(60000));
    QTRY_COMPARE_WITH_TIMEOUT(program.list(), QStringLiteral("0"), 20000);
    process.closeWriteChannel();
    QVERIFY(StoreProcess::finish(&process).ended);
}

void TestProcesses::theStoreIsPrivateUnderAnyMask()
{
    const StoreProcess program(m_store,
                               {QStringLiteral("sh"), QStringLiteral("-c"),
                                QStringLiteral("umask 0; exec \"$0\" \"$@\"")});
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    QCOMPARE(openToOthers(m_store), QStringList());
    // Killed, it leaves the files that are there only while it runs.
    QProcess process;
    program.start(&process, {Add, QStringLiteral("1000000")});
    QVERIFY(process.waitForReadyRead(60000));
    process.kill();
    process.waitForFinished(60000);
    QCOMPARE(openToOthers(m_store), QStringList());
}

void TestProcesses::anOpenStoreIsClosedToOthers()
{
    const StoreProcess program(m_store);
    program.run({Add, QStringLiteral("1")});
    QFile::setPermissions(m_store, QFile::Permissions(0x7755));
    QFile::setPermissions(m_store + QStringLiteral("/db/meta.db"), QFile::Permissions(0x6644));
    QCOMPARE(program.list(), QStringLiteral("1"));
    QCOMPARE(openToOthers(m_store), QStringList());
}

void TestProcesses::worksWithoutTheGlibEventLoop()
{
    StoreProcess program(m_store);
    program.setEnvironment(QStringLiteral("QT_NO_GLIB"), QStringLiteral("1"));
    QCOMPARE(program.run({Add, QStringLiteral("250")}).lines.size(), 250);
    QCOMPARE(program.list(), QStringLiteral("250"));
}

QTEST_GUILESS_MAIN(TestProcesses)
#include "tst_processes.moc"
