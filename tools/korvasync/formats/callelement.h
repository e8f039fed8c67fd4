// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "callentry.h"

namespace CallElement {

//! The call of a "call" element, or why it is refused.
//! \param now  the clock, in UTC
CallEntry::Parsed parse(const QByteArray &element, const QDateTime &now);

} // namespace CallElement
