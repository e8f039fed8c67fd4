// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/sendsmsinterface.h>

#include "base/logging.h"
#include "base/qtversion.h"
#include "sendsmsinterface_p.h"

#include <commhistory/event.h>
#include <commhistory/eventmarshalling.h>
#include <messaging/messagingif.h>
#include <vmessage/vmessageparser.h>

#include <QtCore/QDebug>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMetaType>

namespace {

constexpr int SendTimeLimit = 2000; // ms

constexpr QLatin1String HistoryInterface("com.quelt.commhistory");
constexpr QLatin1String AddedSignal("eventsAdded");
const char *const EventsSlot = SLOT(eventsAdded(QList<CommHistory::Event>));

//! What a signal has to carry. Any program can send one, and the bus library would read
//! whatever it carries as events, and crash.
QString eventsSignature() { return QString::fromLatin1(busSignature<QList<CommHistory::Event>>()); }

void registerAnnouncedTypes()
{
    qDBusRegisterMetaType<CommHistory::Event>();
    qDBusRegisterMetaType<QList<CommHistory::Event>>();
    qDBusRegisterMetaType<CommHistory::MessagePart>();
    qDBusRegisterMetaType<QList<CommHistory::MessagePart>>();
    qRegisterMetaType<CommHistory::Event::Contact>("CommHistory::Event::Contact");
    qDBusRegisterMetaType<CommHistory::Event::Contact>();
}

} // namespace

PendingSmsId::PendingSmsId(QObject *parent)
    : QObject(parent)
{
    qCDebug(lcSend) << "PendingSmsId::PendingSmsId(QObject*)";
}

PendingSmsId::~PendingSmsId() = default;

int PendingSmsId::id() { return eventId; }
int PendingSmsId::errorCause() { return cause; }
bool PendingSmsId::isError() { return cause != NoError; }
void PendingSmsId::done() { Q_EMIT finished(this); }

SendSmsInterface::SendSmsInterface(QObject *parent)
    : QObject(parent)
    , d(new SendSmsInterfacePrivate)
{
    qCDebug(lcSend) << "SendSmsInterface::SendSmsInterface(QObject*)";
    registerAnnouncedTypes();
    const bool registered = QDBusConnection::sessionBus().registerObject(
        QStringLiteral("/SendSmsInterface"), this, QDBusConnection::ExportAdaptors);
    qCDebug(lcSend) << "SendSMsInterface obj registered" << boolText(registered);
}

SendSmsInterface::~SendSmsInterface()
{
    qCDebug(lcSend) << "virtual SendSmsInterface::~SendSmsInterface()";
    qCDebug(lcSend) << "Deleting SendSmsInterface Private";
    delete d;
}

SendSmsInterfacePrivate::SendSmsInterfacePrivate()
{
    qCDebug(lcSend) << "SendSmsInterfacePrivate::SendSmsInterfacePrivate()";
}

bool SendSmsInterfacePrivate::parseVMessage(const QString &vMessage)
{
    qCDebug(lcSend) << "bool SendSmsInterfacePrivate::parseVMessage(const QString&)";
    const QByteArray utf8 = vMessage.toUtf8();
    VMessageParser parser;
    // UTF-16 units over UTF-8 bytes: callers with other than ASCII texts know it and append
    // line ends.
    const VMessage *const message =
        parser.parseVMessage(utf8.constData(), unsigned(vMessage.size()));
    if (!message)
        return false;
    if (const VMessageBody *const record = parser.body(message))
        body = QString::fromUtf8(record->text, record->length);
    if (const VMessageRecipient *const record = parser.recipients(message))
        number = QString::fromLatin1(record->telephone);
    return true;
}

PendingSmsId *SendSmsInterface::sendSms(const QString &vMessage)
{
    const char *const signature = "PendingSmsId* SendSmsInterface::sendSms(const QString&)";
    qCDebug(lcSend) << "Enter" << signature << vMessage;
    const bool parsed = d->parseVMessage(vMessage);
    PendingSmsId *const pending = new PendingSmsId(this);
    d->pending = pending;
    const bool subscribed = subscribe();
    qCDebug(lcSend) << "eventsAdded got connected " << boolText(subscribed);
    if (!subscribed) {
        qCDebug(lcSend) << "DBUS Connection Failed";
        pending->cause = PendingSmsId::SubscriptionFailed;
    } else if (d->body.isEmpty()) {
        // Before the parser's verdict: callers know a failed first parse by this cause.
        pending->cause = PendingSmsId::NoText;
    } else if (d->number.isEmpty()) {
        pending->cause = PendingSmsId::NoRecipient;
    } else if (!parsed) {
        pending->cause = PendingSmsId::ParseError;
    } else {
        if (!d->messaging)
            d->messaging = new MessagingIf(QString(), this);
        QTimer::singleShot(SendTimeLimit, Qt::PreciseTimer, this, &SendSmsInterface::timeOut);
        PendingMessage *const sending = d->messaging->sendSMS(d->number, d->body, true);
        connect(sending, &PendingMessage::finished, this, &SendSmsInterface::msgSent,
                Qt::QueuedConnection);
    }
    qCDebug(lcSend) << "Exit" << signature;
    return pending;
}

bool SendSmsInterface::subscribe()
{
    // The bus library refuses a subscription that it has already.
    unsubscribe();
    d->subscribed = QDBusConnection::sessionBus().connect(
        QString(), QString(), HistoryInterface, AddedSignal, eventsSignature(), this, EventsSlot);
    return d->subscribed;
}

bool SendSmsInterface::unsubscribe()
{
    d->subscribed = false;
    return QDBusConnection::sessionBus().disconnect(
        QString(), QString(), HistoryInterface, AddedSignal, eventsSignature(), this, EventsSlot);
}

// The outcome of a send is what the store shows; this is for the log alone.
void SendSmsInterface::msgSent(const PendingMessage *msg)
{
    qCDebug(lcSend) << "void SendSmsInterface::msgSent(const PendingMessage*)";
    if (msg->isError())
        qCWarning(lcSend) << "Error in sendSms request";
    else
        qCDebug(lcSend) << "Msg sent succesfully";
}

void SendSmsInterface::eventsAdded(const QList<CommHistory::Event> &events)
{
    if (!d->subscribed)
        return;
    qCDebug(lcSend) << "void SendSmsInterface::eventsAdded(const QList<CommHistory::Event>&)";
    for (const CommHistory::Event &event : events) {
        qCDebug(lcSend) << event.freeText();
        if (event.direction() != CommHistory::Event::Outbound || event.freeText() != d->body
            || event.remoteUid() != d->number)
            continue;
        qCDebug(lcSend) << "Received the event which was sent" << int(event.status());
        d->sentEventSeen = true;
        if (d->pending)
            d->pending->eventId = event.id();
    }
    // Once set, it makes any later announcement finish any later send: services that keep one
    // object for all their messages rely on a fast answer.
    if (!d->sentEventSeen)
        return;
    const bool unsubscribed = unsubscribe();
    qCDebug(lcSend) << "Emitting done success" << boolText(unsubscribed);
    if (d->isSending())
        d->pending->done();
}

void SendSmsInterface::timeOut()
{
    qCDebug(lcSend) << "void SendSmsInterface::timeOut()";
    const bool unsubscribed = unsubscribe();
    qCDebug(lcSend) << "Events Added Disconnected" << boolText(unsubscribed);
    if (d->sentEventSeen || !d->isSending())
        return;
    d->pending->cause = PendingSmsId::NotSeen;
    qCDebug(lcSend) << "Emitting done with failure msg not added";
    d->pending->done();
}

#include "korvasync/moc_pendingsmsid.cpp"
#include "korvasync/moc_sendsmsinterface.cpp"
