// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "options/command.h"
#include "store/historyrequest.h"
#include "store/storeaccess.h"

#include "formats/callformats.h"
#include "formats/jsonline.h"
#include "formats/messageformats.h"
#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/text.h"

using namespace KorvaSyncIf;

namespace {

QLatin1String wordFor(HistoryChange::Kind kind)
{
    switch (kind) {
    case HistoryChange::Kind::Added:
        return QLatin1String("added");
    case HistoryChange::Kind::Changed:
        return QLatin1String("changed");
    case HistoryChange::Kind::Deleted:
        break;
    }
    return QLatin1String("deleted");
}

QByteArray changeLine(const HistoryChange &change)
{
    const HistoryItem &item = change.item;
    const bool isCall = item.kind == HistoryItem::Kind::Call;
    JsonLine json;
    json.add("op", wordFor(change.kind)).add("kind", QLatin1String(isCall ? "call" : "message"));
    if (change.kind == HistoryChange::Kind::Deleted)
        return json.add("id", item.id).line();
    if (isCall)
        return CallFormats::jsonOf(Call::fromItem(item), json.add("id", item.id)).line();
    return MessageFormats::jsonOf(StoredMessage::fromItem(item), json).line();
}

ExitCode complain(const Invocation &invocation, const HistoryRequest::Changes &changes)
{
    if (!changes.isUnknownCursor)
        return StoreAccess::complain(invocation.location, changes.answer);
    Diagnostics::error(Text::tr("the store %1 never gave this cursor, or an older copy of it was "
                                "put back; start anew without one, and compare")
                           .arg(invocation.location.path()));
    return StoreFailed;
}

HistoryRequest::Changes printChanges(const Invocation &invocation, const QString &cursor)
{
    StandardOutput &output = invocation.output;
    return HistoryRequest::changes(invocation.global.timeout, cursor,
                                   [&](const HistoryChange &change) {
                                       output.write(changeLine(change));
                                       return output.error().isEmpty();
                                   });
}

ExitCode runChanges(const Invocation &invocation)
{
    if (invocation.arguments.size() > 1) {
        Diagnostics::error(Text::tr("changes takes one cursor at most"));
        return UsageError;
    }
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    constexpr std::chrono::milliseconds pause(1000);
    QString cursor = invocation.arguments.value(0);
    QString printed;
    while (true) {
        const HistoryRequest::Changes changes = printChanges(invocation, cursor);
        if (changes.answer != Answer::Finished)
            return complain(invocation, changes);
        cursor = changes.cursor;
        if (cursor != printed)
            invocation.output.write(JsonLine().add("cursor", cursor).line());
        printed = cursor;
        if (!invocation.isSet("follow") || !invocation.output.flush())
            return AllDone;
        invocation.output.rest(pause);
        if (Interrupt::signalNumber() != 0)
            return SomeNotDone;
    }
}

} // namespace

Command changesCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "changes",
        "[CURSOR]",
        Text::tr("Prints what was added, changed and deleted since a cursor."),
        {text("ndjson")},
        {{text("follow"), Text::tr("Go on with what happens next, until interrupted.")}},
        runChanges,
        {Text::tr("The last line has the cursor for the next time. Without one, all that is in the "
                  "store counts as added. An item comes once, as it is now, however often it was "
                  "changed; of a deleted one come its kind and id. With --follow a cursor comes "
                  "behind each batch."),
         {"korvasync changes > changes.ndjson",
          "korvasync changes \"$(tail -n 1 changes.ndjson | jq -r .cursor)\"",
          "korvasync changes --follow | jq --unbuffered -c 'select(.op == \"deleted\")'"},
         Text::tr("Exit codes: 0 printed, 2 usage, 3 the store cannot be read or does not know the "
                  "cursor, 5 it gave no answer.")}};
}
