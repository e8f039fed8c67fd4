// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/korvasyncexport.h>

#include <QtCore/QObject>

//! Result of sending one text message.
//!
//! Life: SendSmsInterface creates it, as its child. When the message could not be handed to
//! the messaging library, errorCause() says why at once and finished() never comes.
//! Otherwise finished() comes once, on a later turn of the event loop; a send that is
//! overtaken by the next one on the same object never gets it. The object lives until its
//! SendSmsInterface goes and must not be deleted before.
class KORVASYNC_EXPORT PendingSmsId : public QObject
{
    Q_OBJECT
public:
    //! What errorCause() can be.
    enum ErrorCause {
        NoError = 0,
        ParseError = 1,         //!< the vMessage cannot be parsed
        NoText = 2,             //!< it has no message text, or the first of all failed to parse
        NoRecipient = 3,        //!< it has no recipient's number
        SubscriptionFailed = 4, //!< the session bus is not there to watch the store on
        NotSeen = 5             //!< no stored event in 2,000 ms; the message may have gone out
    };

    explicit PendingSmsId(QObject *parent);
    ~PendingSmsId() override;

    int id();         //!< database id of the stored message, -1 = none
    int errorCause(); //!< see ErrorCause
    bool isError();
    //! Emits finished().
    void done();

Q_SIGNALS:
    void finished(PendingSmsId *pendingId);

private:
    friend class SendSmsInterface;

    int eventId = -1;
    int cause = NoError;
};
