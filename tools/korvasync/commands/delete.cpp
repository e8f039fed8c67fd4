// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "command.h"
#include "confirmation.h"
#include "deleting.h"

#include "language/text.h"
#include "options/arguments.h"
#include "process/diagnostics.h"

namespace {

ExitCode runDelete(const Invocation &invocation)
{
    if (invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("delete needs an id; \"korvasync list\" shows them"));
        return UsageError;
    }
    if (!Confirmation::isPossible(invocation, QStringLiteral("delete")))
        return UsageError;
    const auto ids = Arguments::databaseIds(invocation.arguments);
    if (!ids)
        return UsageError;
    if (!Confirmation::isGiven(
            invocation, Text::tr("Delete %n message(s)?", nullptr, static_cast<int>(ids->size()))))
        return AllDone;
    MessageStore store(invocation.global.timeout);
    return Deleting(invocation, store).run(*ids);
}

} // namespace

Command deleteCommand()
{
    return {"delete",
            "ID...",
            Text::tr("Deletes messages by id (- reads ids from standard input)."),
            {QStringLiteral("text"), QStringLiteral("ndjson")},
            {{QStringLiteral("yes"), Text::tr("Do not ask.")}},
            runDelete,
            {{},
             {"korvasync delete 812 813",
              "korvasync list --ids --number InfoPost | korvasync delete --yes -"},
             Text::tr("Exit codes: 0 deleted, 1 some were not, 2 usage, 3 the store cannot be "
                      "written, 4 an id was not found, 5 it gave no answer.")},
            GlobalOptions::DryRun | GlobalOptions::ShowsProgress};
}
