// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>

//! An event whose fields are all set, to other values than those of a new one. It has no id, time
//! of change, parts or contacts, which the store gives or does not keep.
inline CommHistory::Event fullEvent()
{
    using CommHistory::Event;
    Event event;
    event.setType(Event::SmsEvent);
    event.setStartTime(QDateTime(QDate(2010, 11, 3), QTime(10, 0, 1), Qt::UTC));
    event.setEndTime(QDateTime(QDate(2010, 11, 3), QTime(11, 0, 2), Qt::UTC));
    event.setDirection(Event::Outbound);
    event.setIsRead(true);
    event.setIsMissedCall(true);
    event.setStatus(Event::FailedStatus);
    event.setLocalUid(QStringLiteral("ring/tel/account0"));
    event.setRemoteUid(QStringLiteral("+15550100"));
    event.setParentId(4101);
    event.setGroupId(7);
    event.setFreeText(QStringLiteral("H\u00e9llo\n\U0001F600"));
    event.setMessageToken(QStringLiteral("token"));
    event.setEncoding(QStringLiteral("QUOTED-PRINTABLE"));
    event.setCharacterSet(QStringLiteral("UTF-8"));
    event.setLanguage(QStringLiteral("en"));
    return event;
}
