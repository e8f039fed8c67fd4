// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectoryfixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRandomGenerator>

#include <sys/stat.h>

//! Stores of older formats: read as they are, brought up to date by the first write, and whole
//! wherever that is broken off.
class TestFormats : public QObject, private StoreDirectoryFixture
{
    Q_OBJECT
private Q_SLOTS:
    void init() { begin(); }
    void anOlderStoreIsReadAsItIs_data() { archives(); }
    void anOlderStoreIsReadAsItIs();
    void theFirstWriteBringsItUpToDate_data() { archives(); }
    void theFirstWriteBringsItUpToDate();
    void aProcessThatReadBringsItUpToDate();
    void aReaderFindsTheNewDatabase();
    void deletingBringsItUpToDate();
    void aKilledUpgradeGoesOn_data();
    void aKilledUpgradeGoesOn();
    void aBrokenOffUpgradeGoesOnWhereItWas();
    void whatWasWrittenMeanwhileIsCopiedToo();
    void aLinkInTheNewDatabaseIsNotFollowed();
    void killedAnywhereNothingIsLost();
    void aNewDatabaseThatIsNotWholeTakesNoPlace();
    void withoutRoomItStaysAsItWas();
    void anUpgradeIsTold();
    void aReadGivesUpBeforeAnUpgradeDoes();

private:
    void archives();
    void unpack(const QString &archive) const;
    void makeOlderStore(int count) const;
    void breakOff() const;
    QByteArray query(const char *text, const char *database = "db") const;
    QStringList names() const;
};

namespace {

const QString Dump = QStringLiteral("dump");

//! strace with which a program is killed at one of its calls.
QStringList killAt(const QString &stop)
{
    return {
        QStringLiteral("strace"), QStringLiteral("-f"),
        QStringLiteral("-o"),     QStringLiteral("/dev/null"),
        QStringLiteral("-e"),     QStringLiteral("trace=") + stop.section(QLatin1Char(':'), 0, 0),
        QStringLiteral("-e"),     QStringLiteral("inject=%1:signal=KILL").arg(stop)};
}

//! strace with which the first of such calls takes so many seconds.
QStringList delayedAt(const QString &call, int seconds)
{
    return {QStringLiteral("strace"),
            QStringLiteral("-f"),
            QStringLiteral("-o"),
            QStringLiteral("/dev/null"),
            QStringLiteral("-e"),
            QStringLiteral("trace=") + call,
            QStringLiteral("-e"),
            QStringLiteral("inject=%1:delay_enter=%2s:when=1").arg(call).arg(seconds)};
}

quint64 inode(const QString &path)
{
    struct stat status;
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
}

QStringList expectedLines()
{
    QStringList lines = QString::fromUtf8(contents(QStringLiteral(STORES "/format-1.expected")))
                            .split(QLatin1Char('\n'));
    lines.removeLast();
    return lines;
}

} // namespace

void TestFormats::archives()
{
    QTest::addColumn<QString>("archive");
    QTest::newRow("the first") << QStringLiteral("format-1-first");
    QTest::newRow("with an index of modification") << QStringLiteral("format-1");
}

void TestFormats::unpack(const QString &archive) const
{
    QCOMPARE(QProcess::execute(
                 QStringLiteral("tar"),
                 {QStringLiteral("-xzf"), QStringLiteral(STORES "/%1.tar.gz").arg(archive),
                  QStringLiteral("--no-same-owner"), QStringLiteral("-C"), m_directory->path()}),
             0);
}

void TestFormats::makeOlderStore(int count) const
{
    QCOMPARE(QProcess::execute(QStringLiteral(OLDERSTORE), {m_store, QString::number(count)}), 0);
}

//! Has a first write to an older store killed when a part has been copied.
void TestFormats::breakOff() const
{
    // Making the new database takes some of these calls, and each portion two.
    int copied = 0;
    for (int call = 16; copied == 0; ++call) {
        QDir(path("db.new")).removeRecursively();
        const StoreProcess killed(m_store, killAt(QStringLiteral("fdatasync:when=%1").arg(call)));
        QVERIFY(!killed.run({Add, QStringLiteral("1")}).ended);
        copied = query("SELECT count(*) FROM \"kv:Event\"", "db.new").trimmed().toInt();
    }
    QCOMPARE(contents(path("korvasync-store")), QByteArray("1\n"));
    QVERIFY2(copied < 6000, qPrintable(QString::number(copied)));
}

//! What the database holds, as SQLite prints it.
QByteArray TestFormats::query(const char *text, const char *database) const
{
    QProcess sqlite;
    sqlite.start(QStringLiteral("sqlite3"),
                 {path(database) + QStringLiteral("/urn%3Akorvasync%3Ahistory.db"),
                  QString::fromLatin1(text)});
    return sqlite.waitForFinished(60000) ? sqlite.readAllStandardOutput() : QByteArray();
}

//! What lies in the store's folder.
QStringList TestFormats::names() const
{
    return QDir(m_store).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                   QDir::Name);
}

void TestFormats::anOlderStoreIsReadAsItIs()
{
    QFETCH(QString, archive);
    unpack(archive);
    const QByteArray meta = contents(path(Meta));
    const QByteArray history = contents(path(History));
    const auto outcome = StoreProcess(m_store).run({Dump});
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(int(outcome.lines.size()), 48);
    QCOMPARE(outcome.lines, expectedLines());
    QVERIFY(contents(path(Meta)) == meta);
    QVERIFY(contents(path(History)) == history);
    QCOMPARE(contents(path("korvasync-store")), QByteArray("1\n"));
    QCOMPARE(names(),
             (QStringList{QStringLiteral("db"), QStringLiteral("korvasync-store"),
                          QStringLiteral("lock")}));
}

void TestFormats::theFirstWriteBringsItUpToDate()
{
    QFETCH(QString, archive);
    unpack(archive);
    const auto outcome = StoreProcess(m_store).run({Add, QStringLiteral("1")});
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.lines, QStringList{QStringLiteral("49 text00")});
    QCOMPARE(contents(path("korvasync-store")), QByteArray("2\n"));
    QCOMPARE(names(),
             (QStringList{QStringLiteral("db"), QStringLiteral("korvasync-store"),
                          QStringLiteral("lock")}));

    QStringList lines = StoreProcess(m_store).run({Dump}).lines;
    QCOMPARE(lines.filter(QStringLiteral("text0")).size(), 1);
    lines.erase(
        std::remove_if(lines.begin(), lines.end(),
                       [](const QString &line) { return line.startsWith(QLatin1String("49|")); }),
        lines.end());
    QCOMPARE(lines, expectedLines());

    QCOMPARE(query("SELECT \"kv:lastEventId\", \"kv:lastConversationId\", \"kv:lastChange\","
                   " length(\"kv:storeId\") FROM \"kv:IdCounter\""),
             QByteArray("49|24|49|16\n"));
    QCOMPARE(query("SELECT count(*), sum(\"kv:change\" = \"kv:id\") FROM \"kv:Event\""),
             QByteArray("49|49\n"));
    QCOMPARE(query("SELECT \"kv:id\", \"kv:time\", \"kv:partyKey\" FROM \"kv:Event\""
                   " WHERE \"kv:id\" IN (1, 5, 44, 45) ORDER BY 1"),
             QByteArray("1|1704442500000|15550100\n"
                        "5|1704625200000|-17250519270440\n"
                        "44|1711846734000|15550100\n"
                        "45|1711846740000|15550101\n"));
    QCOMPARE(query("SELECT count(*) FROM \"kv:Tombstone\""), QByteArray("0\n"));
    QCOMPARE(query("SELECT count(*), count(\"kv:endKey\") FROM \"nmo:CommunicationChannel\""),
             QByteArray("24|24\n"));
}

void TestFormats::aProcessThatReadBringsItUpToDate()
{
    unpack(QStringLiteral("format-1"));
    QCOMPARE(StoreProcess(m_store).run({QStringLiteral("read-and-add")}).lines,
             (QStringList{QStringLiteral("read"), QStringLiteral("49")}));
    QCOMPARE(contents(path("korvasync-store")), QByteArray("2\n"));
}

// As when any store is replaced, the next request fails, and the one after it is carried out.
void TestFormats::aReaderFindsTheNewDatabase()
{
    unpack(QStringLiteral("format-1"));
    const StoreProcess program(m_store);
    QProcess reader;
    program.start(&reader, {QStringLiteral("read-at-each-line")});
    const auto ask = [&] {
        reader.write("\n");
        while (!reader.canReadLine() && reader.waitForReadyRead(60000)) { }
        return reader.readLine();
    };
    QCOMPARE(ask(), QByteArray("read\n"));
    QCOMPARE(program.run({Add, QStringLiteral("1")}).lines.size(), 1);
    QCOMPARE(ask(), QByteArray("not read\n"));
    QCOMPARE(ask(), QByteArray("read\n"));
    reader.closeWriteChannel();
    const auto outcome = StoreProcess::finish(&reader);
    QVERIFY2(outcome.errors.contains(QLatin1String("was moved or replaced")),
             qPrintable(outcome.errors));
}

void TestFormats::deletingBringsItUpToDate()
{
    unpack(QStringLiteral("format-1"));
    QProcess process;
    StoreProcess(m_store).start(&process, {QStringLiteral("remove-and-stay"), QStringLiteral("3")});
    QVERIFY(process.waitForReadyRead(60000));
    QTRY_COMPARE_WITH_TIMEOUT(
        query("SELECT \"kv:deletedId\", \"kv:deletedType\", \"kv:deletedChange\""
              " FROM \"kv:Tombstone\""),
        QByteArray("3|2|49\n"), 20000);
    process.closeWriteChannel();
    QVERIFY(StoreProcess::finish(&process).ended);
    QCOMPARE(query("SELECT count(*) FROM \"kv:Event\""), QByteArray("47\n"));
}

void TestFormats::aKilledUpgradeGoesOn_data()
{
    QTest::addColumn<QString>("stop");
    QTest::addColumn<QByteArray>("marker"); // that is there then
    // Calls that an upgrade makes on its way.
    for (const char *stop : {
             "mkdirat:when=1", // of the new database
             "rename:when=1", "fdatasync:when=1", "fdatasync:when=9", "fdatasync:when=20",
             "unlink:when=5",
             "fsync:when=8",    // what was made is brought to the disk
             "renameat:when=1", // the marker
         })
        QTest::newRow(stop) << QString::fromLatin1(stop) << QByteArray("1\n");
    for (const char *stop : {
             "renameat:when=2", // the old database gives up its name
             "renameat:when=3", // the new one takes it
             "unlinkat:when=5", // the old one is removed
             "unlinkat:when=7",
         })
        QTest::newRow(stop) << QString::fromLatin1(stop) << QByteArray("2\n");
}

void TestFormats::aKilledUpgradeGoesOn()
{
    QFETCH(QString, stop);
    QFETCH(QByteArray, marker);
    for (const bool isReadFirst : {false, true}) {
        init();
        unpack(QStringLiteral("format-1"));
        const StoreProcess killed(m_store, killAt(stop));
        QVERIFY(!killed.run({Add, QStringLiteral("1")}).ended);
        QCOMPARE(contents(path("korvasync-store")), marker);
        const StoreProcess program(m_store);
        if (isReadFirst) {
            const auto outcome = program.run({Dump});
            QCOMPARE(outcome.errors, QString());
            QCOMPARE(outcome.lines, expectedLines());
            QCOMPARE(contents(path("korvasync-store")), marker);
        }
        QCOMPARE(program.run({Add, QStringLiteral("1")}).lines,
                 QStringList{QStringLiteral("49 text00")});
        QCOMPARE(names(),
                 (QStringList{QStringLiteral("db"), QStringLiteral("korvasync-store"),
                              QStringLiteral("lock")}));
        QCOMPARE(int(program.run({Dump}).lines.size()), 49);
        QCOMPARE(query("SELECT count(*) FROM \"kv:Event\""), QByteArray("49\n"));
    }
}

void TestFormats::aBrokenOffUpgradeGoesOnWhereItWas()
{
    makeOlderStore(6000);
    breakOff();
    const quint64 begun = inode(path("db.new/meta.db"));
    QVERIFY(begun != 0);
    QCOMPARE(StoreProcess(m_store).run({Add, QStringLiteral("1")}).lines,
             QStringList{QStringLiteral("6001 text00")});
    QCOMPARE(inode(path(Meta)), begun);
    QCOMPARE(query("SELECT count(*), sum(\"kv:id\"), sum(\"kv:change\"), count(DISTINCT \"kv:id\")"
                   " FROM \"kv:Event\""),
             QByteArray("6001|18009001|18009001|6001\n"));
}

// By a program of the older version, which had the store open all the time.
void TestFormats::whatWasWrittenMeanwhileIsCopiedToo()
{
    makeOlderStore(6000);
    breakOff();
    query("UPDATE \"kv:Event\" SET \"kv:text\" = 'meanwhile', \"kv:lastModified\" ="
          " \"kv:lastModified\" + 1 WHERE \"kv:id\" = 2");
    QCOMPARE(StoreProcess(m_store).run({Add, QStringLiteral("1")}).lines,
             QStringList{QStringLiteral("6001 text00")});
    QCOMPARE(query("SELECT \"kv:text\" FROM \"kv:Event\" WHERE \"kv:id\" = 2"),
             QByteArray("meanwhile\n"));
    QCOMPARE(query("SELECT count(*), sum(\"kv:id\") FROM \"kv:Event\""),
             QByteArray("6001|18009001\n"));
}

void TestFormats::aLinkInTheNewDatabaseIsNotFollowed()
{
    makeOlderStore(6000);
    breakOff();
    const QString elsewhere = m_directory->filePath(QStringLiteral("elsewhere"));
    QVERIFY(QFile::rename(path("db.new/meta.db"), elsewhere));
    QVERIFY(QFile::link(elsewhere, path("db.new/meta.db")));
    const QByteArray before = contents(elsewhere);
    QCOMPARE(StoreProcess(m_store).run({Add, QStringLiteral("1")}).lines,
             QStringList{QStringLiteral("6001 text00")});
    QVERIFY(contents(elsewhere) == before);
    QVERIFY(!QFileInfo(path(Meta)).isSymLink());
    QCOMPARE(query("SELECT count(*) FROM \"kv:Event\""), QByteArray("6001\n"));
}

// Five times in a small store; forty times in a store of a hundred thousand with
// KORVASYNC_TEST_LONG.
void TestFormats::killedAnywhereNothingIsLost()
{
    const bool isLong = qEnvironmentVariableIsSet("KORVASYNC_TEST_LONG");
    const int count = isLong ? 100000 : 6000;
    makeOlderStore(count);
    const QString older = m_directory->filePath(QStringLiteral("older"));
    const auto copy = [](const QString &from, const QString &to) {
        return QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-r"), from, to}) == 0;
    };
    QVERIFY(copy(m_store, older));
    const StoreProcess program(m_store);
    for (int round = 0; round < (isLong ? 40 : 5); ++round) {
        if (contents(path("korvasync-store")) != "1\n" || round % 4 == 0) {
            QVERIFY(QDir(m_store).removeRecursively());
            QVERIFY(copy(older, m_store));
        }
        QProcess process;
        program.start(&process, {Add, QStringLiteral("1")});
        const int patience = QRandomGenerator::global()->bounded(isLong ? 3000 : 600);
        process.waitForFinished(patience);
        process.kill();
        process.waitForFinished(60000);
        // What is there is whole, perhaps with the new message.
        const int found = program.list().toInt();
        QVERIFY2(found == count / 2 || found == count / 2 + 1, qPrintable(QString::number(found)));
    }
    QCOMPARE(int(program.run({Add, QStringLiteral("1")}).lines.size()), 1);
    QCOMPARE(contents(path("korvasync-store")), QByteArray("2\n"));
    QCOMPARE(
        query("SELECT sum(\"kv:id\") FROM \"kv:Event\" WHERE \"kv:lastModified\" < 1700000000000"
              " AND \"kv:change\" = \"kv:id\" AND \"kv:time\" = CASE \"kv:folder\" WHEN 4098"
              " THEN \"kv:endTime\" ELSE \"kv:startTime\" END"),
        QByteArray::number(qint64(count) * (count + 1) / 2) + '\n');
}

// The marker says that it is: then the old one is not given away for it.
void TestFormats::aNewDatabaseThatIsNotWholeTakesNoPlace()
{
    makeStore(3);
    QVERIFY(QDir(m_store).mkdir(QStringLiteral("db.new")));
    for (const char *name : {"meta.db", "urn%3Akorvasync%3Ahistory.db"})
        QVERIFY(replace(path("db.new/") + QLatin1String(name), "x"));
    expectRefused(QStringLiteral("the database is damaged"));
    QVERIFY(QDir(path("db.new")).removeRecursively());
    QCOMPARE(StoreProcess(m_store).list(), QStringLiteral("3"));
}

void TestFormats::withoutRoomItStaysAsItWas()
{
    unpack(QStringLiteral("format-1"));
    const QString disk = m_directory->filePath(QStringLiteral("disk"));
    const QString script =
        QStringLiteral("mkdir %1 && mount -t tmpfs -o size=1200k none %1 && cp -r %2 %1 &&"
                       " \"$0\" add 1; \"$0\" dump | wc -l; cat %1/store/korvasync-store;"
                       " ls %1/store | tr '\\n' ' '; echo; mount -o remount,size=60m %1;"
                       " \"$0\" add 1; \"$0\" dump | wc -l; cat %1/store/korvasync-store")
            .arg(disk, m_store);
    const StoreProcess program(disk + QStringLiteral("/store"),
                               {QStringLiteral("unshare"), QStringLiteral("-m"),
                                QStringLiteral("sh"), QStringLiteral("-c"), script});
    const auto outcome = program.run({});
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.lines,
             (QStringList{QStringLiteral("failed"), QStringLiteral("48"), QStringLiteral("1"),
                          QStringLiteral("db korvasync-store lock "), QStringLiteral("49 text00"),
                          QStringLiteral("49"), QStringLiteral("2")}));
    QCOMPARE(outcome.errors,
             QStringLiteral("korvasync.store: The store in %1/store is of an older version and "
                            "could not be brought up to date; see that its disk has room for it "
                            "once more. It is as it was, and can be read.\n")
                 .arg(disk));
}

void TestFormats::anUpgradeIsTold()
{
    unpack(QStringLiteral("format-1"));
    const QStringList watch{QStringLiteral("watch-upgrade")};
    QCOMPARE(StoreProcess(m_store, delayedAt(QStringLiteral("mkdirat"), 1)).run(watch).lines,
             (QStringList{QStringLiteral("seen"), QStringLiteral("over")}));
    QCOMPARE(StoreProcess(m_store).run(watch).lines,
             (QStringList{QStringLiteral("not seen"), QStringLiteral("over")}));
}

// Somebody waits for it in the event loop; an upgrade may take minutes.
void TestFormats::aReadGivesUpBeforeAnUpgradeDoes()
{
    unpack(QStringLiteral("format-1"));
    const StoreProcess program(m_store, delayedAt(QStringLiteral("mkdirat"), 15));
    const auto outcome = program.run({QStringLiteral("read-behind-a-write")});
    QCOMPARE(outcome.lines, (QStringList{QStringLiteral("refused"), QStringLiteral("added")}));
    QVERIFY2(outcome.errors.contains(QLatin1String("is kept busy")), qPrintable(outcome.errors));
}

QTEST_GUILESS_MAIN(TestFormats)
#include "tst_formats.moc"
