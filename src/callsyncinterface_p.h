// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/syncrecords.h>

#include <QtCore/QString>
#include <QtCore/QStringView>

namespace KorvaSyncIf {

//! Reader of call-history entries.
class CallSyncInterfacePrivate
{
public:
    CallSyncInterfacePrivate();

    //! The call that the entry tells of; when lastError says otherwise, as far as its lines
    //! were read.
    CallInfo parseCallSyncMsg(const QString &entry);

    // NOLINTBEGIN(readability-identifier-naming): named as the words that they hold
    static const QString incoming;
    static const QString outgoing;
    static const QString missed;
    // NOLINTEND(readability-identifier-naming)

    CallSyncError lastError = CallNoError; // of the latest parseCallSyncMsg()

private:
    static bool applyLine(QStringView line, CallInfo &call);
};

} // namespace KorvaSyncIf
