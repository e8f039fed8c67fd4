// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QMutex>
#include <QtCore/QObject>

#include <functional>
#include <memory>

namespace CommHistory {

//! The way from the store's thread to an object that may be deleted at any time.
class Mailbox
{
public:
    explicit Mailbox(QObject *owner)
        : m_owner(owner)
    {
    }

    //! Has the owner's thread run \a message on a later turn of its event loop, unless
    //! the owner is gone by then.
    void post(std::function<void()> message);
    //! To be called before the owner is gone.
    void close();

private:
    Q_DISABLE_COPY(Mailbox)
    QMutex m_mutex;
    QObject *m_owner;
};

using MailboxPointer = std::shared_ptr<Mailbox>;

} // namespace CommHistory
