// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "fuzzing.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <sys/mman.h>
#include <unistd.h>

//! A file in memory, with a name.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &bytes)
        : descriptor(memfd_create("input", MFD_CLOEXEC))
    {
        require(write(descriptor, bytes.constData(), size_t(bytes.size())) == bytes.size());
    }
    ~MemoryFile() { close(descriptor); }

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(descriptor); }

private:
    Q_DISABLE_COPY(MemoryFile)
    const int descriptor;
};
