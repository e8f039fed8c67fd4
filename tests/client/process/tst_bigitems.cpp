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

// What a client took at most, of all that have ended.
static qint64 peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss * kibibyte;
}

//! Adds so many messages of 2 MiB, which --rejects collects where they are refused.
//! \return the exit code
static int add(const QByteArray &box, int count)
{
    const ClientProcess client;
    const QString path = client.filePath(text("all.vmg"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("a test file cannot be written");
    for (int i = 0; i < count; ++i)
        file.write(vMessage(box, "20240105T081500Z", "+15550100",
                            QByteArray::number(i) + QByteArray(2 * mebibyte, 'x')));
    file.close();
    return client
        .run({text("add"), text("-qq"), text("--rejects"), client.filePath(text("mend.txt")), path})
        .exitCode;
}

void TestBigItems::areRefusedInFlatMemory()
{
    QCOMPARE(add("DRAFTS", 4), 1);
    const qint64 few = peakMemory();
    QCOMPARE(add("DRAFTS", 60), 1);
    const qint64 growth = peakMemory() - few;
    QVERIFY2(growth < 8 * mebibyte, QByteArray::number(growth).constData());
}

void TestBigItems::areAddedInFlatMemory()
{
    QCOMPARE(add("INBOX", 10), 0);
    const qint64 few = peakMemory();
    QCOMPARE(add("INBOX", 60), 0);
    const qint64 growth = peakMemory() - few;
    QVERIFY2(growth < 8 * mebibyte, QByteArray::number(growth).constData());
}

QTEST_GUILESS_MAIN(TestBigItems)
#include "tst_bigitems.moc"
