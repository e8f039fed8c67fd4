// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

//! What a person's messages leave behind besides the store.
class TestPrivate : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void contentIsWrittenNowhereElse();
    void theTitleOfAnAdderShowsNoContent();
    void theTitleOfASenderShowsNoContent();
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

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

//! Its arguments, each ended by a zero.
QByteArray commandLineOf(qint64 process)
{
    return contentOf(text("/proc/%1/cmdline").arg(process));
}

QByteArray commandLine(const ClientProcess &client, const QStringList &arguments)
{
    const QStringList all =
        QStringList{text(KORVASYNC_CLIENT), text("--store"), client.store()} + arguments;
    return all.join(QChar(QChar::Null)).toUtf8() + '\0';
}

//! Whether a piece of a number or text stands there, as short as a thread's name is.
bool showsContent(const QByteArray &bytes)
{
    return bytes.contains(Number.mid(1, 4)) || bytes.contains(Word.left(4));
}

//! The names of those threads that show content.
QStringList threadsThatShowContent(qint64 process)
{
    QStringList names;
    QDirIterator thread(text("/proc/%1/task").arg(process), QDir::Dirs | QDir::NoDotAndDotDot);
    while (thread.hasNext()) {
        const QByteArray name = contentOf(thread.next() + text("/comm"));
        if (showsContent(name))
            names += QString::fromUtf8(name);
    }
    return names;
}

//! A session bus that lets clients wait.
class SilentBus
{
public:
    explicit SilentBus(const QString &path)
        : server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path);
        if (bind(server, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
            || listen(server, 1) != 0)
            qFatal("no bus can be made");
    }
    ~SilentBus() { close(server); }

    bool isAsked() const
    {
        pollfd asked = {server, POLLIN, 0};
        return poll(&asked, 1, 0) == 1;
    }

private:
    Q_DISABLE_COPY(SilentBus)
    int server;
};

bool isBelow(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

} // namespace

// Every file that is opened for writing, made, renamed or linked, in any thread, by commands
// that read, write and sort all there is.
void TestPrivate::contentIsWrittenNowhereElse()
{
    ClientProcess client;
    // The leak check of a sanitized build cannot run in a process that is traced.
    client.environment.insert(text("ASAN_OPTIONS"), text("detect_leaks=0"));
    client.write(text("messages.vmsg"), mixedMessages());
    client.write(text("one.vmsg"), vMessage("INBOX", "20240501T100000Z", Number, "a " + Word));
    client.write(text("calls.txt"), callEntry("incoming", Number, 60, "20240501T100000Z"));
    client.workingDirectory = client.filePath(QString());
    const QString commands = text("korvasync() { %1 --store %2 \"$@\"; }; "
                                  "korvasync add --rejects rejects.vmsg messages.vmsg; "
                                  "id=$(korvasync list --ids | head -n 1); "
                                  "korvasync modify $id - <one.vmsg; "
                                  "korvasync calls add calls.txt; korvasync calls list -o entries; "
                                  "for format in text ndjson vmsg csv mbox android-xml; do "
                                  "korvasync list -o $format >output; done; "
                                  "korvasync stats; korvasync numbers; korvasync dups; "
                                  "printf '%4\\n%3\\n' | korvasync send; "
                                  "korvasync show $id; korvasync delete --yes $id")
                                 .arg(text(KORVASYNC_CLIENT), client.store(),
                                      QString::fromUtf8(Word), QString::fromUtf8(Number));
    const QTemporaryDir traces;
    const ClientProcess::Outcome outcome = client.runProgram(
        text("strace"),
        // A file for each thread, since in one file a call that another thread interrupts is
        // written without its result.
        {text("-ff"), text("-y"), text("-s"), text("4096"), text("-o"),
         traces.filePath(text("trace")), text("-e"),
         text("trace=openat,open,creat,mkdir,mkdirat,rename,renameat,renameat2,link,linkat,"
              "symlink,symlinkat,memfd_create,mknod,mknodat,prctl"),
         text("sh"), text("-c"), commands});
    QVERIFY2(outcome.exitCode == 0, outcome.errors);
    QStringList lines;
    QDirIterator trace(traces.path(), QDir::Files);
    while (trace.hasNext())
        lines += QString::fromUtf8(contentOf(trace.next())).split(QLatin1Char('\n'));
    const QRegularExpression writes(text("O_WRONLY|O_RDWR|O_CREAT|O_TMPFILE|creat\\(|mkdir|rename|"
                                         "link|memfd_create|mknod"));
    // Before a name stands the directory that it is looked for in, unless that is the working one.
    const QRegularExpression quoted(text("(?:<([^>]*)>, )?\"([^\"]*)\""));
    const auto pathOf = [&](const QRegularExpressionMatch &match) {
        const QString folder = match.captured(1);
        const QDir directory(folder.isEmpty() ? client.workingDirectory : folder);
        return QDir::cleanPath(directory.filePath(match.captured(2)));
    };
    QStringList written;
    QStringList unnamed;
    for (const QString &line : lines) {
        if (line.contains(text("prctl("))) // the name of a thread, which everyone can see
            QVERIFY2(!showsContent(line.toUtf8()), qPrintable(line));
        if (!line.contains(writes) || line.contains(text(" = -1 ")))
            continue;
        if (line.contains(text("O_TMPFILE"))) { // without a name, so that nobody can open it
            unnamed += quoted.match(line).captured(2);
            continue;
        }
        auto path = quoted.globalMatch(line);
        while (path.hasNext())
            written += pathOf(path.next());
    }
    QVERIFY(written.contains(client.store() + text("/korvasync-store"))
            || written.contains(client.store() + text("/lock")));
    const QStringList asked{client.filePath(text("rejects.vmsg")), client.filePath(text("output")),
                            text("/dev/null")};
    for (const QString &path : qAsConst(written)) {
        QVERIFY2(isBelow(path, client.store()) || asked.contains(path)
                     || path.startsWith(text("/proc/self/fd/")), // an unnamed one gets its name
                 qPrintable(path));
    }
    for (const QString &path : qAsConst(unnamed)) {
        QVERIFY2(path == text(".") || path == client.store()
                     || QDir(path) == QDir(client.filePath(QString())),
                 qPrintable(path));
    }
}

// What every user of the machine can see of a process: here of one that has stored messages and
// waits for more.
void TestPrivate::theTitleOfAnAdderShowsNoContent()
{
    const ClientProcess client;
    const QStringList arguments{text("add"), text("--chunk"), text("1"), text("-")};
    QProcess process;
    client.start(process, arguments);
    QVERIFY(process.waitForStarted());
    process.write(mixedMessages());
    QTRY_VERIFY_WITH_TIMEOUT(process.bytesAvailable() > 0, 20000);
    QCOMPARE(commandLineOf(process.processId()), commandLine(client, arguments));
    QCOMPARE(threadsThatShowContent(process.processId()), QStringList());
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
}

void TestPrivate::theTitleOfASenderShowsNoContent()
{
    ClientProcess client;
    client.fill(vMessage("INBOX", "20240501T100000Z", "+15550100", "stored"));
    const SilentBus bus(client.filePath(text("bus")));
    client.environment.insert(text("DBUS_SESSION_BUS_ADDRESS"),
                              text("unix:path=") + client.filePath(text("bus")));
    const QStringList arguments{text("send")};
    QProcess process;
    client.start(process, arguments);
    QVERIFY(process.waitForStarted());
    process.write(Number + '\n' + Word);
    process.closeWriteChannel();
    QTRY_VERIFY_WITH_TIMEOUT(bus.isAsked(), 20000);
    QCOMPARE(commandLineOf(process.processId()), commandLine(client, arguments));
    QCOMPARE(threadsThatShowContent(process.processId()), QStringList());
    process.kill();
    QVERIFY(process.waitForFinished());
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
    QVERIFY2(outcome.errors.contains(" done"), outcome.errors); // the progress
    const QByteArray all = outcome.output + outcome.errors;     // results name lines, not content
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
    const QStringList show{text("show"), text("1")};
    QCOMPARE(client.run(show).errors, QByteArray());
    QVERIFY(client.run(QStringList{text("-v")} + show).errors.contains(Number));
    const QByteArray help = client.run({text("--help")}).output.simplified();
    QVERIFY2(help.contains("with numbers and texts"), help);
}

QTEST_GUILESS_MAIN(TestPrivate)
#include "tst_private.moc"
