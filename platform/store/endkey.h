// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>

#include <utility>

namespace CommHistory {

//! The key of a text's end, which the store keeps of each conversation's party: its last seven
//! bytes backwards, so that texts that end alike lie side by side. A line's end behind them does
//! not count, as to the end of an expression none does. Another way needs a new format.
qint64 endKey(const QByteArray &text);

//! The first and the last key of texts that end so; such a text may still end otherwise.
std::pair<qint64, qint64> endKeys(const QByteArray &end);

//! Whether there is anything in the text that ends a line to an expression.
bool hasLineEnd(const QByteArray &text);

} // namespace CommHistory
