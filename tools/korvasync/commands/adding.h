// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "command.h"
#include "messages/itemreader.h"
#include "output/progress.h"
#include "output/rejects.h"
#include "output/results.h"
#include "output/terminaltext.h"
#include "process/diagnostics.h"
#include "process/interrupt.h"
#include "store/addingturn.h"
#include "store/duplicateindex.h"
#include "storeaccess.h"

#include <QtCore/QFileInfo>
#include <QtCore/QHash>

struct AddingOptions
{
    enum OnDuplicate { Skip, AddAgain, Refuse };

    OnDuplicate onDuplicate = Skip;
    int chunkSize = 500;
    QString rejects; //!< file for what is refused; empty = none
    ItemReader::Form form = ItemReader::AnyForm;
    QTimeZone localZone; //!< where times without a zone are meant

    //! Takes the options that all who add have.
    //! \param textForm  --from's word for objects between BEGIN: and END: lines
    //! \return false when one is not as it must be, which is told on stderr
    bool take(const Invocation &invocation, const char *textForm);
    static QList<QCommandLineOption> declared(const char *textForm);
};

//! One item of the input: new, or why it is none.
template <typename New>
struct Judged
{
    New item;
    Refusal refusal = Refusal::None;
    QString detail;                   //!< instead of the refusal's own words
    Answer answer = Answer::Finished; //!< of the store, where it had to be read for this item
};

//! The work of "add": judges one item of the input after the other and writes them in
//! chunks. A chunk is so many items of the input, whether new or not, so that results come
//! in the order of the input and memory stays bounded.
//!
//! \tparam Kind  what is added, AddableItems or AddableCalls:
//!   - New, an item with its fingerprint, database id and trouble
//!   - index, what the store holds, which readStore() fills
//!   - judge() for an item of a file; noItem, the code for a file that has none
//!   - add() for new items, which it enters in the index; notStored(), the code of one it lost
template <typename Kind>
class Adding
{
public:
    Adding(const Invocation &invocation, const AddingOptions &options, Kind &kind)
        : invocation(invocation)
        , options(options)
        , kind(kind)
        , results(invocation.output, ItemResult::Added,
                  invocation.global.format == QLatin1String("ndjson"))
        , turn(invocation.location)
        , rejects(invocation.global.dryRun ? QString() : options.rejects)
        , progress(invocation.global.progress)
    {
    }

    ExitCode run(const QStringList &files);

private:
    using New = typename Kind::New;

    struct Item
    {
        ItemResult result;
        int newIndex = -1; // in newItems, -1 = not to be added
        QByteArray bytes;  // of a refused one, when rejects are wanted
    };

    ExitCode readStore();
    void addFile(const QString &path);
    void noteFileWithoutItems(const QString &path, const ItemReader &reader);
    void judge(const InputItem &item, ItemResult result);
    bool isDuplicate(const Fingerprint &fingerprint, int countInFile);
    void refuse(const ItemResult &result, Refusal refusal, const QByteArray &bytes = QByteArray());
    void append(const Item &item);
    void writeChunk();
    void settleFates();
    bool goesOn() const;
    ExitCode tellOfRejects(ExitCode code) const;
    ExitCode finish();

    const Invocation &invocation;
    const AddingOptions options;
    Kind &kind;
    Results results;
    AddingTurn turn;
    Rejects rejects;
    Progress progress;

    QList<Item> items;   // the chunk in hand
    QList<New> newItems; // of the chunk
    QHash<Fingerprint, int> newCounts;
    int nextRef = 0;
    qint64 bytesTotal = 0; // of all files; 0 = not known
    qint64 bytesDone = 0;
    ExitCode trouble = AllDone; // the store's
};

template <typename Kind>
ExitCode Adding<Kind>::run(const QStringList &files)
{
    if (!rejects.open())
        return tellOfRejects(UsageError);
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

// Without a finished read of the store it could not be told what is new, so nothing is
// added then.
template <typename Kind>
ExitCode Adding<Kind>::readStore()
{
    if (const ExitCode code = StoreAccess::requirePlace(invocation.location))
        return code;
    if (!invocation.global.dryRun && options.onDuplicate != AddingOptions::AddAgain) {
        const Answer answer = turn.take(invocation.global.timeout);
        if (answer != Answer::Finished)
            return StoreAccess::complain(invocation.location, answer);
    }
    if (invocation.location.state() == StoreLocation::Absent)
        return AllDone;
    return StoreAccess::complain(invocation.location, kind.readStore());
}

template <typename Kind>
bool Adding<Kind>::goesOn() const
{
    return trouble == AllDone && Interrupt::signalNumber() == 0
        && invocation.output.error().isEmpty();
}

template <typename Kind>
void Adding<Kind>::addFile(const QString &path)
{
    ItemReader reader(path, options.form);
    kind.index.beginFile();
    bool hasItems = false;
    const qint64 before = bytesDone;
    while (goesOn()) {
        const auto item = reader.next();
        if (!item)
            break;
        hasItems = true;
        ItemResult result;
        result.source = path + QLatin1Char(':') + QString::number(item->line);
        judge(*item, result);
        bytesDone = before + reader.bytesRead();
    }
    bytesDone = before + reader.bytesRead();
    if (!goesOn())
        return;
    if (!reader.error().isEmpty()) {
        ItemResult result;
        result.source = path;
        result.detail = reader.error();
        refuse(result, Refusal::Unreadable);
    } else if (!hasItems) {
        noteFileWithoutItems(path, reader);
    }
}

// An empty file is what a list of nothing gives: there is nothing to do.
template <typename Kind>
void Adding<Kind>::noteFileWithoutItems(const QString &path, const ItemReader &reader)
{
    if (reader.isEmpty() || reader.isEmptyBackup()) {
        Diagnostics::warn(QStringLiteral("%1 is empty").arg(terminalText(path)));
        return;
    }
    ItemResult result;
    result.source = path + QLatin1String(":1");
    if (options.form == ItemReader::AndroidXml)
        result.detail = QStringLiteral("not an Android backup, as --from says");
    refuse(result, Kind::noItem);
}

template <typename Kind>
void Adding<Kind>::judge(const InputItem &item, ItemResult result)
{
    const Judged<New> judged = kind.judge(item);
    if (judged.answer != Answer::Finished) {
        trouble = StoreAccess::complain(invocation.location, judged.answer);
        return;
    }
    result.detail = judged.detail;
    if (item.isTooLong)
        result.detail = QStringLiteral("longer than 32 MiB, so not kept");
    else if (item.kind == InputItem::CutBackup)
        result.detail = QStringLiteral("the file is cut off here, so some may be missing");
    const QByteArray &bytes = item.bytes;
    if (judged.refusal != Refusal::None)
        return refuse(result, judged.refusal, bytes);
    const Fingerprint &fingerprint = judged.item.fingerprint;
    const int count = kind.index.countInFile(fingerprint);
    if (options.onDuplicate != AddingOptions::AddAgain && isDuplicate(fingerprint, count)) {
        result.id = kind.index.storedId(fingerprint, count);
        if (options.onDuplicate == AddingOptions::Refuse)
            return refuse(result, Refusal::Duplicate, bytes);
        result.status = ItemResult::Present;
        append({result, -1, QByteArray()});
        return;
    }
    newItems += judged.item;
    ++newCounts[fingerprint];
    append({result, static_cast<int>(newItems.size()) - 1, QByteArray()});
}

// An equal item of an earlier file that is still in the chunk is waited for: only when it
// is stored is this one its duplicate.
template <typename Kind>
bool Adding<Kind>::isDuplicate(const Fingerprint &fingerprint, int countInFile)
{
    const int stored = kind.index.storedCount(fingerprint);
    if (countInFile > stored && countInFile <= stored + newCounts.value(fingerprint))
        writeChunk();
    return countInFile <= kind.index.storedCount(fingerprint);
}

template <typename Kind>
void Adding<Kind>::refuse(const ItemResult &result, Refusal refusal, const QByteArray &bytes)
{
    Item item{result, -1, rejects.isWanted() ? bytes : QByteArray()};
    item.result.status = ItemResult::Refused;
    item.result.refusal = refusal;
    append(item);
}

template <typename Kind>
void Adding<Kind>::append(const Item &item)
{
    items += item;
    items.last().result.ref = nextRef++;
    if (items.size() >= options.chunkSize)
        writeChunk();
}

template <typename Kind>
void Adding<Kind>::writeChunk()
{
    if (items.isEmpty())
        return;
    if (invocation.global.dryRun) {
        for (const New &item : std::as_const(newItems))
            kind.index.addStored(item.fingerprint, -1);
    } else if (!newItems.isEmpty()) {
        trouble = worse(trouble, StoreAccess::complain(invocation.location, kind.add(newItems)));
    }
    settleFates();
    for (const Item &item : std::as_const(items)) {
        results.report(item.result);
        if (item.result.status == ItemResult::Refused)
            rejects.add(item.result, item.bytes);
    }
    items.clear();
    newItems.clear();
    newCounts.clear();
    invocation.output.flush();
    std::optional<double> part;
    if (bytesTotal > 0)
        part = static_cast<double>(bytesDone) / static_cast<double>(bytesTotal);
    progress.show(results.count(), part);
}

template <typename Kind>
void Adding<Kind>::settleFates()
{
    for (Item &item : items) {
        if (item.newIndex == -1)
            continue;
        const New &added = newItems.at(item.newIndex);
        item.result.id = added.id;
        item.result.status = added.trouble.isEmpty() ? ItemResult::Added : ItemResult::Failed;
        if (!added.trouble.isEmpty()) {
            item.result.refusal = Kind::notStored(added);
            item.result.detail = added.trouble;
        }
    }
}

template <typename Kind>
ExitCode Adding<Kind>::tellOfRejects(ExitCode code) const
{
    Diagnostics::error(QStringLiteral("%1 cannot be written: %2; name another with --rejects")
                           .arg(terminalText(options.rejects), rejects.errorText()));
    return code;
}

template <typename Kind>
ExitCode Adding<Kind>::finish()
{
    progress.end();
    if (invocation.global.quiet == 0)
        results.printSummary();
    results.warnOfRefusals();
    const ExitCode code = worse(trouble, results.exitCode());
    return rejects.commit() ? code : tellOfRejects(worse(code, SomeNotDone));
}
