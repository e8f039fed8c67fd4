// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "input/inputfile.h"
#include "input/inputpaths.h"
#include "input/prefetch.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>

class TestInputFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryFormAsUtf8_data();
    void readsEveryFormAsUtf8();
    void joinsCharactersCutBetweenPieces();
    void readsMoreThanOnePiece();
    void tellsWhyAFileCannotBeRead();
    void findsMessageFilesByNameAndPassesOverTheRest();
    void takesADashForStandardInputBesideAFolderOfThatName();
    void readsSmallFilesAhead();
    void readsAsMuchAheadAsItMay();
    void readsWhatWasReadAhead();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("a test file cannot be written");
        return path;
    }

    QTemporaryDir folder;
};

static QByteArray readAll(InputFile &file)
{
    QByteArray all;
    for (QByteArray piece = file.read(); !piece.isEmpty(); piece = file.read())
        all += piece;
    return all;
}

static QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray all;
    for (const int value : values)
        all += static_cast<char>(value);
    return all;
}

void TestInputFile::readsEveryFormAsUtf8_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("utf8");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("one-byte") << QByteArray("B") << QByteArray("B");
    QTest::newRow("utf8") << QByteArray("B\xC3\xA4") << QByteArray("B\xC3\xA4");
    QTest::newRow("utf8-mark") << QByteArray("\xEF\xBB\xBF"
                                             "B")
                               << QByteArray("B");
    QTest::newRow("latin1-stays") << QByteArray("B\xE4r") << QByteArray("B\xE4r");
    QTest::newRow("little") << bytes({'B', 0, 0xE4, 0}) << QByteArray("B\xC3\xA4");
    QTest::newRow("little-mark") << bytes({0xFF, 0xFE, 'B', 0}) << QByteArray("B");
    QTest::newRow("big") << bytes({0, 'B', 0, 0xE4}) << QByteArray("B\xC3\xA4");
    QTest::newRow("big-mark") << bytes({0xFE, 0xFF, 0, 'B'}) << QByteArray("B");
    QTest::newRow("mark-alone") << bytes({0xFF, 0xFE}) << QByteArray();
    QTest::newRow("odd-end") << bytes({'B', 0, 'C', 0, 'D'}) << QByteArray("BC");
    QTest::newRow("pair") << bytes({'B', 0, 0x3D, 0xD8, 0x00, 0xDE})
                          << QByteArray("B\xF0\x9F\x98\x80");
    QTest::newRow("three-bytes") << bytes({'B', 0, 0xAC, 0x20}) << QByteArray("B\xE2\x82\xAC");
    QTest::newRow("high-half-alone") << bytes({'B', 0, 0x3D, 0xD8, 'C', 0})
                                     << QByteArray("B\xEF\xBF\xBD"
                                                   "C");
    QTest::newRow("low-half-alone") << bytes({'B', 0, 0x00, 0xDE}) << QByteArray("B\xEF\xBF\xBD");
    QTest::newRow("high-half-at-the-end")
        << bytes({'B', 0, 0x3D, 0xD8}) << QByteArray("B\xEF\xBF\xBD");
}

void TestInputFile::readsEveryFormAsUtf8()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, utf8);
    InputFile input(write(QStringLiteral("file"), file));
    QCOMPARE(readAll(input), utf8);
    QCOMPARE(input.error().english, QString());
    QCOMPARE(input.bytesRead(), qint64(file.size()));
}

void TestInputFile::joinsCharactersCutBetweenPieces()
{
    Utf16Converter converter(Utf16Converter::LittleEndian);
    QByteArray utf8;
    for (const char c : bytes({'B', 0, 0x3D, 0xD8, 0x00, 0xDE, 0xAC, 0x20}))
        utf8 += converter.convert(QByteArray(1, c));
    QCOMPARE(utf8 + converter.finish(), QByteArray("B\xF0\x9F\x98\x80\xE2\x82\xAC"));
}

void TestInputFile::readsMoreThanOnePiece()
{
    const QByteArray line("a line of 16 by\n");
    InputFile input(write(QStringLiteral("long"), line.repeated(100000)));
    QVERIFY(input.read().size() < 100000);
    QVERIFY(line.repeated(100000).endsWith(readAll(input)));
    QCOMPARE(input.bytesRead(), qint64(1600000));
}

void TestInputFile::tellsWhyAFileCannotBeRead()
{
    InputFile missing(folder.filePath(QStringLiteral("missing")));
    QCOMPARE(missing.error().english, QStringLiteral("No such file or directory"));
    QCOMPARE(missing.read(), QByteArray());
    InputFile directory(folder.path());
    QCOMPARE(directory.read(), QByteArray());
    QCOMPARE(directory.error().english, QStringLiteral("Is a directory"));
}

void TestInputFile::findsMessageFilesByNameAndPassesOverTheRest()
{
    const QString tree = QStringLiteral("tree/");
    for (const char *name : {"b.vmg", "a/2.VMSG", "a/10.txt", "a/1.vmg", "c.jpg", ".hidden/x.vmg"})
        write(tree + QString::fromLatin1(name), "x");
    const QString root = folder.filePath(QStringLiteral("tree"));
    QVERIFY(QFile::link(root + QStringLiteral("/b.vmg"), root + QStringLiteral("/link.vmg")));
    QVERIFY(QFile::link(root, root + QStringLiteral("/circle")));
    QCOMPARE(mkfifo(QFile::encodeName(root + QStringLiteral("/pipe.vmg")).constData(), S_IRWXU), 0);
    InputPaths found = messageFiles({root, QStringLiteral("-"), QStringLiteral("c.jpg")});
    found.files.replaceInStrings(root, QString());
    found.passedOver.replaceInStrings(root, QString());
    const QStringList expected{QStringLiteral("/.hidden/x.vmg"), QStringLiteral("/a/1.vmg"),
                               QStringLiteral("/a/10.txt"),      QStringLiteral("/a/2.VMSG"),
                               QStringLiteral("/b.vmg"),         QStringLiteral("-"),
                               QStringLiteral("c.jpg")};
    QCOMPARE(found.files, expected);
    const QStringList others{QStringLiteral("/c.jpg"), QStringLiteral("/circle"),
                             QStringLiteral("/link.vmg"), QStringLiteral("/pipe.vmg")};
    QCOMPARE(found.passedOver, others);
}

void TestInputFile::takesADashForStandardInputBesideAFolderOfThatName()
{
    const QString dash = QStringLiteral("-");
    const QString before = QDir::currentPath();
    const QTemporaryDir place;
    QVERIFY(QDir(place.path()).mkdir(dash) && QDir::setCurrent(place.path()));
    const QStringList found = messageFiles({dash}).files;
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(found, QStringList{dash});
}

void TestInputFile::readsSmallFilesAhead()
{
    const QString pipe = folder.filePath(QStringLiteral("pipe")); // opened, it would wait
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), S_IRWXU), 0);
    const QString missing = folder.filePath(QStringLiteral("none"));
    const QStringList paths{write(QStringLiteral("small"), "BEGIN:VMSG\n"),
                            write(QStringLiteral("empty"), ""),
                            write(QStringLiteral("large"), QByteArray(16 * 1024, 'x')),
                            pipe,
                            folder.path(),
                            missing,
                            QStringLiteral("/proc/version"), // longer than it says
                            QStringLiteral("-")};
    const QList<QByteArray> bytes{"BEGIN:VMSG\n", ""};
    Prefetch files([&] { return InputPaths{paths, {}}; });
    QCOMPARE(files.paths().files, paths);
    for (int i = 0; i < paths.size(); ++i) {
        const auto file = files.next();
        QVERIFY(file);
        QCOMPARE(file->path, paths.at(i));
        QCOMPARE(file->bytes.isNull(), i >= bytes.size());
        QCOMPARE(file->bytes, bytes.value(i));
    }
    QVERIFY(!files.next());
    QVERIFY(!files.next());
}

void TestInputFile::readsAsMuchAheadAsItMay()
{
    constexpr int count = 2000; // of 30 MiB in all, of which 8 are held
    const QByteArray bytes(15 * 1024, 'x');
    const QString path = write(QStringLiteral("often"), bytes);
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths += path;
    Prefetch files([&] { return InputPaths{paths, {}}; });
    for (int i = 0; i < count; ++i)
        QCOMPARE(files.next()->bytes, bytes);
    QVERIFY(!files.next());
    // One that nobody takes from comes to its end as well.
    Prefetch ended([&] { return InputPaths{paths, {}}; });
    QVERIFY(ended.next());
}

void TestInputFile::readsWhatWasReadAhead()
{
    InputFile wide(QStringLiteral("no such file"), bytes({0xFF, 0xFE, 'B', 0, 'E', 0}));
    QCOMPARE(readAll(wide), QByteArray("BE"));
    QVERIFY(wide.error().isEmpty());
    QCOMPARE(wide.bytesRead(), qint64(6));
    InputFile empty(QStringLiteral("no such file"), QByteArray(""));
    QCOMPARE(readAll(empty), QByteArray());
    QVERIFY(empty.error().isEmpty());
}

QTEST_GUILESS_MAIN(TestInputFile)
#include "tst_inputfile.moc"
