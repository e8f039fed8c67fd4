// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "announcement_p.h"

#include "eventmarshalling.h"

#include <store/logging.h>

#include <bus/busprobe.h>

#include <QtCore/QFile>
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
    qsizetype size = numbersAndLists + sizeOf(event.localUid()) + sizeOf(event.remoteUid())
        + sizeOf(event.freeText()) + sizeOf(event.messageToken()) + sizeOf(event.encoding())
        + sizeOf(event.characterSet()) + sizeOf(event.language());
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

//! Others wait for the store meanwhile, so a bus that did not answer in time gets less of it
//! until it does.
bool answers(const QDBusConnection &bus, const QDBusMessage &question)
{
    constexpr int longPatience = 5000; // milliseconds
    constexpr int shortPatience = 200;
    static int patience = longPatience;
    const bool hasAnswered = !BusProbe::isUnanswered(bus.call(question, QDBus::Block, patience));
    if (!hasAnswered && bus.isConnected() && patience == longPatience)
        qCWarning(lcAnnouncement) << "The session bus does not answer.";
    patience = hasAnswered ? longPatience : shortPatience;
    return hasAnswered;
}

//! Where the bus library finds the bus as well.
QString address()
{
    QString chosen = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!chosen.isEmpty())
        return chosen;
    const QByteArray ofUser = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    if (!QFile::exists(QFile::decodeName(ofUser)))
        return QStringLiteral("autolaunch:");
    return QStringLiteral("unix:path=") + QString::fromLatin1(ofUser.toPercentEncoding("/", "~"));
}

bool canBeOpened()
{
    static bool hasAnswered = false; // from then on the bus library has the bus open
    if (!hasAnswered) {
        const QDBusConnection probe =
            BusProbe::connection(QStringLiteral("korvasync-session-bus-probe"), address());
        hasAnswered = answers(probe, BusProbe::greeting());
        if (hasAnswered)
            QDBusConnection::disconnectFromPeer(probe.name());
    }
    return hasAnswered;
}

//! An answer from the bus shows that it has read what was sent before: the process may end
//! right after a report.
void flush(const QDBusConnection &bus)
{
    answers(bus,
            QDBusMessage::createMethodCall(
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
}

void announce(const QList<Event> &events)
{
    if (!canBeOpened())
        return;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
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
    flush(bus);
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
