// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectoryfixture.h"

#include <QtCore/QCoreApplication>

//! Directories that are no store, or no longer a whole one: never a crash, never a fresh
//! store in the place of a lost one, and one sentence that says what to do.
class TestStoreDirectory : public QObject, private StoreDirectoryFixture
{
    Q_OBJECT
private Q_SLOTS:
    void init() { begin(); }
    void anAbsentStoreIsMadeByTheFirstWrite_data();
    void anAbsentStoreIsMadeByTheFirstWrite();
    void anAbsentStoreIsLookedUpInSilence();
    void theDefaultIsInTheDataHome();
    void aRelativePathIsMeantFromTheStart();
    void aForeignDirectoryIsRefused();
    void aForeignFolderOfOurNameIsLeftAlone();
    void aFolderWithAnotherProgramsLockIsLeftAlone();
    void aLinkToNothingIsRefused();
    void aLinkedStoreIsClosedToOthers();
    void aFileIsRefused();
    void anUnknownFormatIsRefused_data();
    void anUnknownFormatIsRefused();
    void aLostDatabaseIsNotReplaced_data();
    void aLostDatabaseIsNotReplaced();
    void aDamagedDatabaseIsNotReplaced_data();
    void aDamagedDatabaseIsNotReplaced();
    void aDamagedCacheOfTheOntologyIsNoMatter_data();
    void aDamagedCacheOfTheOntologyIsNoMatter();
    void aDatabaseThatAnotherProgramHoldsIsRefused();
    void damageWithinTheRowsFailsTheRead();
    void noIdIsGivenBeyondTheRange_data();
    void noIdIsGivenBeyondTheRange();
    void theLastIdIsGiven();
    void theParentsOfAStoreAreMadeClosed();
    void aReadOnlyDiskIsRefused();
    void aFullDiskFailsTheWrite();
    void aStoreMadeOnAFullDiskIsMadeLater();
};

namespace {

void setLastId(const QString &database, const QString &last)
{
    QProcess sqlite;
    sqlite.start(QStringLiteral("sqlite3"),
                 {database,
                  QStringLiteral("UPDATE \"kv:IdCounter\" SET \"kv:lastEventId\" = %1").arg(last)});
    QVERIFY(sqlite.waitForFinished(60000));
    QCOMPARE(sqlite.exitCode(), 0);
}

//! The command in a mount namespace of its own, with \a mount done before it.
QStringList withMount(const QString &mount)
{
    return {QStringLiteral("unshare"), QStringLiteral("-m"), QStringLiteral("sh"),
            QStringLiteral("-c"), mount + QStringLiteral(" && exec \"$0\" \"$@\"")};
}

} // namespace

void TestStoreDirectory::anAbsentStoreIsMadeByTheFirstWrite_data()
{
    QTest::addColumn<QString>("below");
    QTest::addColumn<bool>("exists");
    QTest::newRow("absent") << QString() << false;
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("absent with its parents") << QStringLiteral("/a/b") << false;
}

void TestStoreDirectory::anAbsentStoreIsMadeByTheFirstWrite()
{
    QFETCH(QString, below);
    QFETCH(bool, exists);
    m_store += below;
    if (exists)
        QVERIFY(QDir().mkpath(m_store));
    const StoreProcess program(m_store);
    const auto refused = program.run({List});
    QCOMPARE(refused.first(), QStringLiteral("refused"));
    QCOMPARE(refused.errors,
             QStringLiteral("korvasync.store: There is no store in %1 yet; add something first, "
                            "or name the directory of another store.\n")
                 .arg(m_store));
    QCOMPARE(QFileInfo::exists(m_store), exists); // reading makes nothing
    if (exists)
        QVERIFY(QDir(m_store).isEmpty());

    makeStore();
    QCOMPARE(contents(path("korvasync-store")), QByteArray("2\n"));
    QCOMPARE(program.list(), QStringLiteral("1"));
}

void TestStoreDirectory::anAbsentStoreIsLookedUpInSilence()
{
    const auto outcome = StoreProcess(m_store).run({QStringLiteral("look-up")});
    QCOMPARE(outcome.first(), QStringLiteral("no result"));
    QCOMPARE(outcome.errors, QString());
    QVERIFY(!QFileInfo::exists(m_store));
}

void TestStoreDirectory::theDefaultIsInTheDataHome()
{
    StoreProcess program{QString()};
    program.setEnvironment(QStringLiteral("XDG_DATA_HOME"), m_directory->path());
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    QVERIFY(QFileInfo::exists(m_directory->filePath(QStringLiteral("korvasync/korvasync-store"))));
}

void TestStoreDirectory::aRelativePathIsMeantFromTheStart()
{
    const StoreProcess program(QStringLiteral("relative"),
                               {QStringLiteral("env"), QStringLiteral("-C"), m_directory->path()});
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    QVERIFY(QFileInfo::exists(m_directory->filePath(QStringLiteral("relative/korvasync-store"))));
}

void TestStoreDirectory::aForeignDirectoryIsRefused()
{
    QVERIFY(QDir().mkpath(m_store));
    QVERIFY(replace(path("letter"), "kept"));
    QFile::setPermissions(m_store, QFile::Permissions(0x7755));
    expectRefused(QStringLiteral("is not a store and not empty"));
    QCOMPARE(QDir(m_store).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("letter")});
    QVERIFY(QFile::permissions(m_store) & QFile::ReadOther); // not ours to change
}

void TestStoreDirectory::aForeignFolderOfOurNameIsLeftAlone()
{
    QVERIFY(QDir().mkpath(path("db.new")));
    QVERIFY(replace(path("db.new/letter"), "kept"));
    expectRefused(QStringLiteral("is not a store and not empty"));
    QCOMPARE(contents(path("db.new/letter")), QByteArray("kept"));
}

// A store's own lock is always empty.
void TestStoreDirectory::aFolderWithAnotherProgramsLockIsLeftAlone()
{
    QVERIFY(QDir().mkpath(m_store));
    QVERIFY(replace(path("lock"), "123\n"));
    QFile::setPermissions(m_store, QFile::Permissions(0x7755));
    expectRefused(QStringLiteral("is not a store and not empty"));
    QCOMPARE(contents(path("lock")), QByteArray("123\n"));
    QCOMPARE(QDir(m_store).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("lock")});
    QVERIFY(QFile::permissions(m_store) & QFile::ReadOther);
}

// To a disk that is away: nothing is made on this one, and reading says so, too.
void TestStoreDirectory::aLinkToNothingIsRefused()
{
    const QString target = m_directory->filePath(QStringLiteral("disk"));
    QVERIFY(QFile::link(target, m_store));
    expectRefused(QStringLiteral("cannot be accessed"));
    QVERIFY(!QFileInfo::exists(target));
}

void TestStoreDirectory::aLinkedStoreIsClosedToOthers()
{
    const QString target = m_directory->filePath(QStringLiteral("target"));
    QVERIFY(QDir().mkpath(target));
    QFile::setPermissions(target, QFile::Permissions(0x7755));
    QVERIFY(QFile::link(target, m_store));
    makeStore();
    QVERIFY(!(QFile::permissions(target) & QFile::ReadOther));
}

void TestStoreDirectory::aFileIsRefused()
{
    QVERIFY(replace(m_store, "kept"));
    expectRefused(QStringLiteral("is not a store and not empty"));
    QCOMPARE(contents(m_store), QByteArray("kept"));
}

void TestStoreDirectory::anUnknownFormatIsRefused_data()
{
    QTest::addColumn<QByteArray>("marker");
    QTest::newRow("newer") << QByteArray("3\n");
    QTest::newRow("older than the first") << QByteArray("0\n");
    QTest::newRow("with a sign") << QByteArray("+2\n");
    QTest::newRow("longer") << QByteArray("10\n");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("noise") << QByteArray("\xff\x00\x01", 3);
}

void TestStoreDirectory::anUnknownFormatIsRefused()
{
    QFETCH(QByteArray, marker);
    makeStore();
    const QByteArray history = contents(path(History));
    QVERIFY(replace(path("korvasync-store"), marker));
    expectRefused(QStringLiteral("has a format that this version does not know"));
    QCOMPARE(contents(path("korvasync-store")), marker);
    QVERIFY(contents(path(History)) == history);
}

void TestStoreDirectory::aLostDatabaseIsNotReplaced_data()
{
    QTest::addColumn<QString>("lost");
    for (const char *name : {"db", Meta, History})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestStoreDirectory::aLostDatabaseIsNotReplaced()
{
    QFETCH(QString, lost);
    makeStore();
    const QString path = m_store + QLatin1Char('/') + lost;
    QVERIFY(QFileInfo(path).isDir() ? QDir(path).removeRecursively() : QFile::remove(path));
    expectRefused(QStringLiteral("has lost its database"));
    QVERIFY(!QFileInfo::exists(path));
}

void TestStoreDirectory::aDamagedDatabaseIsNotReplaced_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("size"); // -1: the beginning is overwritten
    for (const char *name : {Meta, History}) {
        for (const int size : {-1, 0, 10, 4096, 40960})
            QTest::addRow("%s %d", name, size) << QString::fromLatin1(name) << size;
    }
}

void TestStoreDirectory::aDamagedDatabaseIsNotReplaced()
{
    QFETCH(QString, name);
    QFETCH(int, size);
    makeStore(1000);
    const QString path = m_store + QLatin1Char('/') + name;
    QByteArray damaged = contents(path);
    QVERIFY(damaged.size() > 100000);
    if (size < 0)
        damaged.replace(0, 40000, QByteArray(40000, 'x'));
    else
        damaged.truncate(size);
    QVERIFY(replace(path, damaged));
    expectRefused(QStringLiteral("the database is damaged"));
    QVERIFY(contents(path) == damaged);
}

void TestStoreDirectory::aDamagedCacheOfTheOntologyIsNoMatter_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("overwritten");
    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("cut") << 10000 << 0;
    QTest::newRow("noise at the beginning") << 20000 << 20000;
    QTest::newRow("noise behind the beginning") << 20000 << 12000;
}

void TestStoreDirectory::aDamagedCacheOfTheOntologyIsNoMatter()
{
    QFETCH(int, size);
    QFETCH(int, overwritten);
    makeStore();
    const QString cache = path("db/ontologies.gvdb");
    QByteArray damaged = contents(cache);
    QVERIFY(damaged.size() > size);
    damaged.truncate(size);
    damaged.replace(size - overwritten, overwritten, QByteArray(overwritten, 'x'));
    QVERIFY(replace(cache, damaged));
    QCOMPARE(StoreProcess(m_store).list(), QStringLiteral("1"));
    QVERIFY(replace(cache, damaged));
    QCOMPARE(StoreProcess(m_store).run({Add, QStringLiteral("1")}).first(),
             QStringLiteral("2 text00"));
}

void TestStoreDirectory::aDatabaseThatAnotherProgramHoldsIsRefused()
{
    makeStore();
    QProcess holder;
    holder.start(QStringLiteral("sqlite3"), {path(Meta)});
    holder.write("BEGIN IMMEDIATE;\nSELECT 'held';\n");
    QVERIFY(holder.waitForReadyRead(20000));
    const auto outcome = StoreProcess(m_store).run({List});
    QCOMPARE(outcome.first(), QStringLiteral("refused"));
    QVERIFY2(outcome.errors.contains(QLatin1String("is kept busy")), qPrintable(outcome.errors));
    holder.closeWriteChannel();
    QVERIFY(holder.waitForFinished(20000));
    QCOMPARE(StoreProcess(m_store).list(), QStringLiteral("1"));
}

void TestStoreDirectory::damageWithinTheRowsFailsTheRead()
{
    makeStore(2000);
    QByteArray damaged = contents(path(History));
    damaged.replace(200000, 160000, QByteArray(160000, 'x'));
    QVERIFY(replace(path(History), damaged));
    const auto outcome = StoreProcess(m_store).run({List});
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.first(), QStringLiteral("failed")); // no partial rows
    QVERIFY2(outcome.errors.contains(QLatin1String("cannot be read")), qPrintable(outcome.errors));
}

void TestStoreDirectory::noIdIsGivenBeyondTheRange_data()
{
    QTest::addColumn<QString>("last");
    for (const char *last :
         {"2147483647", "2147483648", "4294967296", "9223372036854775807", "-1", "-4294967296"})
        QTest::newRow(last) << QString::fromLatin1(last);
}

void TestStoreDirectory::noIdIsGivenBeyondTheRange()
{
    QFETCH(QString, last);
    makeStore();
    setLastId(path(History), last);
    const auto outcome = StoreProcess(m_store).run({Add, QStringLiteral("1")});
    QCOMPARE(outcome.first(), QStringLiteral("failed"));
    QVERIFY2(outcome.errors.contains(QLatin1String("has no ids left")), qPrintable(outcome.errors));
    QCOMPARE(StoreProcess(m_store).run({List}).lines,
             (QStringList{QStringLiteral("1"), QStringLiteral("1 text00")}));
}

void TestStoreDirectory::theLastIdIsGiven()
{
    makeStore();
    setLastId(path(History), QStringLiteral("2147483646"));
    QCOMPARE(StoreProcess(m_store).run({Add, QStringLiteral("1")}).first(),
             QStringLiteral("2147483647 text00"));
}

void TestStoreDirectory::theParentsOfAStoreAreMadeClosed()
{
    const QString parent = m_directory->filePath(QStringLiteral("a"));
    const StoreProcess program(parent + QStringLiteral("/b/store"),
                               {QStringLiteral("sh"), QStringLiteral("-c"),
                                QStringLiteral("umask 0; exec \"$0\" \"$@\"")});
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    for (const QString &made : {parent, parent + QStringLiteral("/b")})
        QCOMPARE(QFile::permissions(made) & QFile::Permissions(0x77), QFile::Permissions());
}

void TestStoreDirectory::aReadOnlyDiskIsRefused()
{
    makeStore();
    const StoreProcess program(
        m_store,
        withMount(
            QStringLiteral("mount --bind %1 %1 && mount -o remount,ro,bind %1").arg(m_store)));
    for (const QString &verb : {List, Add}) {
        const auto outcome = program.run({verb, QStringLiteral("1")});
        QCOMPARE(outcome.first(),
                 verb == List ? QStringLiteral("refused") : QStringLiteral("failed"));
        QVERIFY2(outcome.errors.contains(QLatin1String("cannot be accessed")),
                 qPrintable(outcome.errors));
    }
    QCOMPARE(StoreProcess(m_store).list(), QStringLiteral("1"));
}

void TestStoreDirectory::aFullDiskFailsTheWrite()
{
    // On a small disk as many are added as fit; then the disk grows and all goes on.
    const QString disk = m_directory->filePath(QStringLiteral("disk"));
    const QString mount =
        QStringLiteral("mkdir -p %1 && mount -t tmpfs -o size=6m none %1").arg(disk);
    const QString again =
        QStringLiteral("\"$0\" add 100000 >%1/full; tail -n 1 %1/full; grep -c text %1/full; "
                       "\"$0\" list | head -n 1;"
                       " mount -o remount,size=60m %2; \"$0\" add 1; \"$0\" list | head -n 1");
    QStringList command = withMount(mount);
    command.last() = mount + QStringLiteral(" && ") + again.arg(m_directory->path(), disk);
    const auto outcome = StoreProcess(disk + QStringLiteral("/store"), command).run({});
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.lines.size(), 5);
    QCOMPARE(outcome.lines.at(0), QStringLiteral("failed"));
    const int stored = outcome.lines.at(1).toInt();
    QVERIFY(stored >= 100);
    QCOMPARE(outcome.lines.at(2).toInt(), stored);
    QCOMPARE(outcome.lines.at(4).toInt(), stored + 1);
    QVERIFY2(outcome.errors.contains(QLatin1String("cannot be written")),
             qPrintable(outcome.errors));
}

void TestStoreDirectory::aStoreMadeOnAFullDiskIsMadeLater()
{
    const QString disk = m_directory->filePath(QStringLiteral("disk"));
    const QString mount =
        QStringLiteral("mkdir -p %1 && mount -t tmpfs -o size=1m none %1").arg(disk);
    QStringList command = withMount(mount);
    command.last() = mount
        + QStringLiteral(" && \"$0\" add 1; mount -o remount,size=60m %1; \"$0\" list;"
                         " \"$0\" add 1; \"$0\" list | head -n 1")
              .arg(disk);
    const auto outcome = StoreProcess(disk + QStringLiteral("/store"), command).run({});
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.lines,
             (QStringList{QStringLiteral("failed"), QStringLiteral("refused"),
                          QStringLiteral("1 text00"), QStringLiteral("1")}));
}

QTEST_GUILESS_MAIN(TestStoreDirectory)
#include "tst_storedirectory.moc"
