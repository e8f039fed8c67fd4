// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "model/fingerprint.h"
#include "results.h"
#include "store/callwriter.h"
#include "store/messagewriter.h"

#include <QtCore/QByteArray>
#include <QtCore/QVarLengthArray>

#include <optional>
#include <variant>

//! An item of the input on its way into the store: what was read, and what became of it.
struct NewItem
{
    using Fingerprints = QVarLengthArray<Fingerprint, 3>;

    ItemResult result;                                         //!< its place and its outcome
    std::variant<std::monostate, NewMessage, NewCall> content; //!< none: it is not to be stored
    QByteArray bytes;        //!< as they were read; empty when they are not kept
    bool isLeftover = false; //!< only bytes of earlier rejects, without a result
    bool isCall = false;     //!< as its content, which goes when the store has it

    Fingerprints sought;                //!< it equals a stored item that has one of these
    std::optional<qint64> second;       //!< of its equals, since 1970; none = they may have any
    Fingerprints stored;                //!< under which it is found once it is stored
    std::optional<Fingerprint> untimed; //!< of equal items without a time, whose place it takes

    bool isNew() const { return !std::holds_alternative<std::monostate>(content); }
    void refuse(RejectReason rejectReason, const Reason &detail = Reason())
    {
        result.rejectReason = rejectReason;
        result.detail = detail;
    }
};
