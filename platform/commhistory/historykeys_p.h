// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "eventrow_p.h"

#include <QtCore/QString>

namespace CommHistory {

// What the store keeps beside the fields of an event, made from them, so that an index finds it.
// A change of what these give needs a new format.

//! Whether the messages of a folder go by the time of their end: those of the inbox and of the
//! user's own folders do.
bool goesByEnd(int folder);

//! The time that orders an event among its like, from its type, folder, start and end.
qint64 ownTime(const EventRow &row);

//! Equal for parties that may be one, so that candidates are found; which are one is seen behind
//! it. Of a number it is made from the last seven digits, of a word from the word without regard
//! to letter case and to how its signs are composed.
qint64 partyKeyOf(const QString &party);

} // namespace CommHistory
