// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addableitems.h"
#include "command.h"

#include "messages/datetext.h"
#include "messages/inputpaths.h"
#include "options/arguments.h"
#include "process/diagnostics.h"

#include <unistd.h>

namespace {

constexpr const char *textForm = "vmsg";

bool takeOptions(const Invocation &invocation, AddingOptions &options, SettlingRules &rules)
{
    if (!options.take(invocation, textForm))
        return false;
    const auto onBadTime = Arguments::takeChoice(invocation.options, "on-bad-time",
                                                 {QStringLiteral("refuse"), QStringLiteral("now")});
    if (!onBadTime
        || !Arguments::takeNumber(invocation.options, "chunk", 1, 1000, options.chunkSize)
        || !Arguments::takeFolder(invocation.options, "folder", rules.folder))
        return false;
    rules.badTimeIsNow = *onBadTime == 1;
    rules.markRead = invocation.isSet("mark-read");
    rules.localZone = options.localZone;
    rules.now = DateText::now();
    return true;
}

ExitCode run(const Invocation &invocation)
{
    AddingOptions options;
    SettlingRules rules;
    if (!takeOptions(invocation, options, rules))
        return UsageError;
    QStringList arguments = invocation.arguments;
    if (arguments.isEmpty() && isatty(STDIN_FILENO)) {
        Diagnostics::error(QStringLiteral("add needs a file, a folder or - for standard input"));
        return UsageError;
    }
    if (arguments.isEmpty())
        arguments = QStringList{QStringLiteral("-")};
    DuplicateIndex index;
    AddableItems items(invocation, rules, index);
    return Adding(invocation, options, items).run(messageFiles(arguments));
}

} // namespace

Command addCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "add",
        "[FILE|DIR|-]...",
        "Adds the messages of vMessage files (.vmg, .vmsg, .txt) and the messages and calls of "
        "Android backups (.xml); a folder stands for all such files below it.",
        {text("text"), text("ndjson")},
        AddingOptions::declared(textForm)
            + QList<QCommandLineOption>{
            {text("folder"),
             text("For messages that name no folder: inbox, outbox, sent or my (drafts: refused)."),
             text("F")},
            {text("on-bad-time"), text("No time, or none that can be: refuse (default) or now."),
             text("WHAT"), text("refuse")},
            {text("mark-read"), text("Add all as read.")},
            {text("chunk"), text("Messages a write (default: 500, at most 1000)."), text("N")},
        },
        run,
        "Examples:\n"
        "  korvasync add --rejects mend.txt old-phone/ sms.xml\n"
        "  korvasync add --assume-tz Europe/Helsinki --dry-run sms.vmsg\n\n"
        "Exit codes: 0 all there now, 1 some refused or failed, 2 usage, 3 the store cannot be\n"
        "written, 5 it gave no answer.\n",
        GlobalOptions::DryRun | GlobalOptions::ShowsProgress};
}
