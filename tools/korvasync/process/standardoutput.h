// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>

//! Data on standard output. What cannot be written is remembered, not lost silently. Files and
//! pipes get every byte as it is. A terminal gets no control character but the ends of lines,
//! whatever a message, a name or a path holds; these become visible signs.
class StandardOutput
{
public:
    StandardOutput();

    //! \param bytes  UTF-8, whole characters
    void write(const QByteArray &bytes);

    enum Emphasis { Plain, Bold, Red };

    //! \a line and its end. The emphasis is for people: it is left out where this is no terminal,
    //! where the terminal is dumb, and where the user has set NO_COLOR (https://no-color.org).
    void writeLine(const QString &line, Emphasis emphasis);

    //! \return whether everything so far has been written
    bool flush();

    //! Whether somebody reads it on a screen.
    static bool isTerminal();

    //! Passes the time, less of it when a signal comes or the reader goes.
    void rest(std::chrono::milliseconds time);

    QString error() const { return m_errorText; }
    bool readerIsGone() const { return m_isBroken; } //!< which is an error as well

private:
    void append(const QByteArray &bytes);
    void fail(int error);

    const bool m_hasTerminal;
    const bool m_hasColours;
    QByteArray m_buffer;
    QString m_errorText;
    bool m_isBroken = false;
};
