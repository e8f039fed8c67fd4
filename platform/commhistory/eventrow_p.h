// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <commhistory/historyreader.h>

#include <tuple>
#include <type_traits>

namespace CommHistory {

//! Milliseconds since 1970 in UTC.
inline qint64 toStoredTime(const QDateTime &time)
{
    return time.isValid() ? time.toMSecsSinceEpoch() : NoTime;
}
//! In local time; null when absent.
inline QDateTime fromStoredTime(qint64 msecs)
{
    return msecs == NoTime ? QDateTime() : QDateTime::fromMSecsSinceEpoch(msecs);
}

//! One event as a model holds it: a fraction of the size of an Event, which is built on
//! request.
struct EventRow
{
    qint64 startTime = NoTime;
    qint64 endTime = NoTime;
    qint64 lastModified = NoTime;
    QByteArray texts; //!< the stored texts in the order of EventFields, zero bytes between
    int id = -1;
    int parentId = 0;
    int groupId = -1;
    quint8 type = Event::UnknownType;
    quint8 direction = Event::UnknownDirection;
    quint8 status = Event::UnknownStatus;
    bool isRead = false;
    bool isMissedCall = false;
};

//! One number, time or truth value of an event: what it is called in the ontology, how it is got
//! and set, and where a row has it.
template <typename Value, typename Argument, typename Number>
struct NumberField
{
    static constexpr bool IsNumber = true;
    static constexpr bool IsText = false;
    const char *name;
    Event::Property property;
    Value (Event::*get)() const;
    void (Event::*set)(Argument);
    Number EventRow::*inRow;
};
template <typename Value, typename Argument, typename Number>
NumberField(const char *, Event::Property, Value (Event::*)() const, void (Event::*)(Argument),
            Number EventRow::*) -> NumberField<Value, Argument, Number>;

//! One text of an event.
struct TextField
{
    static constexpr bool IsNumber = false;
    static constexpr bool IsText = true;
    const char *name;
    Event::Property property;
    QString (Event::*get)() const;
    void (Event::*set)(const QString &);
};

//! What only the bus carries.
template <typename List>
struct ListField
{
    static constexpr bool IsNumber = false;
    static constexpr bool IsText = false;
    Event::Property property;
    List (Event::*get)() const;
    void (Event::*set)(const List &);
};
template <typename List>
ListField(Event::Property, List (Event::*)() const, void (Event::*)(const List &))
    -> ListField<List>;

//! All fields of an event, in the order in which the bus has them.
inline constexpr std::tuple EventFields{
    NumberField{"kv:id", Event::Id, &Event::id, &Event::setId, &EventRow::id},
    NumberField{"kv:type", Event::Type, &Event::type, &Event::setType, &EventRow::type},
    NumberField{"kv:startTime", Event::StartTime, &Event::startTime, &Event::setStartTime,
                &EventRow::startTime},
    NumberField{"kv:endTime", Event::EndTime, &Event::endTime, &Event::setEndTime,
                &EventRow::endTime},
    NumberField{"kv:direction", Event::EventDirection, &Event::direction, &Event::setDirection,
                &EventRow::direction},
    NumberField{"kv:isRead", Event::IsRead, &Event::isRead, &Event::setIsRead, &EventRow::isRead},
    NumberField{"kv:isMissedCall", Event::IsMissedCall, &Event::isMissedCall,
                &Event::setIsMissedCall, &EventRow::isMissedCall},
    NumberField{"kv:status", Event::EventStatus, &Event::status, &Event::setStatus,
                &EventRow::status},
    TextField{"kv:localUid", Event::LocalUid, &Event::localUid, &Event::setLocalUid},
    TextField{"kv:remoteUid", Event::RemoteUid, &Event::remoteUid, &Event::setRemoteUid},
    NumberField{"kv:folder", Event::ParentId, &Event::parentId, &Event::setParentId,
                &EventRow::parentId},
    NumberField{"kv:conversationId", Event::GroupId, &Event::groupId, &Event::setGroupId,
                &EventRow::groupId},
    TextField{"kv:text", Event::FreeText, &Event::freeText, &Event::setFreeText},
    TextField{"kv:token", Event::MessageToken, &Event::messageToken, &Event::setMessageToken},
    TextField{"kv:encoding", Event::Encoding, &Event::encoding, &Event::setEncoding},
    TextField{"kv:characterSet", Event::CharacterSet, &Event::characterSet,
              &Event::setCharacterSet},
    TextField{"kv:language", Event::Language, &Event::language, &Event::setLanguage},
    NumberField{"kv:lastModified", Event::LastModified, &Event::lastModified,
                &Event::setLastModified, &EventRow::lastModified},
    ListField{Event::MessageParts, &Event::messageParts, &Event::setMessageParts},
    ListField{Event::Contacts, &Event::contacts, &Event::setContacts},
};

template <typename Visit>
void forEachField(Visit visit)
{
    std::apply([&](const auto &...fields) { (visit(fields), ...); }, EventFields);
}

template <typename Visit>
void forEachNumber(Visit visit)
{
    forEachField([&](const auto &field) {
        if constexpr (std::decay_t<decltype(field)>::IsNumber)
            visit(field);
    });
}

template <typename Visit>
void forEachText(Visit visit)
{
    forEachField([&](const auto &field) {
        if constexpr (std::decay_t<decltype(field)>::IsText)
            visit(field);
    });
}

//! The numbers and texts, which the store has.
inline constexpr int FieldCount = std::apply(
    [](const auto &...fields) {
        return (
            int(std::decay_t<decltype(fields)>::IsNumber || std::decay_t<decltype(fields)>::IsText)
            + ...);
    },
    EventFields);

inline constexpr std::size_t TextCount = std::apply(
    [](const auto &...fields) {
        return (std::size_t(std::decay_t<decltype(fields)>::IsText) + ...);
    },
    EventFields);

//! A row without texts.
EventRow numbersOf(const Event &event);
EventRow toRow(const Event &event);
Event fromRow(const EventRow &row);

} // namespace CommHistory

Q_DECLARE_TYPEINFO(CommHistory::EventRow, Q_MOVABLE_TYPE);
