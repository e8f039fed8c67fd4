// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <sys/stat.h>

// Loaded into a program before the C library, it has $VANISHING_FILE gone at the look at it that
// $VANISHING_LOOK counts, whichever threads take the looks. A tracer counts those of each thread.
extern "C" __attribute__((visibility("default"))) int stat(const char *path,
                                                           struct stat *status) noexcept
{
    static const auto look =
        reinterpret_cast<int (*)(const char *, struct stat *)>(dlsym(RTLD_NEXT, "stat"));
    static const char *const file = std::getenv("VANISHING_FILE");
    static const char *const number = std::getenv("VANISHING_LOOK");
    static std::atomic<int> looksLeft(number ? std::atoi(number) : 0);
    if (file && std::strcmp(path, file) == 0 && --looksLeft == 0) {
        errno = ENOENT;
        return -1;
    }
    return look(path, status);
}
