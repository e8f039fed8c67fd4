// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/historyitem.h>
#include <korvasync/syncrecords.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

//! One message of the store, taken apart.
struct StoredMessage
{
    int id = -1;
    int folder = 0;
    bool isRead = false;
    QDateTime time; //!< UTC; null = none
    QString number; //!< the other party, as it is meant
    QString body;
    QString token;
    QString vMessage; //!< as the library gave it; empty when it was not asked for

    static StoredMessage fromRecord(const KorvaSyncIf::SyncSmsInfo &record);
    //! Without its vMessage; otherwise equal to the same message as a record.
    static StoredMessage fromItem(const KorvaSyncIf::HistoryItem &item);
};
