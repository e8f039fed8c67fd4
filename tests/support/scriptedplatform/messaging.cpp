// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The messaging library of the scripted platform.

#include <messaging/messagingif.h>

PendingMessage::PendingMessage(QObject *parent)
    : QObject(parent)
{
}

void PendingMessage::finish(const QString &errorText)
{
    m_errorText = errorText;
    Q_EMIT finished(this);
}

MessagingIf::MessagingIf(const QString &name, QObject *parent)
    : QObject(parent)
    , m_modemPath(name)
{
}

PendingMessage *MessagingIf::sendSMS(const QString &, const QString &, bool)
{
    return new PendingMessage(this);
}
