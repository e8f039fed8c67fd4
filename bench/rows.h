// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "harness.h"

// One participant's turn in each row of the table. Those on a store find it in the turn's
// folder and leave it changed; the script gives each a copy of its own.

namespace Bench {

void encode(const Turn &turn);
void decode(const Turn &turn);

//! Adds in calls or transactions and reports at 1,000, 10,000 and so on.
void add(const Turn &turn);
void readFolder(const Turn &turn);
void readModified(const Turn &turn);
void readOne(const Turn &turn);
void removeMessages(const Turn &turn);
void resolveConversations(const Turn &turn);
void addAndReadCalls(const Turn &turn);

void openStore(const Turn &turn);
void readAllFolders(const Turn &turn);
//! Reads message files, and adds what stands in them for the row that adds.
void readFiles(const Turn &turn);
void readAndAddFiles(const Turn &turn);

// What the rows work on.
void makeStore(const Turn &turn);
//! Message files, cards or a maildir, a file for each record.
void makeFiles(const Turn &turn);
void makeOneFile(const Turn &turn);

} // namespace Bench
