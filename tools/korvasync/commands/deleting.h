// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "import/results.h"
#include "options/command.h"
#include "process/progress.h"
#include "store/messagestore.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <functional>

//! Deletes messages in chunks and reports what became of each. Who asked before has the client lock
//! by now.
class Deleting
{
public:
    using IsMeant = std::function<bool(const StoredMessage &)>;

    //! \param isMeant  whether a message is still the one that was asked about; others stay
    Deleting(const Invocation &invocation, MessageStore &store, IsMeant isMeant);

    ExitCode run(const QList<int> &ids);

private:
    void deleteChunk(const QList<int> &ids);
    //! What would become of each message.
    static QHash<int, ItemResult> foretell(const QList<int> &ids);
    //! Removes the messages and gives what became of each.
    QHash<int, ItemResult> remove(const QList<int> &ids);
    void report(int id, ItemResult result);

    const Invocation &m_invocation;
    MessageStore &m_store;
    const IsMeant m_isMeant;
    Results m_results;
    Progress m_progress;
    QSet<int> m_deleted;
    ExitCode m_trouble = AllDone; // the store's
};
