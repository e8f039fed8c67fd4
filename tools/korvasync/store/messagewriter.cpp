// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagewriter.h"

#include "historyrequest.h"
#include "model/folder.h"
#include "shared/parsedmessage.h"
#include "shared/troublewatch.h"

#include <korvasync/vmessageencoder.h>

#include <algorithm>

using namespace KorvaSyncIf;

Reason difference(const StoredMessage &stored, const SmsInfo &given)
{
    if (stored.id == -1)
        return Text::reason("the store does not have it");
    Reason parts;
    const auto add = [&parts](const Reason &part) {
        parts = parts.isEmpty() ? part : Text::reason("%1 and %2").arg(parts).arg(part);
    };
    if (stored.folder != given.parentId)
        add(Text::reason("folder"));
    if (stored.number != (given.fromNumber.isEmpty() ? given.toNumber : given.fromNumber))
        add(Text::reason("number"));
    if (stored.time != given.time)
        add(Text::reason("time"));
    if (stored.isRead != (given.readStatus == QLatin1String("READ")))
        add(Text::reason("read status"));
    if (ParsedMessage::comparable(stored.body) != ParsedMessage::comparable(given.body))
        add(Text::reason("text"));
    return parts.isEmpty() ? parts : Text::reason("stored, but with another %1").arg(parts);
}

namespace {

Reason notTaken() { return Text::reason("the store did not take it"); }

void setTrouble(const QList<NewMessage *> &messages, const Reason &trouble)
{
    for (NewMessage *const message : messages)
        message->trouble = trouble;
}

} // namespace

MessageWriter::MessageWriter(StoreLocation &location, MessageStore &store)
    : m_location(location)
    , m_store(store)
{
}

Answer MessageWriter::add(const QList<NewMessage *> &messages)
{
    VMessageEncoder encoder;
    QList<SyncSmsInfo> records;
    records.reserve(messages.size());
    for (const NewMessage *const message : messages) {
        SyncSmsInfo record;
        record.parentId = Folder::None; // the vMessage names its folder
        record.vMessage = encoder.encode(message->message).vMessage;
        records += record;
    }
    QString beginning;
    const Answer begun = noteBeginning(&beginning);
    if (begun != Answer::Finished) {
        setTrouble(messages, notTaken());
        return begun;
    }
    const MessageStore::Written written = m_store.add(records);
    const Answer failure = written.answer == Answer::Finished ? Answer::Refused : written.answer;
    const bool committed = written.answer == Answer::Finished && !written.ids.contains(-1)
        && std::all_of(written.status.cbegin(), written.status.cend(),
                       [](SMSSyncError error) { return error == SmsNoError; });
    if (committed) {
        for (int i = 0; i < messages.size(); ++i)
            messages.at(i)->id = written.ids.at(i);
    } else {
        setTrouble(messages,
                   failure == Answer::TimedOut
                       ? Text::reason("no answer in time; not stored so far") // it can still come
                       : notTaken());
        findStored(messages, beginning);
    }
    for (NewMessage *const message : messages) {
        if (message->id != -1)
            confirm(*message);
    }
    const bool allStored = std::all_of(messages.cbegin(), messages.cend(),
                                       [](const NewMessage *message) { return message->id != -1; });
    return allStored ? Answer::Finished : failure;
}

//! How far the store is; empty as long as there is none. What it gets from there on may be ours.
Answer MessageWriter::noteBeginning(QString *cursor)
{
    if (m_location.state() == StoreLocation::Absent)
        return Answer::Finished;
    const auto now = HistoryRequest::changes(m_store.timeout(), HistoryInterface::now(),
                                             [](const HistoryChange &) { return true; });
    *cursor = now.cursor;
    return now.answer;
}

// A failed commit names the whole chunk, and one that was never reported may have happened:
// what the store holds now and did not hold before is ours.
void MessageWriter::findStored(const QList<NewMessage *> &messages, const QString &beginning)
{
    if (m_location.state() == StoreLocation::Absent) // not even made
        return;
    QMultiHash<Fingerprint, int> newIds;
    const auto read =
        HistoryRequest::changes(m_store.timeout(), beginning, [&](const HistoryChange &change) {
            const bool isMessage = change.item.kind == HistoryItem::Kind::Message;
            if (isMessage && change.kind == HistoryChange::Kind::Added)
                newIds.insert(Fingerprint::of(StoredMessage::fromItem(change.item)),
                              change.item.id);
            return true;
        });
    if (read.answer != Answer::Finished)
        return setTrouble(messages, Text::reason("not known, as the store cannot be read back"));
    for (NewMessage *const message : messages) {
        if (newIds.contains(message->fingerprint))
            message->id = newIds.take(message->fingerprint);
    }
}

void MessageWriter::confirm(NewMessage &message)
{
    const TroubleWatch watch;
    const StoredMessage stored = StoredMessage::fromRecord(m_store.message(message.id));
    const bool isRead = stored.id != -1 || !watch.hasTrouble();
    message.trouble = isRead ? difference(stored, message.message)
                             : Text::reason("not known, as the store cannot be read back");
}
