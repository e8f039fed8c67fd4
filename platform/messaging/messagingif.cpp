// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagingif.h"

#include "messagesending_p.h"

#include <QtCore/QPointer>

PendingMessage::PendingMessage(QObject *parent)
    : QObject(parent)
{
}

void PendingMessage::finish(const QString &errorText)
{
    m_errorText = errorText;
    const QPointer<PendingMessage> guard(this);
    Q_EMIT finished(this);
    // Behind what the emission has queued, also where deferred deletions are hastened.
    if (guard)
        QMetaObject::invokeMethod(this, &QObject::deleteLater, Qt::QueuedConnection);
}

MessagingIf::MessagingIf(const QString &name, QObject *parent)
    : QObject(parent)
    , m_modemPath(name)
{
}

PendingMessage *MessagingIf::sendSMS(const QString &number, const QString &text, bool keepInHistory)
{
    auto *sending = new MessageSending(m_modemPath, number, text, keepInHistory);
    auto *message = new PendingMessage(this);
    connect(sending, &MessageSending::finished, message, &PendingMessage::finish);
    sending->start();
    return message;
}

#include "moc_messagingif.cpp"
