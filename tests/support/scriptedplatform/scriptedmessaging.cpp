// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "scriptedmessaging.h"

#include <messaging/messagingif.h>

namespace {

ScriptedMessaging *currentMessaging = nullptr;

} // namespace

ScriptedMessaging::ScriptedMessaging()
{
    if (currentMessaging)
        qFatal("There is a scripted messaging library already");
    currentMessaging = this;
}

ScriptedMessaging::~ScriptedMessaging() { currentMessaging = nullptr; }

ScriptedMessaging *ScriptedMessaging::current()
{
    if (!currentMessaging)
        qFatal("The library sends while no scripted messaging library is there");
    return currentMessaging;
}

PendingMessage::PendingMessage(QObject *parent)
    : QObject(parent)
{
}

void PendingMessage::finish(const QString &errorText)
{
    m_errorText = errorText;
    Q_EMIT finished(this);
    QMetaObject::invokeMethod(this, &QObject::deleteLater, Qt::QueuedConnection);
}

MessagingIf::MessagingIf(const QString &name, QObject *parent)
    : QObject(parent)
    , m_modemPath(name)
{
    ScriptedMessaging::current()->names.append(name);
}

PendingMessage *MessagingIf::sendSMS(const QString &number, const QString &text, bool keepInHistory)
{
    ScriptedMessaging *const script = ScriptedMessaging::current();
    script->messages.append({number, text, keepInHistory});
    PendingMessage *const message = new PendingMessage(this);
    if (script->outcome != ScriptedMessaging::Outcome::None) {
        const bool isRefused = script->outcome == ScriptedMessaging::Outcome::Refused;
        const QString errorText = isRefused ? QStringLiteral("refused") : QString();
        QMetaObject::invokeMethod(
            message, [=] { message->finish(errorText); }, Qt::QueuedConnection);
    }
    return message;
}
