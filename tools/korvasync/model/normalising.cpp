// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "normalising.h"

#include "datetext.h"
#include "folder.h"
#include "shared/number.h"

using namespace KorvaSyncIf;

namespace {

// The box as programs name it, by its first letters as the library does: DRAFT and DRAFTS,
// SENT and SENTBOX. SENDBOX is what backup programs of touch phones call the sent folder.
int folderOfBox(const QString &box)
{
    static constexpr struct
    {
        const char *word;
        int folder;
    } words[] = {{"INBOX", LocInbox}, {"DRAFT", LocDrafts}, {"OUTBOX", LocOutbox},
                 {"SENT", LocSent},   {"SENDBOX", LocSent}, {"MYFOLDER", LocMyFolder}};
    for (const auto &entry : words) {
        if (box.startsWith(QLatin1String(entry.word), Qt::CaseInsensitive))
            return entry.folder;
    }
    return Folder::None;
}

bool is(const QString &text, const char *word)
{
    return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

// Where no box is known, the direction tells the folder, then the status.
int folderOf(const ParsedMessage &parsed)
{
    if (const int folder = folderOfBox(parsed.box))
        return folder;
    if (is(parsed.status, "DRAFT"))
        return LocDrafts;
    if (is(parsed.messageType, "DELIVER") || is(parsed.messageType, "1"))
        return LocInbox;
    if (is(parsed.messageType, "SUBMIT") || is(parsed.messageType, "2")
        || is(parsed.status, "SENT"))
        return LocSent;
    return Folder::None;
}

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
    const bool unread = is(parsed.status, "UNREAD") || is(parsed.status, "0");
    const bool read = is(parsed.status, "READ") || is(parsed.status, "1");
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
    const int named = folderOf(parsed);
    message.parentId = named == Folder::None ? rules.folder : named;
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
