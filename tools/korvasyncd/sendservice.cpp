// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendservice.h"

#include "sendadaptor.h"

#include "messages/parsedmessage.h"
#include "messages/sendable.h"

#include <messaging/messagingif.h>

#include <QtCore/QCoreApplication>

#include <algorithm>

constexpr QLatin1String BusName("org.korvasync.Sender");
//! Below the time that callers wait for, as none shall be told later that nothing was sent.
constexpr std::chrono::seconds WaitingLimit(20);

SendService::SendService(std::chrono::milliseconds idleTime)
    : m_bus(QDBusConnection::sessionBus())
{
    new SendAdaptor(&m_object, this);
    m_idleTimer.setSingleShot(true);
    m_idleTimer.setInterval(idleTime);
    connect(&m_idleTimer, &QTimer::timeout, this, &SendService::endWhenIdle);
}

bool SendService::start()
{
    m_idleTimer.start();
    return m_bus.registerService(BusName);
}

void SendService::add(const QString &vMessage, const QDBusMessage &call)
{
    if (m_isFinishing)
        return refuse(call, QStringLiteral("The message was not sent, as the service ends."));
    m_idleTimer.stop();
    Request request{++m_lastSerial, vMessage, {}, call};
    if (const auto parsed = ParsedMessage::parse(vMessage.toUtf8()))
        request.content = {parsed->recipients.value(0),
                           ParsedMessage::comparable(parsed->body).toString()};
    m_requests.append(request);
    QTimer::singleShot(WaitingLimit, this,
                       [this, serial = request.serial] { stopWaiting(serial); });
    serveNext();
}

void SendService::finish()
{
    m_isFinishing = true;
    m_idleTimer.stop();
    m_bus.unregisterService(BusName);
    for (const Request &request : std::as_const(m_requests))
        refuse(request.call, QStringLiteral("The message was not sent, as the service ends."));
    m_requests.clear();
    serveNext();
}

void SendService::serveNext()
{
    if (m_served)
        return;
    const auto next =
        std::find_if(m_requests.cbegin(), m_requests.cend(),
                     [this](const Request &request) { return !equalsOneUnderWay(request); });
    if (next == m_requests.cend())
        return rest();
    serve(m_requests.takeAt(int(next - m_requests.cbegin())));
}

void SendService::serve(const Request &request)
{
    m_served = request.call;
    // Its attempt to take the path as well fails, and harms nothing.
    auto *const sender = new SendSmsInterface(this);
    PendingSmsId *const pending = sender->sendSms(sendable(request.vMessage));
    connect(pending, &PendingSmsId::finished, this,
            [this, sender](PendingSmsId *finished) { answer(sender, finished); });
    if (PendingMessage *const message = sender->findChild<PendingMessage *>()) {
        m_underWay.insert(message, request.content);
        connect(message, &QObject::destroyed, this, [this](QObject *over) {
            m_underWay.remove(over);
            serveNext();
        });
    }
    if (pending->isError()) // nothing will signal
        answer(sender, pending);
}

void SendService::answer(SendSmsInterface *sender, PendingSmsId *pending)
{
    pending->disconnect(this); // a second announcement is not another answer
    // What becomes of the message is stored by this process, also when it comes later.
    if (PendingMessage *const message = sender->findChild<PendingMessage *>())
        connect(message, &QObject::destroyed, sender, &QObject::deleteLater);
    else
        sender->deleteLater();
    m_bus.send(m_served->createReply({pending->id(), pending->errorCause()}));
    m_served.reset();
    QMetaObject::invokeMethod(this, &SendService::serveNext, Qt::QueuedConnection);
}

void SendService::stopWaiting(int serial)
{
    const auto request = std::find_if(m_requests.cbegin(), m_requests.cend(),
                                      [=](const Request &r) { return r.serial == serial; });
    if (request == m_requests.cend() || !equalsOneUnderWay(*request))
        return;
    refuse(request->call,
           QStringLiteral("The message was not sent, as an equal one is still on its way."));
    m_requests.removeAt(int(request - m_requests.cbegin()));
}

void SendService::rest()
{
    if (!m_requests.isEmpty())
        return;
    if (!m_isFinishing)
        m_idleTimer.start();
    else if (m_underWay.isEmpty())
        Q_EMIT ended();
}

// Calls that come from now on start another service; those that have come are served.
void SendService::endWhenIdle()
{
    if (!m_underWay.isEmpty())
        return m_idleTimer.start();
    m_bus.unregisterService(BusName);
    QCoreApplication::sendPostedEvents();
    if (m_requests.isEmpty() && !m_served)
        Q_EMIT ended();
}

void SendService::refuse(const QDBusMessage &call, const QString &reason)
{
    m_bus.send(
        call.createErrorReply(QStringLiteral("org.korvasync.SendSms1.Error.NotSent"), reason));
}

bool SendService::equalsOneUnderWay(const Request &request) const
{
    return std::any_of(m_underWay.cbegin(), m_underWay.cend(),
                       [&](const NumberAndText &content) { return content == request.content; });
}
