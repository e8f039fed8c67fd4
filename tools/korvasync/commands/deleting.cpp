// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "deleting.h"

#include "language/text.h"
#include "process/diagnostics.h"
#include "process/interrupt.h"
#include "storeaccess.h"

#include <utility>

static constexpr int chunkSize = 500;

Deleting::Deleting(const Invocation &invocation, MessageStore &store, IsMeant isMeant)
    : invocation(invocation)
    , store(store)
    , isMeant(std::move(isMeant))
    , results(invocation.output, ItemResult::Deleted,
              invocation.global.format == QLatin1String("ndjson"), invocation.global.dryRun)
    , progress(invocation.global.progress)
{
}

ExitCode Deleting::run(const QList<int> &ids)
{
    for (int i = 0; i < ids.size() && trouble == AllDone && Interrupt::signalNumber() == 0
         && invocation.output.error().isEmpty();
         i += chunkSize) {
        deleteChunk(ids.mid(i, chunkSize));
        progress.show(results.count(), [&] {
            return static_cast<double>(results.count()) / static_cast<double>(ids.size());
        });
    }
    progress.end();
    if (invocation.global.quiet == 0)
        results.printSummary();
    results.warnOfRefusals();
    return worse(trouble, results.exitCode());
}

void Deleting::deleteChunk(const QList<int> &ids)
{
    QList<int> known; // calls share the ids, and the library would delete one as well
    QSet<int> others; // than those asked about
    QSet<int> seen = deleted;
    for (const int id : ids) {
        const bool isNew = !seen.contains(id);
        seen += id;
        const StoredMessage message =
            isNew ? StoredMessage::fromRecord(store.message(id)) : StoredMessage();
        if (message.id == -1)
            continue;
        if (isMeant(message))
            known += id;
        else
            others += id;
    }
    bool canTell = true;
    if (!invocation.global.dryRun && !known.isEmpty()) {
        const MessageStore::Written written = store.remove(known);
        // A failed commit names the whole chunk, and a store that cannot be read has no ids.
        canTell = store.probe() == Answer::Finished;
        const bool hasTrouble = !canTell || Diagnostics::storeTroubleCount() > 0;
        const Answer answer =
            written.answer == Answer::Finished && hasTrouble ? Answer::Refused : written.answer;
        trouble = StoreAccess::complain(invocation.location, answer);
    }
    QSet<int> waiting(known.cbegin(), known.cend());
    for (const int id : ids) {
        if (others.contains(id))
            report(id, ItemResult::Refused, Refusal::SmsChanged);
        else if (!waiting.remove(id))
            report(id, ItemResult::Refused, Refusal::SmsBadId);
        else if (!canTell)
            report(id, ItemResult::Failed, Refusal::SmsDelete,
                   Text::reason("not known, as the store cannot be read back"));
        else if (invocation.global.dryRun || store.message(id).id == -1)
            report(id, ItemResult::Deleted, Refusal::None);
        else
            report(id, ItemResult::Failed, Refusal::SmsDelete);
    }
    deleted.unite(seen);
    invocation.output.flush();
}

void Deleting::report(int id, ItemResult::Status status, Refusal refusal, const Reason &detail)
{
    ItemResult result;
    result.ref = results.count();
    result.status = status;
    result.id = id;
    result.refusal = refusal;
    result.detail = detail;
    results.report(result);
}
