// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "trouble.h"

#include <QtCore/QDirIterator>
#include <QtCore/QMap>
#include <QtTest/QTest>

using namespace Trouble;

//! What a disk can do to a store: every command says so and leaves the store as it is.
class TestDiskFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aDamagedStoreIsLeftAlone_data();
    void aDamagedStoreIsLeftAlone();
    void aReadOnlyDiskIsLeftAlone_data();
    void aReadOnlyDiskIsLeftAlone();
    void aFullDiskKeepsWhatItHolds_data();
    void aFullDiskKeepsWhatItHolds();

private:
    using Files = QMap<QString, QByteArray>; // by path below the store
    static Files filesOf(const ClientProcess &client);
    //! Gives the client a store with these files, and the commands their input.
    static void put(ClientProcess &client, const Files &files);

    Files whole; // a store of 500 messages and a call
    QByteArray listed;
};

namespace {

const QByteArray hello = vMessage("INBOX", "20101103T142530Z", "+15550100", "Hello");
const QByteArray missed = callEntry("missed", "+15550100", 0, "20101103T142530Z");

const QList<const char *> commands{"list",           "list --modified-since 2024-01-01",
                                   "show 1",         "modify 1 hello.vmg",
                                   "delete --yes 1", "add --on-duplicate add hello.vmg",
                                   "add -n -",       "calls",
                                   "calls wipe -n",  "calls add --on-duplicate add one.txt",
                                   "calls add -n -", "calls wipe --yes"};

using Damage = void (*)(QByteArray &);

} // namespace

Q_DECLARE_METATYPE(Damage)

TestDiskFaults::Files TestDiskFaults::filesOf(const ClientProcess &client)
{
    Files files;
    QDirIterator entry(client.store(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        QFile file(entry.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("a file of the store cannot be read");
        files.insert(file.fileName().mid(client.store().size() + 1), file.readAll());
    }
    return files;
}

void TestDiskFaults::put(ClientProcess &client, const Files &files)
{
    client.workingDirectory = client.filePath(QString());
    client.write(text("hello.vmg"), hello);
    client.write(text("one.txt"), missed);
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        client.write(text("store/") + file.key(), file.value());
}

void TestDiskFaults::initTestCase()
{
    const ClientProcess client;
    QByteArray messages;
    for (int i = 0; i < 500; ++i)
        messages += vMessage("INBOX", "20101103T142530Z", "+15550100", QByteArray::number(i));
    client.fill(messages);
    QCOMPARE(client.run({text("calls"), text("add"), text("-")}, missed).exitCode, 0);
    whole = filesOf(client);
    listed = client.listed();
    QCOMPARE(listed.count('\n'), 500);
}

void TestDiskFaults::aDamagedStoreIsLeftAlone_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("name");
    QTest::addColumn<Damage>("damage");
    const QMap<const char *, Damage> damages{
        {"emptied", [](QByteArray &file) { file.clear(); }},
        {"cut in the head", [](QByteArray &file) { file.truncate(10); }},
        {"cut", [](QByteArray &file) { file.truncate(file.size() / 2); }},
        {"noise in front", [](QByteArray &file) { file.replace(0, 5000, QByteArray(5000, 'x')); }},
        {"noise behind",
         [](QByteArray &file) {
             const auto half = file.size() / 2;
             file.replace(half, half, QByteArray(half, 'x'));
         }},
    };
    for (const char *command : commands) {
        for (const char *name : {"meta", "urn%3Akorvasync%3Ahistory"}) {
            for (auto damage = damages.cbegin(); damage != damages.cend(); ++damage) {
                QTest::addRow("%s, %.4s %s", command, name, damage.key())
                    << QString::fromLatin1(command).split(QLatin1Char(' '))
                    << text("db/%1.db").arg(text(name)) << damage.value();
            }
        }
    }
}

void TestDiskFaults::aDamagedStoreIsLeftAlone()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, name);
    QFETCH(Damage, damage);
    Files damaged = whole;
    QVERIFY(damaged.contains(name));
    damage(damaged[name]);
    ClientProcess client;
    put(client, damaged);
    // Once more on what the first attempt left: the notes of a database that was not closed.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const auto outcome = client.run(arguments, hello);
        QCOMPARE(outcome.exitCode, 3);
        QCOMPARE(outcome.output, QByteArray());
        verifySentence(outcome.errors);
        QVERIFY2(outcome.errors.contains("from a backup"), outcome.errors);
        const Files left = filesOf(client);
        for (auto file = damaged.cbegin(); file != damaged.cend(); ++file)
            QVERIFY2(left.value(file.key()) == file.value(), qPrintable(file.key()));
    }
}

void TestDiskFaults::aReadOnlyDiskIsLeftAlone_data() { addCommandRows(commands); }

void TestDiskFaults::aReadOnlyDiskIsLeftAlone()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    put(client, whole);
    const auto outcome = client.runOnDisk("20m",
                                          "cp -a store $DISK/store; mount -o remount,ro $DISK; "
                                          "$KORVASYNC "
                                              + arguments.join(QLatin1Char(' ')).toLatin1()
                                              + " <hello.vmg; echo $?; "
                                                "diff -r store $DISK/store && echo same");
    QCOMPARE(outcome.output, QByteArray("3\nsame\n"));
    verifySentence(outcome.errors);
    QVERIFY2(outcome.errors.contains("cannot be accessed"), outcome.errors);
}

void TestDiskFaults::aFullDiskKeepsWhatItHolds_data() { addCommandRows(commands); }

// Not a byte is left, not even for the notes that readers of a database share.
void TestDiskFaults::aFullDiskKeepsWhatItHolds()
{
    QFETCH(QStringList, arguments);
    ClientProcess client;
    put(client, whole);
    const auto outcome = client.runOnDisk(
        "20m",
        "cp -a store $DISK/store; dd if=/dev/zero of=$DISK/filling bs=4096 status=none 2>&-; "
        "$KORVASYNC "
            + arguments.join(QLatin1Char(' ')).toLatin1()
            + " <hello.vmg; echo $?; "
              "rm $DISK/filling; $KORVASYNC list -o ndjson; $KORVASYNC calls | wc -l");
    QCOMPARE(outcome.output, QByteArray("3\n" + listed + "1\n"));
    verifySentence(outcome.errors);
    QVERIFY2(outcome.errors.contains("see that its disk has room"), outcome.errors);
}

QTEST_GUILESS_MAIN(TestDiskFaults)
#include "tst_diskfaults.moc"
