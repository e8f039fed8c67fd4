// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "platformfixture.h"

#include <korvasync/callsyncinterface.h>

#include <memory>

// What the tests of the facade for calls share.

using CallErrors = QList<KorvaSyncIf::CallSyncError>;

inline QString entry(const QString &type, const QString &number = QStringLiteral("+15550100"))
{
    return QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:%1\r\nTEL:%2\r\nDURATION:60\r\n"
                          "CALL-DATETIME:20101103T142530Z\r\nEND:VCALLHISTENTRY\r\n")
        .arg(type, number);
}

inline const auto incoming = entry(QStringLiteral("incoming"));
inline const auto outgoing = entry(QStringLiteral("outgoing"));
inline const auto broken = entry(QStringLiteral("unknown"));

inline const auto emptyListWarning = QStringLiteral("Empty smsInfo List");

//! The facade on a scripted store, and what its writes showed inside the slots of finished().
struct CallFixture : PlatformFixture
{
    KorvaSyncIf::PendingStatus *add(const QList<QString> &entries)
    {
        KorvaSyncIf::PendingStatus *const pending = facade->addNewCalls(entries);
        QObject::connect(pending, &KorvaSyncIf::PendingStatus::finished, &parent,
                         [this](KorvaSyncIf::PendingStatus *ended) {
                             ++finishedCount;
                             callStatus = ended->statusCallMsgs();
                             status = ended->status();
                             isError = ended->isError();
                         });
        return pending;
    }

    std::unique_ptr<KorvaSyncIf::CallSyncInterface> facade{
        new KorvaSyncIf::CallSyncInterface(nullptr)};
    int finishedCount = 0;
    CallErrors callStatus;
    QList<KorvaSyncIf::SMSSyncError> status;
    bool isError = false;
};
