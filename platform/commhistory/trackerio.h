// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <platformexport.h>

namespace CommHistory {

//! Synchronous access to single events.
class KORVAPLATFORM_EXPORT TrackerIO
{
public:
    //! The one object of the process; never null, not owned by the caller.
    static TrackerIO *instance();

    //! Reads one event by its database id, after all requests that the process made before. Blocks
    //! until the store has answered.
    //! \return false, with \a event as it was, if there is none or the store cannot be read
    bool getEvent(int id, Event &event);

private:
    TrackerIO() = default;
};

} // namespace CommHistory
