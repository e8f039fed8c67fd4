// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>

//! Ends a wait that cannot be ended from inside: unless it is destroyed in time, it calls
//! a function in a thread of its own.
class Deadline
{
public:
    //! \param passed  ends the process
    Deadline(std::chrono::milliseconds time, const std::function<void()> &passed);
    ~Deadline();

private:
    Deadline(const Deadline &) = delete;
    Deadline &operator=(const Deadline &) = delete;

    std::promise<void> done;
    std::thread watcher;
};
