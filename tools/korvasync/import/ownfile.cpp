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

constexpr int openFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
constexpr mode_t forOwnerOnly = S_IRUSR | S_IWUSR; // these are messages

QByteArrayList namesIn(const QByteArray &path)
{
    QByteArrayList names = path.split('/');
    names.removeAll(QByteArray());
    names.removeAll(QByteArray("."));
    return names;
}

QByteArray targetOf(const Descriptor &link)
{
    std::array<char, PATH_MAX> target;
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
    if (!temporary.isEmpty())
        unlinkat(folder, temporary.constData(), 0);
}

bool OwnFile::fail(const QString &reason)
{
    trouble = reason;
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
    way = given.startsWith('/') ? "/" : "";
    folder = Descriptor(::open(way.isEmpty() ? "." : "/", openFolder));
    for (int links = 0; !names.isEmpty();) {
        name = names.takeFirst();
        Descriptor found(openat(folder, name.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
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
                way = "/";
                folder = Descriptor(::open("/", openFolder));
            }
        } else if (names.isEmpty()) {
            return mayReplace(status);
        } else {
            way += name + '/';
            folder = std::move(found);
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
    predecessor = found;
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
        file = Descriptor(openat(folder, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, forOwnerOnly));
    if (file.isOpen())
        return true;
    const QByteArray unused = temporaryName();
    file = Descriptor(
        openat(folder, unused.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, forOwnerOnly));
    if (!file.isOpen())
        return fail(errno);
    temporary = unused;
    return true;
}

bool OwnFile::write(const QByteArray &bytes)
{
    constexpr int mostUnwritten = 64 * 1024;
    if (unwritten.size() + bytes.size() <= mostUnwritten) {
        unwritten += bytes;
        return true;
    }
    return flush() && writeAll(bytes);
}

bool OwnFile::flush() { return writeAll(std::exchange(unwritten, QByteArray())); }

bool OwnFile::writeAll(const QByteArray &bytes)
{
    const char *data = bytes.constData();
    auto left = static_cast<size_t>(bytes.size());
    while (left > 0 && !isCut) {
        const ssize_t count = ::write(file, data, left);
        if (count >= 0) {
            data += count;
            left -= static_cast<size_t>(count);
        } else if (errno != EINTR) {
            isCut = true;
            fail(errno);
        }
    }
    return !isCut;
}

bool OwnFile::finish() { return flush() && (fsync(file) == 0 || fail(errno)); }

bool OwnFile::isPredecessor(const QString &path) const
{
    if (!predecessor)
        return false;
    struct stat found = {};
    const int failure = path == QLatin1String("-")
        ? fstat(STDIN_FILENO, &found)
        : stat(FileName::encode(path).constData(), &found);
    return failure == 0 && isSame(found, *predecessor);
}

// What was written into it meanwhile has not been read.
bool OwnFile::isUnchanged() const
{
    struct stat now = {};
    return fstatat(folder, name.constData(), &now, AT_SYMLINK_NOFOLLOW) == 0
        && isSame(now, *predecessor) && now.st_size == predecessor->st_size
        && now.st_mtim.tv_sec == predecessor->st_mtim.tv_sec
        && now.st_mtim.tv_nsec == predecessor->st_mtim.tv_nsec;
}

bool OwnFile::takePlace()
{
    if (predecessor && !isUnchanged())
        return false;
    return giveName(name, predecessor.has_value());
}

bool OwnFile::takePlaceBeside()
{
    constexpr int mostTried = 10000;
    for (int number = 1; number <= mostTried; ++number) {
        const QByteArray free = name + '.' + QByteArray::number(number);
        if (giveName(free, false)) {
            name = free;
            return true;
        }
        if (errno != EEXIST)
            break;
    }
    return fail(errno);
}

bool OwnFile::link(const QByteArray &to) const
{
    const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(int(file));
    return linkat(AT_FDCWD, unnamed.constData(), folder, to.constData(), AT_SYMLINK_FOLLOW) == 0;
}

//! \return false with the reason in errno
bool OwnFile::giveName(const QByteArray &to, bool replaces)
{
    if (temporary.isEmpty() && !replaces)
        return link(to);
    if (temporary.isEmpty()) { // only a name can be put in the place of another
        const QByteArray first = temporaryName();
        if (!link(first))
            return false;
        temporary = first;
    }
    if (renameat2(folder, temporary.constData(), folder, to.constData(),
                  replaces ? 0 : RENAME_NOREPLACE)
        == 0) {
        temporary.clear();
        return true;
    }
    // Some file systems cannot look and rename at once. The other name goes in the end.
    return !replaces && errno == EINVAL
        && linkat(folder, temporary.constData(), folder, to.constData(), 0) == 0;
}

QString OwnFile::path() const { return FileName::decode(way + name); }
