// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "adding.h"

#include "messages/folder.h"
#include "output/terminaltext.h"
#include "process/diagnostics.h"
#include "process/interrupt.h"
#include "storeaccess.h"

#include <QtCore/QFileInfo>

using namespace KorvaSyncIf;

Adding::Adding(const Invocation &invocation, const AddingOptions &options)
    : invocation(invocation)
    , options(options)
    , store(invocation.global.timeout)
    , writer(invocation.location, store, index)
    , results(invocation.output, ItemResult::Added,
              invocation.global.format == QLatin1String("ndjson"))
    , rejects(invocation.global.dryRun ? QString() : options.rejects)
    , progress(invocation.global.progress)
{
}

ExitCode Adding::run(const QStringList &files)
{
    if (!rejects.open()) {
        Diagnostics::error(QStringLiteral("%1 cannot be written: %2")
                               .arg(terminalText(options.rejects), rejects.errorText()));
        return UsageError;
    }
    if (const ExitCode code = readStore())
        return code;
    for (const QString &path : files)
        bytesTotal += path == QLatin1String("-") ? 0 : QFileInfo(path).size();
    if (files.contains(QLatin1String("-")))
        bytesTotal = 0;
    for (const QString &path : files) {
        if (!goesOn())
            break;
        addFile(path);
    }
    writeChunk();
    return finish();
}

// Without a finished read of all folders it could not be told what is new, so nothing is
// added then.
ExitCode Adding::readStore()
{
    if (invocation.location.state() != StoreLocation::Present)
        return StoreAccess::requirePlace(invocation.location);
    for (const LocationId folder : Folder::all()) {
        const MessageStore::Read read = store.messages(QDateTime(), folder);
        if (read.answer != Answer::Finished)
            return StoreAccess::complain(invocation.location, read.answer);
        for (const SyncSmsInfo &record : read.messages)
            index.addStored(Fingerprint::of(StoredMessage::fromRecord(record)), record.id);
    }
    return AllDone;
}

bool Adding::goesOn() const
{
    return trouble == AllDone && Interrupt::signalNumber() == 0
        && invocation.output.error().isEmpty();
}

void Adding::addFile(const QString &path)
{
    MessageReader reader(path);
    index.beginFile();
    bool hasMessages = false;
    const qint64 before = bytesDone;
    while (goesOn()) {
        const auto message = reader.next();
        if (!message)
            break;
        hasMessages = true;
        judge(*message, path);
        bytesDone = before + reader.bytesRead();
    }
    bytesDone = before + reader.bytesRead();
    if (!goesOn())
        return;
    if (!reader.error().isEmpty()) {
        ItemResult result;
        result.source = path;
        result.detail = reader.error();
        refuse(result, Refusal::Unreadable, QByteArray());
    } else if (!hasMessages) {
        noteFileWithoutMessages(path, reader);
    }
}

// An empty file is what "list -o vmsg" of nothing gives: there is nothing to do.
void Adding::noteFileWithoutMessages(const QString &path, const MessageReader &reader)
{
    const QByteArray start = reader.start().trimmed().toUpper();
    if (start.isEmpty()) {
        Diagnostics::warn(QStringLiteral("%1 is empty").arg(terminalText(path)));
        return;
    }
    ItemResult result;
    result.source = path + QLatin1String(":1");
    Refusal refusal = Refusal::SmsParse;
    for (const char *other : {"BEGIN:VMESSAGE", "BEGIN:BMSG", "BEGIN:VNOTE", "BEGIN:VCALENDAR"}) {
        if (start.startsWith(other))
            refusal = Refusal::ForeignObject;
    }
    refuse(result, refusal, QByteArray());
}

void Adding::judge(const MessageReader::Message &message, const QString &path)
{
    ItemResult result;
    result.source = QStringLiteral("%1:%2").arg(path).arg(message.line);
    const auto parsed = ParsedMessage::parse(message.bytes);
    if (!parsed)
        return refuse(result, Refusal::SmsParse, message.bytes);
    const SettledMessage settled = settle(*parsed, options.rules);
    if (settled.refusal != Refusal::None)
        return refuse(result, settled.refusal, message.bytes);

    NewMessage candidate;
    candidate.message = settled.message;
    candidate.fingerprint = Fingerprint::of(settled.message.parentId, candidate.number(),
                                            settled.message.time, settled.message.body);
    const int count = index.countInFile(candidate.fingerprint);
    if (options.onDuplicate != AddingOptions::AddAgain
        && isDuplicate(candidate.fingerprint, count)) {
        result.id = index.storedId(candidate.fingerprint, count);
        if (options.onDuplicate == AddingOptions::Refuse)
            return refuse(result, Refusal::Duplicate, message.bytes);
        result.status = ItemResult::Present;
        append({result, -1, QByteArray()});
        return;
    }
    newMessages += candidate;
    ++newCounts[candidate.fingerprint];
    append({result, static_cast<int>(newMessages.size()) - 1, QByteArray()});
}

// An equal message of an earlier file that is still in the chunk is waited for: only when
// it is stored is this one its duplicate.
bool Adding::isDuplicate(const Fingerprint &fingerprint, int countInFile)
{
    const int stored = index.storedCount(fingerprint);
    if (countInFile > stored && countInFile <= stored + newCounts.value(fingerprint))
        writeChunk();
    return countInFile <= index.storedCount(fingerprint);
}

void Adding::refuse(const ItemResult &result, Refusal refusal, const QByteArray &message)
{
    Item item{result, -1, rejects.isWanted() ? message : QByteArray()};
    item.result.status = ItemResult::Refused;
    item.result.refusal = refusal;
    append(item);
}

void Adding::append(const Item &item)
{
    items += item;
    items.last().result.ref = nextRef++;
    if (items.size() >= options.chunkSize)
        writeChunk();
}

void Adding::writeChunk()
{
    if (items.isEmpty())
        return;
    if (invocation.global.dryRun) {
        for (const NewMessage &message : std::as_const(newMessages))
            index.addStored(message.fingerprint, -1);
    } else if (!newMessages.isEmpty()) {
        const Answer answer = writer.add(newMessages);
        trouble = StoreAccess::complain(invocation.location, answer);
    }
    settleFates();
    for (const Item &item : std::as_const(items)) {
        results.report(item.result);
        if (item.result.status == ItemResult::Refused)
            rejects.add(item.result, item.message);
    }
    items.clear();
    newMessages.clear();
    newCounts.clear();
    invocation.output.flush();
    std::optional<double> part;
    if (bytesTotal > 0)
        part = static_cast<double>(bytesDone) / static_cast<double>(bytesTotal);
    progress.show(results.count(), part);
}

void Adding::settleFates()
{
    for (Item &item : items) {
        if (item.newIndex == -1)
            continue;
        const NewMessage &message = newMessages.at(item.newIndex);
        item.result.id = message.id;
        item.result.status = message.trouble.isEmpty() ? ItemResult::Added : ItemResult::Failed;
        if (!message.trouble.isEmpty()) {
            item.result.refusal = Refusal::SmsStore;
            item.result.detail = message.trouble;
        }
    }
}

ExitCode Adding::finish()
{
    progress.end();
    if (invocation.global.quiet == 0)
        results.printSummary();
    results.warnOfRefusals();
    ExitCode code = worse(trouble, results.exitCode());
    if (!rejects.commit()) {
        Diagnostics::error(QStringLiteral("%1 cannot be written: %2")
                               .arg(terminalText(options.rejects), rejects.errorText()));
        code = worse(code, SomeNotDone);
    }
    return code;
}
