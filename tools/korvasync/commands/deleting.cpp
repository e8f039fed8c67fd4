// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "deleting.h"

#include "shared/interrupt.h"
#include "shared/text.h"
#include "store/storeaccess.h"

#include <utility>

using namespace KorvaSyncIf;

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
    // What could not be read is not absent.
    const bool isRead = !invocation.watch.hasTrouble();
    if (!isRead)
        trouble = StoreAccess::complain(invocation.location, Answer::Refused);
    QHash<int, ItemResult> fates;
    if (isRead)
        fates = invocation.global.dryRun ? foretell(known) : remove(known);
    for (const int id : ids) {
        ItemResult left;
        left.refusal = others.contains(id) ? RejectReason::SmsChanged : RejectReason::SmsBadId;
        if (!isRead) {
            left.status = ItemResult::Failed;
            left.refusal = RejectReason::SmsDelete;
        }
        report(id, fates.contains(id) ? fates.take(id) : left);
    }
    deleted.unite(seen);
    invocation.output.flush();
}

QHash<int, ItemResult> Deleting::foretell(const QList<int> &ids)
{
    QHash<int, ItemResult> fates;
    for (const int id : ids)
        fates[id].status = ItemResult::Deleted;
    return fates;
}

QHash<int, ItemResult> Deleting::remove(const QList<int> &ids)
{
    QHash<int, ItemResult> fates;
    if (ids.isEmpty())
        return fates;
    const MessageStore::Written written = store.remove(ids);
    QSet<int> left;
    for (const int id : ids) {
        if (store.message(id).id != -1)
            left += id;
    }
    // A store that cannot be read has no ids.
    const bool canTell = store.probe() == Answer::Finished;
    const bool hasTrouble = !canTell || invocation.watch.hasTrouble();
    const Answer answer =
        written.answer == Answer::Finished && hasTrouble ? Answer::Refused : written.answer;
    trouble = StoreAccess::complain(invocation.location, answer);
    for (int i = 0; i < ids.size(); ++i) {
        const bool isDone = written.answer == Answer::Finished
            && written.status.value(i, SmsDeleteFailed) == SmsNoError;
        ItemResult &result = fates[ids.at(i)];
        result.status = ItemResult::Failed;
        result.refusal = RejectReason::SmsDelete;
        if (!canTell) {
            result.detail = Text::reason("not known, as the store cannot be read back");
        } else if (left.contains(ids.at(i))) {
            continue;
        } else if (isDone) {
            result.status = ItemResult::Deleted;
        } else if (answer == Answer::Finished) { // another client was faster
            result.status = ItemResult::Refused;
            result.refusal = RejectReason::SmsBadId;
        } else { // a failed commit names the whole chunk
            result.detail = Text::reason("gone, but the store did not confirm it");
        }
    }
    return fates;
}

void Deleting::report(int id, ItemResult result)
{
    result.ref = results.count();
    result.id = id;
    if (result.status == ItemResult::Deleted)
        result.refusal = RejectReason::None;
    results.report(result);
}
