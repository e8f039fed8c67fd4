// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! Data on standard output. What cannot be written is remembered, not lost silently.
class StandardOutput
{
public:
    void write(const QByteArray &bytes);
    //! \return whether everything so far has been written
    bool flush();

    //! In columns; 0 when it is no terminal.
    static int terminalWidth();

    QString error() const { return errorText; }
    bool readerIsGone() const { return isBroken; } //!< which is an error as well

private:
    QByteArray buffer;
    QString errorText;
    bool isBroken = false;
};
