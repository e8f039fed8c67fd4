// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "command.h"
#include "storeaccess.h"

#include "options/arguments.h"
#include "output/messageformats.h"
#include "process/diagnostics.h"

static ExitCode run(const Invocation &invocation)
{
    if (invocation.arguments.isEmpty()) {
        Diagnostics::error(QStringLiteral("show needs an id"));
        return UsageError;
    }
    const auto ids = Arguments::databaseIds(invocation.arguments);
    if (!ids)
        return UsageError;
    MessageStore store(invocation.global.timeout);
    if (const ExitCode code = StoreAccess::requireReadable(invocation.location, store))
        return code;
    const QString &format = invocation.global.format;
    const auto form = format == QLatin1String("vmsg") ? MessageFormats::vmsg
        : format == QLatin1String("ndjson")           ? MessageFormats::ndjson
                                                      : MessageFormats::page;
    ExitCode code = AllDone;
    for (const int id : *ids) {
        const StoredMessage message = StoredMessage::fromRecord(store.message(id));
        if (message.id != -1) {
            invocation.output.write(form(message));
        } else {
            Diagnostics::warn(QStringLiteral("there is no message %1").arg(id));
            code = IdNotFound;
        }
    }
    return code;
}

Command showCommand()
{
    return {"show",
            "ID...",
            "Messages by id (- reads ids from standard input).",
            {QStringLiteral("vmsg"), QStringLiteral("text"), QStringLiteral("ndjson")},
            {},
            run};
}
