// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "inputpaths.h"

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

//! The files of a command one after the other. They are found, and small ones read, in a thread
//! of its own while the store is opened and read; a few MiB at most are held.
class Prefetch
{
public:
    struct File
    {
        QString path;
        QByteArray bytes; //!< all of them; null: not read ahead
    };

    //! \param find  gives the paths, of which "-" is standard input; called in the other thread
    explicit Prefetch(std::function<InputPaths()> find);
    ~Prefetch();

    //! The next file; nothing behind the last one.
    std::optional<File> next();

    //! Of all files, and of what is none. Waits until they are found.
    InputPaths paths();

private:
    Q_DISABLE_COPY(Prefetch)
    void run(const std::function<InputPaths()> &find);
    bool append(const File &file);

    std::mutex m_mutex; // guards all below
    std::condition_variable m_changed;
    std::optional<InputPaths> m_found;
    std::deque<File> m_files;
    int m_bytesHeld = 0;
    bool m_isWhole = false; // no file comes any more
    bool m_isEnding = false;
    std::thread m_thread;
};
