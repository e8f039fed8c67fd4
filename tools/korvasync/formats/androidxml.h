// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/call.h"
#include "model/storedmessage.h"
#include "process/standardoutput.h"

#include <QtCore/QList>

//! Messages and calls in the form in which backup programs of Android phones keep them. The
//! same list gives the same bytes.
//!
//! XML cannot hold some characters, such as most control characters: the sign for an unknown
//! character takes their place, and their number is told on stderr.
namespace AndroidXml {

void print(const QList<StoredMessage> &messages, StandardOutput &output);
void print(const QList<Call> &calls, StandardOutput &output);

} // namespace AndroidXml
