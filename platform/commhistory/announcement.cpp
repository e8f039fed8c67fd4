// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "announcement_p.h"

#include "eventmarshalling.h"
#include "eventrow_p.h"

#include <bus/messagebus.h>
#include <store/logging.h>

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>

#include <functional>
#include <future>
#include <numeric>

namespace CommHistory {

namespace {

constexpr qsizetype MaxPortion = 1000000; // bytes, below 1 MiB
constexpr qsizetype MaxArray = 1 << 26;   // bytes, what D-Bus lets a list take

// Upper bounds of the bytes that values take in a message, with the gaps between them.

qsizetype sizeOf(const QString &text)
{
    constexpr qsizetype lengthAndEnd = 8;
    const auto bytesOf = [](qsizetype sum, QChar c) {
        return sum + (c.unicode() < 0x80 ? 1 : c.unicode() < 0x800 ? 2 : 3);
    };
    return std::accumulate(text.cbegin(), text.cend(), lengthAndEnd, bytesOf);
}

qsizetype sizeOf(const MessagePart &part)
{
    constexpr qsizetype number = 12;
    return number + sizeOf(part.contentId) + sizeOf(part.contentType) + sizeOf(part.path)
        + sizeOf(part.plainText) + sizeOf(part.contentLocation);
}

qsizetype sizeOf(const Event &event)
{
    constexpr qsizetype numbersAndLists = 128;
    constexpr qsizetype contactNumber = 12;
    qsizetype size = numbersAndLists;
    forEachText([&](const TextField &field) { size += sizeOf((event.*field.get)()); });
    const QList<MessagePart> parts = event.messageParts();
    for (const MessagePart &part : parts)
        size += sizeOf(part);
    const QList<Event::Contact> contacts = event.contacts();
    for (const Event::Contact &contact : contacts)
        size += contactNumber + sizeOf(contact.second);
    return size;
}

void send(const QDBusConnection &bus, const QList<Event> &events)
{
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/com/quelt/commhistory"),
                                                     QStringLiteral("com.quelt.commhistory"),
                                                     QStringLiteral("eventsAdded"));
    signal << QVariant::fromValue(events);
    bus.send(signal);
}

constexpr int LongPatience = 5000; // milliseconds
constexpr int ShortPatience = 200;

//! Others wait for the store meanwhile, so a bus that did not answer in time gets less of it
//! until it does.
int currentPatience = LongPatience;

bool hasAnswered(MessageBus::State bus)
{
    if (bus == MessageBus::State::Silent && currentPatience == LongPatience)
        qCWarning(lcAnnouncement) << "The session bus does not answer.";
    currentPatience = bus == MessageBus::State::Open ? LongPatience : ShortPatience;
    return bus == MessageBus::State::Open;
}

void announce(const QList<Event> &events)
{
    MessageBus &sessionBus = MessageBus::session();
    if (!sessionBus.isOpen() && !hasAnswered(sessionBus.open(currentPatience)))
        return;
    const QDBusConnection bus = QDBusConnection::sessionBus();
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
        if (more > MaxArray)
            continue; // the bus would break the connection that the others need
        if (!portion.isEmpty() && size + more > MaxPortion) {
            send(bus, portion);
            portion.clear();
            size = 0;
        }
        portion.append(event);
        size += more;
    }
    if (!portion.isEmpty())
        send(bus, portion);
    // The process may end right after a report.
    hasAnswered(sessionBus.flush(currentPatience));
}

} // namespace

// In a thread of its own (or here, if there is none to be had): Qt's hash of texts leaves the wide
// registers of newer processors in a state that would slow the store's thread down by a fifth from
// then on.
void announceAdded(const QList<Event> &events)
{
    if (!events.isEmpty())
        std::async(announce, std::cref(events)).get();
}

} // namespace CommHistory
