// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/messageformats.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/text.h"

namespace {

ExitCode runShow(const Invocation &invocation)
{
    if (invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("show needs an id; \"korvasync list\" shows them"));
        return UsageError;
    }
    const auto ids = Arguments::databaseIds(invocation.arguments);
    if (!ids)
        return UsageError;
    MessageStore store(invocation.global.timeout);
    if (const ExitCode code = StoreAccess::requireReadable(invocation.location, store))
        return code;
    QList<StoredMessage> messages;
    ExitCode code = AllDone;
    for (const int id : *ids) {
        if (Interrupt::signalNumber() != 0)
            break;
        const StoredMessage message = StoredMessage::fromRecord(store.message(id));
        if (message.id != -1) {
            messages += message;
        } else if (invocation.watch.hasTrouble()) {
            code = StoreAccess::complain(invocation.location, Answer::Refused);
            break;
        } else {
            Diagnostics::warn(Text::tr("there is no message %1").arg(id));
            code = IdNotFound;
        }
    }
    if (invocation.global.format == QLatin1String("text"))
        MessageFormats::printPages(messages, invocation.output);
    else
        MessageFormats::print(messages, invocation.global.format, invocation.output);
    return code;
}

} // namespace

Command showCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {"show",
            "ID...",
            Text::tr("Shows messages by id; - reads ids from standard input."),
            {text("vmsg"), text("text"), text("ndjson"), text("csv"), text("mbox"),
             text("android-xml")},
            {},
            runShow,
            {Text::tr("On a terminal the default format is text, and control characters become "
                      "visible signs in every format. In files and pipes they do so only in text."),
             {"korvasync show -o text 812", "korvasync list --ids --grep Hello | korvasync show -"},
             Text::tr("Exit codes: 0 shown, 2 usage, 3 the store cannot be read, 4 an id was not "
                      "found, 5 it gave no answer.")},
            0,
            {},
            true};
}
