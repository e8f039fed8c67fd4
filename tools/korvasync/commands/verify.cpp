// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "import/importrun.h"
#include "options/command.h"

#include "input/inputpaths.h"
#include "model/datetext.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/text.h"

namespace {

ExitCode runVerify(const Invocation &invocation)
{
    ImportOptions options{ImportOptions::Verify};
    NormalisingRules rules;
    if (!options.take(invocation, ImportOptions::MessageForm)
        || !Arguments::takeFolder(invocation.options, "folder", rules.folder))
        return UsageError;
    if (invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("verify needs a file, a folder or -"));
        return UsageError;
    }
    rules.localZone = options.localZone;
    rules.now = DateText::now();
    const ItemJudge judge(ItemJudge::Messages | ItemJudge::BackupCalls | ItemJudge::CallEntries,
                          rules);
    return ImportRun(invocation, options, judge, [&] { return messageFiles(invocation.arguments); })
        .run();
}

} // namespace

Command verifyCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    const QList<QCommandLineOption> options{
        {text("folder"),
         Text::tr(
             "Folder for messages that name none: inbox, outbox, sent or my (drafts are refused)."),
         text("F")},
    };
    return {
        "verify",
        "FILE|DIR|-...",
        Text::tr("Checks that all messages and calls of files are in the store. Adds nothing."),
        {text("text"), text("ndjson")},
        ImportOptions::declared(ImportOptions::Verify, ImportOptions::MessageForm) + options,
        runVerify,
        {Text::tr("Items are read and compared as \"korvasync add\" does it; call-history entries "
                  "are read as well. Each missing or refused item is listed. Give the same --from, "
                  "--assume-tz and --folder as for adding."),
         {"korvasync verify old-phone/",
          "korvasync calls list -o entries | korvasync verify --store /media/store -"},
         Text::tr(
             "Exit codes: 0 all items are in the store, 1 some are missing or refused, or there "
             "was nothing to look for, 2 usage, 3 the store cannot be read, 5 it gave no answer.")},
        GlobalOptions::ShowsProgress};
}
