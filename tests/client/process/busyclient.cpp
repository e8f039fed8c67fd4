// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "busyclient.h"

#include <csignal>

static constexpr int resultPatience = 60000; // milliseconds

BusyClient::BusyClient(const ClientProcess &client, const QStringList &arguments,
                       const QByteArray &input, int lines)
    : lines(lines)
{
    client.start(process, arguments);
    process.write(input);
    while (output().count('\n') < lines && process.waitForReadyRead(resultPatience)) { }
}

BusyClient::BusyClient(const ClientProcess &client, const QByteArray &input)
    : BusyClient(client, {text("add"), text("-q"), text("--chunk"), text("1"), text("-")}, input)
{
}

bool BusyClient::isBusy() const
{
    return printed.count('\n') >= lines && process.state() == QProcess::Running;
}

bool BusyClient::finish(const QByteArray &input)
{
    process.write(input);
    process.closeWriteChannel();
    return process.waitForFinished(resultPatience);
}

bool BusyClient::endBySignal(int signalNumber)
{
    return kill(static_cast<pid_t>(process.processId()), signalNumber) == 0
        && process.waitForFinished(resultPatience);
}

QByteArray BusyClient::output()
{
    printed += process.readAllStandardOutput();
    return printed;
}
