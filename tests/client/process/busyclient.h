// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "clientprocess.h"

//! A client whose standard input stays open behind what it has been given: it is at work, has its
//! turn and the store open, and waits for more.
class BusyClient
{
public:
    //! Runs the command until it has printed so many lines of results, or ends.
    BusyClient(const ClientProcess &client, const QStringList &arguments, const QByteArray &input,
               int lines = 1);
    //! The same for "add -q --chunk 1 -".
    BusyClient(const ClientProcess &client, const QByteArray &input);

    bool isBusy() const; //!< the lines have come, and it goes on
    //! Gives it the last of its input. \return whether it ends then
    bool finish(const QByteArray &input = QByteArray());
    //! \return whether it ends by that
    bool endBySignal(int signalNumber);
    //! All that it has printed by now.
    QByteArray output();

    QProcess process;

private:
    const int lines;
    QByteArray printed;
};
