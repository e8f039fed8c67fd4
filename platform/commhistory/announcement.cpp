// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "announcement_p.h"

#include "eventmarshalling.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>

namespace CommHistory {

namespace {

constexpr qsizetype MaxPortion = 1000000; // bytes, below 1 MiB
constexpr int BusMsecs = 1000;

//! An upper bound of the bytes that the event takes in a message.
qsizetype sizeOf(const Event &event)
{
    constexpr qsizetype numbersAndLengths = 256;
    constexpr qsizetype utf8PerUnit = 3;
    return numbersAndLengths
        + utf8PerUnit
        * (event.localUid().size() + event.remoteUid().size() + event.freeText().size()
           + event.messageToken().size() + event.encoding().size() + event.characterSet().size()
           + event.language().size());
}

void send(const QDBusConnection &bus, const QList<Event> &events)
{
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/com/quelt/commhistory"),
                                                     QStringLiteral("com.quelt.commhistory"),
                                                     QStringLiteral("eventsAdded"));
    signal << QVariant::fromValue(events);
    bus.send(signal);
}

//! An answer from the bus shows that it has read what was sent before: the process may end
//! right after a report.
void flush(const QDBusConnection &bus)
{
    bus.call(QDBusMessage::createMethodCall(
                 QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                 QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")),
             QDBus::Block, BusMsecs);
}

} // namespace

void announceAdded(const QList<Event> &events)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (events.isEmpty() || !bus.isConnected())
        return;
    qDBusRegisterMetaType<MessagePart>();
    qDBusRegisterMetaType<QList<MessagePart>>();
    qDBusRegisterMetaType<Event::Contact>();
    qDBusRegisterMetaType<QList<Event::Contact>>();
    qDBusRegisterMetaType<Event>();
    qDBusRegisterMetaType<QList<Event>>();

    QList<Event> portion;
    qsizetype size = 0;
    for (const Event &event : events) {
        const qsizetype more = sizeOf(event);
        if (!portion.isEmpty() && size + more > MaxPortion) {
            send(bus, portion);
            portion.clear();
            size = 0;
        }
        portion.append(event);
        size += more;
    }
    send(bus, portion);
    flush(bus);
}

} // namespace CommHistory
