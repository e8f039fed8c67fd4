// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "event.h"

#include <QtCore/QList>

namespace CommHistory {

//! Tells the session bus of events that were added: signal "eventsAdded" of the interface
//! "com.quelt.commhistory", in portions below 1 MiB. An event that is larger goes alone, and
//! one that no message can hold is left out. The bus has them when this returns, unless it does
//! not answer, of which the log tells; without a session bus nothing happens.
void announceAdded(const QList<Event> &events);

} // namespace CommHistory
