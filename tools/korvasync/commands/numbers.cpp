// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/jsonline.h"
#include "model/folder.h"
#include "model/numberfindings.h"
#include "process/diagnostics.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

#include <QtCore/QMap>

namespace {

struct Wording
{
    const char *word;
    const char *sentence;
};

Wording wordingOf(NumberFinding::Kind kind)
{
    switch (kind) {
    case NumberFinding::DifferentNumbers:
        return {"different-numbers",
                QT_TRANSLATE_NOOP("Text", "different numbers with this end share a conversation")};
    case NumberFinding::EndOfOthers:
        return {"end-of-others",
                QT_TRANSLATE_NOOP("Text", "others end with it and can get its messages")};
    case NumberFinding::Pattern:
        return {"pattern",
                QT_TRANSLATE_NOOP(
                    "Text", "signs in it are read as a pattern; others can get its messages")};
    case NumberFinding::Spellings:
        return {"spellings",
                QT_TRANSLATE_NOOP("Text", "spellings of one number share a conversation")};
    }
    Q_UNREACHABLE();
}

QByteArray ndjson(const NumberFinding &finding)
{
    QByteArray lines;
    for (const NumberFinding::Member &member : finding.members) {
        lines += JsonLine()
                     .add("finding", QLatin1String(wordingOf(finding.kind).word))
                     .add("tail", finding.tail)
                     .add("number", member.number)
                     .add("messages", member.messages)
                     .line();
    }
    return lines;
}

QByteArray text(const NumberFinding &finding)
{
    constexpr int countWidth = 8;
    QByteArray lines = terminalText(finding.tail).toUtf8() + ": "
        + Text::tr(wordingOf(finding.kind).sentence).toUtf8() + '\n';
    for (const NumberFinding::Member &member : finding.members) {
        lines += QByteArray::number(member.messages).rightJustified(countWidth) + "  "
            + terminalText(member.number).toUtf8() + '\n';
    }
    return lines;
}

ExitCode runNumbers(const Invocation &invocation)
{
    if (!invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("%1 takes no arguments").arg(QLatin1String("numbers")));
        return UsageError;
    }
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    NumberFindings findings;
    MessageStore store(invocation.global.timeout);
    const Answer answer =
        store.forEach(KorvaSyncIf::HistoryFilter(),
                      [&](const StoredMessage &message) { findings.add(message.number); });
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    const bool asJson = invocation.global.format == QLatin1String("ndjson");
    QMap<NumberFinding::Kind, int> totals;
    findings.forEach([&](const NumberFinding &finding) {
        ++totals[finding.kind];
        invocation.output.write(asJson ? ndjson(finding) : text(finding));
    });
    if (invocation.global.quiet > 0)
        return AllDone;
    JsonLine sums;
    sums.add("numbers", findings.numberCount());
    QStringList words{Text::tr("%n numbers", nullptr, findings.numberCount())};
    for (const auto kind : {NumberFinding::DifferentNumbers, NumberFinding::EndOfOthers,
                            NumberFinding::Pattern, NumberFinding::Spellings}) {
        const char *const word = wordingOf(kind).word;
        sums.add(word, totals.value(kind));
        words += QStringLiteral("%1 %2").arg(totals.value(kind)).arg(QLatin1String(word));
    }
    invocation.output.write(asJson ? JsonLine().add("summary", sums).line()
                                   : words.join(QLatin1String(", ")).toUtf8() + '\n');
    return AllDone;
}

} // namespace

Command numbersCommand()
{
    return {
        "numbers",
        "",
        Text::tr("Shows which numbers share a conversation, and which of them should not."),
        {QStringLiteral("text"), QStringLiteral("ndjson")},
        {},
        runNumbers,
        {Text::tr("A message joins the conversation of the last 7 digits of its number, or of its "
                  "alphanumeric sender. While there is none, it joins the first whose number ends "
                  "with them. Findings, the doubtful ones first:\n"
                  "  different-numbers  perhaps two parties, whose numbers end alike\n"
                  "  end-of-others      a short code or sender with which longer ones end: if a\n"
                  "                     longer one came first, it gets the messages of the short\n"
                  "  pattern            a sender with a dot, ^ or $, which can match others\n"
                  "  spellings          one number with and without its prefix: as it should be"),
         {"korvasync numbers",
          "korvasync numbers -q -o ndjson | grep -v '\"finding\":\"spellings\"'"},
         Text::tr("Exit codes: 0 done, with or without findings, 2 usage, 3 the store cannot be "
                  "read, 5 it gave no answer.")}};
}
