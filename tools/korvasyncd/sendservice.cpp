// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendservice.h"

#include "sendadaptor.h"

#include "messages/sendable.h"

#include <messaging/messagingif.h>

#include <QtCore/QCoreApplication>

constexpr QLatin1String BusName("org.korvasync.Sender");

SendService::SendService(std::chrono::milliseconds idleTime)
    : m_bus(QDBusConnection::sessionBus())
{
    new SendAdaptor(&m_object, this);
    m_idleTimer.setSingleShot(true);
    m_idleTimer.setInterval(idleTime);
    connect(&m_idleTimer, &QTimer::timeout, this, &SendService::end);
}

bool SendService::start()
{
    m_idleTimer.start();
    return m_bus.registerService(BusName);
}

void SendService::add(const QString &vMessage, const QDBusMessage &call)
{
    m_idleTimer.stop();
    m_requests.enqueue({vMessage, call});
    if (m_requests.size() == 1)
        serveNext();
}

void SendService::serveNext()
{
    // Its attempt to take the path as well fails, and harms nothing.
    auto *const sender = new SendSmsInterface(this);
    PendingSmsId *const pending = sender->sendSms(sendable(m_requests.head().vMessage));
    connect(pending, &PendingSmsId::finished, this,
            [this, sender](PendingSmsId *finished) { answer(sender, finished); });
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
    const QDBusMessage call = m_requests.dequeue().call;
    m_bus.send(call.createReply({pending->id(), pending->errorCause()}));
    if (m_requests.isEmpty())
        m_idleTimer.start();
    else
        QMetaObject::invokeMethod(this, &SendService::serveNext, Qt::QueuedConnection);
}

// Calls that come from now on start another service; those that have come are served.
void SendService::end()
{
    if (findChild<SendSmsInterface *>())
        return m_idleTimer.start(); // a message is still on its way
    m_bus.unregisterService(BusName);
    QCoreApplication::sendPostedEvents();
    if (m_requests.isEmpty())
        Q_EMIT idle();
}
