// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "globaloptions.h"
#include "process/exitcode.h"
#include "process/standardoutput.h"
#include "shared/troublewatch.h"
#include "store/storelocation.h"

#include <QtCore/QByteArrayList>
#include <QtCore/QCommandLineParser>

//! What a command works with.
struct Invocation
{
    const QCommandLineParser &options;
    const QStringList arguments; //!< without the command's own name
    const GlobalOptions &global;
    StoreLocation &location;
    StandardOutput &output;
    const TroubleWatch watch = {}; //!< since the command began

    bool isSet(const char *option) const { return options.isSet(QLatin1String(option)); }
    QString value(const char *option) const { return options.value(QLatin1String(option)); }
};

//! What the help of a command says behind the options.
struct HelpNotes
{
    QString remarks;         //!< lines that begin with a blank stay as they are
    QByteArrayList examples; //!< command lines
    QString exitCodes;
};

//! One verb of the command line, or one of the things that a verb does.
struct Command
{
    const char *name;
    const char *arguments; //!< for the help
    QString summary;       //!< for the help, one line
    QStringList formats;   //!< of -o, the default first
    QList<QCommandLineOption> options;
    ExitCode (*run)(const Invocation &invocation);
    HelpNotes notes = {};
    int globalOptions = 0;       //!< those of GlobalOptions::Meaning that mean something to it
    QList<Command> actions = {}; //!< that the next word names; the verb itself is none of them
    bool printsTextOnTerminals = false; //!< there -o is text by default
};

Command listCommand();
Command showCommand();
Command addCommand();
Command modifyCommand();
Command deleteCommand();
Command callsCommand();
Command changesCommand();
Command conversationsCommand();
Command sendCommand();
Command statsCommand();
Command numbersCommand();
Command dupsCommand();
Command verifyCommand();
