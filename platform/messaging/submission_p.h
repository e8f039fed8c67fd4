// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "errorwords_p.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <utility>

//! What one modem daemon does to send one message. finished() comes once, unless the object
//! is deleted before.
//!
//! The daemon is spoken to by its unique bus name: asking for the owner of a well-known one
//! would block, and what a daemon says that was started anew is not about this message.
class Submission : public QObject
{
    Q_OBJECT
public:
    enum class Outcome {
        Accepted, //!< the network took it
        NotSent,  //!< refused, or not even handed to the modem
        Unknown   //!< handed over, and no word came back
    };

    Submission(const OutgoingMessage &message, QObject *parent)
        : QObject(parent)
        , m_message(message)
    {
    }

    virtual void start() = 0;

Q_SIGNALS:
    //! \param problem  a sentence for the user; empty for Accepted
    void finished(Submission::Outcome outcome, const QString &problem);

protected:
    static constexpr int QueryLimit = 5000; //!< in milliseconds, for what is merely asked

    // Of several outcomes the first counts.
    void finishAccepted() { finish(Outcome::Accepted, QString()); }
    void finishNotSent(const QString &problem) { finish(Outcome::NotSent, problem); }
    void finishUnknown(const QString &problem) { finish(Outcome::Unknown, problem); }
    bool isFinished() const { return m_isFinished; }

    QString describe(const QDBusError &error) const;
    //! From now on the outcome is unknown when the daemon ends. Its calls would only tell that
    //! it does not answer.
    void watchForEndOf(const QString &daemon);

    //! Calls \a next with the reply when it has come.
    template <typename Reply, typename Next>
    void then(const Reply &reply, Next next)
    {
        auto *watcher = new QDBusPendingCallWatcher(reply, this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [watcher, next = std::move(next)] {
                    watcher->deleteLater();
                    next(Reply(*watcher));
                });
    }
    //! The same for a call from before the message is handed over: an error ends it all.
    template <typename Reply, typename Next>
    void thenOrGiveUp(const Reply &reply, Next next)
    {
        then(reply, [this, next = std::move(next)](const Reply &reply) {
            if (reply.isError())
                finishNotSent(describe(reply.error()));
            else
                next(reply);
        });
    }

    const OutgoingMessage m_message;

private:
    void finish(Outcome outcome, const QString &problem);

    bool m_isFinished = false;
};
