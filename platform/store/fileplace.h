// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>

#include <sys/stat.h>

namespace CommHistory {

//! A file and the path that it was found under.
class FilePlace
{
public:
    FilePlace() = default;
    explicit FilePlace(const QByteArray &path)
        : m_path(path)
        , m_isKnown(::stat(m_path.constData(), &m_status) == 0)
    {
    }
    //! The same, of a file that was opened.
    FilePlace(const QByteArray &path, int descriptor)
        : m_path(path)
        , m_isKnown(::fstat(descriptor, &m_status) == 0)
    {
    }

    //! False when another file, or none, is under the path now.
    bool isStillThere() const
    {
        struct stat found = {};
        return m_isKnown && ::stat(m_path.constData(), &found) == 0
            && found.st_dev == m_status.st_dev && found.st_ino == m_status.st_ino;
    }

    //! 0 when the file was not found.
    quint64 inode() const { return m_status.st_ino; }

private:
    QByteArray m_path;
    struct stat m_status = {};
    bool m_isKnown = false;
};

} // namespace CommHistory
