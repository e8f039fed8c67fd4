// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "standardoutput.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

void StandardOutput::write(const QByteArray &bytes)
{
    constexpr int bufferSize = 64 * 1024;
    buffer += bytes;
    if (buffer.size() >= bufferSize)
        flush();
}

bool StandardOutput::flush()
{
    const char *data = buffer.constData();
    auto left = static_cast<size_t>(buffer.size());
    while (left > 0 && errorText.isEmpty()) {
        const ssize_t count = ::write(STDOUT_FILENO, data, left);
        if (count >= 0) {
            data += count;
            left -= static_cast<size_t>(count);
        } else if (errno != EINTR) {
            errorText = QString::fromLocal8Bit(std::strerror(errno));
        }
    }
    buffer.clear();
    return errorText.isEmpty();
}
