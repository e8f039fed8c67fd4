// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "submission_p.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusServiceWatcher>

QString Submission::describe(const QDBusError &error) const
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return QStringLiteral("The modem daemon does not answer.");
    case QDBusError::Disconnected:
    case QDBusError::ServiceUnknown:
        return QStringLiteral("The modem daemon has ended.");
    case QDBusError::AccessDenied:
        return QStringLiteral("The modem daemon does not serve this user.");
    default:
        return QStringLiteral("The modem daemon reports: %1").arg(wordsOf(error, m_message));
    }
}

void Submission::watchForEndOf(const QString &daemon)
{
    auto *watcher = new QDBusServiceWatcher(daemon, QDBusConnection::systemBus(),
                                            QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { finishUnknown(QStringLiteral("The modem daemon has ended.")); });
}

void Submission::finish(Outcome outcome, const QString &problem)
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    Q_EMIT finished(outcome, problem);
}

#include "moc_submission_p.cpp"
