// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "importrun.h"

#include "input/filename.h"
#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/text.h"
#include "store/storeaccess.h"

#include <algorithm>

ImportRun::ImportRun(const Invocation &invocation, const ImportOptions &options,
                     const ItemJudge &judge, std::function<InputPaths()> find)
    : invocation(invocation)
    , options(options)
    , judge(judge)
    , store(invocation, judge,
            options.onDuplicate == ImportOptions::AddAgain ? ImportStore::AreAdded
                                                           : ImportStore::AreFound)
    , files(std::move(find))
    , results(invocation.output, verifies() ? ItemResult::Present : ItemResult::Added,
              invocation.global.format == QLatin1String("ndjson"))
    , clientLock(invocation.location)
    , rejects(invocation.global.dryRun ? QString() : options.rejects)
    , progress(invocation.global.progress)
{
}

ExitCode ImportRun::run()
{
    if (!rejects.open())
        return tellOfRejects(UsageError);
    if (const ExitCode code = openStore())
        return code;
    isWholeInput = readFiles();
    writeChunk();
    return finish();
}

bool ImportRun::goesOn() const
{
    return storeCode == AllDone && Interrupt::signalNumber() == 0
        && invocation.output.error().isEmpty();
}

// Without a finished read of the store it could not be told what is new, so nothing is
// added then.
ExitCode ImportRun::openStore()
{
    StoreLocation &location = invocation.location;
    if (const ExitCode code =
            verifies() ? StoreAccess::requireStore(location) : StoreAccess::requirePlace(location))
        return code;
    const bool writes = !verifies() && !invocation.global.dryRun;
    if (writes && options.onDuplicate != ImportOptions::AddAgain) {
        const Answer answer = clientLock.take(invocation.global.timeout);
        if (answer != Answer::Finished)
            return StoreAccess::complain(location, answer);
    }
    if (!verifies() && location.state() == StoreLocation::Absent)
        return AllDone;
    hasStore = true;
    return StoreAccess::complain(location, store.read());
}

// ---- reading

//! \return whether all was read to its end; else nobody knows how much is left, nor what was
//!         passed over
bool ImportRun::readFiles()
{
    while (const auto file = files.next()) {
        if (!goesOn() || !readFile(*file))
            return false;
    }
    return goesOn(); // else files may not have been found
}

bool ImportRun::readFile(const Prefetch::File &file)
{
    path = file.path;
    ItemReader reader(path, options.form, file.bytes);
    store.index.beginFile();
    bool hasItems = false;
    const qint64 before = bytesDone;
    while (goesOn()) {
        const auto input = reader.next();
        const QByteArray leftovers = reader.takeLeftovers();
        if (!leftovers.isEmpty())
            keep(leftovers);
        if (!input)
            break;
        hasItems = true;
        take(*input);
        bytesDone = before + reader.bytesRead();
    }
    bytesDone = before + reader.bytesRead();
    if (!goesOn())
        return false;
    if (hasItems && reader.hasPassedOver())
        rejects.leaveIn(path);
    if (!reader.error().isEmpty()) {
        NewItem item;
        item.result.source = path;
        item.refuse(RejectReason::Unreadable, reader.error());
        take(std::move(item));
    } else if (!hasItems) {
        noteFileWithoutItems(reader);
    }
    return true;
}

// An empty file is what a list of nothing gives: there is nothing to do.
void ImportRun::noteFileWithoutItems(const ItemReader &reader)
{
    if (reader.isEmpty() || reader.isEmptyBackup()) {
        Diagnostics::warn(Text::tr("%1 is empty").arg(path));
        return;
    }
    constexpr int mostOfFile = 1024 * 1024; // which is still there, so that it can be read anew
    NewItem item;
    item.result.source = path + QLatin1String(":1");
    item.bytes = reader.passedOver();
    if (path != QLatin1String("-") && item.bytes.size() > mostOfFile)
        item.bytes.clear();
    item.refuse(judge.noItem(),
                options.form == ItemReader::AndroidXml
                    ? Text::reason("not an Android backup, as --from says")
                    : Reason());
    take(std::move(item));
}

//! How far it is, from 0 to 1; none = not known.
std::optional<double> ImportRun::partDone()
{
    if (!bytesTotal) {
        bytesTotal = 0;
        const QStringList paths = files.paths().files;
        if (!paths.contains(QLatin1String("-"))) {
            for (const QString &each : paths)
                *bytesTotal += FileName::size(each);
        }
    }
    if (*bytesTotal == 0)
        return std::nullopt;
    return static_cast<double>(bytesDone) / static_cast<double>(*bytesTotal);
}

// ---- what is new

void ImportRun::take(const InputItem &input)
{
    const Answer answer = judge.isCall(input) ? store.readCallsOnce() : Answer::Finished;
    if (answer != Answer::Finished) {
        storeCode = StoreAccess::complain(invocation.location, answer);
        return;
    }
    NewItem item = judge.judge(input);
    item.result.source = path + QLatin1Char(':') + QString::number(input.line);
    take(std::move(item));
}

void ImportRun::take(NewItem &&item)
{
    if (item.result.refusal == RejectReason::None)
        lookUp(item);
    if (item.result.refusal != RejectReason::None && item.bytes.isEmpty())
        rejects.leaveIn(path);
    item.result.ref = nextRef++;
    if (verifies()) {
        report(item);
        if (results.count() % options.chunkSize == 0)
            showProgress();
        return;
    }
    constexpr qint64 mostHeld = qint64(4) * 1024 * 1024;
    hold(std::move(item));
    if (static_cast<int>(items.size()) >= options.chunkSize || bytesHeld >= mostHeld)
        writeChunk();
}

//! Keeps what is left of an earlier file of rejects in its place among the items.
void ImportRun::keep(const QByteArray &leftovers)
{
    if (verifies())
        return;
    NewItem item;
    item.bytes = leftovers;
    item.isLeftover = true;
    hold(std::move(item));
}

//! Finds out whether the store has an item. Only one that is new keeps its content.
void ImportRun::lookUp(NewItem &item)
{
    if (options.onDuplicate == ImportOptions::AddAgain)
        return;
    const std::optional<int> storedId = idOfEqual(item);
    if (!storedId && !verifies()) {
        for (const Fingerprint &fingerprint : std::as_const(item.stored))
            ++newCounts[fingerprint];
        return;
    }
    item.content = std::monostate();
    if (!storedId) {
        item.result.status = ItemResult::Missing;
        return;
    }
    item.result.id = *storedId;
    if (options.onDuplicate == ImportOptions::Refuse)
        return item.refuse(RejectReason::Duplicate);
    item.result.status = ItemResult::Present;
    item.bytes.clear();
}

//! The database id of the stored item that this one is; nothing when it is to be added.
std::optional<int> ImportRun::idOfEqual(const NewItem &item)
{
    if (item.untimed)
        store.index.countInFile(*item.untimed);
    for (const Fingerprint &fingerprint : item.sought) {
        const int count = store.index.countInFile(fingerprint);
        if (isDuplicate(fingerprint, count))
            return store.index.storedId(fingerprint, count);
    }
    return std::nullopt;
}

// An equal item of an earlier file that is still in the chunk is waited for: only when it
// is stored is this one its duplicate.
bool ImportRun::isDuplicate(const Fingerprint &fingerprint, int countInFile)
{
    const int stored = store.index.storedCount(fingerprint);
    if (countInFile > stored && countInFile <= stored + newCounts.value(fingerprint))
        writeChunk();
    return countInFile <= store.index.storedCount(fingerprint);
}

// ---- the chunk

//! Takes an item into the chunk, and its bytes along if they may be needed.
void ImportRun::hold(NewItem &&item)
{
    if (rejects.isWanted() || item.isNew())
        bytesHeld += item.bytes.size();
    if (!rejects.isWanted())
        item.bytes.clear();
    items.push_back(std::move(item));
}

void ImportRun::writeChunk()
{
    if (items.empty())
        return;
    writeItems();
    // The store can be moved or replaced at any time. What was found in it before, and is reported
    // as present, is then nowhere to be found.
    if (hasStore && storeCode == AllDone)
        storeCode = StoreAccess::complain(invocation.location, store.probe());
    for (NewItem &item : items) {
        if (item.isLeftover) {
            rejects.keep(item.bytes);
            continue;
        }
        setOutcome(item);
        report(item);
        if (item.result.status == ItemResult::Refused || item.result.status == ItemResult::Failed)
            rejects.add(item.result, item.bytes);
    }
    items.clear();
    newCounts.clear();
    bytesHeld = 0;
    invocation.output.flush();
    showProgress();
}

void ImportRun::writeItems()
{
    if (invocation.global.dryRun) {
        for (auto count = newCounts.cbegin(); count != newCounts.cend(); ++count) {
            for (int i = 0; i < count.value(); ++i)
                store.index.addStored(count.key(), -1);
        }
    } else if (std::any_of(items.cbegin(), items.cend(),
                           [](const NewItem &item) { return item.isNew(); })) {
        storeCode = worse(storeCode, StoreAccess::complain(invocation.location, store.add(items)));
        hasStore = true;
    }
}

//! Now that the chunk is written.
void ImportRun::setOutcome(NewItem &item) const
{
    ItemResult &result = item.result;
    const auto set = [&result](int id, const Reason &failure, RejectReason refusal) {
        result.id = id;
        result.status = failure.isEmpty() ? ItemResult::Added : ItemResult::Failed;
        if (!failure.isEmpty()) {
            result.refusal = refusal;
            result.detail = failure;
        }
    };
    if (const auto *const message = std::get_if<NewMessage>(&item.content))
        set(message->id, message->trouble, RejectReason::SmsStore);
    else if (const auto *const call = std::get_if<NewCall>(&item.content))
        set(NewCall::id, call->trouble, RejectReason::CallStore);
    else if (result.status == ItemResult::Present && storeCode != AllDone)
        set(-1, Text::reason("not known, as the store cannot be read back"), judge.notStored());
}

void ImportRun::report(const NewItem &item)
{
    if (verifies() && item.result.status == ItemResult::Present)
        results.note(item.result);
    else
        results.report(item.result);
}

void ImportRun::showProgress()
{
    progress.show(results.count(), [this] { return partDone(); });
}

// ---- the end

ExitCode ImportRun::tellOfRejects(ExitCode code) const
{
    Diagnostics::error(Text::tr("%1 cannot be written: %2; name another with --rejects")
                           .arg(rejects.place(), rejects.errorText()));
    return code;
}

ExitCode ImportRun::finish()
{
    progress.end();
    if (isWholeInput)
        results.notePassedOver(files.paths().passedOver);
    if (invocation.global.quiet == 0)
        results.printSummary(isWholeInput);
    results.warnOfRefusals();
    if (verifies() && isWholeInput && results.count() == 0) {
        Diagnostics::error(Text::tr("there were no messages or calls to look for; name the files "
                                    "that were added"));
        return worse(storeCode, SomeNotDone);
    }
    if (!verifies() && !isWholeInput)
        Diagnostics::warn(Text::tr("the input was not read to its end; add it again"));
    const ExitCode code = worse(storeCode, results.exitCode());
    if (rejects.commit(isWholeInput && goesOn()))
        return code;
    return tellOfRejects(worse(code, SomeNotDone));
}
