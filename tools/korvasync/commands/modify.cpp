// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "marking.h"
#include "options/command.h"
#include "store/storeaccess.h"

#include "import/results.h"
#include "model/folder.h"
#include "model/normalising.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/number.h"
#include "shared/text.h"
#include "store/clientlock.h"
#include "store/messagewriter.h"

#include <korvasync/vmessageencoder.h>

#include <QtCore/QRegularExpression>

using namespace KorvaSyncIf;

namespace {

constexpr const char *NoConversation =
    QT_TRANSLATE_NOOP("Text", "the number has no messages yet; add one first");

// Finished also when the message alone is at fault, not the store.
Answer write(MessageStore &store, const StoredMessage &old, SmsInfo message,
             const TroubleWatch &watch, ItemResult &result)
{
    message.time = old.time; // stays whatever is given; so does the token
    SyncSmsInfo record;
    record.id = old.id;
    record.parentId = Folder::None;
    record.messageToken = old.token;
    record.vMessage = VMessageEncoder().encode(message).vMessage;
    const MessageStore::Written written = store.modify({record});
    const StoredMessage now = StoredMessage::fromRecord(store.message(old.id));
    const Reason trouble = difference(now, message);
    if (trouble.isEmpty()) {
        result.status = ItemResult::Changed;
        return Answer::Finished;
    }
    result.status = ItemResult::Failed;
    result.rejectReason = RejectReason::SmsStore;
    if (now.id == -1 && watch.hasTrouble())
        result.detail = Text::reason("not known, as the store cannot be read back");
    if (written.answer != Answer::Finished)
        return written.answer;
    if (watch.hasTrouble())
        return Answer::Refused;
    result.detail =
        written.status.contains(SmsDatabaseError) ? Text::reason(NoConversation) : trouble;
    return Answer::Finished;
}

// A modification makes no conversation, so the number must have one. From outside only those
// with messages are seen.
Answer foresee(MessageStore &store, const SmsInfo &message, ItemResult &result)
{
    const QString number =
        Number::comparable(message.fromNumber.isEmpty() ? message.toNumber : message.fromNumber);
    const bool isSoughtByEnd = Number::isSoughtByEnd(number);
    const QRegularExpression end(number + QLatin1Char('$'));
    bool isKnown = false;
    const Answer answer = store.forEach(HistoryFilter(), [&](const StoredMessage &other) {
        if (isKnown)
            return;
        const QString known = Number::comparable(other.number);
        isKnown = known == number || (isSoughtByEnd && end.match(known).hasMatch());
    });
    if (answer != Answer::Finished)
        return answer;
    if (isKnown) {
        result.status = ItemResult::Changed;
        return Answer::Finished;
    }
    result.status = ItemResult::Failed;
    result.rejectReason = RejectReason::SmsStore;
    result.detail = Text::reason(NoConversation);
    return Answer::Finished;
}

//! \return false when the options make no sense
bool takeMarks(const Invocation &invocation, Marking::Marks *marks)
{
    const bool isRead = invocation.isSet("read");
    if (isRead && invocation.isSet("unread")) {
        Diagnostics::error(Text::tr("--read and --unread exclude each other"));
        return false;
    }
    if (isRead || invocation.isSet("unread"))
        marks->isRead = isRead;
    if (!invocation.isSet("folder"))
        return true;
    if (!Arguments::takeChoice(invocation.options, "modify", "folder"))
        return false;
    marks->folder = Folder::byName(invocation.value("folder"));
    return true;
}

ExitCode runMarking(const Invocation &invocation)
{
    Marking::Marks marks;
    if (!takeMarks(invocation, &marks))
        return UsageError;
    if (invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("modify needs an id; \"korvasync list\" shows them"));
        return UsageError;
    }
    const auto ids = Arguments::databaseIds(invocation.arguments);
    if (!ids)
        return UsageError;
    MessageStore store(invocation.global.timeout);
    if (const ExitCode code = StoreAccess::requireReadable(invocation.location, store))
        return code;
    ClientLock clientLock(invocation.location);
    if (!invocation.global.dryRun) {
        const Answer answer = clientLock.take(invocation.global.timeout);
        if (answer != Answer::Finished)
            return StoreAccess::complain(invocation.location, answer);
    }
    return Marking(invocation, store, marks).run(*ids);
}

ExitCode runModify(const Invocation &invocation)
{
    if (invocation.isSet("read") || invocation.isSet("unread") || invocation.isSet("folder"))
        return runMarking(invocation);
    const GlobalOptions &global = invocation.global;
    if (invocation.arguments.size() != 2 || invocation.arguments.first() == QLatin1String("-")) {
        Diagnostics::error(Text::tr("modify needs an id and a file"));
        return UsageError;
    }
    const auto ids = Arguments::databaseIds(invocation.arguments.mid(0, 1));
    const QString path = invocation.arguments.last();
    if (!ids)
        return UsageError;
    const auto given = Arguments::onlyMessage("modify", path);
    if (!given)
        return UsageError;
    MessageStore store(global.timeout);
    if (const ExitCode code = StoreAccess::requireReadable(invocation.location, store))
        return code;
    // A client that deletes equal messages counts on those that it leaves.
    ClientLock clientLock(invocation.location);
    Answer answer = global.dryRun ? Answer::Finished : clientLock.take(global.timeout);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);

    Results results(invocation.output, ItemResult::Changed,
                    global.format == QLatin1String("ndjson"));
    ItemResult result;
    result.source = path + QLatin1Char(':') + QString::number(given->line);
    result.id = ids->first();
    const StoredMessage old = StoredMessage::fromRecord(store.message(result.id));
    if (old.id == -1 && invocation.watch.hasTrouble()) // not read, so not known to be absent
        return StoreAccess::complain(invocation.location, Answer::Refused);
    const auto parsed = ParsedMessage::parse(given->bytes);
    NormalisingRules rules;
    rules.badTimeIsNow = true;
    rules.now = QDateTime::currentDateTimeUtc(); // is not written
    rules.localZone = global.localZone;
    const NormalisedMessage normalised = parsed ? normalise(*parsed, rules) : NormalisedMessage();
    if (old.id == -1)
        result.rejectReason = RejectReason::SmsBadId;
    else
        result.rejectReason = parsed ? normalised.rejectReason : RejectReason::SmsParse;
    if (result.rejectReason == RejectReason::SmsNoFolder)
        result.rejectReason = RejectReason::SmsNoFolderToReplace; // --folder is for what is added
    if (result.rejectReason == RejectReason::SmsParse)
        result.detail = parseErrorIn(given->bytes, given->line);
    if (result.rejectReason == RejectReason::None) {
        answer = global.dryRun ? foresee(store, normalised.message, result)
                               : write(store, old, normalised.message, invocation.watch, result);
    }
    if (answer == Answer::Interrupted || (global.dryRun && answer != Answer::Finished))
        return StoreAccess::complain(invocation.location, answer); // nothing came of it
    results.report(result);
    if (global.quiet == 0)
        results.printSummary();
    results.warnOfRefusals();
    return worse(StoreAccess::complain(invocation.location, answer), results.exitCode());
}

} // namespace

Command modifyCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "modify",
        "ID FILE|- | ID...",
        Text::tr("Replaces a message with the one in a vMessage, or marks or moves messages. "
                 "The time and token of a stored message stay."),
        {text("text"), text("ndjson")},
        {
            {text("read"), Text::tr("Mark messages as read instead; no file is given.")},
            {text("unread"), Text::tr("Mark them as unread instead.")},
            {text("folder"),
             Text::tr("Move them instead: inbox, outbox, sent or my. Drafts cannot be changed."),
             text("F")},
        },
        runModify,
        {Text::tr("The other party must have a conversation. A dry run looks for messages "
                  "instead: it refuses a party whose messages have all been deleted, which "
                  "modify itself would take."),
         {"korvasync show 812 | sed s/Hallo/Hello/ | korvasync modify 812 -",
          "korvasync list --ids --unread --until 2w | korvasync modify --read -"},
         Text::tr("Exit codes: 0 changed, 1 refused or failed, 2 usage, 3 the store cannot be "
                  "written, 4 the id was not found, 5 it gave no answer.")},
        GlobalOptions::DryRun};
}
