// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <store/storeplace.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <cerrno>
#include <memory>

using namespace CommHistory;

Q_DECLARE_METATYPE(CommHistory::StoreProblem)

//! Where the store is and what is there, as the store and the client see it.
class TestStorePlace : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void whatIsThereIsTold_data();
    void whatIsThereIsTold();
    void theFolderOfAnotherUserIsTold();
    void thePlaceIsChosenBeforeTheEnvironments();
    void thePlaceStaysWhereItWasMeant();
    void theFolderIsMadeOnceAndClosed();

private:
    bool run(const QString &commands) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_store;
};

// What SQLite and the database library make; that it is no database does not matter here.
static const char wholeDatabase[] =
    "mkdir -p $S/db && echo x >$S/db/meta.db && echo x >$S/db/urn%3Akorvasync%3Ahistory.db";

void TestStorePlace::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_store = m_directory->filePath(QStringLiteral("store"));
    qunsetenv("KORVASYNC_STORE");
}

//! In the folder that holds the store's; $S is that of the store.
bool TestStorePlace::run(const QString &commands) const
{
    return QProcess::execute(
               QStringLiteral("sh"),
               {QStringLiteral("-ec"),
                QStringLiteral("cd '%1'; S=store; %2").arg(m_directory->path(), commands)})
        == 0;
}

void TestStorePlace::whatIsThereIsTold_data()
{
    QTest::addColumn<QString>("commands");
    QTest::addColumn<StoreProblem>("problem");
    QTest::addColumn<int>("systemError");
    const auto row = [](const char *name, const char *commands, StoreProblem problem,
                        int systemError = 0) {
        QTest::newRow(name) << QString::fromLatin1(commands) << problem << systemError;
    };
    row("nothing", "true", StoreProblem::Absent);
    row("an empty folder", "mkdir $S", StoreProblem::Absent);
    row("an empty lock", "mkdir $S; : >$S/lock", StoreProblem::Absent);
    row("what a first write leaves",
        "mkdir -p $S/db.new; : >$S/lock; echo 2 >$S/korvasync-store.new;"
        "cd $S/db.new; echo x >meta.db-wal; : >ontologies.gvdb; : >.meta.isrunning",
        StoreProblem::Absent);
    row("a lock that holds something", "mkdir $S; echo 123 >$S/lock", StoreProblem::NotAStore);
    row("such a lock and a database", "mkdir -p $S/db.new; echo 123 >$S/lock",
        StoreProblem::NotAStore);
    row("another user's lock", "mkdir $S; : >$S/lock; chown nobody $S/lock",
        StoreProblem::NotAStore);
    row("a lock that is a link", "mkdir $S; : >lock; ln -s ../lock $S/lock",
        StoreProblem::NotAStore);
    row("a lock that is a folder", "mkdir -p $S/lock", StoreProblem::NotAStore);
    row("an unfinished marker without a lock", "mkdir $S; : >$S/korvasync-store.new",
        StoreProblem::NotAStore);
    row("a database without a lock", "mkdir -p $S/db.new", StoreProblem::NotAStore);
    row("an older database without a marker", "mkdir -p $S/db.old; : >$S/lock",
        StoreProblem::NotAStore);
    row("a letter", "mkdir $S; echo x >$S/letter", StoreProblem::NotAStore);
    row("a letter beside the lock", "mkdir $S; : >$S/lock; echo x >$S/letter",
        StoreProblem::NotAStore);
    row("a letter in a folder of our name",
        "mkdir -p $S/db.new; : >$S/lock; echo x >$S/db.new/letter", StoreProblem::NotAStore);
    row("a folder in a folder of our name", "mkdir -p $S/db.new/meta.db; : >$S/lock",
        StoreProblem::NotAStore);
    row("a file", "echo x >$S", StoreProblem::NotAStore, ENOTDIR);
    row("a link to itself", "ln -s store $S", StoreProblem::NotAStore, ELOOP);
    row("a link to nothing", "ln -s away $S", StoreProblem::NoAccess, ENOENT);
    row("a link to an empty folder", "mkdir there; ln -s there $S", StoreProblem::Absent);
    const auto marked = [&row](const char *name, const QByteArray &commands, StoreProblem problem) {
        row(name, wholeDatabase + (" && : >$S/lock && echo 2 >$S/korvasync-store; " + commands),
            problem);
    };
    marked("a store", "true", StoreProblem::None);
    marked("a store with a letter", "echo x >$S/letter", StoreProblem::None);
    marked("a store without its lock", "rm $S/lock", StoreProblem::None);
    marked("a store that awaits its name", "mv $S/db $S/db.new", StoreProblem::None);
    marked("an older store", "echo 1 >$S/korvasync-store", StoreProblem::None);
    marked("an older store without a database", "echo 1 >$S/korvasync-store; rm -r $S/db",
           StoreProblem::LostDatabase);
    marked("an older store and a new database that is not whole",
           "echo 1 >$S/korvasync-store; mkdir $S/db.new", StoreProblem::None);
    marked("an older database and the new one", "cp -r $S/db $S/db.new; rm $S/db/meta.db",
           StoreProblem::None);
    marked("an older database and a new one without a file",
           "cp -r $S/db $S/db.new; rm $S/db.new/meta.db", StoreProblem::LostDatabase);
    marked("a new database that awaits the name of the older one",
           "cp -r $S/db $S/db.new; mv $S/db $S/db.old", StoreProblem::None);
    marked("an older database that is still there", "cp -r $S/db $S/db.old", StoreProblem::None);
    marked("nothing but an older database", "mv $S/db $S/db.old", StoreProblem::LostDatabase);
    marked("an older database that is a link", "mkdir d; ln -s ../d $S/db.old",
           StoreProblem::ForeignFiles);
    marked("a newer store", "echo 3 >$S/korvasync-store", StoreProblem::UnknownFormat);
    marked("an empty marker", ": >$S/korvasync-store", StoreProblem::UnknownFormat);
    marked("a marker without a database", "rm -r $S/db", StoreProblem::LostDatabase);
    marked("a database without a file", "rm $S/db/meta.db", StoreProblem::LostDatabase);
    marked("a database with an empty file", ": >$S/db/meta.db", StoreProblem::Damaged);
    marked("a database that is a file", "rm -r $S/db; echo x >$S/db", StoreProblem::NoAccess);
    marked("a store with a link", "ln -s letter $S/letter", StoreProblem::ForeignFiles);
    marked("a store with a linked marker", "mv $S/korvasync-store m; ln -s ../m $S/korvasync-store",
           StoreProblem::ForeignFiles);
    marked("a store with a marker that leads to nothing",
           "rm $S/korvasync-store; ln -s away $S/korvasync-store", StoreProblem::ForeignFiles);
    marked("a store with another user's file", "chown nobody $S/db/meta.db",
           StoreProblem::ForeignFiles);
}

void TestStorePlace::whatIsThereIsTold()
{
    QFETCH(QString, commands);
    QFETCH(StoreProblem, problem);
    QFETCH(int, systemError);
    QVERIFY(run(commands));
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System;
    const QStringList before = QDir(m_store).entryList(all);
    const StorePlace::Finding found = StorePlace(m_store).look();
    QCOMPARE(int(found.problem), int(problem));
    QCOMPARE(found.systemError, systemError);
    QCOMPARE(QDir(m_store).entryList(all), before); // a look changes nothing
}

void TestStorePlace::theFolderOfAnotherUserIsTold()
{
    QVERIFY(run(QStringLiteral("mkdir $S there; ln -s there link; chown -h nobody $S link")));
    for (const QString &path : {m_store, m_directory->filePath(QStringLiteral("link"))}) {
        const StorePlace::Finding found = StorePlace(path).look();
        QCOMPARE(int(found.problem), int(StoreProblem::OtherOwner));
        QCOMPARE(found.systemError, 0);
    }
}

void TestStorePlace::thePlaceIsChosenBeforeTheEnvironments()
{
    qputenv("XDG_DATA_HOME", "/invented/data");
    QCOMPARE(StorePlace().path(), QStringLiteral("/invented/data/korvasync"));
    qputenv("KORVASYNC_STORE", "/invented/elsewhere");
    QCOMPARE(StorePlace().path(), QStringLiteral("/invented/elsewhere"));
    const StorePlace chosen(QStringLiteral("/invented/chosen"));
    QCOMPARE(chosen.path(), QStringLiteral("/invented/chosen"));
    chosen.select();
    QCOMPARE(StorePlace().path(), QStringLiteral("/invented/chosen"));
}

void TestStorePlace::thePlaceStaysWhereItWasMeant()
{
    const QString before = QDir::currentPath();
    const QString home = QDir(m_directory->path()).canonicalPath();
    QVERIFY(QDir::setCurrent(home));
    const StorePlace relative(QStringLiteral("a/../store"));
    const StorePlace absolute = relative.absolute();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(relative.path(), QStringLiteral("a/../store"));
    QCOMPARE(absolute.path(), home + QStringLiteral("/store"));
}

void TestStorePlace::theFolderIsMadeOnceAndClosed()
{
    const QString path = m_store + QStringLiteral("/a/b");
    const StorePlace place(path);
    QVERIFY(place.makeFolder());
    QVERIFY(!place.makeFolder());
    for (const QString &made : {m_store, m_store + QStringLiteral("/a"), path})
        QCOMPARE(QFile::permissions(made) & QFile::Permissions(0x77), QFile::Permissions());
}

QTEST_GUILESS_MAIN(TestStorePlace)
#include "tst_storeplace.moc"
