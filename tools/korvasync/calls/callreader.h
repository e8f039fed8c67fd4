// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "messages/inputfile.h"

#include <optional>

//! The call-history entries of one file, one after the other. What stands between them is
//! passed over.
class CallReader
{
public:
    //! \param path  "-" is standard input
    explicit CallReader(const QString &path);

    struct Entry
    {
        QByteArray bytes;
        quint64 line = 0; //!< where it begins, from 1
    };

    //! Nothing at the end, after an error and when a signal came. An entry without an end
    //! goes up to the next one, an end without a beginning is one by itself.
    std::optional<Entry> next();

    QString error() const { return errorText; } //!< empty = none so far
    qint64 bytesRead() const { return file.bytesRead(); }
    //! The first line of the file that is not blank, to tell what it is when it has no entry.
    const QByteArray &start() const { return firstLine; }

private:
    bool readLine();

    InputFile file;
    QByteArray buffer;
    decltype(QByteArray().size()) position = 0; // in the buffer
    QByteArray line;                            // the last one read, with its end
    quint64 lineNumber = 0;
    bool lineIsBegin = false; // of an entry that is still to come
    QByteArray firstLine;
    QString errorText;
};
