// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "sendservice.h"

#include "shared/delivery.h"
#include "shared/sendable.h"

#include <QtCore/QCoreApplication>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <algorithm>
#include <utility>

using KorvaSyncIf::SmsInfo;

constexpr QLatin1String BusName("org.korvasync.Sender");

namespace {

bool isSame(const SmsInfo &one, const SmsInfo &other)
{
    return one.toNumber == other.toNumber && one.body == other.body;
}

QString serviceEnds() { return QStringLiteral("The message was not sent, as the service ends."); }

} // namespace

SendService::SendService(std::chrono::milliseconds idleTime, std::chrono::milliseconds waitingLimit)
    : m_bus(QDBusConnection::sessionBus())
    , m_waitingLimit(waitingLimit)
    , m_object(this)
{
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
        return refuse(call, serviceEnds());
    if (m_idleTimer.isActive())
        m_idleTimer.start();
    SmsInfo message;
    if (refuseUnsendable(vMessage, call, message) || join(call, message))
        return;
    const Request request{
        message, {call}, ++m_lastSerial, QDeadlineTimer(m_waitingLimit, Qt::PreciseTimer)};
    if (!m_served && m_waiting.isEmpty() && !equalsOneUnderWay(message))
        serve(request);
    else if (hasRoomFor(call))
        wait(request);
    else
        refuse(call, QStringLiteral("The message was not sent, as too many calls wait."));
}

//! \param message  set to what is to be sent
bool SendService::refuseUnsendable(const QString &vMessage, const QDBusMessage &call,
                                   SmsInfo &message)
{
    const auto parsed = ParsedMessage::parse(vMessage.toUtf8());
    const SendableMessage normalised = parsed ? normaliseToSend(*parsed) : SendableMessage();
    message = normalised.message;
    if (message.body.isEmpty()) {
        reply(call, -1, PendingSmsId::NoText);
    } else if (normalised.rejectReason == RejectReason::SmsNoNumber) {
        reply(call, -1, PendingSmsId::NoRecipient);
    } else if (normalised.rejectReason != RejectReason::None) {
        refuse(call,
               QStringLiteral("The message was not sent: %1.")
                   .arg(reasonOf(normalised.rejectReason).english));
    } else if (!isCarriedWhole(message)) {
        refuse(call,
               QStringLiteral("The message was not sent, as no message can carry its number or "
                              "text."));
    } else {
        return false;
    }
    return true;
}

//! Leaves the call to an equal one. \return false when there is none
bool SendService::join(const QDBusMessage &call, const SmsInfo &message)
{
    Request *equal = nullptr;
    if (m_served && isSame(m_served->message, message))
        equal = &*m_served;
    for (Request &request : m_waiting) {
        if (isSame(request.message, message))
            equal = &request;
    }
    if (equal && hasRoomFor(call)) {
        equal->calls += call;
        return true;
    }
    const bool isAnsweredAsUnknown =
        std::any_of(m_underWay.cbegin(), m_underWay.cend(), [&](const UnderWay &other) {
            return other.isAnsweredAsUnknown && isSame(other.message, message);
        });
    if (!equal && !isAnsweredAsUnknown)
        return false;
    reply(call, -1, PendingSmsId::NotSeen); // the other may go out
    return true;
}

bool SendService::hasRoomFor(const QDBusMessage &call) const
{
    QList<QDBusMessage> calls = m_served ? m_served->calls : QList<QDBusMessage>();
    for (const Request &request : m_waiting)
        calls += request.calls;
    calls += call;
    qint64 textSize = 0;
    for (const QDBusMessage &one : std::as_const(calls))
        textSize += one.arguments().value(0).toString().size();
    return calls.size() <= MostCalls && textSize <= MostText;
}

void SendService::wait(const Request &request)
{
    m_idleTimer.stop();
    m_waiting += request;
    QTimer::singleShot(m_waitingLimit, Qt::PreciseTimer, this,
                       [this, serial = request.serial] { stopWaiting(serial); });
    serveNext();
}

void SendService::finish()
{
    m_isFinishing = true;
    m_idleTimer.stop();
    m_bus.unregisterService(BusName);
    for (const Request &request : std::as_const(m_waiting))
        refuse(request, serviceEnds());
    m_waiting.clear();
    serveNext();
}

//! Asks the bus first who is still there.
void SendService::serveNext()
{
    constexpr int limit = 5000; // milliseconds
    if (m_served || m_isLooking)
        return;
    if (firstThatMayGo() == m_waiting.end())
        return rest();
    m_isLooking = true;
    const QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
    auto *names = new QDBusPendingCallWatcher(m_bus.asyncCall(question, limit), this);
    connect(names, &QDBusPendingCallWatcher::finished, this, [this, names] {
        names->deleteLater();
        m_isLooking = false;
        refuseCallersThatHaveGone(QDBusPendingReply<QStringList>(*names).value());
        const auto first = firstThatMayGo();
        if (m_served || first == m_waiting.end())
            return serveNext();
        serve(m_waiting.takeAt(int(first - m_waiting.begin())));
    });
}

void SendService::refuseCallersThatHaveGone(const QStringList &busNames)
{
    const auto hasGone = [&](const QDBusMessage &call) {
        return call.isReplyRequired() && !busNames.contains(call.service());
    };
    QList<Request> stillWaiting;
    for (Request &request : m_waiting) {
        const QList<QDBusMessage> calls = std::exchange(request.calls, {});
        for (const QDBusMessage &call : calls) {
            if (hasGone(call))
                refuse(call, QStringLiteral("The message was not sent, as its caller has gone."));
            else
                request.calls += call;
        }
        if (!request.calls.isEmpty())
            stillWaiting += request;
    }
    m_waiting.swap(stillWaiting);
}

void SendService::serve(const Request &request)
{
    m_idleTimer.stop();
    m_served = request;
    // Its sender's attempt to take the path as well fails, and harms nothing.
    auto *const delivery = new Delivery(request.message, this);
    if (delivery->isUnderWay())
        m_underWay.insert(delivery, {request.message});
    connect(delivery, &Delivery::answered, this, [this, delivery] { answer(*delivery); });
    connect(delivery, &Delivery::ended, this, [this, delivery] { end(*delivery); });
}

void SendService::answer(Delivery &delivery)
{
    // What becomes of the message is stored by this process, also when it comes later.
    if (delivery.isUnderWay())
        m_underWay[&delivery].isAnsweredAsUnknown = delivery.errorCause() != PendingSmsId::NoError;
    else
        delivery.deleteLater();
    for (const QDBusMessage &call : std::as_const(m_served->calls))
        reply(call, delivery.id(), delivery.errorCause());
    m_served.reset();
    QMetaObject::invokeMethod(this, &SendService::serveNext, Qt::QueuedConnection);
}

void SendService::end(Delivery &delivery)
{
    m_underWay.remove(&delivery);
    if (delivery.isAnswered())
        delivery.deleteLater();
    serveNext();
}

void SendService::stopWaiting(int serial)
{
    const auto request = std::find_if(m_waiting.cbegin(), m_waiting.cend(),
                                      [=](const Request &r) { return r.serial == serial; });
    if (request == m_waiting.cend())
        return;
    refuse(*request,
           equalsOneUnderWay(request->message)
               ? QStringLiteral("The message was not sent, as an equal one is still on its way.")
               : QStringLiteral("The message was not sent, as others went before it."));
    m_waiting.removeAt(int(request - m_waiting.cbegin()));
    serveNext();
}

void SendService::rest()
{
    if (!m_waiting.isEmpty())
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
    if (m_waiting.isEmpty() && !m_served)
        Q_EMIT ended();
}

void SendService::reply(const QDBusMessage &call, int id, int errorCause)
{
    if (call.isReplyRequired())
        m_bus.send(call.createReply({id, errorCause}));
}

void SendService::refuse(const QDBusMessage &call, const QString &reason)
{
    if (!call.isReplyRequired())
        return;
    m_bus.send(
        call.createErrorReply(QStringLiteral("org.korvasync.SendSms1.Error.NotSent"), reason));
}

void SendService::refuse(const Request &request, const QString &reason)
{
    for (const QDBusMessage &call : request.calls)
        refuse(call, reason);
}

//! The event loop may be late for a request whose time is over.
QList<SendService::Request>::iterator SendService::firstThatMayGo()
{
    return std::find_if(m_waiting.begin(), m_waiting.end(), [this](const Request &request) {
        return !request.deadline.hasExpired() && !equalsOneUnderWay(request.message);
    });
}

bool SendService::equalsOneUnderWay(const SmsInfo &message) const
{
    return std::any_of(m_underWay.cbegin(), m_underWay.cend(),
                       [&](const UnderWay &other) { return isSame(other.message, message); });
}
