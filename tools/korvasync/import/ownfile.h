// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "process/descriptor.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <sys/stat.h>

//! A file that is written without a name and takes its place when it is whole. At that place is a
//! regular file of this user, or nothing. Links on the way there are followed if they are this
//! user's or root's: who else may write into a common folder does not choose where it goes.
class OwnFile
{
public:
    OwnFile() = default;
    ~OwnFile();

    //! \return false when it cannot be written there; errorText() tells why, also for the others
    [[nodiscard]] bool open(const QString &path);
    [[nodiscard]] bool write(const QByteArray &bytes);
    //! Has all that was written reach the disk. Only then it may get a name.
    [[nodiscard]] bool finish();

    bool hasPredecessor() const { return m_predecessor.has_value(); }
    //! Whether a path leads to the file that it may replace; "-" is standard input.
    bool isPredecessor(const QString &path) const;

    //! Replaces its predecessor, unless that has changed since open().
    [[nodiscard]] bool takePlace();
    //! Takes the first free one of NAME.1, NAME.2 and so on.
    [[nodiscard]] bool takePlaceBeside();

    QString path() const; //!< where it is
    QString errorText() const { return m_trouble; }

private:
    Q_DISABLE_COPY(OwnFile)
    [[nodiscard]] bool findPlace(const QByteArray &given);
    bool mayReplace(const struct stat &found);
    [[nodiscard]] bool openUnnamed();
    [[nodiscard]] bool flush();
    [[nodiscard]] bool writeAll(const QByteArray &bytes);
    [[nodiscard]] bool giveName(const QByteArray &to, bool replaces);
    [[nodiscard]] bool link(const QByteArray &to) const;
    bool isUnchanged() const;
    bool fail(int error);
    bool fail(const QString &reason);

    Descriptor m_folder;
    QByteArray m_way;  // the folder's path as far as it is needed to find it; empty or with a slash
    QByteArray m_name; // in the folder
    std::optional<struct stat> m_predecessor;
    Descriptor m_file;
    QByteArray m_temporary; // its name; empty: it has none
    QByteArray m_unwritten;
    bool m_isCut = false; // a write failed
    QString m_trouble;
};
