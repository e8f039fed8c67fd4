// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "messagestore.h"
#include "model/fingerprint.h"
#include "model/storedmessage.h"
#include "storelocation.h"

#include "shared/text.h"

//! A normalised message on its way into the store, and what became of it.
struct NewMessage
{
    KorvaSyncIf::SmsInfo message;
    Fingerprint fingerprint;
    int id = -1;    //!< database id once it is stored
    Reason trouble; //!< why it is not, or not as it was given; empty = none

    QString number() const
    {
        return message.fromNumber.isEmpty() ? message.toNumber : message.fromNumber;
    }
};

//! Adds messages and makes sure of what became of each, whatever the store reported.
class MessageWriter
{
public:
    MessageWriter(StoreLocation &location, MessageStore &store);

    //! Adds one chunk, and tells each message what became of it.
    //! \return Finished when every message is stored, else how the store failed; what is
    //!         stored all the same has its id
    Answer add(const QList<NewMessage *> &messages);

private:
    Answer noteBeginning(QString *cursor);
    void findStored(const QList<NewMessage *> &messages, const QString &beginning);
    void confirm(NewMessage &message);

    StoreLocation &m_location;
    MessageStore &m_store;
};

//! How a stored message differs from what was handed over, empty when it does not.
Reason difference(const StoredMessage &stored, const KorvaSyncIf::SmsInfo &given);
