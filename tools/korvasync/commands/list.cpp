// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/messageformats.h"
#include "model/folder.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/interrupt.h"
#include "shared/number.h"
#include "shared/text.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>
#include <limits>

using namespace KorvaSyncIf;

namespace {

//! Which messages are wanted.
struct Selection
{
    QList<LocationId> folders = Folder::all();
    QDateTime since;
    QDateTime modifiedSince;
    std::optional<QString> number; //!< comparable
    QRegularExpression body;
    int limit = std::numeric_limits<int>::max();
    bool keepsVMessages = false; //!< which take more room than all else of a message

    bool take(const Invocation &invocation);
    bool accepts(const StoredMessage &message);

    int undecided = 0; //!< texts at which the search for the expression was given up
    bool matches(const QString &text);
};

bool Selection::take(const Invocation &invocation)
{
    const QTimeZone &zone = invocation.global.localZone;
    if (!Arguments::takeTime(invocation.options, "since", zone, since)
        || !Arguments::takeTime(invocation.options, "modified-since", zone, modifiedSince,
                                DateText::RoundDown)
        || !Arguments::takeNumber(invocation.options, "limit", 0, limit, limit))
        return false;
    const QString folder = invocation.value("folder");
    if (invocation.isSet("folder") && folder != QLatin1String("all")) {
        const auto location = Folder::byName(folder);
        if (!location) {
            Diagnostics::error(Text::tr("--folder is inbox, outbox, drafts, sent, my or all"));
            return false;
        }
        folders = {*location};
    }
    if (invocation.isSet("number"))
        number = Number::comparable(invocation.value("number"));
    if (invocation.isSet("grep"))
        body = QRegularExpression(invocation.value("grep"),
                                  QRegularExpression::UseUnicodePropertiesOption);
    if (!body.isValid()) {
        Diagnostics::error(Text::tr("--grep is no regular expression: %1").arg(body.errorString()));
        return false;
    }
    return true;
}

bool Selection::matches(const QString &text)
{
    if (body.pattern().isEmpty())
        return true;
    const QRegularExpressionMatch match = body.match(text);
    if (!match.isValid())
        ++undecided;
    return match.hasMatch();
}

bool Selection::accepts(const StoredMessage &message)
{
    return folders.contains(static_cast<LocationId>(message.folder))
        && (since.isNull() || (message.time.isValid() && message.time >= since))
        && (!number || Number::comparable(message.number) == number) && matches(message.body);
}

// A read by modification carries that time as the messages' own: only its ids are of use.
Answer readModified(MessageStore &store, Selection &selection, QList<StoredMessage> &messages)
{
    QSet<int> ids;
    for (const LocationId folder : selection.folders) {
        const MessageStore::Read read = store.modifiedMessages(selection.modifiedSince, folder);
        if (read.answer != Answer::Finished)
            return read.answer;
        for (const SyncSmsInfo &record : read.messages)
            ids += record.id;
    }
    const TroubleWatch watch;
    for (const int id : qAsConst(ids)) {
        if (Interrupt::signalNumber() != 0)
            return Answer::Interrupted;
        const StoredMessage message = StoredMessage::fromRecord(store.message(id));
        if (message.id != -1 && selection.accepts(message)) // it may be gone or elsewhere by now
            messages += message;
    }
    // Else messages would be missing without a word.
    return watch.hasTrouble() ? Answer::Refused : Answer::Finished;
}

//! In the order of the list: equal times by id.
bool isOlder(const StoredMessage &a, const StoredMessage &b)
{
    const qint64 first = a.time.isValid() ? a.time.toMSecsSinceEpoch() : 0;
    const qint64 second = b.time.isValid() ? b.time.toMSecsSinceEpoch() : 0;
    return std::tie(first, a.id) < std::tie(second, b.id);
}

void keepNewest(QList<StoredMessage> &messages, int limit)
{
    if (messages.size() <= limit)
        return;
    std::nth_element(messages.begin(), messages.end() - limit, messages.end(), isOlder);
    messages = messages.mid(messages.size() - limit);
}

Answer readFolders(MessageStore &store, Selection &selection, QList<StoredMessage> &messages)
{
    constexpr int fewest = 1000; // to look through at a time
    return store.forEach(selection.folders, selection.since, [&](const StoredMessage &message) {
        if (!selection.accepts(message))
            return;
        messages += message;
        if (!selection.keepsVMessages)
            messages.last().vMessage.clear();
        if (messages.size() - selection.limit > qMax(selection.limit, fewest))
            keepNewest(messages, selection.limit);
    });
}

//! What is wrong with the command line; empty = nothing.
QString misuse(const Invocation &invocation)
{
    const bool idsOnly = invocation.isSet("ids");
    const bool countOnly = invocation.isSet("count");
    const QString &format = invocation.global.format;
    const bool hasForm = format != QLatin1String("text") && format != QLatin1String("ndjson");
    if (!invocation.arguments.isEmpty())
        return Text::tr("list takes no arguments; --number and --grep look for messages");
    if (idsOnly && countOnly)
        return Text::tr("--ids and --count exclude each other");
    if (hasForm && (idsOnly || countOnly))
        return Text::tr("--%1 and -o %2 exclude each other")
            .arg(QLatin1String(idsOnly ? "ids" : "count"), format);
    return QString();
}

ExitCode runList(const Invocation &invocation)
{
    const bool idsOnly = invocation.isSet("ids");
    const bool countOnly = invocation.isSet("count");
    const QString &format = invocation.global.format;
    const bool isTable = format == QLatin1String("text");
    Selection selection;
    const QString wrong = misuse(invocation);
    if (!wrong.isEmpty())
        Diagnostics::error(wrong);
    if (!wrong.isEmpty() || !selection.take(invocation))
        return UsageError;
    selection.keepsVMessages = format == QLatin1String("vmsg");
    MessageStore store(invocation.global.timeout);
    if (const ExitCode code = StoreAccess::requireReadable(invocation.location, store))
        return code;
    QList<StoredMessage> messages;
    const auto read = selection.modifiedSince.isNull() ? readFolders : readModified;
    const Answer answer = read(store, selection, messages);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    keepNewest(messages, selection.limit);
    std::sort(messages.begin(), messages.end(), isOlder);
    if (countOnly) {
        invocation.output.write(QByteArray::number(messages.size()) + '\n');
    } else if (idsOnly) {
        for (const StoredMessage &message : messages)
            invocation.output.write(QByteArray::number(message.id) + '\n');
    } else if (isTable) {
        MessageFormats::printTable(messages, invocation.output);
    } else {
        MessageFormats::print(messages, format, invocation.output);
    }
    if (selection.undecided == 0)
        return AllDone;
    Diagnostics::warn(Text::tr("%n not listed, as --grep is too hard to decide for them; a simpler "
                               "expression is without repeats in repeats",
                               nullptr, selection.undecided));
    return SomeNotDone;
}

} // namespace

Command listCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {"list",
            "",
            Text::tr("Lists messages, oldest first."),
            {text("text"), text("ndjson"), text("vmsg"), text("csv"), text("mbox"),
             text("android-xml")},
            {
                {text("folder"), Text::tr("inbox, outbox, drafts, sent, my or all (default)."),
                 text("F")},
                {text("since"),
                 Text::tr("From this time on: 2024-05-01T10:00:00Z, 2024-05-01 or @seconds."),
                 text("T")},
                {text("modified-since"), Text::tr("Added or changed after this time."), text("T")},
                {text("number"),
                 Text::tr("To or from this number (its last 7 digits) or alphanumeric sender."),
                 text("N")},
                {text("grep"), Text::tr("With a text that matches this regular expression."),
                 text("RE")},
                {text("limit"), Text::tr("Only the newest N."), text("N")},
                {text("ids"), Text::tr("Print only the ids.")},
                {text("count"), Text::tr("Print only how many there are.")},
            },
            runList,
            {{},
             {"korvasync list --folder inbox --since 2024-05-01 --limit 20",
              "korvasync list -o vmsg > all.vmsg"},
             Text::tr("Exit codes: 0 listed, 1 --grep could not be decided for some, 2 usage, 3 "
                      "the store cannot be read, 5 it gave no answer.")}};
}
