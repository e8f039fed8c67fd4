// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/storedmessage.h"
#include "shared/pendingwait.h"

#include <korvasync/historyitem.h>
#include <korvasync/smssyncinterface.h>

#include <QtCore/QList>

#include <functional>

//! The library's messages with its pending objects waited for. The only facade of the process,
//! since a facade that goes takes the store adapters of all others with it.
class MessageStore
{
public:
    explicit MessageStore(std::chrono::milliseconds timeout);

    std::chrono::milliseconds timeout() const { return m_timeout; }

    struct Read
    {
        Answer answer = Answer::Refused;
        QList<KorvaSyncIf::SyncSmsInfo> messages;
    };
    struct Written
    {
        Answer answer = Answer::Refused;
        QList<KorvaSyncIf::SMSSyncError> status; //!< by reference index
        QList<int> ids;                          //!< adding only: database ids by reference index
    };

    //! Whether the store can be opened and read now. message() alone cannot tell a store
    //! that is broken from an id that is unknown.
    Answer probe();
    Read messages(const QDateTime &since, KorvaSyncIf::LocationId folder);
    //! Hands out the messages that pass the filter, one by one, without their vMessages.
    Answer forEach(const KorvaSyncIf::HistoryFilter &filter,
                   const std::function<void(const StoredMessage &)> &take) const;
    //! \return id -1 when no message has the id; calls share the ids, but are no messages
    KorvaSyncIf::SyncSmsInfo message(int id);

    Written add(QList<KorvaSyncIf::SyncSmsInfo> messages);
    Written modify(const QList<KorvaSyncIf::SyncSmsInfo> &messages);
    Written remove(const QList<int> &ids);

private:
    std::chrono::milliseconds m_timeout;
    KorvaSyncIf::SMSSyncInterface m_facade;
};
