// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "repeatedcalls.h"

#include <sqlite3.h>
#include <sys/types.h>

namespace CommHistory {

namespace {

using Read = ssize_t (*)(int, void *, size_t, off64_t);
using Write = ssize_t (*)(int, const void *, size_t, off64_t);

constexpr char ReadName[] = "pread64";
constexpr char WriteName[] = "pwrite64";
constexpr int Attempts = 3;

// The calls of the system, which were there before.
Read usualRead = nullptr;
Write usualWrite = nullptr;

ssize_t readAgain(int file, void *bytes, size_t size, off64_t offset)
{
    ssize_t count = -1;
    for (int i = 0; i < Attempts && count < 0; ++i)
        count = usualRead(file, bytes, size, offset);
    return count;
}

ssize_t writeAgain(int file, const void *bytes, size_t size, off64_t offset)
{
    ssize_t count = -1;
    for (int i = 0; i < Attempts && count < 0; ++i)
        count = usualWrite(file, bytes, size, offset);
    return count;
}

//! The system's files, if their calls can be replaced.
sqlite3_vfs *replaceable()
{
    constexpr int version = 3;
    sqlite3_vfs *const vfs = sqlite3_vfs_find(nullptr);
    const bool isReplaceable =
        vfs && vfs->iVersion >= version && vfs->xGetSystemCall && vfs->xSetSystemCall;
    return isReplaceable ? vfs : nullptr;
}

template <typename Call>
void replace(sqlite3_vfs *vfs, const char *name, Call *usual, Call again)
{
    *usual = reinterpret_cast<Call>(vfs->xGetSystemCall(vfs, name));
    if (*usual)
        vfs->xSetSystemCall(vfs, name, reinterpret_cast<sqlite3_syscall_ptr>(again));
}

template <typename Call>
void restore(sqlite3_vfs *vfs, const char *name, Call usual)
{
    if (usual)
        vfs->xSetSystemCall(vfs, name, reinterpret_cast<sqlite3_syscall_ptr>(usual));
}

} // namespace

RepeatedCalls::RepeatedCalls()
{
    sqlite3_initialize();
    sqlite3_vfs *const vfs = replaceable();
    if (!vfs)
        return;
    replace<Read>(vfs, ReadName, &usualRead, readAgain);
    replace<Write>(vfs, WriteName, &usualWrite, writeAgain);
}

RepeatedCalls::~RepeatedCalls()
{
    sqlite3_vfs *const vfs = replaceable();
    if (!vfs)
        return;
    restore(vfs, ReadName, usualRead);
    restore(vfs, WriteName, usualWrite);
}

} // namespace CommHistory
