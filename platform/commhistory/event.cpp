// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "event.h"

#include "eventrow_p.h"

#include <QtCore/QSharedData>

namespace CommHistory {

bool MessagePart::operator==(const MessagePart &other) const
{
    return contentId == other.contentId && contentType == other.contentType && path == other.path
        && plainText == other.plainText && size == other.size
        && contentLocation == other.contentLocation;
}

class EventPrivate : public QSharedData
{
public:
    Event::Properties properties;
    int id = -1;
    Event::EventType type = Event::UnknownType;
    Event::Direction direction = Event::UnknownDirection;
    Event::Status status = Event::UnknownStatus;
    bool isRead = false;
    bool isMissedCall = false;
    int parentId = 0;
    int groupId = -1;
    QDateTime startTime;
    QDateTime endTime;
    QDateTime lastModified;
    QString localUid;
    QString remoteUid;
    QString freeText;
    QString messageToken;
    QString encoding;
    QString characterSet;
    QString language;
    QList<MessagePart> messageParts;
    QList<Event::Contact> contacts;
};

Event::Event()
    : d(new EventPrivate)
{
}
Event::Event(const Event &other) = default;
Event::Event(Event &&other) noexcept = default;
Event &Event::operator=(const Event &other) = default;
Event &Event::operator=(Event &&other) noexcept = default;
Event::~Event() = default;

bool Event::operator==(const Event &other) const
{
    if (d == other.d)
        return true;
    return std::apply(
        [&](const auto &...fields) {
            return (((this->*fields.get)() == (other.*fields.get)()) && ...);
        },
        EventFields);
}

bool Event::isValid() const { return d->id != -1 && d->type != UnknownType; }

Event::Properties Event::setProperties() const { return d->properties; }

int Event::id() const { return d->id; }
Event::EventType Event::type() const { return d->type; }
QDateTime Event::startTime() const { return d->startTime; }
QDateTime Event::endTime() const { return d->endTime; }
Event::Direction Event::direction() const { return d->direction; }
bool Event::isRead() const { return d->isRead; }
bool Event::isMissedCall() const { return d->isMissedCall; }
Event::Status Event::status() const { return d->status; }
QString Event::localUid() const { return d->localUid; }
QString Event::remoteUid() const { return d->remoteUid; }
int Event::parentId() const { return d->parentId; }
int Event::groupId() const { return d->groupId; }
QString Event::freeText() const { return d->freeText; }
QString Event::messageToken() const { return d->messageToken; }
QString Event::encoding() const { return d->encoding; }
QString Event::characterSet() const { return d->characterSet; }
QString Event::language() const { return d->language; }
QDateTime Event::lastModified() const { return d->lastModified; }
QList<MessagePart> Event::messageParts() const { return d->messageParts; }
QList<Event::Contact> Event::contacts() const { return d->contacts; }

namespace {

template <typename T>
void assign(EventPrivate &d, T EventPrivate::*field, const T &value, Event::Property property)
{
    d.*field = value;
    d.properties |= property;
}

} // namespace

void Event::setId(int id) { assign(*d, &EventPrivate::id, id, Id); }
void Event::setType(EventType type) { assign(*d, &EventPrivate::type, type, Type); }
void Event::setStartTime(const QDateTime &time)
{
    assign(*d, &EventPrivate::startTime, time, StartTime);
}
void Event::setEndTime(const QDateTime &time) { assign(*d, &EventPrivate::endTime, time, EndTime); }
void Event::setDirection(Direction direction)
{
    assign(*d, &EventPrivate::direction, direction, EventDirection);
}
void Event::setIsRead(bool isRead) { assign(*d, &EventPrivate::isRead, isRead, IsRead); }
void Event::setIsMissedCall(bool isMissed)
{
    assign(*d, &EventPrivate::isMissedCall, isMissed, IsMissedCall);
}
void Event::setStatus(Status status) { assign(*d, &EventPrivate::status, status, EventStatus); }
void Event::setLocalUid(const QString &uid) { assign(*d, &EventPrivate::localUid, uid, LocalUid); }
void Event::setRemoteUid(const QString &uid)
{
    assign(*d, &EventPrivate::remoteUid, uid, RemoteUid);
}
void Event::setParentId(int id) { assign(*d, &EventPrivate::parentId, id, ParentId); }
void Event::setGroupId(int id) { assign(*d, &EventPrivate::groupId, id, GroupId); }
void Event::setFreeText(const QString &text)
{
    assign(*d, &EventPrivate::freeText, text, FreeText);
}
void Event::setMessageToken(const QString &token)
{
    assign(*d, &EventPrivate::messageToken, token, MessageToken);
}
void Event::setEncoding(const QString &encoding)
{
    assign(*d, &EventPrivate::encoding, encoding, Encoding);
}
void Event::setCharacterSet(const QString &charset)
{
    assign(*d, &EventPrivate::characterSet, charset, CharacterSet);
}
void Event::setLanguage(const QString &language)
{
    assign(*d, &EventPrivate::language, language, Language);
}
void Event::setLastModified(const QDateTime &time)
{
    assign(*d, &EventPrivate::lastModified, time, LastModified);
}
void Event::setMessageParts(const QList<MessagePart> &parts)
{
    assign(*d, &EventPrivate::messageParts, parts, MessageParts);
}
void Event::setContacts(const QList<Contact> &contacts)
{
    assign(*d, &EventPrivate::contacts, contacts, Contacts);
}

} // namespace CommHistory
