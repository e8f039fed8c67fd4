// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "inputfile.h"

#include <vmessage/vmessagescanner.h>

#include <optional>

//! The vMessages of one file, one after the other.
class MessageReader
{
public:
    //! \param path  "-" is standard input
    explicit MessageReader(const QString &path);

    struct Message
    {
        QByteArray bytes; //!< in UTF-8
        quint64 line = 0; //!< where it begins, from 1
    };

    //! Nothing at the end, after an error and when a signal came.
    std::optional<Message> next();

    QString error() const { return errorText; } //!< empty = none so far
    qint64 bytesRead() const { return file.bytesRead(); }
    //! The first bytes of the file, to tell what it is when it has no message.
    const QByteArray &start() const { return firstBytes; }

private:
    InputFile file;
    VMessageScanner scanner;
    QByteArray firstBytes;
    qint64 readAtLastMessage = 0;
    bool ended = false;
    QString errorText;
};
