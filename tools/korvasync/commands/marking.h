// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "import/results.h"
#include "options/command.h"
#include "store/messagestore.h"

#include <QtCore/QHash>

#include <optional>

//! Changes the read flags or the folder of messages, and nothing else of them. Who runs it has the
//! client lock, unless nothing is to be written.
class Marking
{
public:
    struct Marks
    {
        std::optional<bool> isRead; //!< nothing = as it is
        std::optional<int> folder;  //!< nothing = as it is
    };

    Marking(const Invocation &invocation, MessageStore &store, const Marks &marks);

    ExitCode run(const QList<int> &ids);

private:
    //! A message that is to be changed.
    struct Change
    {
        StoredMessage before;
        KorvaSyncIf::SmsInfo wanted;
        QString vMessage; //!< of the message as it will stand in the store
    };

    void markChunk(const QList<int> &ids);
    //! What becomes of a message without a write; Changed if it needs one, which \a change is.
    ItemResult look(int id, Change *change);
    void write(const QList<Change> &changes, QHash<int, ItemResult> *results);
    KorvaSyncIf::SyncSmsInfo recordOf(const Change &change) const;
    bool isDone(const Change &change, ItemResult *result);

    const Invocation &m_invocation;
    MessageStore &m_store;
    const Marks m_marks;
    Results m_results;
    ExitCode m_trouble = AllDone; // the store's
};
