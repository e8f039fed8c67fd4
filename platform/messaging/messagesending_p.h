// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "submission_p.h"

#include <QtCore/QObject>
#include <QtCore/QString>

//! The whole way of one message: finds the daemon, has it send the message and keeps what
//! became of it. Belongs to nobody and deletes itself after finished(), so that a message
//! that is on its way is kept even when whoever sent it has gone.
class MessageSending : public QObject
{
    Q_OBJECT
public:
    //! \param modemPath      empty: the daemon that is there, its first modem
    //! \param number, text   as the user gave them
    //! \param keepInHistory  whether the message is to be stored
    MessageSending(const QString &modemPath, const QString &number, const QString &text,
                   bool keepInHistory);

    //! On a later turn of the event loop.
    void start();

Q_SIGNALS:
    //! \param problem  empty when the message was sent
    void finished(const QString &problem);

private:
    struct Daemon;
    static const Daemon Daemons[];

    void begin();
    void lookFor(const Daemon *daemon);
    void submit(const Daemon &daemon, const QString &uniqueName);
    void keep(Submission::Outcome outcome, const QString &problem);
    void tell(const QString &problem);
    void finish(const QString &problem);

    const int m_message; //!< its number in SendingMonitor
    const QString m_modemPath;
    const QString m_number;
    const QString m_text;
    const bool m_keepInHistory;
};
