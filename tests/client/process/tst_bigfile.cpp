// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtTest/QTest>

#include <sys/resource.h>

// One file with as many messages as a person writes in ten years.
class TestBigFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void addsInFlatMemory();
    void addsNothingTheSecondTime();

private:
    ClientProcess client;
    QString file;
    qint64 peakForTenThousand = 0; // bytes
    qint64 peakForAll = 0;
};

static constexpr qint64 kibibyte = 1024;
static constexpr qint64 mebibyte = 1024 * kibibyte;

// What a client took at most, of all that have ended: each one that is run here takes more than
// those before it.
static qint64 peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss * kibibyte;
}

// As backup programs of touch phones write it: no envelope, quoted-printable with soft breaks,
// the second one inside a character. Two of three messages came in.
static QString writeMessages(const ClientProcess &client, int count)
{
    const QString path = client.filePath(QString::number(count) + text(".vmsg"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("a test file cannot be written");
    const QDateTime first(QDate(2010, 1, 1), QTime(0, 0), Qt::UTC);
    for (int i = 0; i < count; ++i) {
        const QByteArray time =
            first.addSecs(37 * i).toString(QStringLiteral("yyyy/MM/dd hh:mm:ss")).toLatin1();
        file.write("BEGIN:VMSG\r\nVERSION:1.1\r\nBEGIN:VCARD\r\nTEL:+1555"
                   + QByteArray::number(1000 + i % 200)
                   + "\r\nEND:VCARD\r\nBEGIN:VBODY\r\nX-BOX:" + (i % 3 == 0 ? "SENDBOX" : "INBOX")
                   + "\r\nX-READ:READ\r\nX-TYPE:SMS\r\nDate:" + time
                   + " GMT\r\nSubject;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=84hnlich wie "
                     "andere, aber =\r\nnur fast: es ist die Nummer "
                   + QByteArray::number(i)
                   + " =F0=9F=\r\n=98=80=0D=0Aund h=C3=B6rt hier auf\r\nEND:VBODY\r\nEND:VMSG\r\n");
    }
    return path;
}

// What is printed stays outside this program, whose own memory would count as well.
static QByteArray summaryOf(const ClientProcess &client, const QStringList &arguments)
{
    constexpr int patience = 300000; // milliseconds
    const QString results = client.filePath(text("results"));
    QProcess process;
    process.setStandardOutputFile(results);
    client.start(process, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0) {
        process.kill();
        process.waitForFinished();
        return process.readAllStandardError();
    }
    QFile file(results);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    file.seek(qMax<qint64>(0, file.size() - 200));
    return file.readAll().trimmed().split('\n').last();
}

void TestBigFile::initTestCase()
{
    const QStringList add{text("add"), text("--on-duplicate"), text("add")};
    const ClientProcess other;
    QCOMPARE(summaryOf(other, add + QStringList{writeMessages(other, 10000)}),
             QByteArray("10000 read, 10000 added, 0 present, 0 refused, 0 failed"));
    peakForTenThousand = peakMemory();
    file = writeMessages(client, 100000);
    QCOMPARE(summaryOf(client, add + QStringList{file}),
             QByteArray("100000 read, 100000 added, 0 present, 0 refused, 0 failed"));
    peakForAll = peakMemory();
}

// The file has 30 MB and its messages more, so a client that held either of them would grow by 26
// MiB at least. The 2 MiB that it does grow by are what the allocator and the database keep back.
void TestBigFile::addsInFlatMemory()
{
    const qint64 growth = peakForAll - peakForTenThousand;
    QVERIFY2(growth < 10 * mebibyte, QByteArray::number(growth).constData());
}

// Reading a folder to know what is there costs most: the library hands it out as a whole, and the
// client has it read the next one meanwhile. That takes about 1 KiB a message and may take twice
// as much, which a small phone still has.
void TestBigFile::addsNothingTheSecondTime()
{
    QCOMPARE(summaryOf(client, {text("add"), file}),
             QByteArray("100000 read, 0 added, 100000 present, 0 refused, 0 failed"));
    constexpr qint64 count = 100000;
    QVERIFY2(peakMemory() < 60 * mebibyte + count * 2500,
             QByteArray::number(peakMemory()).constData());
    QCOMPARE(client.run({text("list"), text("--count")}).output, QByteArray("100000\n"));
}

QTEST_GUILESS_MAIN(TestBigFile)
#include "tst_bigfile.moc"
