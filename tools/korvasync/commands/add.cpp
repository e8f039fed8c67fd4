// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adding.h"
#include "command.h"
#include "storeaccess.h"

#include "messages/folder.h"
#include "messages/inputpaths.h"
#include "options/arguments.h"
#include "process/diagnostics.h"

#include <unistd.h>

namespace {

bool takeChoice(const Invocation &invocation, const char *option, const QStringList &choices,
                QString &chosen)
{
    chosen = invocation.value(option);
    if (choices.contains(chosen))
        return true;
    Diagnostics::error(QStringLiteral("--%1 is one of: %2")
                           .arg(QLatin1String(option), choices.join(QLatin1String(", "))));
    return false;
}

bool takeOptions(const Invocation &invocation, AddingOptions &options)
{
    QString onDuplicate;
    QString onBadTime;
    if (!takeChoice(invocation, "on-duplicate",
                    {QStringLiteral("skip"), QStringLiteral("add"), QStringLiteral("fail")},
                    onDuplicate)
        || !takeChoice(invocation, "on-bad-time", {QStringLiteral("refuse"), QStringLiteral("now")},
                       onBadTime)
        || !Arguments::takeNumber(invocation.options, "chunk", 1, 1000, options.chunkSize))
        return false;
    if (invocation.isSet("folder")) {
        const auto folder = Folder::byName(invocation.value("folder"));
        if (!folder) {
            Diagnostics::error(QStringLiteral("--folder is inbox, outbox, drafts, sent or my"));
            return false;
        }
        options.rules.folder = *folder;
    }
    options.onDuplicate = onDuplicate == QLatin1String("skip") ? AddingOptions::Skip
        : onDuplicate == QLatin1String("add")                  ? AddingOptions::AddAgain
                                                               : AddingOptions::Refuse;
    options.rules.badTimeIsNow = onBadTime == QLatin1String("now");
    options.rules.markRead = invocation.isSet("mark-read");
    options.rules.localZone = invocation.global.localZone;
    const qint64 nowSeconds = QDateTime::currentSecsSinceEpoch();
    options.rules.now = QDateTime::fromMSecsSinceEpoch(nowSeconds * 1000, Qt::UTC);
    options.rejects = invocation.value("rejects");
    return true;
}

ExitCode run(const Invocation &invocation)
{
    AddingOptions options;
    if (!takeOptions(invocation, options))
        return UsageError;
    QStringList arguments = invocation.arguments;
    if (arguments.isEmpty() && isatty(STDIN_FILENO)) {
        Diagnostics::error(QStringLiteral("add needs a file, a folder or - for standard input"));
        return UsageError;
    }
    if (arguments.isEmpty())
        arguments = QStringList{QStringLiteral("-")};
    return Adding(invocation, options).run(messageFiles(arguments));
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
