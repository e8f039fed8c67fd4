// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <platformexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>

//! One message on its way. finished() comes once, from the event loop, whatever becomes of the
//! message. Then the object deletes itself. Slots that are connected to finished() directly, or
//! queued in the object's own thread, run before.
class KORVAPLATFORM_EXPORT PendingMessage : public QObject
{
    Q_OBJECT
public:
    //! Whether the message was not sent, or may not have been; false until finished().
    bool isError() const { return !m_errorText.isEmpty(); }
    //! Why: a sentence for the user, without number or text. Empty if there is no error.
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

    //! Sends a message; the daemon splits a long one. Returns at once. Deleting this object does
    //! not stop a message.
    //!
    //! \param number  may have separators, which the modem does not get
    //! \param keepInHistory  whether to add an event to the store, before finished(), with number
    //!     and text as given. A message that was sent goes into the sent folder; one that was not
    //!     sent goes into the outbox, with failed status. Nothing is added if the outcome is not
    //!     known, since daemon or modem were lost or did not answer after they had got the message.
    //! \return never null; a child of this object
    //! \par Failure  Why a message was not sent, or may not have been, is in
    //!     PendingMessage::errorText(), and is logged as a warning in korvasync.messaging. A store
    //!     that cannot be written is a warning, not an error.
    PendingMessage *sendSMS(const QString &number, const QString &text, bool keepInHistory);

private:
    const QString m_modemPath;
};
