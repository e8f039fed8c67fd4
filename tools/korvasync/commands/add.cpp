// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "addablemessages.h"
#include "command.h"

#include "messages/datetext.h"
#include "messages/folder.h"
#include "messages/inputpaths.h"
#include "options/arguments.h"
#include "process/diagnostics.h"

#include <unistd.h>

namespace {

bool takeOptions(const Invocation &invocation, AddingOptions &options, SettlingRules &rules)
{
    if (!options.takeOnDuplicate(invocation))
        return false;
    const auto onBadTime = Arguments::takeChoice(invocation.options, "on-bad-time",
                                                 {QStringLiteral("refuse"), QStringLiteral("now")});
    if (!onBadTime
        || !Arguments::takeNumber(invocation.options, "chunk", 1, 1000, options.chunkSize))
        return false;
    if (invocation.isSet("folder")) {
        const auto folder = Folder::byName(invocation.value("folder"));
        if (!folder) {
            Diagnostics::error(QStringLiteral("--folder is inbox, outbox, drafts, sent or my"));
            return false;
        }
        rules.folder = *folder;
    }
    rules.badTimeIsNow = *onBadTime == 1;
    rules.markRead = invocation.isSet("mark-read");
    rules.localZone = invocation.global.localZone;
    rules.now = DateText::now();
    options.rejects = invocation.value("rejects");
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
    AddableMessages messages(invocation, rules);
    return Adding(invocation, options, messages).run(messageFiles(arguments));
}

} // namespace

Command addCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "add",
        "[FILE|DIR|-]...",
        "Adds the messages of vMessage files (.vmg, .vmsg, .txt; a folder with all below it).",
        {text("text"), text("ndjson")},
        {
            {text("folder"),
             text("For messages that name no folder: inbox, outbox, drafts, sent or my."),
             text("F")},
            {text("on-duplicate"), text("What is there already: skip (default), add or fail."),
             text("WHAT"), text("skip")},
            {text("on-bad-time"), text("No time, or none that can be: refuse (default) or now."),
             text("WHAT"), text("refuse")},
            {text("mark-read"), text("Add all as read.")},
            {text("chunk"), text("Messages a write (500, at most 1000)."), text("N")},
            {text("rejects"), text("Collect what is refused here, to be mended and added again."),
             text("FILE")},
        },
        run};
}
