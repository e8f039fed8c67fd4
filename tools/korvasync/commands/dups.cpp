// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "confirmation.h"
#include "deleting.h"
#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/jsonline.h"
#include "formats/messageformats.h"
#include "model/folder.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/text.h"
#include "store/clientlock.h"
#include "store/duplicateindex.h"

#include <QtCore/QSet>

#include <optional>

namespace {

using Groups = std::vector<std::vector<int>>; // ids of equal messages

Answer readGroups(MessageStore &store, Groups &groups)
{
    DuplicateIndex index;
    const Answer answer =
        store.forEach(KorvaSyncIf::HistoryFilter(), [&](const StoredMessage &message) {
            index.addStored(Fingerprint::of(message), message.id);
        });
    groups = index.repeatedIds();
    return answer;
}

qsizetype surplusOf(const Groups &groups)
{
    qsizetype surplus = 0;
    for (const auto &ids : groups)
        surplus += static_cast<qsizetype>(ids.size()) - 1;
    return surplus;
}

// ---- listing

Answer readGroup(MessageStore &store, const std::vector<int> &ids, QList<StoredMessage> &messages)
{
    const TroubleWatch watch;
    for (const int id : ids) {
        const StoredMessage message = StoredMessage::fromRecord(store.message(id));
        if (message.id != -1) // it may be gone by now
            messages += message;
    }
    return watch.hasTrouble() ? Answer::Refused : Answer::Finished;
}

void printGroup(const Invocation &invocation, int group, const QList<StoredMessage> &messages)
{
    if (invocation.global.format == QLatin1String("text")) {
        MessageFormats::printTable(messages, invocation.output);
        invocation.output.write("\n");
        return;
    }
    for (const StoredMessage &message : messages)
        invocation.output.write(MessageFormats::jsonOf(message).add("group", group).line());
}

ExitCode list(const Invocation &invocation, MessageStore &store, const Groups &groups)
{
    int group = 0;
    for (const auto &ids : groups) {
        if (Interrupt::signalNumber() != 0 || !invocation.output.error().isEmpty())
            return SomeNotDone;
        QList<StoredMessage> messages;
        const Answer answer = readGroup(store, ids, messages);
        if (answer != Answer::Finished)
            return StoreAccess::complain(invocation.location, answer);
        printGroup(invocation, ++group, messages);
    }
    if (invocation.global.quiet > 0)
        return AllDone;
    const qsizetype surplus = surplusOf(groups);
    if (invocation.global.format == QLatin1String("text")) {
        invocation.output.write(
            Text::tr("%n group(s), %1 surplus", nullptr, group).arg(surplus).toUtf8() + '\n');
    } else {
        invocation.output.write(
            JsonLine()
                .add("summary", JsonLine().add("groups", group).add("surplus", surplus))
                .line());
    }
    return AllDone;
}

// ---- deleting

enum Keep { Oldest, Newest };

// Equal messages are of the same second: the one that was added first has the lowest id.
QList<int> surplusIds(const Groups &groups, Keep keep)
{
    QList<int> surplus;
    for (const auto &ids : groups) {
        const int kept = keep == Oldest ? ids.front() : ids.back();
        for (const int id : ids) {
            if (id != kept)
                surplus += id;
        }
    }
    return surplus;
}

//! Those that \a asked names and that are still surplus stay so while the client lock is held: else
//! two clients could each delete the message that the other one keeps.
ExitCode removeUnderLock(const Invocation &invocation, MessageStore &store, Keep keep,
                         const std::optional<QList<int>> &asked)
{
    ClientLock clientLock(invocation.location);
    Answer answer =
        invocation.global.dryRun ? Answer::Finished : clientLock.take(invocation.global.timeout);
    Groups groups;
    if (answer == Answer::Finished)
        answer = readGroups(store, groups);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    const QList<int> ids = surplusIds(groups, keep);
    const QSet<int> surplus(ids.cbegin(), ids.cend());
    const auto isMeant = [&](const StoredMessage &message) { return surplus.contains(message.id); };
    return Deleting(invocation, store, isMeant).run(asked.value_or(ids));
}

ExitCode remove(const Invocation &invocation, MessageStore &store, Keep keep)
{
    if (!Confirmation::isNeeded(invocation))
        return removeUnderLock(invocation, store, keep, std::nullopt);
    Groups groups;
    const Answer answer = readGroups(store, groups);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    const QList<int> asked = surplusIds(groups, keep);
    if (!asked.isEmpty()
        && !Confirmation::isGiven(
            invocation, Text::tr("Delete %n message(s)?", nullptr, static_cast<int>(asked.size()))))
        return AllDone;
    return removeUnderLock(invocation, store, keep, asked);
}

ExitCode runDups(const Invocation &invocation)
{
    const bool deletes = invocation.isSet("delete");
    if (!invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("%1 takes no arguments").arg(QLatin1String("dups")));
        return UsageError;
    }
    const auto keep = Arguments::takeChoice(invocation.options, "dups", "keep");
    if (!keep)
        return UsageError;
    if (!deletes && (invocation.isSet("keep") || invocation.isSet("yes"))) {
        Diagnostics::error(Text::tr("dups takes --keep and --yes only with --delete"));
        return UsageError;
    }
    if (deletes && !Confirmation::isPossible(invocation, QStringLiteral("dups --delete")))
        return UsageError;
    MessageStore store(invocation.global.timeout);
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    if (deletes)
        return remove(invocation, store, static_cast<Keep>(*keep));
    Groups groups;
    const Answer answer = readGroups(store, groups);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    return list(invocation, store, groups);
}

} // namespace

Command dupsCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "dups",
        "",
        Text::tr("Lists equal messages in groups, or deletes all but one of each group."),
        {text("text"), text("ndjson")},
        {
            {text("delete"), Text::tr("Delete all but one of each group.")},
            {text("keep"),
             Text::tr("Which one stays: oldest (default), the one added first, or newest."),
             text("WHICH"), text("oldest")},
            {text("yes"), Text::tr("Do not ask.")},
        },
        runDups,
        {Text::tr("Messages are equal by the rule of \"korvasync add\": the same folder, number "
                  "(its last 7 digits), second and text. A text that really was sent twice within "
                  "a second is in a group as well, so look at the list first."),
         {"korvasync dups", "korvasync dups --delete --keep newest --dry-run",
          "korvasync dups --delete --yes"},
         Text::tr(
             "Exit codes: 0 listed, or all deleted, 1 some were not deleted, 2 usage, 3 the store "
             "cannot be read or written, 4 some were gone already, 5 it gave no answer.")},
        GlobalOptions::DryRun | GlobalOptions::ShowsProgress};
}
