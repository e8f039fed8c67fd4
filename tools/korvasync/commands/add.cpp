// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "import/importrun.h"
#include "options/command.h"

#include "input/inputpaths.h"
#include "model/datetext.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/text.h"

#include <unistd.h>

namespace {

bool takeOptions(const Invocation &invocation, ImportOptions &options, NormalisingRules &rules)
{
    if (!options.take(invocation, ImportOptions::MessageForm))
        return false;
    const auto onBadTime = Arguments::takeChoice(invocation.options, "add", "on-bad-time");
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

ExitCode runAdd(const Invocation &invocation)
{
    ImportOptions options;
    NormalisingRules rules;
    if (!takeOptions(invocation, options, rules))
        return UsageError;
    QStringList arguments = invocation.arguments;
    if (arguments.isEmpty() && isatty(STDIN_FILENO)) {
        Diagnostics::error(Text::tr("add needs a file, a folder or - for standard input"));
        return UsageError;
    }
    if (arguments.isEmpty())
        arguments = QStringList{QStringLiteral("-")};
    const ItemJudge judge(ItemJudge::Messages | ItemJudge::BackupCalls, rules);
    return ImportRun(invocation, options, judge, [&] { return messageFiles(arguments); }).run();
}

} // namespace

Command addCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    const QList<QCommandLineOption> options{
        {text("folder"),
         Text::tr(
             "Folder for messages that name none: inbox, outbox, sent or my (drafts are refused)."),
         text("F")},
        {text("on-bad-time"),
         Text::tr(
             "Messages without a plausible time: refuse (default), or now to take the clock's."),
         text("WHAT"), text("refuse")},
        {text("mark-read"), Text::tr("Mark all messages as read.")},
        {text("chunk"), Text::tr("Messages per write (default: 500, at most 1000)."), text("N")},
    };
    return {
        "add",
        "[FILE|DIR|-]...",
        Text::tr(
            "Adds messages from vMessage files (.vmg, .vmsg, .txt), and messages and calls from "
            "Android backups (.xml). A folder stands for all such files in it, at any depth."),
        {text("text"), text("ndjson")},
        ImportOptions::declared(ImportOptions::Add, ImportOptions::MessageForm) + options,
        runAdd,
        {{},
         {"korvasync add --rejects rejects.txt old-phone/ sms.xml",
          "korvasync add --assume-tz Europe/Helsinki --dry-run sms.vmsg"},
         Text::tr("Exit codes: 0 all items are in the store, 1 some refused or failed, 2 usage, 3 "
                  "the store cannot be written, 5 it gave no answer.")},
        GlobalOptions::DryRun | GlobalOptions::ShowsProgress};
}
