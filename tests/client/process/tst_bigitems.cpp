// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <sys/resource.h>

// Many items that are long themselves, of which only a few may be held at a time.
class TestBigItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areRefusedInFlatMemory();
    void areAddedInFlatMemory();
};

static constexpr qint64 kibibyte = 1024;
static constexpr qint64 mebibyte = 1024 * kibibyte;

static constexpr int few = 10; // more than are held at a time
static constexpr int many = 100;
static constexpr qint64 itemSize = 2 * mebibyte;

// A client that held all would take this four times over, since each item is held at least once.
// The growth of one that holds a few is what the allocator and the database keep back.
static constexpr qint64 mostGrowth = many * itemSize / 4;

// What a client took at most, of all that have ended.
static qint64 peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss * kibibyte;
}

//! Adds so many long messages, which --rejects collects where they are refused.
//! \return the exit code
static int add(const QByteArray &box, int count)
{
    ClientProcess client;
    // glibc would put texts among what each of its arenas keeps for later, once it has seen some
    // as long, and the peak would depend on which thread freed which. Each has its own pages now.
    client.environment.insert(text("MALLOC_MMAP_THRESHOLD_"), QString::number(64 * kibibyte));
    const QString path = client.filePath(text("all.vmg"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("a test file cannot be written");
    for (int i = 0; i < count; ++i)
        file.write(vMessage(box, "20240105T081500Z", "+15550100",
                            QByteArray::number(i) + QByteArray(itemSize, 'x')));
    file.close();
    return client
        .run({text("add"), text("-qq"), text("--rejects"), client.filePath(text("mend.txt")), path})
        .exitCode;
}

void TestBigItems::areRefusedInFlatMemory()
{
    QCOMPARE(add("DRAFTS", few), 1);
    const qint64 peakForFew = peakMemory();
    QCOMPARE(add("DRAFTS", many), 1);
    const qint64 growth = peakMemory() - peakForFew;
    QVERIFY2(growth < mostGrowth, QByteArray::number(growth).constData());
}

void TestBigItems::areAddedInFlatMemory()
{
    QCOMPARE(add("INBOX", few), 0);
    const qint64 peakForFew = peakMemory();
    QCOMPARE(add("INBOX", many), 0);
    const qint64 growth = peakMemory() - peakForFew;
    QVERIFY2(growth < mostGrowth, QByteArray::number(growth).constData());
}

QTEST_GUILESS_MAIN(TestBigItems)
#include "tst_bigitems.moc"
