// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/messagepart.h>
#include <platformexport.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QPair>
#include <QtCore/QSharedDataPointer>
#include <QtCore/QString>

namespace CommHistory {

class EventPrivate;

//! One stored text message or call: an implicitly shared value.
//!
//! Every setter records that its field was set (see setProperties()), and a
//! modification writes the fields so recorded and leaves the others as stored.
//! Times that come from the store are in local time, but for lastModified(), which is in UTC;
//! a null time means "absent".
class KORVAPLATFORM_EXPORT Event
{
public:
    // With a type of their own, as the bus and the store may bring any number.
    enum EventType : int { UnknownType = 0, SmsEvent = 2, CallEvent = 3 };
    enum Direction : int { UnknownDirection = 0, Inbound = 1, Outbound = 2 };
    enum Status : int { UnknownStatus = 0, SendingStatus = 1, SentStatus = 2, FailedStatus = 3 };

    //! Address-book id and display name of a matching contact.
    using Contact = QPair<int, QString>;

    //! One bit per settable field.
    enum Property : quint32 {
        Id = 1u << 0,
        Type = 1u << 1,
        StartTime = 1u << 2,
        EndTime = 1u << 3,
        EventDirection = 1u << 4,
        IsRead = 1u << 5,
        IsMissedCall = 1u << 6,
        EventStatus = 1u << 7,
        LocalUid = 1u << 8,
        RemoteUid = 1u << 9,
        ParentId = 1u << 10,
        GroupId = 1u << 11,
        FreeText = 1u << 12,
        MessageToken = 1u << 13,
        Encoding = 1u << 14,
        CharacterSet = 1u << 15,
        Language = 1u << 16,
        LastModified = 1u << 17,
        MessageParts = 1u << 18,
        Contacts = 1u << 19
    };
    Q_DECLARE_FLAGS(Properties, Property)

    Event();
    Event(const Event &other);
    Event(Event &&other) noexcept;
    Event &operator=(const Event &other);
    Event &operator=(Event &&other) noexcept;
    ~Event();

    bool operator==(const Event &other) const;
    bool operator!=(const Event &other) const { return !(*this == other); }

    //! True for an event that stands in the store: it has an id and a type.
    bool isValid() const;
    //! The fields whose setters have been called on this value.
    Properties setProperties() const;

    int id() const; //!< database id, -1 = none
    EventType type() const;
    QDateTime startTime() const;
    QDateTime endTime() const;
    Direction direction() const;
    bool isRead() const;
    bool isMissedCall() const;
    Status status() const;
    QString localUid() const;  //!< the account the event went through
    QString remoteUid() const; //!< number or word of the other party
    int parentId() const;      //!< folder id, 0 = none
    int groupId() const;       //!< conversation id, -1 = none
    QString freeText() const;  //!< message text
    QString messageToken() const;
    QString encoding() const;
    QString characterSet() const;
    QString language() const;
    QDateTime lastModified() const; //!< set by the store at each commit
    QList<MessagePart> messageParts() const;
    QList<Contact> contacts() const;

    void setId(int id);
    void setType(EventType type);
    void setStartTime(const QDateTime &time);
    void setEndTime(const QDateTime &time);
    void setDirection(Direction direction);
    void setIsRead(bool isRead);
    void setIsMissedCall(bool isMissed);
    void setStatus(Status status);
    void setLocalUid(const QString &uid);
    void setRemoteUid(const QString &uid);
    void setParentId(int id);
    void setGroupId(int id);
    void setFreeText(const QString &text);
    void setMessageToken(const QString &token);
    void setEncoding(const QString &encoding);
    void setCharacterSet(const QString &charset);
    void setLanguage(const QString &language);
    void setLastModified(const QDateTime &time);
    void setMessageParts(const QList<MessagePart> &parts);
    void setContacts(const QList<Contact> &contacts);

private:
    QSharedDataPointer<EventPrivate> d;
};

} // namespace CommHistory

Q_DECLARE_OPERATORS_FOR_FLAGS(CommHistory::Event::Properties)
Q_DECLARE_METATYPE(CommHistory::Event)
