// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "results.h"

#include "language/text.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileDevice>
#include <QtCore/QString>

#include <memory>

//! Collects the messages that were refused, each as it was (in UTF-8) behind a line with
//! the reason, which readers of message files pass over. The file appears, or replaces its
//! predecessor, when all is written, so that it may be one of the files read.
class Rejects
{
public:
    //! \param path  empty = nothing is collected
    explicit Rejects(const QString &path);

    bool isWanted() const { return !file->fileName().isEmpty(); }
    bool open();
    void add(const ItemResult &result, const QByteArray &message);
    void keep(const QByteArray &leftovers); //!< of rejects that were read
    bool commit();
    QString errorText() const { return Text::tr(file->errorString().toUtf8().constData()); }

private:
    void write(const QByteArray &bytes);

    bool isWhole = true; // all that was written so far
    std::unique_ptr<QFileDevice> file;
};
