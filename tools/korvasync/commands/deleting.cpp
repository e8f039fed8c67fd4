// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "deleting.h"

#include "shared/interrupt.h"
#include "shared/text.h"
#include "store/storeaccess.h"

#include <utility>

using namespace KorvaSyncIf;

static constexpr int ChunkSize = 500;

Deleting::Deleting(const Invocation &invocation, MessageStore &store, IsMeant isMeant)
    : m_invocation(invocation)
    , m_store(store)
    , m_isMeant(std::move(isMeant))
    , m_results(invocation.output, ItemResult::Deleted,
                invocation.global.format == QLatin1String("ndjson"), invocation.global.dryRun)
    , m_progress(invocation.global.progress)
{
}

ExitCode Deleting::run(const QList<int> &ids)
{
    for (int i = 0; i < ids.size() && m_trouble == AllDone && Interrupt::signalNumber() == 0
         && m_invocation.output.error().isEmpty();
         i += ChunkSize) {
        deleteChunk(ids.mid(i, ChunkSize));
        m_progress.show(m_results.count(), [&] {
            return static_cast<double>(m_results.count()) / static_cast<double>(ids.size());
        });
    }
    m_progress.end();
    if (m_invocation.global.quiet == 0)
        m_results.printSummary();
    m_results.warnOfRefusals();
    return worse(m_trouble, m_results.exitCode());
}

void Deleting::deleteChunk(const QList<int> &ids)
{
    QList<int> known; // calls share the ids, and the library would delete one as well
    QSet<int> others; // than those asked about
    QSet<int> seen = m_deleted;
    for (const int id : ids) {
        const bool isNew = !seen.contains(id);
        seen += id;
        const StoredMessage message =
            isNew ? StoredMessage::fromRecord(m_store.message(id)) : StoredMessage();
        if (message.id == -1)
            continue;
        if (m_isMeant(message))
            known += id;
        else
            others += id;
    }
    // What could not be read is not absent.
    const bool isRead = !m_invocation.watch.hasTrouble();
    if (!isRead)
        m_trouble = StoreAccess::complain(m_invocation.location, Answer::Refused);
    QHash<int, ItemResult> fates;
    if (isRead)
        fates = m_invocation.global.dryRun ? foretell(known) : remove(known);
    for (const int id : ids) {
        ItemResult left;
        left.rejectReason = others.contains(id) ? RejectReason::SmsChanged : RejectReason::SmsBadId;
        if (!isRead) {
            left.status = ItemResult::Failed;
            left.rejectReason = RejectReason::SmsDelete;
        }
        report(id, fates.contains(id) ? fates.take(id) : left);
    }
    m_deleted.unite(seen);
    m_invocation.output.flush();
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
    const MessageStore::Written written = m_store.remove(ids);
    QSet<int> left;
    for (const int id : ids) {
        if (m_store.message(id).id != -1)
            left += id;
    }
    // A store that cannot be read has no ids.
    const bool canTell = m_store.probe() == Answer::Finished;
    const bool hasTrouble = !canTell || m_invocation.watch.hasTrouble();
    const Answer answer =
        written.answer == Answer::Finished && hasTrouble ? Answer::Refused : written.answer;
    m_trouble = StoreAccess::complain(m_invocation.location, answer);
    for (int i = 0; i < ids.size(); ++i) {
        const bool isDone = written.answer == Answer::Finished
            && written.status.value(i, SmsDeleteFailed) == SmsNoError;
        ItemResult &result = fates[ids.at(i)];
        result.status = ItemResult::Failed;
        result.rejectReason = RejectReason::SmsDelete;
        if (!canTell) {
            result.detail = Text::reason("not known, as the store cannot be read back");
        } else if (left.contains(ids.at(i))) {
            continue;
        } else if (isDone) {
            result.status = ItemResult::Deleted;
        } else if (answer == Answer::Finished) { // another client was faster
            result.status = ItemResult::Refused;
            result.rejectReason = RejectReason::SmsBadId;
        } else { // a failed commit names the whole chunk
            result.detail = Text::reason("gone, but the store did not confirm it");
        }
    }
    return fates;
}

void Deleting::report(int id, ItemResult result)
{
    result.ref = m_results.count();
    result.id = id;
    if (result.status == ItemResult::Deleted)
        result.rejectReason = RejectReason::None;
    m_results.report(result);
}
