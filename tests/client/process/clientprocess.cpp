// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "clientprocess.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

ClientProcess::ClientProcess()
    : environment(QProcessEnvironment::systemEnvironment())
{
    environment.remove(QStringLiteral("KORVASYNC_STORE"));
    // Without an address the bus library would look for a desktop's.
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                       QStringLiteral("unix:path=/nonexistent"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), filePath(QStringLiteral("data")));
    environment.insert(QStringLiteral("TZ"), QStringLiteral("Europe/Helsinki"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
}

void ClientProcess::start(QProcess &process, const QStringList &arguments) const
{
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingDirectory);
    process.start(QStringLiteral(KORVASYNC_CLIENT),
                  QStringList{QStringLiteral("--store"), store()} + arguments);
}

ClientProcess::Outcome ClientProcess::wait(QProcess &process, const QByteArray &input) const
{
    constexpr int patience = 120000; // milliseconds
    Outcome outcome;
    if (!input.isEmpty())
        process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    if (process.exitStatus() == QProcess::NormalExit)
        outcome.exitCode = process.exitCode();
    outcome.output = process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    return outcome;
}

ClientProcess::Outcome ClientProcess::run(const QStringList &arguments,
                                          const QByteArray &input) const
{
    QProcess process;
    start(process, arguments);
    return wait(process, input);
}

ClientProcess::Outcome ClientProcess::runAtTerminal(const QStringList &arguments,
                                                    const QByteArray &typed,
                                                    const std::function<void()> &meanwhile) const
{
    constexpr int patience = 20000; // milliseconds
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        qFatal("there is no terminal");
    QProcess process;
    process.setStandardInputFile(QFile::decodeName(ptsname(terminal)));
    start(process, arguments);
    QByteArray asked;
    if (meanwhile) {
        process.setReadChannel(QProcess::StandardError);
        while (!asked.contains("] ") && process.waitForReadyRead(patience))
            asked += process.readAllStandardError();
        meanwhile();
    }
    if (::write(terminal, typed.constData(), static_cast<size_t>(typed.size())) != typed.size())
        qFatal("nothing can be typed");
    Outcome outcome = wait(process, QByteArray());
    outcome.errors.prepend(asked);
    close(terminal);
    return outcome;
}

QByteArray ClientProcess::onTerminal(const QString &arguments, int columns) const
{
    const QString command =
        QStringLiteral("stty cols %1; exec " KORVASYNC_CLIENT " --store '%2' %3")
            .arg(QString::number(columns), store(), arguments);
    return runProgram(QStringLiteral("script"),
                      {QStringLiteral("-qec"), command, QStringLiteral("/dev/null")})
        .output.replace("\r\n", "\n");
}

ClientProcess::Outcome ClientProcess::runProgram(const QString &program,
                                                 const QStringList &arguments,
                                                 const QByteArray &input) const
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingDirectory);
    process.start(program, arguments);
    return wait(process, input);
}

ClientProcess::Outcome ClientProcess::runOnDisk(const char *size, const char *script) const
{
    QDir().mkpath(filePath(QStringLiteral("disk")));
    const QString prelude =
        text("DISK=%1; KORVASYNC=\"%2 --store $DISK/store\"; "
             "mount -t tmpfs -o size=%3 none $DISK || exit 99; ")
            .arg(filePath(QStringLiteral("disk")), text(KORVASYNC_CLIENT), text(size));
    return runProgram(text("unshare"),
                      {text("-m"), text("sh"), text("-c"), prelude + text(script)});
}

void ClientProcess::fill(const QByteArray &messages) const
{
    const Outcome outcome =
        run({QStringLiteral("add"), QStringLiteral("-q"), QStringLiteral("-")}, messages);
    QVERIFY2(outcome.exitCode == 0, outcome.output + outcome.errors);
}

QByteArray ClientProcess::listed(const QStringList &options) const
{
    return run(QStringList{QStringLiteral("list"), QStringLiteral("-o"), QStringLiteral("ndjson")}
               + options)
        .output;
}

QString ClientProcess::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("a test file cannot be written");
    return path;
}

QByteArray vMessage(const QByteArray &box, const QByteArray &stamp, const QByteArray &number,
                    const QByteArray &body, const QByteArray &status)
{
    QByteArray message("BEGIN:VMSG\r\nVERSION:1.1\r\n");
    message += "X-IRMC-STATUS:" + status + "\r\nX-IRMC-BOX:" + box + "\r\n";
    if (!stamp.isEmpty())
        message += "X-ABC-DT:" + stamp + "\r\n";
    message += "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:" + number + "\r\nEND:VCARD\r\n";
    message += "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS;TYPE=TEXT;CHARSET=UTF-8:" + body
        + "\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
    return message;
}

QByteArray callEntry(const QByteArray &type, const QByteArray &number, int duration,
                     const QByteArray &time)
{
    return "BEGIN:VCALLHISTENTRY\r\nTYPE:" + type + "\r\nTEL:" + number + "\r\nDURATION:"
        + QByteArray::number(duration) + "\r\nCALL-DATETIME:" + time + "\r\nEND:VCALLHISTENTRY\r\n";
}
