// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>

#include <limits>

namespace CommHistory {

//! A time that is absent, in milliseconds: it sorts before every time and lies outside
//! every "since" but the one from the beginning.
constexpr qint64 NoTime = std::numeric_limits<qint64>::min();

//! Milliseconds since 1970 in UTC.
qint64 toStoredTime(const QDateTime &time);
//! In local time; null when absent.
QDateTime fromStoredTime(qint64 msecs);

//! One event as a model holds it: a fraction of the size of an Event, which is built on
//! request.
struct EventRow
{
    qint64 startTime = NoTime;
    qint64 endTime = NoTime;
    qint64 lastModified = NoTime;
    QByteArray texts; //!< the stored texts in the order of TextFields, zero bytes between
    int id = -1;
    int parentId = 0;
    int groupId = -1;
    quint8 type = Event::UnknownType;
    quint8 direction = Event::UnknownDirection;
    quint8 status = Event::UnknownStatus;
    bool isRead = false;
    bool isMissedCall = false;
};

//! One text of an event: what it is called in the ontology and how it is got and set.
struct TextField
{
    const char *name;
    Event::Property property;
    QString (Event::*get)() const;
    void (Event::*set)(const QString &);
};

inline constexpr TextField TextFields[] = {
    {"kv:localUid", Event::LocalUid, &Event::localUid, &Event::setLocalUid},
    {"kv:remoteUid", Event::RemoteUid, &Event::remoteUid, &Event::setRemoteUid},
    {"kv:text", Event::FreeText, &Event::freeText, &Event::setFreeText},
    {"kv:token", Event::MessageToken, &Event::messageToken, &Event::setMessageToken},
    {"kv:encoding", Event::Encoding, &Event::encoding, &Event::setEncoding},
    {"kv:characterSet", Event::CharacterSet, &Event::characterSet, &Event::setCharacterSet},
    {"kv:language", Event::Language, &Event::language, &Event::setLanguage},
};

EventRow toRow(const Event &event);
Event fromRow(const EventRow &row);

} // namespace CommHistory

Q_DECLARE_TYPEINFO(CommHistory::EventRow, Q_MOVABLE_TYPE);
