// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "termination.h"

#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>

namespace {

//! What the event loop can wait on, unlike a signal.
int eventDescriptor()
{
    static const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return descriptor;
}

void note(int)
{
    const int error = errno;
    eventfd_write(eventDescriptor(), 1);
    errno = error;
}

} // namespace

Termination::Termination()
    : m_notifier(eventDescriptor(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier.setEnabled(false);
        Q_EMIT requested();
    });
    struct sigaction action = {};
    action.sa_handler = note;
    sigemptyset(&action.sa_mask);
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}
