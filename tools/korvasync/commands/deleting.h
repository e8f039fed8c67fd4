// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "command.h"
#include "output/progress.h"
#include "output/results.h"
#include "store/messagestore.h"

#include <QtCore/QSet>

//! Deletes messages in chunks and reports what became of each.
class Deleting
{
public:
    Deleting(const Invocation &invocation, MessageStore &store);

    ExitCode run(const QList<int> &ids);

private:
    void deleteChunk(const QList<int> &ids);
    void report(int id, ItemResult::Status status, Refusal refusal);

    const Invocation &invocation;
    MessageStore &store;
    Results results;
    Progress progress;
    QSet<int> deleted;
    ExitCode trouble = AllDone; // the store's
};
