// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storetesting.h"

#include <korvasync/callsyncinterface.h>

// What the tests of the call log share: entries, and how they go in and come back.

namespace CallLog {

constexpr KorvaSyncIf::CallType AllCalls = KorvaSyncIf::CallType(3);

inline QString entry(const QString &type, const QString &number, int duration, const QString &time)
{
    return QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:%1\r\nTEL:").arg(type) + number
        + QStringLiteral("\r\nDURATION:%1\r\nCALL-DATETIME:%2\r\nEND:VCALLHISTENTRY\r\n")
              .arg(QString::number(duration), time);
}

inline QString incoming(const QString &number, const QString &time, int duration = 60)
{
    return entry(QStringLiteral("incoming"), number, duration, time);
}

inline QString outgoing(const QString &number, const QString &time, int duration = 60)
{
    return entry(QStringLiteral("outgoing"), number, duration, time);
}

inline QString missed(const QString &number, const QString &time)
{
    return entry(QStringLiteral("missed"), number, 0, time);
}

//! Error flag, then the result of each entry; or that finished() did not come.
inline QString add(const QStringList &entries)
{
    KorvaSyncIf::CallSyncInterface facade;
    KorvaSyncIf::PendingStatus *const pending = facade.addNewCalls(entries);
    if (pending->isError())
        return QStringLiteral("refused");
    QString result = QStringLiteral("no answer");
    QSignalSpy finished(pending, &KorvaSyncIf::PendingStatus::finished);
    QObject::connect(pending, &KorvaSyncIf::PendingStatus::finished, &facade,
                     [&result](KorvaSyncIf::PendingStatus *ended) {
                         result =
                             ended->isError() ? QStringLiteral("failed") : QStringLiteral("added");
                         const QList<KorvaSyncIf::CallSyncError> errors = ended->statusCallMsgs();
                         for (const KorvaSyncIf::CallSyncError error : errors)
                             result += QStringLiteral(" %1").arg(int(error));
                         if (!ended->status().isEmpty())
                             result += QStringLiteral(", results of messages");
                     });
    finished.wait(StoreTesting::Patience);
    return result;
}

inline QStringList read(KorvaSyncIf::CallType type = AllCalls, const QDateTime &since = QDateTime())
{
    KorvaSyncIf::CallSyncInterface facade;
    KorvaSyncIf::PendingMsgs *const pending = facade.calls(type, since);
    if (pending->isError())
        return {QStringLiteral("refused")};
    QStringList entries{QStringLiteral("no answer")};
    QSignalSpy finished(pending, &KorvaSyncIf::PendingMsgs::finished);
    QObject::connect(pending, &KorvaSyncIf::PendingMsgs::finished, &facade,
                     [&entries](KorvaSyncIf::PendingMsgs *ended) { entries = ended->callLogs(); });
    finished.wait(StoreTesting::Patience);
    return entries;
}

//! The numbers of the calls, in order; or why there are none.
inline QString numbers(KorvaSyncIf::CallType type = AllCalls, const QDateTime &since = QDateTime())
{
    QStringList result;
    const QStringList entries = read(type, since);
    for (const QString &text : entries) {
        if (!text.startsWith(QLatin1String("BEGIN:")))
            return text;
        result.append(text.section(QStringLiteral("\r\nTEL:"), 1).section(QLatin1Char('\r'), 0, 0));
    }
    return result.join(QLatin1Char(' '));
}

} // namespace CallLog
