// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

// Files that were joined, cut and damaged: no message of them may be lost unsaid.
class TestFilesOfMany : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsFiles_data();
    void addsFiles();
    void readsItsRejectsLikeTheOriginal();
};

static QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

static QStringList add(const QStringList &arguments)
{
    return QStringList{text("add"), text("-o"), text("ndjson")} + arguments;
}

void TestFilesOfMany::addsFiles_data()
{
    QTest::addColumn<QString>("name");
    const QDir folder(QStringLiteral(FILES_DIRECTORY));
    for (const QString &name : folder.entryList({QStringLiteral("*.vmsg")}))
        QTest::newRow(qPrintable(name)) << name;
}

void TestFilesOfMany::addsFiles()
{
    QFETCH(QString, name);
    ClientProcess client;
    client.workingDirectory = QStringLiteral(FILES_DIRECTORY);
    const QByteArray added = client.run(add({name})).output;
    QString expected = name;
    expected.replace(QLatin1String(".vmsg"), QLatin1String(".expected"));
    const QByteArray result = added + '\n' + client.listed();
    QCOMPARE(result.split('\n'),
             contents(client.workingDirectory + QLatin1Char('/') + expected).split('\n'));
}

// Without a folder they are refused; what each lacks besides is forgiven among rejects, too.
void TestFilesOfMany::readsItsRejectsLikeTheOriginal()
{
    const QByteArray whole = vMessage("", "20101103T142530Z", "+15550100", "1");
    QByteArray file;
    for (const char *lost : {"END:VMSG\r\n", "END:VENV\r\nEND:VMSG\r\n", "END:VCARD\r\n", ""})
        file += QByteArray(whole).replace(lost, "");
    QByteArray lf = QByteArray(whole).replace("\r", "").replace("END:VMSG\n", "");
    const QByteArray cut = whole.left(whole.indexOf("1\r\nEND:VBODY") + 3);
    file += lf + cut + whole + whole.mid(whole.indexOf("END:VBODY")) + cut;
    ClientProcess client;
    const QString rejects = client.filePath(text("rejects.vmsg"));
    const auto refused = client.run(add({text("--rejects"), rejects}), file);
    QCOMPARE(refused.exitCode, 1);
    QVERIFY2(refused.output.endsWith("\"read\":9,\"added\":0,\"present\":0,\"refused\":9,"
                                     "\"failed\":0}}\n"),
             refused.output);

    const QString again = client.filePath(text("again.vmsg"));
    const auto added =
        client.run(add({text("--folder"), text("inbox"), text("--rejects"), again, rejects}));
    QVERIFY2(added.output.endsWith("\"read\":9,\"added\":6,\"present\":0,\"refused\":3,"
                                   "\"failed\":0}}\n"),
             added.output);
    QCOMPARE(client.listed().count("\"body\":\"1\""), 6);
    QCOMPARE(contents(again).count("\r\n# "), 2); // each with its own reason alone
}

QTEST_GUILESS_MAIN(TestFilesOfMany)
#include "tst_filesofmany.moc"
