// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storedirectoryfixture.h"

#include <unistd.h>

//! Links in and to a store, and files that are somebody else's: what they lead to stays as it is.
class TestStoreLinks : public QObject, private StoreDirectoryFixture
{
    Q_OBJECT
private Q_SLOTS:
    void init() { begin(); }
    void aStoreOfAnotherUserIsRefused();
    void rootRefusesTheStoreOfAUser();
    void anEmptyDirectoryOfAnotherUserIsRefused();
    void aLinkOfAnotherUserIsRefused();
    void aLinkWithinTheStoreIsRefused_data();
    void aLinkWithinTheStoreIsRefused();
    void aFileOfAnotherUserWithinTheStoreIsRefused_data();
    void aFileOfAnotherUserWithinTheStoreIsRefused();
    void whatAnUnfinishedStoreLinksToIsKept_data();
    void whatAnUnfinishedStoreLinksToIsKept();
    void aFolderThatOnlyLooksUnfinishedIsKept();
    void aFileThatIsAlsoAnUnfinishedMarkerIsKept();
    void aLinkInADatabaseThatAwaitsItsNameIsRefused_data();
    void aLinkInADatabaseThatAwaitsItsNameIsRefused();
};

void TestStoreLinks::aStoreOfAnotherUserIsRefused()
{
    makeStore();
    QFile::setPermissions(m_directory->path(), QFile::Permissions(0x7755));
    const StoreProcess nobody(m_store,
                              {QStringLiteral("setpriv"), QStringLiteral("--reuid=nobody"),
                               QStringLiteral("--clear-groups")});
    for (const QString &verb : {List, Add}) {
        const auto outcome = nobody.run({verb, QStringLiteral("1")});
        QCOMPARE(outcome.first(),
                 verb == List ? QStringLiteral("refused") : QStringLiteral("failed"));
        QVERIFY2(outcome.errors.contains(QLatin1String("belongs to another user")),
                 qPrintable(outcome.errors));
    }
}

void TestStoreLinks::rootRefusesTheStoreOfAUser()
{
    makeStore();
    giveToNobody(m_store);
    QVERIFY(QDir().rename(path("lock"), path("old")));
    QVERIFY(QFile::link(m_directory->filePath(QStringLiteral("elsewhere")), path("lock")));
    expectRefused(QStringLiteral("belongs to another user"));
    QVERIFY(!QFileInfo::exists(m_directory->filePath(QStringLiteral("elsewhere"))));
}

void TestStoreLinks::anEmptyDirectoryOfAnotherUserIsRefused()
{
    QVERIFY(QDir().mkpath(m_store));
    giveToNobody(m_store);
    expectRefused(QStringLiteral("belongs to another user"));
    QVERIFY(QDir(m_store).isEmpty());
}

void TestStoreLinks::aLinkOfAnotherUserIsRefused()
{
    const QString target = m_directory->filePath(QStringLiteral("target"));
    QVERIFY(QDir().mkpath(target));
    QVERIFY(QFile::link(target, m_store));
    giveToNobody(m_store);
    expectRefused(QStringLiteral("or the link to it does"));
    QVERIFY(QDir(target).isEmpty());
}

void TestStoreLinks::aLinkWithinTheStoreIsRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"lock", "korvasync-store", "db", Meta, History, "db/meta.db-wal",
          "db/urn%3Akorvasync%3Ahistory.db-shm", "db/ontologies.gvdb", "db.new", "else"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

// Each is moved aside and linked to, or the link leads to a file that is open to others.
void TestStoreLinks::aLinkWithinTheStoreIsRefused()
{
    QFETCH(QString, name);
    makeStore();
    const QString linked = path(qPrintable(name));
    const QString target = m_directory->filePath(QStringLiteral("target"));
    if (QFileInfo::exists(linked))
        QVERIFY(QDir().rename(linked, target));
    else
        QVERIFY(replace(target, "kept"));
    QVERIFY(QFile::link(target, linked));
    const bool isFile = QFileInfo(target).isFile();
    QFile::setPermissions(target, QFile::Permissions(0x7755));
    const QByteArray before = contents(target);
    expectRefused(QStringLiteral("holds a link"));
    QVERIFY(QFile::permissions(target) & QFile::ReadOther);
    QVERIFY(!isFile || contents(target) == before);
}

void TestStoreLinks::aFileOfAnotherUserWithinTheStoreIsRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"lock", "korvasync-store", "db", Meta, History})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestStoreLinks::aFileOfAnotherUserWithinTheStoreIsRefused()
{
    QFETCH(QString, name);
    makeStore();
    giveToNobody(path(qPrintable(name)));
    expectRefused(QStringLiteral("another user's file"));
}

void TestStoreLinks::whatAnUnfinishedStoreLinksToIsKept_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"db.new", "db.new/meta.db", "db.new/sub", "lock", "korvasync-store.x"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

// What a first write leaves that was interrupted, but with a link where the remains are.
void TestStoreLinks::whatAnUnfinishedStoreLinksToIsKept()
{
    QFETCH(QString, name);
    const QString precious = m_directory->filePath(QStringLiteral("precious"));
    QVERIFY(QDir().mkpath(precious) && QDir().mkpath(path("db.new/sub")));
    QVERIFY(QDir(path("db.new")).rmdir(QStringLiteral("sub")));
    QVERIFY(replace(precious + QStringLiteral("/thesis"), "kept"));
    QVERIFY(name == QLatin1String("lock") || replace(path("lock"), QByteArray()));
    QVERIFY(name != QLatin1String("db.new") || QDir(m_store).rmdir(name));
    QVERIFY(QFile::link(precious, path(qPrintable(name))));
    expectRefused(QStringLiteral("is not a store and not empty"));
    QCOMPARE(contents(precious + QStringLiteral("/thesis")), QByteArray("kept"));
}

void TestStoreLinks::aFolderThatOnlyLooksUnfinishedIsKept()
{
    QVERIFY(QDir().mkpath(path("db.new")));
    QVERIFY(replace(path("lock"), QByteArray()) && replace(path("db.new/letter"), "kept"));
    expectRefused(QStringLiteral("is not a store and not empty"));
    QCOMPARE(contents(path("db.new/letter")), QByteArray("kept"));
}

// A hard link is no link that could be refused.
void TestStoreLinks::aFileThatIsAlsoAnUnfinishedMarkerIsKept()
{
    const QString thesis = m_directory->filePath(QStringLiteral("thesis"));
    QVERIFY(QDir().mkpath(m_store));
    QVERIFY(replace(path("lock"), QByteArray()) && replace(thesis, "kept"));
    QCOMPARE(::link(qPrintable(thesis), qPrintable(path("korvasync-store.new"))), 0);
    makeStore();
    QCOMPARE(contents(thesis), QByteArray("kept"));
}

void TestStoreLinks::aLinkInADatabaseThatAwaitsItsNameIsRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"meta.db", "urn%3Akorvasync%3Ahistory.db", "meta.db-wal"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

// A creation that is interrupted at its last step leaves a database that only lacks its name.
void TestStoreLinks::aLinkInADatabaseThatAwaitsItsNameIsRefused()
{
    QFETCH(QString, name);
    makeStore();
    QVERIFY(QDir().rename(path("db"), path("db.new")));
    const QString linked = path("db.new/") + name;
    const QString target = m_directory->filePath(QStringLiteral("target"));
    QVERIFY(QFileInfo::exists(linked) ? QDir().rename(linked, target) : replace(target, "kept"));
    QVERIFY(QFile::link(target, linked));
    const QByteArray before = contents(target);
    expectRefused(QStringLiteral("holds a link"));
    QCOMPARE(contents(target), before);
    QVERIFY(QFileInfo::exists(path("db.new")));
}

QTEST_GUILESS_MAIN(TestStoreLinks)
#include "tst_storelinks.moc"
