// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/call.h"
#include "shared/rejectreason.h"
#include "shared/text.h"

#include <QtCore/QTimeZone>

//! Calls as call-history entries.
//!
//! The library lists an outgoing call by its start and any other by its end, and that is
//! what a time means in all entries that come and go here. It stores all calls by their end.
namespace CallEntry {

//! What an entry that was handed in says, or why it is refused.
struct Parsed
{
    Call call;
    RejectReason rejectReason = RejectReason::None;
    Reason detail;
};

//! Reads an entry more strictly than the library does, which takes what it cannot read for
//! nothing: for no time, for 0 seconds, for an outgoing call.
//! \param entry  UTF-8, from its first line to its last
//! \param local  where a time without a Z is meant
//! \param now    the clock, in UTC
Parsed parse(const QByteArray &entry, const QTimeZone &local, const QDateTime &now);

//! Seconds; none stands for 0, and what is no count for -1.
int readDuration(const QString &text);
//! The call, unless it cannot have been so.
//! \param named  its time as it was given: the start or the end
Parsed judged(const Call &call, const QDateTime &named, const QDateTime &now);

//! Reads an entry that the library wrote while this process is on UTC.
Call fromLibrary(const QString &entry);
//! The entry with which the library stores the call.
QString forLibrary(const Call &call);

//! The entry that parse() reads as the same call anywhere: in UTC, with a Z.
QString write(const Call &call);

} // namespace CallEntry
