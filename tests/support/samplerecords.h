// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/syncrecords.h>

#include <commhistory/event.h>

// Records and events that tests hand over, with what the test is about as arguments.

inline KorvaSyncIf::SmsInfo receivedFrom(const QString &number, int refId)
{
    KorvaSyncIf::SmsInfo info;
    info.parentId = KorvaSyncIf::LocInbox;
    info.fromNumber = number;
    info.body = QStringLiteral("Hello");
    info.time = QDateTime(QDate(2010, 11, 3), QTime(14, 25, 30), Qt::UTC);
    info.readStatus = QStringLiteral("READ");
    info.refId = refId;
    return info;
}

//! A message to be modified or deleted.
inline KorvaSyncIf::SmsInfo storedMessage(int id, int refId,
                                          const QString &number = QStringLiteral("+15550100"))
{
    KorvaSyncIf::SmsInfo info = receivedFrom(number, refId);
    info.id = id;
    return info;
}

inline CommHistory::Event messageEvent(int id, int parentId)
{
    CommHistory::Event event;
    event.setId(id);
    event.setType(CommHistory::Event::SmsEvent);
    event.setParentId(parentId);
    event.setRemoteUid(QStringLiteral("+15550100"));
    event.setFreeText(QStringLiteral("Hello"));
    event.setStartTime(QDateTime(QDate(2010, 11, 3), QTime(10, 0), Qt::UTC));
    event.setEndTime(QDateTime(QDate(2010, 11, 3), QTime(11, 0), Qt::UTC));
    event.setLastModified(QDateTime(QDate(2010, 11, 3), QTime(12, 0), Qt::UTC));
    return event;
}

inline CommHistory::Event callEvent(int id, CommHistory::Event::Direction direction,
                                    bool missed = false)
{
    CommHistory::Event event;
    event.setId(id);
    event.setType(CommHistory::Event::CallEvent);
    event.setDirection(direction);
    event.setIsMissedCall(missed);
    event.setRemoteUid(QStringLiteral("+15550100"));
    event.setStartTime(QDateTime(QDate(2010, 11, 3), QTime(12, 0), Qt::UTC));
    event.setEndTime(QDateTime(QDate(2010, 11, 3), QTime(12, 0, 30), Qt::UTC));
    return event;
}

inline KorvaSyncIf::CallInfo call(const QString &type, int refId)
{
    KorvaSyncIf::CallInfo info;
    info.id = refId;
    info.type = type;
    info.number = QStringLiteral("+15550100");
    info.duration = 30;
    info.dateTime = QDateTime(QDate(2010, 11, 3), QTime(12, 0, 30), Qt::UTC);
    return info;
}
