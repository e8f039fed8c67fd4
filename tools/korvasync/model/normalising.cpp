// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "normalising.h"

#include "datetext.h"
#include "folder.h"
#include "shared/number.h"

using namespace KorvaSyncIf;

namespace {

// The vCards stand in the sender's and the receiver's place, but many programs write the
// other party always in the first.
QStringList otherParties(const ParsedMessage &parsed, bool outbound)
{
    const QStringList expected = Number::parties(outbound ? parsed.recipients : parsed.originators);
    return expected.isEmpty() ? Number::parties(outbound ? parsed.originators : parsed.recipients)
                              : expected;
}

QString readStatus(const ParsedMessage &parsed, const NormalisingRules &rules, bool outbound)
{
    const bool read = parsed.readStatus == HeaderWords::ReadStatus::Read;
    const bool unread = parsed.readStatus == HeaderWords::ReadStatus::Unread;
    // One's own messages need no reading.
    const bool asRead = rules.markRead || read || (outbound && !unread);
    return asRead ? QStringLiteral("READ") : QStringLiteral("UNREAD");
}

//! Null when the message has none that can be.
QDateTime timeOf(const ParsedMessage &parsed, const NormalisingRules &rules)
{
    for (const QString &text : {parsed.headerTime, parsed.bodyTime}) {
        QDateTime time = DateText::readMessageTime(text, rules.localZone);
        if (DateText::isBelievable(time, rules.now))
            return time;
    }
    return QDateTime();
}

RejectReason rejectReasonOf(const ParsedMessage &parsed, const SmsInfo &message,
                            const QStringList &parties)
{
    if (const RejectReason rejectReason = parsed.rejectReasonOfType();
        rejectReason != RejectReason::None)
        return rejectReason;
    if (message.parentId == LocDrafts)
        return RejectReason::SmsDraft;
    if (message.parentId == Folder::None)
        return RejectReason::SmsNoFolder;
    if (parties.isEmpty())
        return RejectReason::SmsNoNumber;
    // A stored message has one party. The others would be lost.
    if (parties.size() > 1)
        return RejectReason::TooManyRecipients;
    if (!message.time.isValid())
        return RejectReason::BadTime;
    return RejectReason::None;
}

} // namespace

NormalisedMessage normalise(const ParsedMessage &parsed, const NormalisingRules &rules)
{
    NormalisedMessage normalised;
    SmsInfo &message = normalised.message;
    message.parentId = parsed.folder == Folder::None ? rules.folder : parsed.folder;
    const bool outbound = Folder::isOutbound(message.parentId);
    const QStringList parties = otherParties(parsed, outbound);
    if (!parties.isEmpty())
        (outbound ? message.toNumber : message.fromNumber) = parties.first();
    message.readStatus = readStatus(parsed, rules, outbound);
    message.time = timeOf(parsed, rules);
    normalised.hasOwnTime = message.time.isValid();
    if (!normalised.hasOwnTime && rules.badTimeIsNow)
        message.time = rules.now;
    message.body = parsed.body;
    normalised.rejectReason = rejectReasonOf(parsed, message, parties);
    return normalised;
}
