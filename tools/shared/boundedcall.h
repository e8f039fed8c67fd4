// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "answer.h"

#include <chrono>
#include <functional>

//! Bounds a call into the library that may wait for the store within this very thread, where
//! neither a timer nor a look at signals reaches it. When the call takes longer than it may,
//! or a signal comes meanwhile, the process is ended from another thread.
class BoundedCall
{
public:
    enum Kind {
        Read,
        Write //!< from the first one on a signal leaves time to tell what became of it
    };

    BoundedCall(Kind kind, std::chrono::milliseconds limit);
    ~BoundedCall();

    //! How long a signal is put off for the sake of what was written.
    static std::chrono::milliseconds grace();

    //! \param end  says so and ends the process; called while the main thread is in a call
    static void onGivingUp(std::function<void(Answer)> end);

    //! Bounds all that the process does from here to its end.
    static void boundTheRest(std::chrono::milliseconds limit);

private:
    BoundedCall(const BoundedCall &) = delete;
    BoundedCall &operator=(const BoundedCall &) = delete;
};
