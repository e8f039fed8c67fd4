// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "ownfile.h"

#include "input/filename.h"
#include "shared/text.h"

#include <QtCore/QByteArrayList>
#include <QtCore/QRandomGenerator>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int OpenFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
constexpr mode_t ForOwnerOnly = S_IRUSR | S_IWUSR; // these are messages

QByteArrayList namesIn(const QByteArray &path)
{
    QByteArrayList names = path.split('/');
    names.removeAll(QByteArray());
    names.removeAll(QByteArray("."));
    return names;
}

QByteArray targetOf(const Descriptor &link)
{
    std::array<char, PATH_MAX> target = {};
    const ssize_t length = readlinkat(link, "", target.data(), target.size());
    return QByteArray(target.data(), static_cast<int>(qMax<ssize_t>(0, length)));
}

bool isSame(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

} // namespace

OwnFile::~OwnFile()
{
    if (!m_temporary.isEmpty())
        unlinkat(m_folder, m_temporary.constData(), 0);
}

bool OwnFile::fail(const QString &reason)
{
    m_trouble = reason;
    return false;
}

bool OwnFile::fail(int error) { return fail(Text::ofSystemError(error).translated); }

bool OwnFile::open(const QString &path)
{
    return findPlace(FileName::encode(path)) && openUnnamed();
}

// Goes the way name by name, since the system would follow anybody's links.
bool OwnFile::findPlace(const QByteArray &given)
{
    constexpr int mostLinks = 40; // as many as the system follows
    QByteArrayList names = namesIn(given);
    if (given.endsWith('/'))
        names.clear();
    m_way = given.startsWith('/') ? "/" : "";
    m_folder = Descriptor(::open(m_way.isEmpty() ? "." : "/", OpenFolder));
    for (int links = 0; !names.isEmpty();) {
        m_name = names.takeFirst();
        Descriptor found(openat(m_folder, m_name.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
        if (!found.isOpen())
            return (names.isEmpty() && errno == ENOENT) || fail(errno);
        struct stat status = {};
        if (fstat(found, &status) != 0)
            return fail(errno);
        if (S_ISLNK(status.st_mode)) {
            if (status.st_uid != geteuid() && status.st_uid != 0)
                return fail(Text::tr("a link of another user leads there"));
            if (++links > mostLinks)
                return fail(ELOOP);
            const QByteArray target = targetOf(found);
            names = namesIn(target) + names;
            if (target.startsWith('/')) {
                m_way = "/";
                m_folder = Descriptor(::open("/", OpenFolder));
            }
        } else if (names.isEmpty()) {
            return mayReplace(status);
        } else {
            m_way += m_name + '/';
            m_folder = std::move(found);
        }
    }
    return fail(EISDIR);
}

bool OwnFile::mayReplace(const struct stat &found)
{
    if (S_ISDIR(found.st_mode))
        return fail(EISDIR);
    if (!S_ISREG(found.st_mode))
        return fail(Text::tr("it is not a regular file"));
    if (found.st_uid != geteuid())
        return fail(Text::tr("it belongs to another user"));
    if ((found.st_mode & S_IWUSR) == 0)
        return fail(EACCES);
    m_predecessor = found;
    return true;
}

static QByteArray temporaryName()
{
    return ".korvasync-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

// A process that is killed leaves nothing behind of a file without a name. Not every file system
// has such files, and they get a name through /proc alone.
bool OwnFile::openUnnamed()
{
    if (access("/proc/self/fd", X_OK) == 0)
        m_file = Descriptor(openat(m_folder, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, ForOwnerOnly));
    if (m_file.isOpen())
        return true;
    const QByteArray unused = temporaryName();
    m_file = Descriptor(openat(m_folder, unused.constData(),
                               O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, ForOwnerOnly));
    if (!m_file.isOpen())
        return fail(errno);
    m_temporary = unused;
    return true;
}

bool OwnFile::write(const QByteArray &bytes)
{
    constexpr int mostUnwritten = 64 * 1024;
    if (m_unwritten.size() + bytes.size() <= mostUnwritten) {
        m_unwritten += bytes;
        return true;
    }
    return flush() && writeAll(bytes);
}

bool OwnFile::flush() { return writeAll(std::exchange(m_unwritten, QByteArray())); }

bool OwnFile::writeAll(const QByteArray &bytes)
{
    const char *data = bytes.constData();
    auto left = static_cast<size_t>(bytes.size());
    while (left > 0 && !m_isCut) {
        const ssize_t count = ::write(m_file, data, left);
        if (count >= 0) {
            data += count;
            left -= static_cast<size_t>(count);
        } else if (errno != EINTR) {
            m_isCut = true;
            fail(errno);
        }
    }
    return !m_isCut;
}

bool OwnFile::finish() { return flush() && (fsync(m_file) == 0 || fail(errno)); }

bool OwnFile::isPredecessor(const QString &path) const
{
    if (!m_predecessor)
        return false;
    struct stat found = {};
    const int failure = path == QLatin1String("-")
        ? fstat(STDIN_FILENO, &found)
        : stat(FileName::encode(path).constData(), &found);
    return failure == 0 && isSame(found, *m_predecessor);
}

// What was written into it meanwhile has not been read.
bool OwnFile::isUnchanged() const
{
    struct stat now = {};
    return fstatat(m_folder, m_name.constData(), &now, AT_SYMLINK_NOFOLLOW) == 0
        && isSame(now, *m_predecessor) && now.st_size == m_predecessor->st_size
        && now.st_mtim.tv_sec == m_predecessor->st_mtim.tv_sec
        && now.st_mtim.tv_nsec == m_predecessor->st_mtim.tv_nsec;
}

bool OwnFile::takePlace()
{
    if (m_predecessor && !isUnchanged())
        return false;
    return giveName(m_name, m_predecessor.has_value());
}

bool OwnFile::takePlaceBeside()
{
    constexpr int mostTried = 10000;
    for (int number = 1; number <= mostTried; ++number) {
        const QByteArray free = m_name + '.' + QByteArray::number(number);
        if (giveName(free, false)) {
            m_name = free;
            return true;
        }
        if (errno != EEXIST)
            break;
    }
    return fail(errno);
}

bool OwnFile::link(const QByteArray &to) const
{
    const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(int(m_file));
    return linkat(AT_FDCWD, unnamed.constData(), m_folder, to.constData(), AT_SYMLINK_FOLLOW) == 0;
}

//! \return false with the reason in errno
bool OwnFile::giveName(const QByteArray &to, bool replaces)
{
    if (m_temporary.isEmpty() && !replaces)
        return link(to);
    if (m_temporary.isEmpty()) { // only a name can be put in the place of another
        const QByteArray first = temporaryName();
        if (!link(first))
            return false;
        m_temporary = first;
    }
    if (renameat2(m_folder, m_temporary.constData(), m_folder, to.constData(),
                  replaces ? 0 : RENAME_NOREPLACE)
        == 0) {
        m_temporary.clear();
        return true;
    }
    // Some file systems cannot look and rename at once. The other name goes in the end.
    return !replaces && errno == EINVAL
        && linkat(m_folder, m_temporary.constData(), m_folder, to.constData(), 0) == 0;
}

QString OwnFile::path() const { return FileName::decode(m_way + m_name); }
