// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QCommandLineParser>
#include <QtCore/QTimeZone>

#include <chrono>

//! The options that every command has.
struct GlobalOptions
{
    QString store;  //!< empty = the default place
    QString format; //!< empty = the command's default
    bool dryRun = false;
    int quiet = 0; //!< 1 = no summary, 2 = no warnings either
    bool verbose = false;
    QString progress;
    std::chrono::milliseconds timeout = {};
    QTimeZone localZone;
    bool localZoneIsExact = true; //!< else it has the distance of today alone

    QString unknownZone; //!< what TZ holds when that is no zone

    bool argumentsAreUtf8 = true; //!< else the words of the command line have lost something

    enum Meaning { DryRun = 1, ShowsProgress = 2 };

    //! Every command takes all of them; its help shows those that mean something to it.
    //! \param formats  of -o, the default first; empty = all there are
    //! \param meaning  which of the two do
    static QList<QCommandLineOption> declared(const QStringList &formats = {},
                                              int meaning = DryRun | ShowsProgress);

    //! Takes the values of a parsed command line.
    //! \return what is wrong with them; empty = nothing
    QString take(const QCommandLineParser &parser);
};
