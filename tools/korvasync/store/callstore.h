// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/call.h"
#include "shared/pendingwait.h"

#include <korvasync/callsyncinterface.h>

#include <QtCore/QList>

//! The library's calls with its pending objects waited for. The only facade of the process,
//! as MessageStore.
class CallStore
{
public:
    explicit CallStore(std::chrono::milliseconds timeout);

    struct Read
    {
        Answer answer = Answer::Refused;
        QList<Call> calls; //!< oldest first by start, equal ones in the order of their adding
    };

    static constexpr auto AllCalls = static_cast<KorvaSyncIf::CallType>(3);

    //! \param since  lower bound of the start, included; null = all
    Read calls(KorvaSyncIf::CallType type = AllCalls, const QDateTime &since = QDateTime());

    //! Whether the store can be opened and read now.
    Answer probe();

    //! What is stored then, only a read can tell: the library's statuses of calls stay clean
    //! whatever happens.
    Answer add(const QList<Call> &calls);

    [[nodiscard]] bool removeAll();

private:
    std::chrono::milliseconds m_timeout;
    KorvaSyncIf::CallSyncInterface m_facade;
};
