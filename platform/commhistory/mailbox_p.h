// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QObject>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace CommHistory {

//! The way from the store's thread to an object that may be deleted at any time.
class Mailbox
{
public:
    //! To be made in the owner's thread.
    explicit Mailbox(QObject *owner);

    using Message = std::function<void()>;

    //! Has the owner's thread run \a message on a later turn of its event loop, unless
    //! the owner is gone by then.
    void post(Message message);
    //! To be called before the owner is gone.
    void close();

private:
    Q_DISABLE_COPY(Mailbox)
    class Receiver;

    Message take();

    std::mutex m_mutex;
    Receiver *m_receiver; // child of the owner; null when closed
    std::deque<Message> m_messages;
};

using MailboxPointer = std::shared_ptr<Mailbox>;

} // namespace CommHistory
