// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mailbox_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <utility>

namespace CommHistory {

// Takes one message for each event. The messages themselves stay out of Qt's event queue,
// whose locking the thread sanitizer does not see.
class Mailbox::Receiver : public QObject
{
public:
    Receiver(Mailbox *mailbox, QObject *owner)
        : QObject(owner)
        , m_mailbox(mailbox)
    {
    }

protected:
    void customEvent(QEvent *) override
    {
        // The message may delete the owner and this with it.
        if (const Message message = m_mailbox->take())
            message();
    }

private:
    Mailbox *m_mailbox; // lives as long as the owner
};

Mailbox::Mailbox(QObject *owner)
    : m_receiver(new Receiver(this, owner))
{
}

void Mailbox::post(Message message)
{
    const std::lock_guard<std::mutex> locker(m_mutex);
    if (!m_receiver)
        return;
    m_messages.push_back(std::move(message));
    QCoreApplication::postEvent(m_receiver, new QEvent(QEvent::User));
}

void Mailbox::close()
{
    std::deque<Message> unread; // destroyed unlocked
    const std::lock_guard<std::mutex> locker(m_mutex);
    m_receiver = nullptr;
    m_messages.swap(unread);
}

Mailbox::Message Mailbox::take()
{
    const std::lock_guard<std::mutex> locker(m_mutex);
    if (m_messages.empty())
        return nullptr;
    Message message = std::move(m_messages.front());
    m_messages.pop_front();
    return message;
}

} // namespace CommHistory
