// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <functional>

//! The real client, on a store of its own that does not exist at the start, in a time zone
//! two hours ahead of UTC in winter, without a session bus.
class ClientProcess
{
public:
    ClientProcess();

    struct Outcome
    {
        int exitCode = -1; //!< -1: it crashed or took too long
        QByteArray output;
        QByteArray errors;
    };

    //! Runs "korvasync --store STORE arguments...".
    Outcome run(const QStringList &arguments, const QByteArray &input = QByteArray()) const;
    //! The same with a terminal as its standard input, at which somebody types.
    //! \param meanwhile  done between the question and the answer; empty = nothing is waited for
    Outcome runAtTerminal(const QStringList &arguments, const QByteArray &typed,
                          const std::function<void()> &meanwhile = {}) const;
    //! What "korvasync --store STORE arguments" prints on a terminal, on both streams, with bare
    //! line feeds. A shell reads the arguments.
    QByteArray onTerminal(const QString &arguments, int columns = 80) const;
    //! Runs any program in the same environment.
    Outcome runProgram(const QString &program, const QStringList &arguments,
                       const QByteArray &input = QByteArray()) const;

    //! Runs a shell script in a mount namespace of its own, with a small disk mounted on
    //! $DISK; $KORVASYNC is the client with a store there.
    Outcome runOnDisk(const char *size, const char *script) const;

    //! Starts the client and leaves it to the caller.
    void start(QProcess &process, const QStringList &arguments) const;

    //! Adds own-form messages, which must all go in.
    void fill(const QByteArray &messages) const;
    QByteArray listed(const QStringList &options = {}) const; //!< "list -o ndjson options..."

    QString store() const { return folder.filePath(QStringLiteral("store")); }
    QString filePath(const QString &name) const { return folder.filePath(name); }
    QString write(const QString &name, const QByteArray &bytes) const; //!< \return its path

    QProcessEnvironment environment;
    QString workingDirectory;

private:
    Outcome wait(QProcess &process, const QByteArray &input) const;

    QTemporaryDir folder;
};

//! One message as phones write it; lines end in CR LF.
QByteArray vMessage(const QByteArray &box, const QByteArray &stamp, const QByteArray &number,
                    const QByteArray &body, const QByteArray &status = "READ");

//! One call as a call-history entry; lines end in CR LF.
QByteArray callEntry(const QByteArray &type, const QByteArray &number, int duration,
                     const QByteArray &time);

inline QString text(const char *utf8) { return QString::fromUtf8(utf8); }
