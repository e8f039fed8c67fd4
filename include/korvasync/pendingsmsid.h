// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>

#include <QtCore/QObject>

//! Result of sending one text message.
//!
//! Life:
//! - *Created*: by SendSmsInterface::sendSms(), as a child of that SendSmsInterface.
//! - *Not started*: isError() is true at once, errorCause() says why, and finished() never comes.
//!   Nothing was sent.
//! - *Sending*: The caller connects to finished() before it returns to the event loop.
//! - *Finished*: finished() comes from the event loop: when the store has announced the message,
//!   with its id(), or after 2,000 ms, with NotSeen.
//! - *Overtaken*: The next sendSms() of the same SendSmsInterface takes over. finished() never
//!   comes for this message.
//! - *Deleted*: with the SendSmsInterface; never by itself. The caller must not delete it
//!   before the 2,000 ms are over.
//!
//! No error means that the message is stored, not that it was sent: its folder in the store tells.
class KORVASYNC_EXPORT PendingSmsId : public QObject
{
    Q_OBJECT
public:
    //! What errorCause() can be.
    enum ErrorCause {
        NoError = 0,
        ParseError = 1,         //!< the vMessage cannot be parsed, and an earlier one could
        NoText = 2,             //!< it has no text, or it cannot be parsed and none could before
        NoRecipient = 3,        //!< neither it nor an earlier one has a recipient's number
        SubscriptionFailed = 4, //!< there is no session bus on which the store can be watched
        NotSeen = 5             //!< not announced within the time limit; it may have gone out
    };

    explicit PendingSmsId(QObject *parent);
    ~PendingSmsId() override;

    int id();         //!< database id of the stored message; -1 = none, or not known
    int errorCause(); //!< an ErrorCause
    bool isError();   //!< whether errorCause() is not NoError
    //! Emits finished(). For SendSmsInterface.
    void done();

Q_SIGNALS:
    //! The result is known.
    //! \param pendingId  this object
    void finished(PendingSmsId *pendingId);

private:
    friend class SendSmsInterface;

    int eventId = -1;
    int cause = NoError;
};
