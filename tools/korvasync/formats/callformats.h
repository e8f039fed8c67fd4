// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "jsonline.h"
#include "model/call.h"
#include "process/standardoutput.h"

#include <QtCore/QList>

//! The forms in which calls of the store are printed.
namespace CallFormats {

//! \param format  text (one line a call: start, type, duration, number), ndjson, entries or
//!                android-xml
void print(const QList<Call> &calls, const QString &format, StandardOutput &output);

//! \param json  what stands before the members of the call
JsonLine jsonOf(const Call &call, JsonLine json = JsonLine());

QString clockText(qint64 seconds); //!< 0:07, 12:30, 1:02:03

} // namespace CallFormats
