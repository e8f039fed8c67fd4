// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "prefetch.h"

#include "filename.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// What can make its reader wait, and what cannot be read, is left to who tells of it.
static QByteArray bytesOf(const QString &path)
{
    constexpr size_t longest = 16384;
    std::array<char, longest> bytes = {};
    const QByteArray name = FileName::encode(path);
    struct stat status = {};
    if (path == QLatin1String("-") || stat(name.constData(), &status) != 0
        || !S_ISREG(status.st_mode) || status.st_size >= static_cast<off_t>(bytes.size()))
        return QByteArray();
    const int descriptor = open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return QByteArray();
    const ssize_t count = read(descriptor, bytes.data(), bytes.size());
    close(descriptor);
    if (count != status.st_size) // not read, or written to at this moment, or without a size
        return QByteArray();
    return QByteArray(bytes.data(), static_cast<int>(count));
}

//! About the memory that it takes.
static int sizeHeld(const Prefetch::File &file)
{
    constexpr int size = 256; // without its bytes
    return size + static_cast<int>(file.bytes.size());
}

Prefetch::Prefetch(std::function<InputPaths()> find)
    : m_thread([this, find = std::move(find)] { run(find); })
{
}

Prefetch::~Prefetch()
{
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

std::optional<Prefetch::File> Prefetch::next()
{
    std::unique_lock<std::mutex> locker(m_mutex);
    m_changed.wait(locker, [this] { return m_isWhole || !m_files.empty(); });
    if (m_files.empty())
        return std::nullopt;
    File file = std::move(m_files.front());
    m_files.pop_front();
    m_bytesHeld -= sizeHeld(file);
    m_changed.notify_all();
    return file;
}

InputPaths Prefetch::paths()
{
    std::unique_lock<std::mutex> locker(m_mutex);
    m_changed.wait(locker, [this] { return m_found.has_value(); });
    return *m_found;
}

void Prefetch::run(const std::function<InputPaths()> &find)
{
    const InputPaths paths = find();
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_found = paths;
    }
    m_changed.notify_all();
    for (const QString &path : paths.files) {
        if (!append({path, bytesOf(path)}))
            return;
    }
    const std::lock_guard<std::mutex> locker(m_mutex);
    m_isWhole = true;
    m_changed.notify_all();
}

//! \return false when nobody wants more
bool Prefetch::append(const File &file)
{
    constexpr int mostHeld = 8 * 1024 * 1024;
    std::unique_lock<std::mutex> locker(m_mutex);
    m_changed.wait(locker, [this] { return m_isEnding || m_bytesHeld < mostHeld; });
    m_bytesHeld += sizeHeld(file);
    m_files.push_back(file);
    m_changed.notify_all();
    return !m_isEnding;
}
