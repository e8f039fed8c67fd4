// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "delivery.h"

#include "sendable.h"

#include <messaging/sendingmonitor.h>

#include <QtCore/QMutexLocker>

Delivery::Delivery(const KorvaSyncIf::SmsInfo &message, QObject *parent)
    : QObject(parent)
{
    SendingMonitor *const monitor = SendingMonitor::instance();
    const auto handingOver = connect(monitor, &SendingMonitor::begun, this, [this](int number) {
        m_message = number;
        m_isUnderWay = true;
    });
    PendingSmsId *const pending = m_sender.sendSms(sendable(message));
    disconnect(handingOver);
    connect(monitor, &SendingMonitor::problemFound, this, &Delivery::note);
    // Behind what the library has queued for the same end.
    connect(monitor, &SendingMonitor::ended, this, &Delivery::end, Qt::QueuedConnection);
    connect(pending, &PendingSmsId::finished, this, &Delivery::follow);
    m_errorCause = pending->errorCause();
    if (pending->isError()) // nothing will signal
        QMetaObject::invokeMethod(
            this, [=] { follow(pending); }, Qt::QueuedConnection);
}

QString Delivery::problem() const
{
    const QMutexLocker locker(&m_mutex);
    return m_problem;
}

void Delivery::follow(PendingSmsId *pending)
{
    m_id = pending->id();
    m_errorCause = pending->errorCause();
    m_isAnswered = true;
    Q_EMIT answered();
}

void Delivery::note(int message, const QString &problem)
{
    const QMutexLocker locker(&m_mutex);
    if (message == m_message && m_problem.isEmpty())
        m_problem = problem;
}

void Delivery::end(int message)
{
    if (message != m_message)
        return;
    m_isUnderWay = false;
    Q_EMIT ended();
}
