// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "interrupt.h"

#include <csignal>
#include <initializer_list>

namespace Interrupt {

static volatile std::sig_atomic_t received = 0;

static void note(int number) { received = number; }

void install()
{
    struct sigaction action = {};
    action.sa_handler = note;
    sigemptyset(&action.sa_mask);
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction inherited = {};
        sigaction(number, nullptr, &inherited);
        if (inherited.sa_handler != SIG_IGN) // as nohup sets it
            sigaction(number, &action, nullptr);
    }
    // A reader of our output that goes away is told by the failed write.
    std::signal(SIGPIPE, SIG_IGN);
    // A file that would grow beyond the limit of the process, too.
    std::signal(SIGXFSZ, SIG_IGN);
}

int signalNumber() { return received; }

} // namespace Interrupt
