// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "standardoutput.h"

#include "shared/interrupt.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

static bool wantsColours()
{
    const QByteArray terminal = qgetenv("TERM");
    return qEnvironmentVariableIsEmpty("NO_COLOR") && !terminal.isEmpty() && terminal != "dumb";
}

bool StandardOutput::isTerminal() { return isatty(STDOUT_FILENO) != 0; }

StandardOutput::StandardOutput()
    : m_hasTerminal(isTerminal())
    , m_hasColours(m_hasTerminal && wantsColours())
{
}

void StandardOutput::append(const QByteArray &bytes)
{
    constexpr int bufferSize = 64 * 1024;
    m_buffer += bytes;
    if (m_buffer.size() >= bufferSize)
        flush();
}

void StandardOutput::write(const QByteArray &bytes)
{
    append(m_hasTerminal ? terminalLines(bytes) : bytes);
}

void StandardOutput::writeLine(const QString &line, Emphasis emphasis)
{
    if (!m_hasColours || emphasis == Plain) {
        write(line.toUtf8() + '\n');
        return;
    }
    const QByteArray attribute = emphasis == Bold ? "\033[1m" : "\033[31m";
    append(attribute + terminalLines(line.toUtf8()) + "\033[0m\n");
}

// Another program can make the pipe or terminal that we share answer at once that it is full.
static bool canGoOn(int error)
{
    constexpr int pollMilliseconds = 200; // after which a signal is looked for
    pollfd room{STDOUT_FILENO, POLLOUT, 0};
    return (error == EAGAIN || error == EINTR)
        && (poll(&room, 1, pollMilliseconds) > 0 || Interrupt::signalNumber() == 0);
}

void StandardOutput::rest(std::chrono::milliseconds time)
{
    pollfd reader{STDOUT_FILENO, 0, 0};
    if (poll(&reader, 1, static_cast<int>(time.count())) > 0)
        fail(EPIPE);
}

void StandardOutput::fail(int error)
{
    m_isBroken = error == EPIPE;
    m_errorText = Text::ofSystemError(error).translated;
}

bool StandardOutput::flush()
{
    const char *data = m_buffer.constData();
    auto left = static_cast<size_t>(m_buffer.size());
    while (left > 0 && m_errorText.isEmpty()) {
        const ssize_t count = ::write(STDOUT_FILENO, data, left);
        if (count >= 0) {
            data += count;
            left -= static_cast<size_t>(count);
        } else if (!canGoOn(errno)) {
            fail(errno);
        }
    }
    m_buffer.clear();
    return m_errorText.isEmpty();
}
