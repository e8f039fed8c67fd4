// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <atomic>

//! Whether the store has warned of a fault since the object was made. A record that comes back
//! empty does not tell by itself whether there is none or it could not be read.
class TroubleWatch
{
public:
    bool hasTrouble() const { return count != m_before; }

    //! The store has warned; from any thread.
    static void note() { ++count; }

private:
    static inline std::atomic<int> count = 0;
    int m_before = count;
};
