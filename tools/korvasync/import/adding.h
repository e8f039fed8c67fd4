// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "judging.h"
#include "process/interrupt.h"
#include "process/progress.h"
#include "process/text.h"
#include "rejects.h"
#include "store/duplicateindex.h"
#include "store/storeaccess.h"
#include "store/storeturn.h"

#include <QtCore/QHash>

struct AddingOptions : ReadingOptions
{
    enum OnDuplicate { Skip, AddAgain, Refuse };

    OnDuplicate onDuplicate = Skip;
    int chunkSize = 500;
    QString rejects; //!< file for what is refused; empty = none

    //! Takes the options that all who add have.
    //! \param textForm  --from's word for objects between BEGIN: and END: lines
    //! \return false when one is not as it must be, which is told on stderr
    bool take(const Invocation &invocation, const char *textForm);
    static QList<QCommandLineOption> declared(const char *textForm);
};

//! The work of "add": writes the new ones of the items that Judging hands out in chunks. A chunk is
//! so many items of the input, whether new or not, or fewer where they are long, so that results
//! come in the order of the input and memory stays bounded.
//!
//! \tparam Kind  what is added, as for Judging:
//!   - New has database id and trouble as well
//!   - index, what the store holds, which readStore() fills
//!   - probe(), whether the store can still be read
//!   - add() for new items, which it enters in the index if equal ones are looked for;
//!     notStored(), the code of one it lost
template <typename Kind>
class Adding
{
public:
    Adding(const Invocation &invocation, const AddingOptions &options, Kind &kind,
           FilesAhead &files)
        : invocation(invocation)
        , options(options)
        , kind(kind)
        , judging(kind, options.form, files)
        , results(invocation.output, ItemResult::Added,
                  invocation.global.format == QLatin1String("ndjson"))
        , turn(invocation.location)
        , rejects(invocation.global.dryRun ? QString() : options.rejects)
        , progress(invocation.global.progress)
    {
    }

    ExitCode run();

private:
    using New = typename Kind::New;

    struct Item
    {
        ItemResult result;
        int newIndex = -1;       // in newItems, -1 = not to be added
        QByteArray bytes = {};   // when rejects are wanted and it can become one
        bool isLeftover = false; // of earlier rejects, and has no result
    };

    ExitCode readStore();
    void take(ItemResult result, const Judged<New> &judged, const QByteArray &bytes);
    std::optional<int> idOfEqual(const Judged<New> &judged);
    bool isDuplicate(const Fingerprint &fingerprint, int countInFile);
    void refuse(const ItemResult &result, Refusal refusal, const QByteArray &bytes);
    void append(Item item, const QByteArray &bytes);
    void hold(Item item, const QByteArray &bytes);
    void keep(const QByteArray &leftovers);
    void writeChunk();
    void checkStore();
    void settleFates();
    bool goesOn() const;
    ExitCode tellOfRejects(ExitCode code) const;
    ExitCode finish();

    const Invocation &invocation;
    const AddingOptions options;
    Kind &kind;
    Judging<Kind> judging;
    Results results;
    StoreTurn turn;
    Rejects rejects;
    Progress progress;

    QList<Item> items;   // the chunk in hand
    QList<New> newItems; // of the chunk
    QHash<Fingerprint, int> newCounts;
    qint64 bytesHeld = 0; // of the chunk, about
    int nextRef = 0;
    bool hasStore = false;
    ExitCode trouble = AllDone; // the store's
    bool isWholeInput = true;
};

template <typename Kind>
ExitCode Adding<Kind>::run()
{
    if (!rejects.open())
        return tellOfRejects(UsageError);
    if (const ExitCode code = readStore())
        return code;
    isWholeInput = judging.run([this] { return goesOn(); },
                               [this](const ItemResult &result, const Judged<New> &judged,
                                      const QByteArray &bytes) { take(result, judged, bytes); },
                               [this](const QByteArray &leftovers) { keep(leftovers); });
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
    hasStore = true;
    return StoreAccess::complain(invocation.location, kind.readStore());
}

template <typename Kind>
bool Adding<Kind>::goesOn() const
{
    return trouble == AllDone && Interrupt::signalNumber() == 0
        && invocation.output.error().isEmpty();
}

template <typename Kind>
void Adding<Kind>::take(ItemResult result, const Judged<New> &judged, const QByteArray &bytes)
{
    if (judged.answer != Answer::Finished) {
        trouble = StoreAccess::complain(invocation.location, judged.answer);
        return;
    }
    if (judged.refusal != Refusal::None)
        return refuse(result, judged.refusal, bytes);
    // One with a time takes the place of an equal one without, which may stand in the same file.
    if (judged.atAnyTime && judged.hasOwnTime)
        kind.index.countInFile(*judged.atAnyTime);
    if (const std::optional<int> storedId = idOfEqual(judged)) {
        result.id = *storedId;
        if (options.onDuplicate == AddingOptions::Refuse)
            return refuse(result, Refusal::Duplicate, bytes);
        result.status = ItemResult::Present;
        return append({result}, QByteArray());
    }
    newItems += judged.item;
    ++newCounts[judged.item.fingerprint];
    if (judged.atAnyTime)
        ++newCounts[*judged.atAnyTime];
    if (judged.item.exported)
        ++newCounts[*judged.item.exported];
    append({result, static_cast<int>(newItems.size()) - 1}, bytes);
}

//! The database id of the stored item that this one is; nothing when it is to be added.
template <typename Kind>
std::optional<int> Adding<Kind>::idOfEqual(const Judged<New> &judged)
{
    const auto own = judged.hasOwnTime ? std::optional(judged.item.fingerprint) : judged.atAnyTime;
    for (const auto &fingerprint : {own, judged.alternative}) {
        if (!fingerprint || options.onDuplicate == AddingOptions::AddAgain)
            continue;
        const int count = kind.index.countInFile(*fingerprint);
        if (isDuplicate(*fingerprint, count))
            return kind.index.storedId(*fingerprint, count);
    }
    return std::nullopt;
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
    Item item{result};
    item.result.status = ItemResult::Refused;
    item.result.refusal = refusal;
    if (bytes.isEmpty())
        rejects.leaveIn(judging.path());
    append(item, bytes);
}

template <typename Kind>
void Adding<Kind>::append(Item item, const QByteArray &bytes)
{
    constexpr qint64 mostHeld = qint64(4) * 1024 * 1024;
    item.result.ref = nextRef++;
    hold(item, bytes);
    if (items.size() >= options.chunkSize || bytesHeld >= mostHeld)
        writeChunk();
}

//! Takes an item into the chunk, and its bytes along if they may be needed.
template <typename Kind>
void Adding<Kind>::hold(Item item, const QByteArray &bytes)
{
    if (rejects.isWanted())
        item.bytes = bytes;
    if (rejects.isWanted() || item.newIndex != -1)
        bytesHeld += bytes.size();
    items += item;
}

//! \param leftovers  empty = there are some that only the file in hand has
template <typename Kind>
void Adding<Kind>::keep(const QByteArray &leftovers)
{
    if (leftovers.isEmpty())
        rejects.leaveIn(judging.path());
    else
        hold(Item{ItemResult(), -1, {}, true}, leftovers);
}

template <typename Kind>
void Adding<Kind>::writeChunk()
{
    if (items.isEmpty())
        return;
    if (invocation.global.dryRun) {
        if (options.onDuplicate != AddingOptions::AddAgain) {
            for (auto count = newCounts.cbegin(); count != newCounts.cend(); ++count) {
                for (int i = 0; i < count.value(); ++i)
                    kind.index.addStored(count.key(), -1);
            }
        }
    } else if (!newItems.isEmpty()) {
        trouble = worse(trouble, StoreAccess::complain(invocation.location, kind.add(newItems)));
        hasStore = true;
    }
    checkStore();
    settleFates();
    for (const Item &item : std::as_const(items)) {
        if (item.isLeftover) {
            rejects.keep(item.bytes);
            continue;
        }
        results.report(item.result);
        if (item.result.status == ItemResult::Refused || item.result.status == ItemResult::Failed)
            rejects.add(item.result, item.bytes);
    }
    items.clear();
    newItems.clear();
    newCounts.clear();
    bytesHeld = 0;
    invocation.output.flush();
    progress.show(results.count(), [this] { return judging.partDone(); });
}

// The store can be moved or replaced at any time. What was found in it before, and is reported as
// present, is then nowhere to be found.
template <typename Kind>
void Adding<Kind>::checkStore()
{
    if (hasStore && trouble == AllDone)
        trouble = StoreAccess::complain(invocation.location, kind.probe());
}

template <typename Kind>
void Adding<Kind>::settleFates()
{
    for (Item &item : items) {
        if (item.result.status == ItemResult::Present && trouble != AllDone) {
            item.result.status = ItemResult::Failed;
            item.result.id = -1;
            item.result.refusal = Kind::notStored(New());
            item.result.detail = Text::reason("not known, as the store cannot be read back");
        }
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
    Diagnostics::error(Text::tr("%1 cannot be written: %2; name another with --rejects")
                           .arg(rejects.place(), rejects.errorText()));
    return code;
}

template <typename Kind>
ExitCode Adding<Kind>::finish()
{
    progress.end();
    if (isWholeInput)
        results.notePassedOver(judging.passedOver());
    if (invocation.global.quiet == 0)
        results.printSummary(isWholeInput);
    results.warnOfRefusals();
    if (!isWholeInput)
        Diagnostics::warn(Text::tr("the input was not read to its end; add it again"));
    const ExitCode code = worse(trouble, results.exitCode());
    if (rejects.commit(isWholeInput && goesOn()))
        return code;
    return tellOfRejects(worse(code, SomeNotDone));
}
