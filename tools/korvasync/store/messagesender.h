// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "clientlock.h"
#include "messagestore.h"
#include "model/storedmessage.h"
#include "shared/delivery.h"
#include "storelocation.h"

#include <korvasync/syncrecords.h>

#include <QtCore/QSet>

#include <chrono>
#include <functional>
#include <optional>

//! Sends one message and finds out what became of it. The store alone decides: what is
//! announced on the bus any program can announce.
class MessageSender
{
public:
    enum Outcome {
        NotSent, //!< not even tried: no store, or cause() tells
        Sent,    //!< stands in the sent folder
        Failed,  //!< stands in the outbox
        Unknown  //!< may have gone out
    };

    //! Whose answer was waited for at last.
    enum WaitedFor {
        SessionBus,
        OtherClients, //!< that are at work on the store
        Store
    };

    struct Result
    {
        Outcome outcome = NotSent;
        WaitedFor waitedFor = Store;
        Answer answer = Answer::Finished;
        int cause = 0;   //!< PendingSmsId::ErrorCause
        int id = -1;     //!< database id, -1 = none
        QString problem; //!< why it was not sent, or may not have been: a sentence, or empty
    };

    MessageSender(StoreLocation &location, MessageStore &store);

    //! Two that send the same at the same time wait for each other, since the store does not
    //! tell whose message it got.
    //!
    //! \param timeout     how long the client lock, and then the outcome, is waited for
    //! \param handedOver  called when the message has been handed over, and may go out
    Result send(const KorvaSyncIf::SmsInfo &message, std::chrono::milliseconds timeout,
                const std::function<void()> &handedOver);

    //! What is known of Result::problem, in any thread, once the message has been handed over.
    QString problem() const { return m_delivery->problem(); }

private:
    Answer read(KorvaSyncIf::LocationId folder, QList<StoredMessage> &messages);
    Answer remember();
    Answer look(const KorvaSyncIf::SmsInfo &message, Result &result);

    StoreLocation &m_location;
    MessageStore &m_store;
    ClientLock m_clientLock;
    std::optional<Delivery> m_delivery;
    const QDateTime m_since;
    QSet<int> m_knownIds;
};
