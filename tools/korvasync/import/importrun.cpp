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
    : m_invocation(invocation)
    , m_options(options)
    , m_judge(judge)
    , m_store(invocation, judge,
              options.onDuplicate == ImportOptions::AddAgain ? ImportStore::AreAdded
                                                             : ImportStore::AreFound)
    , m_files(std::move(find))
    , m_results(invocation.output, verifies() ? ItemResult::Present : ItemResult::Added,
                invocation.global.format == QLatin1String("ndjson"))
    , m_clientLock(invocation.location)
    , m_rejects(invocation.global.dryRun ? QString() : options.rejects)
    , m_progress(invocation.global.progress)
{
}

ExitCode ImportRun::run()
{
    if (!m_rejects.open())
        return tellOfRejects(UsageError);
    if (const ExitCode code = openStore())
        return code;
    m_isWholeInput = readFiles();
    writeChunk();
    return finish();
}

bool ImportRun::goesOn() const
{
    return m_storeCode == AllDone && Interrupt::signalNumber() == 0
        && m_invocation.output.error().isEmpty();
}

// Without a finished read of the store it could not be told what is new, so nothing is
// added then.
ExitCode ImportRun::openStore()
{
    StoreLocation &location = m_invocation.location;
    if (const ExitCode code =
            verifies() ? StoreAccess::requireStore(location) : StoreAccess::requirePlace(location))
        return code;
    const bool writes = !verifies() && !m_invocation.global.dryRun;
    if (writes && looksUp()) {
        const Answer answer = m_clientLock.take(m_invocation.global.timeout);
        if (answer != Answer::Finished)
            return StoreAccess::complain(location, answer);
    }
    if (!verifies() && location.state() == StoreLocation::Absent) {
        m_store.setEmpty();
        return AllDone;
    }
    m_hasStore = true;
    return StoreAccess::complain(location, m_store.open());
}

// ---- reading

//! \return whether all was read to its end; else nobody knows how much is left, nor what was
//!         passed over
bool ImportRun::readFiles()
{
    while (const auto file = m_files.next()) {
        if (!goesOn() || !readFile(*file))
            return false;
    }
    return goesOn(); // else files may not have been found
}

bool ImportRun::readFile(const Prefetch::File &file)
{
    m_path = file.path;
    ItemReader reader(m_path, m_options.form, file.bytes);
    m_store.index.beginFile();
    bool hasItems = false;
    const qint64 before = m_bytesDone;
    while (goesOn()) {
        const auto input = reader.next();
        const QByteArray leftovers = reader.takeLeftovers();
        if (!leftovers.isEmpty())
            keep(leftovers);
        if (!input)
            break;
        hasItems = true;
        take(*input);
        m_bytesDone = before + reader.bytesRead();
    }
    m_bytesDone = before + reader.bytesRead();
    if (!goesOn())
        return false;
    if (hasItems && reader.hasPassedOver())
        m_rejects.leaveIn(m_path);
    if (!reader.error().isEmpty()) {
        NewItem item;
        item.result.source = m_path;
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
        Diagnostics::warn(Text::tr("%1 is empty").arg(m_path));
        return;
    }
    constexpr int mostOfFile = 1024 * 1024; // which is still there, so that it can be read anew
    NewItem item;
    item.result.source = m_path + QLatin1String(":1");
    item.bytes = reader.passedOver();
    if (m_path != QLatin1String("-") && item.bytes.size() > mostOfFile)
        item.bytes.clear();
    item.refuse(m_judge.noItem(),
                m_options.form == ItemReader::AndroidXml
                    ? Text::reason("not an Android backup, as --from says")
                    : Reason());
    take(std::move(item));
}

//! How far it is, from 0 to 1; none = not known.
std::optional<double> ImportRun::partDone()
{
    if (!m_bytesTotal) {
        m_bytesTotal = 0;
        const QStringList paths = m_files.paths().files;
        if (!paths.contains(QLatin1String("-"))) {
            for (const QString &each : paths)
                *m_bytesTotal += FileName::size(each);
        }
    }
    if (*m_bytesTotal == 0)
        return std::nullopt;
    return static_cast<double>(m_bytesDone) / static_cast<double>(*m_bytesTotal);
}

// ---- what is new

void ImportRun::take(const InputItem &input)
{
    NewItem item = m_judge.judge(input);
    // That a call was stored only the number of its equals tells, also where nothing is looked up.
    const bool isSought =
        item.result.rejectReason == RejectReason::None && (looksUp() || item.isCall);
    const Answer answer = isSought ? m_store.readAround(item) : Answer::Finished;
    if (answer != Answer::Finished) {
        m_storeCode = StoreAccess::complain(m_invocation.location, answer);
        return;
    }
    item.result.source = m_path + QLatin1Char(':') + QString::number(input.line);
    take(std::move(item));
}

void ImportRun::take(NewItem &&item)
{
    if (item.result.rejectReason == RejectReason::None)
        lookUp(item);
    if (item.result.rejectReason != RejectReason::None && item.bytes.isEmpty())
        m_rejects.leaveIn(m_path);
    item.result.ref = m_nextRef++;
    if (verifies()) {
        report(item);
        if (m_results.count() % m_options.chunkSize == 0)
            showProgress();
        return;
    }
    constexpr qint64 mostHeld = qint64(4) * 1024 * 1024;
    hold(std::move(item));
    if (static_cast<int>(m_items.size()) >= m_options.chunkSize || m_bytesHeld >= mostHeld)
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
    if (!looksUp())
        return;
    const std::optional<int> storedId = idOfEqual(item);
    if (!storedId && !verifies()) {
        for (const Fingerprint &fingerprint : std::as_const(item.stored))
            ++m_newCounts[fingerprint];
        return;
    }
    item.content = std::monostate();
    if (!storedId) {
        item.result.status = ItemResult::Missing;
        return;
    }
    item.result.id = *storedId;
    if (m_options.onDuplicate == ImportOptions::Refuse)
        return item.refuse(RejectReason::Duplicate);
    item.result.status = ItemResult::Present;
    item.bytes.clear();
}

//! The database id of the stored item that this one is; nothing when it is to be added.
std::optional<int> ImportRun::idOfEqual(const NewItem &item)
{
    if (item.untimed)
        m_store.index.countInFile(*item.untimed);
    for (const Fingerprint &fingerprint : item.sought) {
        const int count = m_store.index.countInFile(fingerprint);
        if (isDuplicate(fingerprint, count))
            return m_store.index.storedId(fingerprint, count);
    }
    return std::nullopt;
}

// An equal item of an earlier file that is still in the chunk is waited for: only when it
// is stored is this one its duplicate.
bool ImportRun::isDuplicate(const Fingerprint &fingerprint, int countInFile)
{
    const int stored = m_store.index.storedCount(fingerprint);
    if (countInFile > stored && countInFile <= stored + m_newCounts.value(fingerprint))
        writeChunk();
    return countInFile <= m_store.index.storedCount(fingerprint);
}

// ---- the chunk

//! Takes an item into the chunk, and its bytes along if they may be needed.
void ImportRun::hold(NewItem &&item)
{
    if (m_rejects.isWanted() || item.isNew())
        m_bytesHeld += item.bytes.size();
    if (!m_rejects.isWanted())
        item.bytes.clear();
    m_items.push_back(std::move(item));
}

void ImportRun::writeChunk()
{
    if (m_items.empty())
        return;
    writeItems();
    // The store can be moved or replaced at any time. What was found in it before, and is reported
    // as present, is then nowhere to be found.
    if (m_hasStore && m_storeCode == AllDone)
        m_storeCode = StoreAccess::complain(m_invocation.location, m_store.probe());
    for (NewItem &item : m_items) {
        if (item.isLeftover) {
            m_rejects.keep(item.bytes);
            continue;
        }
        setOutcome(item);
        report(item);
        if (item.result.status == ItemResult::Refused || item.result.status == ItemResult::Failed)
            m_rejects.add(item.result, item.bytes);
    }
    m_items.clear();
    m_newCounts.clear();
    m_bytesHeld = 0;
    m_invocation.output.flush();
    showProgress();
}

void ImportRun::writeItems()
{
    if (m_invocation.global.dryRun) {
        for (auto count = m_newCounts.cbegin(); count != m_newCounts.cend(); ++count) {
            for (int i = 0; i < count.value(); ++i)
                m_store.index.addStored(count.key(), -1);
        }
    } else if (std::any_of(m_items.cbegin(), m_items.cend(),
                           [](const NewItem &item) { return item.isNew(); })) {
        m_storeCode =
            worse(m_storeCode, StoreAccess::complain(m_invocation.location, m_store.add(m_items)));
        m_hasStore = true;
    }
}

//! Now that the chunk is written.
void ImportRun::setOutcome(NewItem &item) const
{
    ItemResult &result = item.result;
    const auto set = [&item, &result](int id, const Reason &failure) {
        result.id = id;
        result.status = failure.isEmpty() ? ItemResult::Added : ItemResult::Failed;
        if (!failure.isEmpty()) {
            result.rejectReason = item.isCall ? RejectReason::CallStore : RejectReason::SmsStore;
            result.detail = failure;
        }
    };
    if (const auto *const message = std::get_if<NewMessage>(&item.content))
        set(message->id, message->trouble);
    else if (const auto *const call = std::get_if<NewCall>(&item.content))
        set(NewCall::NoId, call->trouble);
    else if (result.status == ItemResult::Present && m_storeCode != AllDone)
        set(-1, Text::reason("not known, as the store cannot be read back"));
}

void ImportRun::report(const NewItem &item)
{
    if (verifies() && item.result.status == ItemResult::Present)
        m_results.note(item.result);
    else
        m_results.report(item.result);
}

void ImportRun::showProgress()
{
    m_progress.show(m_results.count(), [this] { return partDone(); });
}

// ---- the end

ExitCode ImportRun::tellOfRejects(ExitCode code) const
{
    Diagnostics::error(Text::tr("%1 cannot be written: %2; name another with --rejects")
                           .arg(m_rejects.place(), m_rejects.errorText()));
    return code;
}

ExitCode ImportRun::finish()
{
    m_progress.end();
    if (m_isWholeInput)
        m_results.notePassedOver(m_files.paths().passedOver);
    if (m_invocation.global.quiet == 0)
        m_results.printSummary(m_isWholeInput);
    m_results.warnOfRefusals();
    if (verifies() && m_isWholeInput && m_results.count() == 0) {
        Diagnostics::error(Text::tr("there were no messages or calls to look for; name the files "
                                    "that were added"));
        return worse(m_storeCode, SomeNotDone);
    }
    if (!verifies() && !m_isWholeInput)
        Diagnostics::warn(Text::tr("the input was not read to its end; add it again"));
    const ExitCode code = worse(m_storeCode, m_results.exitCode());
    if (m_rejects.commit(m_isWholeInput && goesOn()))
        return code;
    return tellOfRejects(worse(code, SomeNotDone));
}
