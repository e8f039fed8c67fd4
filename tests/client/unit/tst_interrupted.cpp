// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "input/inputpaths.h"
#include "input/itemreader.h"
#include "shared/interrupt.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <csignal>

// What reads files, once a signal came. It stays, so no other test may be in this program.
class TestInterrupted : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsNoFurtherInAFile();
    void readsNoFurtherInADevice();
    void findsNoFurtherFiles();

private:
    QTemporaryDir folder;
};

void TestInterrupted::initTestCase()
{
    QFile file(folder.filePath(QStringLiteral("long.vmg")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(QByteArray(1000000, 'x')), qint64(1000000));
    file.close();
    QCOMPARE(messageFiles({folder.path()}).files, QStringList{file.fileName()});
    Interrupt::install();
    QCOMPARE(std::raise(SIGINT), 0);
    QCOMPARE(Interrupt::signalNumber(), SIGINT);
}

void TestInterrupted::readsNoFurtherInAFile()
{
    ItemReader reader(folder.filePath(QStringLiteral("long.vmg")));
    QVERIFY(!reader.next());
    QCOMPARE(reader.bytesRead(), qint64(0));
    QCOMPARE(reader.error().english, QString());
}

void TestInterrupted::readsNoFurtherInADevice()
{
    ItemReader reader(QStringLiteral("/dev/zero")); // which never ends
    QVERIFY(!reader.next());
    QCOMPARE(reader.bytesRead(), qint64(0));
}

void TestInterrupted::findsNoFurtherFiles()
{
    QCOMPARE(messageFiles({folder.path()}).files, QStringList());
}

QTEST_GUILESS_MAIN(TestInterrupted)
#include "tst_interrupted.moc"
