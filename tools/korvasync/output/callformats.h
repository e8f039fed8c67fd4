// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "calls/call.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>

//! The forms in which calls of the store are printed, besides their entries.
namespace CallFormats {

QByteArray ndjson(const Call &call);
//! One line a call: start, type, duration, number.
QByteArray table(const QList<Call> &calls);

} // namespace CallFormats
