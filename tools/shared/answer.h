// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

//! How a request to the store ended.
enum class [[nodiscard]] Answer{
    Finished,
    Refused,    //!< the store could not take it, or will never finish it
    TimedOut,   //!< no answer in time
    Interrupted //!< a signal came before the answer
};
