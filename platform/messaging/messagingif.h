// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>

//! One message on its way. finished() comes once, on a later turn of the event loop, whatever
//! becomes of it; then the object deletes itself, after slots that are connected to finished()
//! directly or queued in its own thread have run.
class KORVAPLATFORM_EXPORT PendingMessage : public QObject
{
    Q_OBJECT
public:
    //! Whether the message was not sent, or may not have been; false until finished().
    bool isError() const { return !m_errorText.isEmpty(); }
    //! Which failure it was: a sentence for the user, without number or text.
    QString errorText() const { return m_errorText; }

Q_SIGNALS:
    void finished(const PendingMessage *message);

private:
    friend class MessagingIf;
    explicit PendingMessage(QObject *parent);
    void finish(const QString &errorText);

    QString m_errorText;
};

//! Sends text messages through the phone's modem daemon, ModemManager or oFono.
class KORVAPLATFORM_EXPORT MessagingIf : public QObject
{
    Q_OBJECT
public:
    //! \param name  the D-Bus path of the modem to send through; empty: the first modem that
    //!              sends messages, of ModemManager or, when that is not there, of oFono
    explicit MessagingIf(const QString &name, QObject *parent = nullptr);

    //! Sends a message; the daemon splits a long one. Returns at once and never null. The
    //! result belongs to this object; a message is seen through also without it. Why it was
    //! not sent, or may not have been, is warned of too, in the category korvasync.messaging.
    //!
    //! \param number  may have separators, which the modem does not get
    //! \param keepInHistory  whether the platform adds one event to the store when the outcome
    //!     is known, before finished(): in the sent folder, or with failed status in the outbox
    //!     when the message was not sent. When it is not known (daemon or modem were lost after
    //!     they had got the message, or did not answer) nothing is added. Number and text are
    //!     stored as given. A store that cannot be written costs a warning, no error.
    PendingMessage *sendSMS(const QString &number, const QString &text, bool keepInHistory);

private:
    const QString m_modemPath;
};
