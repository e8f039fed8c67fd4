// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/storedmessage.h"
#include "process/standardoutput.h"

#include <QtCore/QList>

//! Messages as comma-separated values (RFC 4180), in UTF-8.
namespace Csv {

//! A header line and one record a message. Values stand as they are stored, also where a
//! spreadsheet would take one for a formula, such as a number that begins with a plus sign: a
//! mark in front would be false data. Import the columns as text.
void print(const QList<StoredMessage> &messages, StandardOutput &output);

} // namespace Csv
