// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "confirmation.h"
#include "import/importrun.h"
#include "listing.h"
#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/callformats.h"
#include "formats/jsonline.h"
#include "import/results.h"
#include "model/datetext.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/text.h"
#include "store/clientlock.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unistd.h>

using namespace KorvaSyncIf;

namespace {

bool takesNoArguments(const Invocation &invocation, const char *action)
{
    if (!invocation.arguments.isEmpty())
        Diagnostics::error(Text::tr("%1 takes no arguments").arg(QLatin1String(action)));
    return invocation.arguments.isEmpty();
}

// ---- list

//! The store has no order of calls by type.
bool takeType(const Invocation &invocation, Listing &listing)
{
    if (!invocation.isSet("type"))
        return true;
    const auto choice = Arguments::takeChoice(invocation.options, "calls list", "type");
    if (!choice)
        return false;
    const std::array<QString, 3> types{QStringLiteral("incoming"), QStringLiteral("outgoing"),
                                       QStringLiteral("missed")};
    listing.condition = [type = types[static_cast<size_t>(*choice)]](const HistoryItem &item) {
        return Call::fromItem(item).type == type;
    };
    return true;
}

Answer printCalls(const Invocation &invocation, const Listing &listing)
{
    QList<Call> calls;
    const Answer answer =
        listing.read(invocation, [&](const HistoryItem &item) { calls += Call::fromItem(item); });
    if (answer == Answer::Finished)
        CallFormats::print(calls, invocation.global.format, invocation.output);
    return answer;
}

ExitCode list(const Invocation &invocation)
{
    Listing listing;
    listing.filter.kind = HistoryItem::Kind::Call;
    if (!takesNoArguments(invocation, "calls list") || !takeType(invocation, listing)
        || !listing.takeOptions(invocation))
        return UsageError;
    const QString &format = invocation.global.format;
    const bool hasForm = format != QLatin1String("text") && format != QLatin1String("ndjson");
    if (hasForm && invocation.isSet("count")) {
        Diagnostics::error(
            Text::tr("--%1 and -o %2 exclude each other").arg(QLatin1String("count"), format));
        return UsageError;
    }
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    const Answer answer = invocation.isSet("count") ? listing.printCount(invocation)
                                                    : printCalls(invocation, listing);
    return StoreAccess::complain(invocation.location, answer);
}

// ---- add

ExitCode add(const Invocation &invocation)
{
    ImportOptions options;
    if (!options.take(invocation, ImportOptions::CallForm))
        return UsageError;
    QStringList arguments = invocation.arguments;
    if (arguments.isEmpty() && isatty(STDIN_FILENO)) {
        Diagnostics::error(Text::tr("calls add needs a file or - for standard input"));
        return UsageError;
    }
    if (arguments.isEmpty())
        arguments = QStringList{QStringLiteral("-")};
    NormalisingRules rules;
    rules.localZone = options.localZone;
    rules.now = DateText::now();
    const ItemJudge judge(ItemJudge::BackupCalls | ItemJudge::CallEntries, rules);
    return ImportRun(invocation, options, judge, [&] { return InputPaths{arguments, {}}; }).run();
}

// ---- wipe

//! \param left  calls that stay, as \a fate tells
void printDeleted(const Invocation &invocation, qsizetype before, qsizetype left,
                  ItemResult::Status fate = ItemResult::Failed)
{
    if (invocation.global.quiet > 0)
        return;
    if (invocation.global.format == QLatin1String("ndjson")) {
        JsonLine sums;
        sums.add("read", before)
            .add("deleted", before - left)
            .add("refused", fate == ItemResult::Refused ? left : 0)
            .add("failed", fate == ItemResult::Failed ? left : 0);
        invocation.output.write(JsonLine().add("summary", sums).line());
    } else {
        const auto count = static_cast<int>(before - left);
        const QString sum = invocation.global.dryRun
            ? Text::tr("would delete %n call(s)", nullptr, count)
            : Text::tr("%n call(s) deleted", nullptr, count);
        invocation.output.write(sum.toUtf8() + '\n');
    }
}

bool isSameLog(const QList<Call> &one, const QList<Call> &other)
{
    return std::equal(one.cbegin(), one.cend(), other.cbegin(), other.cend(),
                      [](const Call &a, const Call &b) {
                          return a.number == b.number && Fingerprint::of(a) == Fingerprint::of(b);
                      });
}

// The library deletes all that is there, so that is looked at once more under the client lock.
ExitCode wipeUnderLock(const Invocation &invocation, CallStore &store,
                       const std::optional<QList<Call>> &asked)
{
    ClientLock clientLock(invocation.location);
    const Answer answer =
        invocation.global.dryRun ? Answer::Finished : clientLock.take(invocation.global.timeout);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    const CallStore::Read before = store.calls();
    if (before.answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, before.answer);
    const auto count = before.calls.size();
    if (asked && !isSameLog(*asked, before.calls)) {
        Diagnostics::error(Text::tr("the call log changed meanwhile, so nothing was deleted; look "
                                    "at it and repeat"));
        printDeleted(invocation, count, count, ItemResult::Refused);
        return SomeNotDone;
    }
    if (invocation.global.dryRun) {
        printDeleted(invocation, count, 0);
        return AllDone;
    }
    const bool removed = store.removeAll();
    const CallStore::Read after = store.calls();
    if (!removed || after.answer != Answer::Finished) {
        const bool isRead = after.answer == Answer::Finished;
        return StoreAccess::complain(invocation.location, isRead ? Answer::Refused : after.answer);
    }
    // A call that came in meanwhile is none of those.
    printDeleted(invocation, count, qMin(count, after.calls.size()));
    return after.calls.isEmpty() ? AllDone : SomeNotDone;
}

ExitCode wipe(const Invocation &invocation)
{
    if (!takesNoArguments(invocation, "calls wipe"))
        return UsageError;
    if (!Confirmation::isPossible(invocation, QStringLiteral("calls wipe")))
        return UsageError;
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    CallStore store(invocation.global.timeout);
    if (!Confirmation::isNeeded(invocation))
        return wipeUnderLock(invocation, store, std::nullopt);
    const CallStore::Read asked = store.calls();
    if (asked.answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, asked.answer);
    if (!Confirmation::isGiven(
            invocation,
            Text::tr("Delete %n call(s)?", nullptr, static_cast<int>(asked.calls.size()))))
        return AllDone;
    return wipeUnderLock(invocation, store, asked.calls);
}

// ---- the verb

QString text(const char *latin1) { return QString::fromLatin1(latin1); }

Command listAction()
{
    return {
        "list",
        "",
        Text::tr("Lists calls by their start, oldest first."),
        {text("text"), text("ndjson"), text("entries"), text("android-xml")},
        {
            {text("type"), Text::tr("Only incoming, outgoing or missed calls."),
             text("in|out|missed")},
            {text("since"),
             Text::tr("Calls that began at this time or later: 2024-05-01T10:00:00Z, 2024-05-01, "
                      "today, yesterday, 30m, 12h, 7d, 2w or @seconds."),
             text("T")},
            {text("until"), Text::tr("Before this time."), text("T")},
            {text("assume-tz"),
             Text::tr("Time zone of dates, e.g. Europe/Helsinki (default: the system's)."),
             text("ZONE")},
            {text("number"),
             Text::tr("To or from this number, in any spelling, or alphanumeric sender."),
             text("N")},
            {text("number-tail"), Text::tr("To or from any number with the same last 7 digits."),
             text("N")},
            {text("limit"), Text::tr("Only the newest N."), text("N")},
            {text("count"), Text::tr("Print only how many there are.")},
        },
        list,
        {Text::tr("\"korvasync calls\" alone lists as well.\n\nOther actions: \"calls add\" and "
                  "\"calls wipe\", each with its own --help."),
         {"korvasync calls --type missed --since 2024-01-01",
          "korvasync calls list -o entries > calls.txt"},
         Text::tr(
             "Exit codes: 0 listed, 2 usage, 3 the store cannot be read, 5 it gave no answer.")}};
}

Command addAction()
{
    return {"add",
            "[FILE|-]...",
            Text::tr("Adds calls from call-history entries and Android backups."),
            {text("text"), text("ndjson")},
            ImportOptions::declared(ImportOptions::Add, ImportOptions::CallForm),
            add,
            {{},
             {"korvasync calls add --rejects rejects.txt calls.txt calls.xml"},
             Text::tr("Exit codes: 0 all items are in the store, 1 some refused or failed, 2 "
                      "usage, 3 the store cannot be written, 5 it gave no answer.")},
            GlobalOptions::DryRun | GlobalOptions::ShowsProgress};
}

Command wipeAction()
{
    return {"wipe",
            "",
            Text::tr("Deletes all calls."),
            {text("text"), text("ndjson")},
            {{text("yes"), Text::tr("Do not ask.")}},
            wipe,
            {{},
             {"korvasync calls wipe --dry-run"},
             Text::tr("Exit codes: 0 deleted, 1 some were not, 2 usage, 3 the store cannot be "
                      "written, 5 it gave no answer.")},
            GlobalOptions::DryRun};
}

} // namespace

Command callsCommand()
{
    return {"calls",
            "[list] | add [FILE|-]... | wipe",
            Text::tr("Lists the call log, adds to it, or deletes all of it."),
            {},
            {},
            nullptr,
            {},
            0,
            {listAction(), addAction(), wipeAction()}};
}
