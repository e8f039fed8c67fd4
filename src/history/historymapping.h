// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/historyitem.h>

#include <commhistory/historyreader.h>

#include <optional>

//! Between the values of HistoryInterface and those of the platform.
namespace KorvaSyncIf::HistoryMapping {

//! Nothing for a filter that is out of its ranges.
std::optional<CommHistory::HistorySelection> toSelection(const HistoryFilter &filter);

HistoryItem toItem(const CommHistory::HistoryEntry &entry);
HistoryCount toCount(const CommHistory::HistoryTally &tally);
HistoryError toError(CommHistory::HistoryReader::Result result);

//! A cursor is "1", the store, the number of the change and the last id, joined by dots.
QString toCursor(const CommHistory::HistoryPosition &position);
//! Nothing for a text that is no cursor; the empty one is the beginning.
std::optional<CommHistory::HistoryPosition> toPosition(const QString &cursor);

} // namespace KorvaSyncIf::HistoryMapping
