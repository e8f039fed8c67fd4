// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "ownfile.h"
#include "results.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! Collects the items that were refused or failed, each as it was (in UTF-8) behind a line with
//! the reason, which readers of message files pass over. The file appears when all is written, so
//! that it may be one of the files read. It replaces a file only when nothing of that can be lost:
//! else it gets a name beside it.
class Rejects
{
public:
    //! \param path  empty = nothing is collected
    explicit Rejects(const QString &path);

    bool isWanted() const { return !m_wanted.isEmpty(); }
    [[nodiscard]] bool open();
    void add(const ItemResult &result, const QByteArray &message);
    void keep(const QByteArray &leftovers); //!< of rejects that were read
    //! An item is not among the rejects, but for its reason: it is where it was read.
    //! \param path  of the file that it is in
    void leaveIn(const QString &path);
    //! Gives the file its name, and tells of one beside its place.
    //! \param isWhole  the run came to its end: what was read is stored or among the rejects
    [[nodiscard]] bool commit(bool isWhole);

    QString place() const { return m_wanted; }
    QString errorText() const { return m_file.errorText(); }

private:
    void write(const QByteArray &bytes);

    const QString m_wanted;
    OwnFile m_file;
    bool m_isWritten = true; // all so far
    bool m_isEmpty = true;
    bool m_predecessorIsNeeded = false;
};
