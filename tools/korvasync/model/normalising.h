// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "shared/parsedmessage.h"
#include "shared/rejectreason.h"

#include <korvasync/syncrecords.h>

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

//! What the person chose for messages that leave something open.
struct NormalisingRules
{
    int folder = 0;            //!< for messages that name none; 0 = refuse them
    bool badTimeIsNow = false; //!< else messages without a time are refused
    bool markRead = false;
    QTimeZone localZone;
    QDateTime now; //!< the clock, in UTC
};

//! A message with nothing left open, or why there is none. The library repairs what a
//! message leaves open in an order that can lose its number, so it is handed messages
//! only in this form.
struct NormalisedMessage
{
    KorvaSyncIf::SmsInfo message;
    RejectReason rejectReason = RejectReason::None;
    bool hasOwnTime = true; //!< else the clock's
};

NormalisedMessage normalise(const ParsedMessage &parsed, const NormalisingRules &rules);
