// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "deadline.h"

Deadline::Deadline(std::chrono::milliseconds time, const std::function<void()> &passed)
    : watcher([time, passed, isDone = done.get_future()] {
        if (isDone.wait_for(time) == std::future_status::timeout)
            passed();
    })
{
}

Deadline::~Deadline()
{
    done.set_value();
    watcher.join();
}
