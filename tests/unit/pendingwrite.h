// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "platformfixture.h"

#include <korvasync/pendingids.h>

#include <QtCore/QPointer>
#include <QtTest/QTest>

//! A pending write, and what could be seen inside the slot of finished().
template <typename Pending>
struct Write : PlatformFixture
{
    template <typename... Arguments>
    explicit Write(Arguments... arguments)
        : pending(new Pending(arguments..., &parent))
    {
        QObject::connect(pending.data(), &KorvaSyncIf::PendingStatus::finished, &parent,
                         [this](KorvaSyncIf::PendingStatus *sender) {
                             ++finishedCount;
                             finishedWith = sender;
                             status = sender->status();
                             isError = sender->isError();
                             if (auto *const withIds =
                                     qobject_cast<KorvaSyncIf::PendingIds *>(sender))
                                 ids = withIds->ids();
                         });
    }

    //! Calls one of the slots that the adapter's signals reach.
    template <typename... Arguments>
    void call(const char *slot, Arguments... arguments)
    {
        QVERIFY(QMetaObject::invokeMethod(pending, slot, Qt::DirectConnection, arguments...));
    }

    QPointer<Pending> pending;
    int finishedCount = 0;
    KorvaSyncIf::PendingStatus *finishedWith = nullptr;
    QList<KorvaSyncIf::SMSSyncError> status;
    QList<int> ids;
    bool isError = false;
};

using StatusWrite = Write<KorvaSyncIf::PendingStatus>;
using IdsWrite = Write<KorvaSyncIf::PendingIds>;

using Ints = QList<int>;
using Bools = QList<bool>;
using Errors = QList<KorvaSyncIf::SMSSyncError>;
using CallErrors = QList<KorvaSyncIf::CallSyncError>;
