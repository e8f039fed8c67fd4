// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

//! What a person's messages leave behind besides the store.
class TestPrivate : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void addingWritesNowhereElse();
    void theStoreIsClosedUnderAnyMask();
    void warningsAndProgressShowNoContent();
    void rejectsAreClosedToOthers();
    void onlyTheTraceShowsContent();
};

namespace {

const QByteArray Number = "+15550177";
const QByteArray Word = "pomegranate";

//! Messages of every fate: added, refused in several ways, cut.
QByteArray mixedMessages()
{
    const QByteArray body = "the " + Word;
    return vMessage("INBOX", "20240501T100000Z", Number, body)
        + vMessage("DRAFT", "20240501T100000Z", Number, body)
        + vMessage("", "20240501T100000Z", Number, body)
        + vMessage("INBOX", "yesterday", Number, body)
        + vMessage("INBOX", "20240501T100000Z", "", body)
        + vMessage("INBOX", "20240501T100000Z", Number, body).chopped(60);
}

bool isBelow(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

} // namespace

// Every file that is opened for writing, made, renamed or linked, in any thread.
void TestPrivate::addingWritesNowhereElse()
{
    ClientProcess client;
    // The leak check of a sanitized build cannot run in a process that is traced.
    client.environment.insert(text("ASAN_OPTIONS"), text("detect_leaks=0"));
    const QString input = client.write(text("in/messages.vmsg"), mixedMessages());
    const QString trace = client.filePath(text("trace"));
    const ClientProcess::Outcome outcome = client.runProgram(
        text("strace"),
        {text("-f"), text("-y"), text("-s"), text("4096"), text("-o"), trace, text("-e"),
         text("trace=openat,open,creat,mkdir,mkdirat,rename,renameat,renameat2,link,linkat,"
              "symlink,symlinkat,memfd_create,mknod,mknodat"),
         text(KORVASYNC_CLIENT), text("--store"), client.store(), text("add"), text("--rejects"),
         client.filePath(text("rejects.vmsg")), input});
    QCOMPARE(outcome.exitCode, 1);
    QFile file(trace);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    const QRegularExpression writes(text("O_WRONLY|O_RDWR|O_CREAT|O_TMPFILE|creat\\(|mkdir|rename|"
                                         "link|memfd_create|mknod"));
    const QRegularExpression quoted(text("\"([^\"]*)\""));
    QStringList written;
    QStringList unnamed;
    for (const QString &line : lines) {
        if (!line.contains(writes) || line.contains(text(" = -1 ")))
            continue;
        if (line.contains(text("O_TMPFILE"))) { // without a name, so that nobody can open it
            unnamed += quoted.match(line).captured(1);
            continue;
        }
        auto path = quoted.globalMatch(line);
        while (path.hasNext())
            written += path.next().captured(1);
    }
    QVERIFY(written.contains(client.store() + text("/korvasync-store"))
            || written.contains(client.store() + text("/lock")));
    const QString rejects = client.filePath(text("rejects.vmsg"));
    for (const QString &path : qAsConst(written)) {
        QVERIFY2(isBelow(path, client.store()) || path == rejects
                     || path.startsWith(text("/proc/self/fd/")) // an unnamed one gets its name
                     || path == text("/dev/null"),
                 qPrintable(path));
    }
    for (const QString &path : qAsConst(unnamed))
        QVERIFY2(path == client.store() || path == client.filePath(QString()), qPrintable(path));
}

void TestPrivate::theStoreIsClosedUnderAnyMask()
{
    const ClientProcess client;
    const QString command =
        text("umask 0; exec %1 --store %2 add -").arg(text(KORVASYNC_CLIENT), client.store());
    QCOMPARE(client
                 .runProgram(text("sh"), {text("-c"), command},
                             vMessage("INBOX", "20240501T100000Z", Number, Word))
                 .exitCode,
             0);
    QStringList open;
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(client.store()) & others));
    QDirIterator entry(client.store(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QString path = entry.next();
        if (QFile::permissions(path) & others)
            open += path;
    }
    QCOMPARE(open, QStringList());
}

void TestPrivate::warningsAndProgressShowNoContent()
{
    const ClientProcess client;
    const ClientProcess::Outcome outcome =
        client.run({text("add"), text("--progress"), text("always"), text("-")}, mixedMessages());
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(!outcome.errors.isEmpty());
    const QByteArray all = outcome.output + outcome.errors; // results name lines, not content
    QVERIFY2(!all.contains(Word), all);
    QVERIFY2(!all.contains(Number.mid(1)), all);
}

void TestPrivate::rejectsAreClosedToOthers()
{
    const ClientProcess client;
    const QString rejects = client.filePath(text("rejects.vmsg"));
    const QString command = text("umask 0; exec %1 --store %2 add --rejects %3 -")
                                .arg(text(KORVASYNC_CLIENT), client.store(), rejects);
    QCOMPARE(client.runProgram(text("sh"), {text("-c"), command}, mixedMessages()).exitCode, 1);
    QCOMPARE(QFile::permissions(rejects)
                 & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
             QFile::Permissions());
}

void TestPrivate::onlyTheTraceShowsContent()
{
    const ClientProcess client;
    client.fill(vMessage("INBOX", "20240501T100000Z", Number, Word));
    const QStringList list{text("list"), text("--count")};
    QCOMPARE(client.run(list).errors, QByteArray());
    QVERIFY(client.run(QStringList{text("-v")} + list).errors.contains(Number));
    const QByteArray help = client.run({text("--help")}).output.simplified();
    QVERIFY2(help.contains("shows numbers and texts"), help);
}

QTEST_GUILESS_MAIN(TestPrivate)
#include "tst_private.moc"
