// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "vmessagetext.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>
#include <QtTest/QTest>

//! The sending service as the programs that call it see it.
namespace SenderService {

const QString BusName = QStringLiteral("org.korvasync.Sender");
constexpr int Patience = 60000; //!< milliseconds

inline QString vMessage(const QString &text, const QString &number = QStringLiteral("+15550100"))
{
    VMessageText message;
    message.box = QStringLiteral("SENT");
    message.originator = QString();
    message.recipient = number;
    message.body = text;
    return message.text();
}

inline QDBusPendingCall call(const QString &vMessage,
                             const QDBusConnection &bus = QDBusConnection::sessionBus())
{
    QDBusMessage request = QDBusMessage::createMethodCall(
        BusName, QStringLiteral("/SendSmsInterface"), QStringLiteral("org.korvasync.SendSms1"),
        QStringLiteral("SendSms"));
    request << vMessage;
    return bus.asyncCall(request, Patience);
}

//! Id and error cause; nothing when no answer comes.
inline QList<int> answer(const QDBusPendingCall &call)
{
    if (!QTest::qWaitFor([&] { return call.isFinished(); }, Patience) || call.isError())
        return {};
    QList<int> numbers;
    for (const QVariant &argument : call.reply().arguments())
        numbers += argument.toInt();
    return numbers;
}

//! What the service says of its object; empty when no answer comes.
inline QString introspection()
{
    const QDBusPendingCall call =
        QDBusConnection::sessionBus().asyncCall(QDBusMessage::createMethodCall(
            BusName, QStringLiteral("/SendSmsInterface"),
            QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect")));
    if (!QTest::qWaitFor([&] { return call.isFinished(); }, Patience) || call.isError())
        return {};
    return call.reply().arguments().value(0).toString();
}

} // namespace SenderService
