// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <commhistory/eventmarshalling.h>

#include <QtCore/QStringList>
#include <QtDBus/QDBusMetaType>

// What the two programs of the exchange share.

namespace Exchange {

const QString Interface = QStringLiteral("org.korvasync.Exchange");
const QString Given = QStringLiteral("eventsGiven");
const QString Returned = QStringLiteral("eventsReturned");

inline void registerTypes()
{
    qDBusRegisterMetaType<CommHistory::Event>();
    qDBusRegisterMetaType<QList<CommHistory::Event>>();
    qDBusRegisterMetaType<CommHistory::MessagePart>();
    qDBusRegisterMetaType<QList<CommHistory::MessagePart>>();
    qDBusRegisterMetaType<CommHistory::Event::Contact>();
}

inline QString timeText(const QDateTime &time)
{
    return time.isNull() ? QStringLiteral("none") : time.toUTC().toString(Qt::ISODateWithMs);
}

//! Every field, in one line.
inline QString text(const CommHistory::Event &event)
{
    const auto number = [](int value) { return QString::number(value); };
    QStringList fields{number(event.id()),
                       number(event.type()),
                       timeText(event.startTime()),
                       timeText(event.endTime()),
                       number(event.direction()),
                       number(event.isRead()),
                       number(event.isMissedCall()),
                       number(event.status()),
                       event.localUid(),
                       event.remoteUid(),
                       number(event.parentId()),
                       number(event.groupId()),
                       event.freeText(),
                       event.messageToken(),
                       event.encoding(),
                       event.characterSet(),
                       event.language(),
                       timeText(event.lastModified())};
    const QList<CommHistory::MessagePart> parts = event.messageParts();
    for (const CommHistory::MessagePart &part : parts)
        fields << part.contentId << part.contentType << part.path << part.plainText
               << number(part.size) << part.contentLocation;
    const QList<CommHistory::Event::Contact> contacts = event.contacts();
    for (const CommHistory::Event::Contact &contact : contacts)
        fields << number(contact.first) << contact.second;
    return fields.join(QLatin1Char('|'));
}

} // namespace Exchange
