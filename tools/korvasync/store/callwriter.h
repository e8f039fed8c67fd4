// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "callstore.h"
#include "duplicateindex.h"
#include "storelocation.h"

#include "shared/text.h"

//! A call on its way into the store, and what became of it.
struct NewCall
{
    Call call;
    Fingerprint fingerprint;
    static constexpr int NoId = -1; //!< the library gives calls no ids
    Reason trouble;                 //!< why it is not stored; empty = it is
};

//! Adds calls and makes sure of what became of each, whatever the store reported.
class CallWriter
{
public:
    //! \param index  what the store holds; calls that were added are entered
    CallWriter(StoreLocation &location, CallStore &store, DuplicateIndex &index);

    //! Adds one chunk, and tells each call what became of it.
    //! \return Finished when every call is stored, else how the store failed
    Answer add(const QList<NewCall *> &calls);

private:
    void readBack(const QList<NewCall *> &calls);

    StoreLocation &m_location;
    CallStore &m_store;
    DuplicateIndex &m_index;
};
