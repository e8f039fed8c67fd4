// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mailbox_p.h"

#include <QtCore/QMutexLocker>

namespace CommHistory {

void Mailbox::post(std::function<void()> message)
{
    const QMutexLocker locker(&m_mutex);
    if (m_owner)
        QMetaObject::invokeMethod(m_owner, std::move(message), Qt::QueuedConnection);
}

void Mailbox::close()
{
    const QMutexLocker locker(&m_mutex);
    m_owner = nullptr;
}

} // namespace CommHistory
