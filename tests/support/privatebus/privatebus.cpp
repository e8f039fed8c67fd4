// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "privatebus.h"

#include <csignal>

PrivateBus::PrivateBus(const char *variable)
{
    constexpr int patience = 20000; // milliseconds
    m_daemon.startBound(QStringLiteral("dbus-daemon"),
                        {QStringLiteral("--session"), QStringLiteral("--nofork"),
                         QStringLiteral("--print-address")});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(patience)) { }
    const QByteArray address = m_daemon.readLine().trimmed();
    qputenv(variable, address);
    m_address = QString::fromLatin1(address);
}

void PrivateBus::stop() { kill(pid_t(m_daemon.processId()), SIGSTOP); }

void PrivateBus::goOn() { kill(pid_t(m_daemon.processId()), SIGCONT); }
