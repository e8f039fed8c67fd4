// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <initializer_list>

//! What the process ends with. Where several apply, worse() of them counts.
enum [[nodiscard]] ExitCode{
    AllDone = 0,
    SomeNotDone = 1, //!< items were refused or failed, or the output could not be written
    UsageError = 2,  //!< nothing was touched
    StoreFailed = 3, IdNotFound = 4, NoAnswer = 5, SendFailed = 8,
    SendUnknown = 9 //!< the message may have gone out: do not repeat blindly
};

//! The one of two that the user should hear of.
inline ExitCode worse(ExitCode a, ExitCode b)
{
    for (const ExitCode code :
         {UsageError, StoreFailed, NoAnswer, SendFailed, SendUnknown, SomeNotDone, IdNotFound}) {
        if (a == code || b == code)
            return code;
    }
    return AllDone;
}
