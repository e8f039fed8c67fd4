// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pendingwait.h"

#include "process/diagnostics.h"
#include "process/interrupt.h"

Answer PendingWait::waitForRead(KorvaSyncIf::PendingMsgs *pending,
                                std::chrono::milliseconds timeout,
                                const std::function<void()> &collect)
{
    const int troublesBefore = Diagnostics::storeTroubleCount();
    // A read that fails after its start is told by the store's warning alone.
    return waitFor(pending, timeout, collect, [&]() -> std::optional<Answer> {
        if (Interrupt::signalNumber() != 0)
            return Answer::Interrupted;
        if (Diagnostics::storeTroubleCount() != troublesBefore)
            return Answer::Refused;
        return std::nullopt;
    });
}
