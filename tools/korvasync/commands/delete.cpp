// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "confirmation.h"
#include "deleting.h"
#include "options/command.h"
#include "store/storeaccess.h"

#include "model/fingerprint.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/text.h"
#include "store/clientlock.h"

#include <QtCore/QHash>

namespace {

//! What stood there when it was asked about, by id.
using Asked = QHash<int, Fingerprint>;

Asked look(MessageStore &store, const QList<int> &ids)
{
    Asked asked;
    for (const int id : ids) {
        if (Interrupt::signalNumber() != 0)
            break;
        const StoredMessage message = StoredMessage::fromRecord(store.message(id));
        if (message.id != -1)
            asked.insert(id, Fingerprint::of(message));
    }
    return asked;
}

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
    MessageStore store(invocation.global.timeout);
    if (const ExitCode code = StoreAccess::requireReadable(invocation.location, store))
        return code;
    const bool asks = Confirmation::isNeeded(invocation);
    const Asked asked = asks ? look(store, *ids) : Asked();
    if (!Confirmation::isGiven(
            invocation, Text::tr("Delete %n message(s)?", nullptr, static_cast<int>(ids->size()))))
        return AllDone;
    ClientLock clientLock(invocation.location);
    if (!invocation.global.dryRun) {
        const Answer answer = clientLock.take(invocation.global.timeout);
        if (answer != Answer::Finished)
            return StoreAccess::complain(invocation.location, answer);
    }
    const auto isMeant = [&](const StoredMessage &message) {
        const auto before = asked.constFind(message.id);
        return !asks || (before != asked.cend() && *before == Fingerprint::of(message));
    };
    return Deleting(invocation, store, isMeant).run(*ids);
}

} // namespace

Command deleteCommand()
{
    return {"delete",
            "ID...",
            Text::tr("Deletes messages by id; - reads ids from standard input."),
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
