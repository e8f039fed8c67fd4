// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "import/addableitems.h"
#include "options/command.h"

#include "input/inputpaths.h"
#include "model/datetext.h"
#include "options/arguments.h"
#include "process/text.h"

namespace {

//! The work of "korvasync verify": looks up in the store what "korvasync add" would add.
class Verifying
{
public:
    Verifying(const Invocation &invocation, ItemReader::Form form, AddableItems &items,
              FilesAhead &files)
        : invocation(invocation)
        , items(items)
        , judging(items, form, files)
        , results(invocation.output, ItemResult::Present,
                  invocation.global.format == QLatin1String("ndjson"))
        , progress(invocation.global.progress)
    {
    }

    ExitCode run();

private:
    bool goesOn() const;
    void take(ItemResult result, const Judged<NewItem> &judged);

    const Invocation &invocation;
    AddableItems &items;
    Judging<AddableItems> judging;
    Results results;
    Progress progress;
    ExitCode trouble = AllDone; // the store's
};

ExitCode Verifying::run()
{
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    const Answer answer = items.readStore();
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    const bool isWhole = judging.run([this] { return goesOn(); },
                                     [this](const ItemResult &result, const Judged<NewItem> &judged,
                                            const QByteArray &) { take(result, judged); },
                                     [](const QByteArray &) {});
    progress.end();
    if (isWhole)
        results.notePassedOver(judging.passedOver());
    if (invocation.global.quiet == 0)
        results.printSummary(isWhole);
    results.warnOfRefusals();
    const bool foundNothing = isWhole && results.count() == 0;
    if (foundNothing) {
        Diagnostics::error(Text::tr("there were no messages or calls to look for; name the files "
                                    "that were added"));
    }
    return worse(trouble, foundNothing ? SomeNotDone : results.exitCode());
}

bool Verifying::goesOn() const
{
    return trouble == AllDone && Interrupt::signalNumber() == 0
        && invocation.output.error().isEmpty();
}

void Verifying::take(ItemResult result, const Judged<NewItem> &judged)
{
    constexpr int itemsPerShow = 500;
    if (judged.answer != Answer::Finished) {
        trouble = StoreAccess::complain(invocation.location, judged.answer);
        return;
    }
    result.ref = results.count();
    result.refusal = judged.refusal;
    if (judged.refusal == Refusal::None) {
        const auto isStored = [this](const Fingerprint &fingerprint) {
            return items.index.countInFile(fingerprint) <= items.index.storedCount(fingerprint);
        };
        const bool isPresent = isStored(judged.item.fingerprint)
            || (judged.alternative && isStored(*judged.alternative));
        result.status = isPresent ? ItemResult::Present : ItemResult::Missing;
    }
    if (result.status == ItemResult::Present)
        results.note(result);
    else
        results.report(result);
    if (results.count() % itemsPerShow == 0)
        progress.show(results.count(), [this] { return judging.partDone(); });
}

ExitCode runVerify(const Invocation &invocation)
{
    ReadingOptions options;
    SettlingRules rules;
    if (!options.take(invocation, ReadingOptions::MessageForm)
        || !Arguments::takeFolder(invocation.options, "folder", rules.folder))
        return UsageError;
    if (invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("verify needs a file, a folder or -"));
        return UsageError;
    }
    rules.localZone = options.localZone;
    rules.now = DateText::now();
    DuplicateIndex index;
    AddableItems items(invocation, rules, index, AddableMessages::AreFound, AddableItems::AreTaken);
    FilesAhead files([&] { return messageFiles(invocation.arguments); });
    return Verifying(invocation, options.form, items, files).run();
}

} // namespace

Command verifyCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    const QList<QCommandLineOption> options{
        {text("folder"),
         Text::tr(
             "Folder for messages that name none: inbox, outbox, sent or my (drafts are refused)."),
         text("F")},
    };
    return {
        "verify",
        "FILE|DIR|-...",
        Text::tr("Checks that all messages and calls of files are in the store. Adds nothing."),
        {text("text"), text("ndjson")},
        ReadingOptions::declared(ReadingOptions::MessageForm) + options,
        runVerify,
        {Text::tr("Items are read and compared as \"korvasync add\" does it; call-history entries "
                  "are read as well. Each missing or refused item is listed. Give the same --from, "
                  "--assume-tz and --folder as for adding."),
         {"korvasync verify old-phone/",
          "korvasync calls list -o entries | korvasync verify --store /media/store -"},
         Text::tr("Exit codes: 0 everything is there, 1 something is missing or refused, or there "
                  "was nothing to look for, 2 usage, 3 the store cannot be read, 5 it gave no "
                  "answer.")},
        GlobalOptions::ShowsProgress};
}
