// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// What the library's object files call, read with nm.

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtTest/QTest>

namespace {

//! Names of the functions that the object files take from elsewhere.
QStringList undefinedSymbols()
{
    QFile list(QString::fromLocal8Bit(KORVASYNC_OBJECT_LIST));
    if (!list.open(QIODevice::ReadOnly))
        return {};
    QStringList arguments{QStringLiteral("--undefined-only"), QStringLiteral("--demangle")};
    for (const QByteArray &object : list.readAll().split('\n'))
        arguments.append(QString::fromLocal8Bit(object));
    QProcess nm;
    nm.start(QString::fromLocal8Bit(KORVASYNC_NM), arguments);
    if (!nm.waitForFinished() || nm.exitCode() != 0)
        return {};
    static const QRegularExpression symbol(QStringLiteral("^ *[Uw] (.*)$"));
    QStringList names;
    for (const QByteArray &line : nm.readAllStandardOutput().split('\n')) {
        const auto match = symbol.match(QString::fromLocal8Bit(line));
        if (match.hasMatch())
            names.append(match.captured(1));
    }
    return names;
}

} // namespace

class TestObjectFiles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void noConfigurationIsRead();
    void nothingBlocksOrStartsThreads();
    void nullPointersAreFatalInEveryBuild();

private:
    QStringList symbols;
};

void TestObjectFiles::initTestCase()
{
    symbols = undefinedSymbols();
    QVERIFY(!symbols.filter(QStringLiteral("QObject::deleteLater()")).isEmpty());
}

void TestObjectFiles::noConfigurationIsRead()
{
    static const QRegularExpression reading(QStringLiteral(
        "^((secure_)?getenv|q(get|put|unset)env|qEnvironmentVariable|openat|open|fopen|freopen|"
        "creat"
        "|std::basic_(file|if|of|f)|QProcessEnvironment::|QSettings::|QFile::|QFileInfo::|QDir::"
        "|QSaveFile::|QTemporaryFile::|QStandardPaths::|QLibrary::"
        "|QCoreApplication::(arguments|applicationDirPath))"));
    QCOMPARE(symbols.filter(reading), QStringList());
}

void TestObjectFiles::nothingBlocksOrStartsThreads()
{
    static const QRegularExpression blocking(QStringLiteral(
        "^(sleep|usleep|nanosleep|pthread_|std::thread|std::mutex|QThread::|QMutex|QBasicMutex"
        "|QSemaphore::|QWaitCondition::|QEventLoop::|QCoreApplication::processEvents)"));
    QCOMPARE(symbols.filter(blocking), QStringList());
}

void TestObjectFiles::nullPointersAreFatalInEveryBuild()
{
    QVERIFY(!symbols.filter(QRegularExpression(QStringLiteral("^qt_assert_x\\("))).isEmpty());
}

QTEST_GUILESS_MAIN(TestObjectFiles)
#include "tst_objectfiles.moc"
