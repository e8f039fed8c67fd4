// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

//! Runs of storeprocess on one store, each a process of its own.
class StoreProcess
{
public:
    explicit StoreProcess(const QString &store, const QStringList &wrapper = {})
        : m_wrapper(wrapper)
    {
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("KORVASYNC_STORE"), store);
        m_environment.remove(QStringLiteral("QT_LOGGING_RULES"));
        // The leak check of a sanitized build cannot run in a process that is traced.
        if (wrapper.value(0) == QLatin1String("strace"))
            m_environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    }

    void setEnvironment(const QString &name, const QString &value)
    {
        m_environment.insert(name, value);
    }

    void start(QProcess *process, const QStringList &arguments) const
    {
        QStringList command = m_wrapper;
        command << QStringLiteral(STOREPROCESS) << arguments;
        process->setProcessEnvironment(m_environment);
        process->start(command.takeFirst(), command);
    }

    struct Outcome
    {
        bool ended; //!< of itself, in time and not by a signal
        QStringList lines;
        QString errors;
        QString first() const { return lines.value(0); }
    };

    static Outcome finish(QProcess *process)
    {
        const bool ended =
            process->waitForFinished(60000) && process->exitStatus() == QProcess::NormalExit;
        QStringList lines =
            QString::fromUtf8(process->readAllStandardOutput()).split(QLatin1Char('\n'));
        lines.removeLast(); // what follows the last line end
        return {ended, lines, QString::fromUtf8(process->readAllStandardError())};
    }

    Outcome run(const QStringList &arguments) const
    {
        QProcess process;
        start(&process, arguments);
        return finish(&process);
    }

    //! What "list" prints first: the number of messages, "refused" or "failed".
    QString list() const { return run({QStringLiteral("list")}).first(); }

private:
    QStringList m_wrapper;
    QProcessEnvironment m_environment;
};
