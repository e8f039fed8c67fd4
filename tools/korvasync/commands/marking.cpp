// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "marking.h"

#include "model/folder.h"
#include "shared/interrupt.h"
#include "shared/number.h"
#include "shared/text.h"
#include "store/messagewriter.h"
#include "store/storeaccess.h"

#include <korvasync/vmessageencoder.h>

using namespace KorvaSyncIf;

namespace {

constexpr int MarksAtOnce = 500;

SmsInfo infoOf(const StoredMessage &message, int folder, bool isRead)
{
    SmsInfo info;
    info.id = message.id;
    info.parentId = folder;
    (Folder::isOutbound(folder) ? info.toNumber : info.fromNumber) = message.number;
    info.body = message.body;
    info.time = message.time;
    info.readStatus = isRead ? QStringLiteral("READ") : QStringLiteral("UNREAD");
    info.messageToken = message.token;
    return info;
}

//! What the library gives for a message that was handed to it.
QString vMessageOf(SmsInfo info)
{
    info.fromNumber = Number::asStored(info.fromNumber);
    info.toNumber = Number::asStored(info.toNumber);
    return VMessageEncoder().encode(info).vMessage;
}

} // namespace

Marking::Marking(const Invocation &invocation, MessageStore &store, const Marks &marks)
    : m_invocation(invocation)
    , m_store(store)
    , m_marks(marks)
    , m_results(invocation.output, ItemResult::Changed,
                invocation.global.format == QLatin1String("ndjson"))
{
}

ExitCode Marking::run(const QList<int> &ids)
{
    for (int i = 0; i < ids.size() && m_trouble == AllDone && Interrupt::signalNumber() == 0
         && m_invocation.output.error().isEmpty();
         i += MarksAtOnce)
        markChunk(ids.mid(i, MarksAtOnce));
    if (m_invocation.global.quiet == 0)
        m_results.printSummary();
    m_results.warnOfRefusals();
    return worse(m_trouble, m_results.exitCode());
}

void Marking::markChunk(const QList<int> &ids)
{
    QHash<int, ItemResult> results;
    QList<Change> changes;
    for (const int id : ids) {
        if (results.contains(id))
            continue;
        Change change;
        results[id] = look(id, &change);
        if (results[id].status == ItemResult::Changed)
            changes += change;
    }
    if (m_invocation.watch.hasTrouble()) { // what could not be read is not absent
        m_trouble = StoreAccess::complain(m_invocation.location, Answer::Refused);
        for (ItemResult &result : results) {
            result.status = ItemResult::Failed;
            result.rejectReason = RejectReason::SmsStore;
        }
    } else if (!m_invocation.global.dryRun && !changes.isEmpty()) {
        write(changes, &results);
    }
    for (const int id : ids) {
        ItemResult &result = results[id];
        result.ref = m_results.count();
        result.id = id;
        m_results.report(result);
        if (result.status == ItemResult::Changed) // named once more, it is so already
            result.status = ItemResult::Unchanged;
    }
    m_invocation.output.flush();
}

ItemResult Marking::look(int id, Change *change)
{
    ItemResult result; // refused, so far
    change->before = StoredMessage::fromRecord(m_store.message(id));
    const StoredMessage &before = change->before;
    const int folder = m_marks.folder.value_or(before.folder);
    const bool isRead = m_marks.isRead.value_or(before.isRead);
    change->wanted = infoOf(before, folder, isRead);
    change->vMessage = vMessageOf(change->wanted);
    if (before.id == -1) {
        result.rejectReason = RejectReason::SmsBadId;
    } else if (folder == before.folder && isRead == before.isRead) {
        result.status = ItemResult::Unchanged;
    } else if (before.folder == LocDrafts) {
        result.rejectReason = RejectReason::SmsDraft;
    } else if (before.number.isEmpty()) {
        result.rejectReason = RejectReason::SmsNoNumber;
    } else if (vMessageOf(infoOf(before, before.folder, before.isRead)) != before.vMessage) {
        // The library changes a message by writing all of it anew.
        result.rejectReason = RejectReason::SmsStore;
        result.detail = Text::reason("its number or text cannot be written as it is");
    } else {
        result.status = ItemResult::Changed;
    }
    return result;
}

SyncSmsInfo Marking::recordOf(const Change &change) const
{
    SmsInfo info = change.wanted;
    info.parentId = Folder::None; // a vMessage has no word for each folder that people make
    if (info.body.startsWith(QChar::ByteOrderMark)) // of which the library drops one
        info.body.prepend(QChar(QChar::ByteOrderMark));
    SyncSmsInfo record;
    record.id = info.id;
    record.parentId = change.wanted.parentId;
    record.messageToken = info.messageToken;
    record.vMessage = VMessageEncoder().encode(info).vMessage;
    return record;
}

bool Marking::isDone(const Change &change, ItemResult *result)
{
    const StoredMessage now = StoredMessage::fromRecord(m_store.message(change.before.id));
    result->status = ItemResult::Changed;
    if (now.vMessage == change.vMessage && now.folder == change.wanted.parentId
        && now.token == change.before.token)
        return true;
    result->status = ItemResult::Failed;
    result->rejectReason = RejectReason::SmsStore;
    result->detail = difference(now, change.wanted);
    if (now.id == -1 && m_invocation.watch.hasTrouble())
        result->detail = Text::reason("not known, as the store cannot be read back");
    return false;
}

void Marking::write(const QList<Change> &changes, QHash<int, ItemResult> *results)
{
    QList<SyncSmsInfo> records;
    for (const Change &change : changes)
        records += recordOf(change);
    Answer answer = m_store.modify(records).answer;
    for (int i = 0; i < changes.size(); ++i) {
        ItemResult &result = (*results)[changes.at(i).before.id];
        if (isDone(changes.at(i), &result) || answer != Answer::Finished
            || m_invocation.watch.hasTrouble())
            continue;
        // A party whose conversation is not found holds up others of the request.
        result = ItemResult();
        answer = m_store.modify({records.at(i)}).answer;
        isDone(changes.at(i), &result);
    }
    if (answer == Answer::Finished && m_invocation.watch.hasTrouble())
        answer = Answer::Refused;
    m_trouble = StoreAccess::complain(m_invocation.location, answer);
}
