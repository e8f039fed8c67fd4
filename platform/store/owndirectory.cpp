// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "owndirectory.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace CommHistory {

namespace {

struct DirectoryCloser
{
    void operator()(DIR *directory) const { closedir(directory); }
};

bool isOfThisUser(const struct stat &status) { return status.st_uid == geteuid(); }

} // namespace

bool OwnDirectory::Entry::isOwn() const
{
    return isOfThisUser(status) && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

OwnDirectory::OwnDirectory(const QByteArray &path)
{
    struct stat status = {};
    const bool isLink = ::lstat(path.constData(), &status) == 0 && S_ISLNK(status.st_mode);
    if (isLink && !isOfThisUser(status))
        m_state = State::OtherOwner;
    else
        open(AT_FDCWD, path.constData(), isLink ? 0 : O_NOFOLLOW);
    if (isLink && m_state == State::Absent)
        m_state = State::NoAccess;
}

OwnDirectory::OwnDirectory(const OwnDirectory &parent, const char *name)
{
    open(parent.descriptor(), name, O_NOFOLLOW);
}

OwnDirectory::~OwnDirectory()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void OwnDirectory::open(int parent, const char *path, int flags)
{
    struct stat status = {};
    m_descriptor = ::openat(parent, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags);
    m_error = m_descriptor < 0 ? errno : 0;
    if (m_error == ENOENT)
        m_state = State::Absent;
    else if (m_error == ENOTDIR || m_error == ELOOP)
        m_state = State::NotADirectory;
    // The owner tells more than the refusal.
    else if ((m_descriptor < 0 ? ::fstatat(parent, path, &status, 0)
                               : ::fstat(m_descriptor, &status))
             != 0)
        m_state = State::NoAccess;
    else if (!isOfThisUser(status))
        m_state = State::OtherOwner;
    else if (m_descriptor >= 0)
        m_state = State::Open;
}

bool OwnDirectory::list(QVector<Entry> *entries) const
{
    entries->clear();
    const int copy = ::openat(m_descriptor, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, DirectoryCloser> directory(copy < 0 ? nullptr : fdopendir(copy));
    if (!directory) {
        if (copy >= 0)
            ::close(copy);
        return false;
    }
    errno = 0;
    while (const dirent *found = readdir(directory.get())) {
        Entry entry{found->d_name, {}};
        if (entry.name == "." || entry.name == "..")
            continue;
        const int result =
            ::fstatat(m_descriptor, found->d_name, &entry.status, AT_SYMLINK_NOFOLLOW);
        if (result != 0 && errno != ENOENT) // gone meanwhile
            return false;
        if (result == 0)
            entries->append(entry);
        errno = 0;
    }
    return errno == 0;
}

bool OwnDirectory::remove(const char *name) const
{
    if (::unlinkat(m_descriptor, name, 0) == 0 || errno == ENOENT)
        return true;
    const OwnDirectory directory(*this, name);
    QVector<Entry> entries;
    if (directory.state() != State::Open || !directory.list(&entries))
        return false;
    const bool isEmptied = std::all_of(entries.cbegin(), entries.cend(), [&](const Entry &entry) {
        return directory.remove(entry.name.constData());
    });
    return isEmptied && ::unlinkat(m_descriptor, name, AT_REMOVEDIR) == 0;
}

bool OwnDirectory::makePrivate() const
{
    constexpr mode_t othersMask = S_IRWXG | S_IRWXO;
    struct stat status = {};
    if (::fstat(m_descriptor, &status) != 0)
        return false;
    return (status.st_mode & othersMask) == 0
        || ::fchmod(m_descriptor, status.st_mode & S_IRWXU) == 0;
}

bool OwnDirectory::sync() const
{
    QVector<Entry> entries;
    if (!list(&entries))
        return false;
    const bool areSynced = std::all_of(entries.cbegin(), entries.cend(), [&](const Entry &entry) {
        const int file =
            ::openat(m_descriptor, entry.name.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
        const bool isSynced = file >= 0 && ::fsync(file) == 0;
        if (file >= 0)
            ::close(file);
        return isSynced;
    });
    return areSynced && ::fsync(m_descriptor) == 0;
}

} // namespace CommHistory
