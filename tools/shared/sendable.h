// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "parsedmessage.h"
#include "rejectreason.h"

#include <korvasync/syncrecords.h>

//! A message as client and service alike send it: one's own new one to one party, whatever box and
//! time it named.
struct SendableMessage
{
    KorvaSyncIf::SmsInfo message;
    RejectReason rejectReason = RejectReason::None; //!< else why it cannot be sent
};

SendableMessage normaliseToSend(const ParsedMessage &parsed);

//! Whether a vMessage carries number and text as they are: half a surrogate pair, say, would be
//! lost on the way, and no bus carries a zero.
bool isCarriedWhole(const KorvaSyncIf::SmsInfo &message);

//! A normalised message as it is handed to SendSmsInterface, which reads as many bytes of a
//! vMessage as that has UTF-16 units: lengthened behind its end by what other scripts need more.
QString sendable(const KorvaSyncIf::SmsInfo &message);
