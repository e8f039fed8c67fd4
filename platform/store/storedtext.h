// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace CommHistory {

// The database takes any text but U+0000 and halves of surrogate pairs, and a byte order
// mark at the start would be lost when it is read. So that nothing is, those, and the
// character U+001A that marks them, are stored as U+001A and four hexadecimal digits.
// Everything else is stored as it is.

//! The text as UTF-8 that the database takes; holds no zero byte.
QByteArray toStoredText(const QString &text);
//! The text that toStoredText() was given.
QString fromStoredText(const QByteArray &stored);

} // namespace CommHistory
