// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addablecalls.h"
#include "command.h"
#include "confirmation.h"
#include "storeaccess.h"

#include "options/arguments.h"
#include "output/callformats.h"
#include "output/jsonline.h"
#include "process/diagnostics.h"

#include <array>
#include <limits>
#include <unistd.h>

using namespace KorvaSyncIf;

namespace {

// ---- list

std::optional<CallType> takeType(const Invocation &invocation)
{
    if (!invocation.isSet("type"))
        return CallStore::AllCalls;
    const auto choice = Arguments::takeChoice(
        invocation.options, "type",
        {QStringLiteral("in"), QStringLiteral("out"), QStringLiteral("missed")});
    constexpr std::array<CallType, 3> types{IncomingCall, OutgoingCall, MissedCall};
    return choice ? std::optional(types[static_cast<size_t>(*choice)]) : std::nullopt;
}

ExitCode list(const Invocation &invocation)
{
    QDateTime since;
    const auto type = takeType(invocation);
    if (!type
        || !Arguments::takeTime(invocation.options, "since", invocation.global.localZone, since))
        return UsageError;
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    CallStore store(invocation.global.timeout);
    const CallStore::Read read = store.calls(*type, since);
    if (read.answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, read.answer);
    CallFormats::print(read.calls, invocation.global.format, invocation.output);
    return AllDone;
}

// ---- add

constexpr const char *textForm = "entries";

ExitCode add(const Invocation &invocation)
{
    AddingOptions options;
    if (!options.take(invocation, textForm))
        return UsageError;
    QStringList files = invocation.arguments.mid(1);
    if (files.isEmpty() && isatty(STDIN_FILENO)) {
        Diagnostics::error(QStringLiteral("calls add needs a file or - for standard input"));
        return UsageError;
    }
    if (files.isEmpty())
        files = QStringList{QStringLiteral("-")};
    DuplicateIndex index;
    AddableCalls calls(invocation, options.localZone, index);
    return Adding(invocation, options, calls).run(files);
}

// ---- wipe

void printDeleted(const Invocation &invocation, qsizetype before, qsizetype left)
{
    if (invocation.global.quiet > 0)
        return;
    if (invocation.global.format == QLatin1String("ndjson")) {
        JsonLine sums;
        sums.add("read", before)
            .add("deleted", before - left)
            .add("refused", 0)
            .add("failed", left);
        invocation.output.write(JsonLine().add("summary", sums).line());
    } else {
        const QByteArray count = QByteArray::number(before - left);
        invocation.output.write(invocation.global.dryRun ? "would delete " + count + " call(s)\n"
                                                         : count + " call(s) deleted\n");
    }
}

ExitCode wipe(const Invocation &invocation)
{
    if (!Confirmation::isPossible(invocation, QStringLiteral("calls wipe")))
        return UsageError;
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    CallStore store(invocation.global.timeout);
    const CallStore::Read before = store.calls();
    if (before.answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, before.answer);
    const auto count = before.calls.size();
    if (!Confirmation::isGiven(invocation, QStringLiteral("Delete %1 call(s)?").arg(count)))
        return AllDone;
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

// ---- the verb

struct Action
{
    const char *name;
    ExitCode (*run)(const Invocation &invocation);
    int mostArguments; // with its name
    QStringList options;
    QStringList formats;
};

const QList<Action> &actions()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    constexpr int any = std::numeric_limits<int>::max();
    static const QList<Action> all{
        {"list",
         list,
         1,
         {text("type"), text("since")},
         {text("text"), text("ndjson"), text("entries"), text("android-xml")}},
        {"add",
         add,
         any,
         {text("from"), text("assume-tz"), text("on-duplicate"), text("rejects")},
         {text("text"), text("ndjson")}},
        {"wipe", wipe, 1, {text("yes")}, {text("text"), text("ndjson")}},
    };
    return all;
}

//! What is wrong with the command line for an action; empty = nothing.
QString misuse(const Invocation &invocation, const Action &action)
{
    const QString name = QLatin1String("calls ") + QLatin1String(action.name);
    if (invocation.arguments.size() > action.mostArguments)
        return name + QStringLiteral(" takes no arguments");
    if (!action.formats.contains(invocation.global.format))
        return QStringLiteral("%1 prints %2").arg(name, action.formats.join(QLatin1String(", ")));
    for (const Action &other : actions()) {
        for (const QString &option : other.options) {
            if (invocation.options.isSet(option) && !action.options.contains(option))
                return QStringLiteral("%1 has no --%2").arg(name, option);
        }
    }
    return QString();
}

ExitCode run(const Invocation &invocation)
{
    const QString name = invocation.arguments.value(0, QStringLiteral("list"));
    for (const Action &action : actions()) {
        if (name != QLatin1String(action.name))
            continue;
        const QString wrong = misuse(invocation, action);
        if (wrong.isEmpty())
            return action.run(invocation);
        Diagnostics::error(wrong);
        return UsageError;
    }
    Diagnostics::error(QStringLiteral("calls can list, add and wipe, not %1").arg(name));
    return UsageError;
}

} // namespace

Command callsCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {"calls",
            "[list] | add [FILE|-]... | wipe",
            "The call log: lists it by the start of the calls, oldest first, adds call-history "
            "entries and the calls of Android backups, or deletes it all.",
            {text("text"), text("ndjson"), text("entries"), text("android-xml")},
            QList<QCommandLineOption>{
                {text("type"), text("list: calls that came in, went out or were missed."),
                 text("in|out|missed")},
                {text("since"),
                 text("list: from this start on: 2024-05-01T10:00:00Z, 2024-05-01 or @seconds."),
                 text("T")},
                {text("yes"), text("wipe: do not ask.")},
            } + AddingOptions::declared(textForm),
            run};
}
