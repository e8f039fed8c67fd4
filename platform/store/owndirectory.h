// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVector>

#include <sys/stat.h>

namespace CommHistory {

//! A directory that belongs to this user, held open. What is in it is reached through its
//! descriptor and never through a link, so that no path of ours leads elsewhere.
class OwnDirectory
{
public:
    enum class State { Open, Absent, NotADirectory, OtherOwner, NoAccess };

    struct Entry
    {
        QByteArray name;
        struct stat status; //!< of a link itself, not of what it points to

        //! Whether this user owns it and it is a file or a directory: no link, pipe or device.
        bool isOwn() const;
    };

    //! Its last part may be a link that the user owns, so that a store can lie on another disk.
    //! One to nothing is no access: that disk may be away.
    explicit OwnDirectory(const QByteArray &path);
    OwnDirectory(const OwnDirectory &parent, const char *name);
    ~OwnDirectory();

    State state() const { return m_state; }
    int descriptor() const { return m_descriptor; }
    //! Why it is not open, as errno has it.
    int error() const { return m_error; }

    //! Gives all entries. False when they cannot be read; errno tells why.
    [[nodiscard]] bool list(QVector<Entry> *entries) const;
    //! Removes an entry, and all that is in it if it is a directory. A link goes, what it points
    //! to stays. True when it is gone.
    bool remove(const char *name) const;
    //! Takes the rights of other users from the directory. True when they have none.
    bool makePrivate() const;
    //! Brings all files of the directory, and their names, to the disk.
    [[nodiscard]] bool sync() const;

private:
    Q_DISABLE_COPY(OwnDirectory)
    void open(int parent, const char *path, int flags);

    int m_descriptor = -1;
    int m_error = 0;
    State m_state = State::NoAccess;
};

} // namespace CommHistory
