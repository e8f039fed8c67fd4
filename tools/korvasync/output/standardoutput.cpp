// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "standardoutput.h"

#include "language/text.h"
#include "process/interrupt.h"

#include <cerrno>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

void StandardOutput::write(const QByteArray &bytes)
{
    constexpr int bufferSize = 64 * 1024;
    buffer += bytes;
    if (buffer.size() >= bufferSize)
        flush();
}

// Another program can make the pipe or terminal that we share answer at once that it is full.
static bool canGoOn(int error)
{
    constexpr int pollMilliseconds = 200; // after which a signal is looked for
    pollfd room{STDOUT_FILENO, POLLOUT, 0};
    return (error == EAGAIN || error == EINTR)
        && (poll(&room, 1, pollMilliseconds) > 0 || Interrupt::signalNumber() == 0);
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
        } else if (!canGoOn(errno)) {
            isBroken = errno == EPIPE;
            errorText = Text::ofSystemError(errno).translated;
        }
    }
    buffer.clear();
    return errorText.isEmpty();
}

int StandardOutput::terminalWidth()
{
    constexpr int usualWidth = 80; // of a terminal that does not know its own
    winsize size = {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col == 0 ? usualWidth : size.ws_col;
}
