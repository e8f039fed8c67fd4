// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "utf16.h"

#include "shared/text.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

//! Reads a message file or standard input as UTF-8, whatever its bytes are, in pieces of
//! bounded size. Bytes that are not UTF-16 are handed on as they stand: a vMessage names
//! its character set itself. Files that were joined may change between UTF-8 and UTF-16 where a
//! message begins.
class InputFile
{
public:
    //! \param path       "-" is standard input
    //! \param readAhead  all its bytes; null: nobody has read them yet
    explicit InputFile(const QString &path, const QByteArray &readAhead = QByteArray());
    ~InputFile();

    //! The next piece; empty at the end, after an error and when a signal came.
    QByteArray read();

    Reason error() const { return m_trouble; } //!< empty = none so far
    qint64 bytesRead() const { return m_consumed; }

private:
    Q_DISABLE_COPY(InputFile)
    QByteArray readBytes();
    QByteArray readStart();
    QByteArray convertUnread(bool toEnd);

    int m_descriptor = -1;
    bool m_neverWaits = false; // for who writes it
    bool m_started = false;
    bool m_ended = false;
    qint64 m_consumed = 0;
    Reason m_trouble;
    QByteArray m_ahead; // of the file, in place of its descriptor
    QByteArray m_unread;
    std::optional<Utf16Converter> m_converter;
};
