// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "listing.h"
#include "options/command.h"
#include "store/historyrequest.h"
#include "store/storeaccess.h"

#include "formats/jsonline.h"
#include "model/datetext.h"
#include "model/storedmessage.h"
#include "process/diagnostics.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

#include <QtCore/QHash>

using namespace KorvaSyncIf;

namespace {

//! What is told of a conversation.
struct Conversation
{
    int id = -1;
    QString party; //!< of the newest message, as it is meant
    qint64 messages = 0;
    qint64 unread = 0;
    QDateTime time; //!< of the newest message
    QString words;  //!< with which the newest message begins
};

QString firstWords(const QString &body)
{
    constexpr int most = 40;
    constexpr int enough = 5 * most; // of a long body; the rest may be blanks
    QString text = body.left(enough).simplified();
    if (text.size() <= most && body.size() <= enough)
        return text;
    const auto end = text.lastIndexOf(QLatin1Char(' '), most);
    QString words = text.left(end > 0 ? end : most);
    if (!words.isEmpty() && words.at(words.size() - 1).isHighSurrogate())
        words.chop(1);
    return words + QChar(0x2026);
}

Conversation begunWith(const HistoryItem &newest)
{
    const StoredMessage message = StoredMessage::fromItem(newest);
    Conversation conversation;
    conversation.id = newest.conversation;
    conversation.party = message.number;
    conversation.time = message.time;
    conversation.words = firstWords(message.body);
    return conversation;
}

Answer readConversations(const Invocation &invocation, HistoryFilter filter,
                         QList<Conversation> *conversations)
{
    filter.order = HistoryFilter::Order::NewestFirst; // so each is met at its newest message
    QHash<int, int> places;
    return HistoryRequest::forEach(invocation.global.timeout, filter, [&](const HistoryItem &item) {
        if (item.conversation == -1)
            return true;
        const auto known = places.constFind(item.conversation);
        const int place =
            known == places.constEnd() ? static_cast<int>(conversations->size()) : known.value();
        if (known == places.constEnd()) {
            places.insert(item.conversation, place);
            *conversations += begunWith(item);
        }
        Conversation &conversation = (*conversations)[place];
        ++conversation.messages;
        conversation.unread += item.isRead ? 0 : 1;
        return true;
    });
}

void printNdjson(const QList<Conversation> &conversations, StandardOutput &output)
{
    for (const Conversation &conversation : conversations) {
        output.write(JsonLine()
                         .add("id", conversation.id)
                         .addUnlessEmpty("number", conversation.party)
                         .add("messages", conversation.messages)
                         .add("unread", conversation.unread)
                         .addUnlessEmpty("time", DateText::write(conversation.time))
                         .add("words", conversation.words)
                         .line());
    }
}

//! The texts of a line for people, in the order of its columns.
QStringList cellsOf(const Conversation &conversation)
{
    const QString time = DateText::write(conversation.time);
    return {QString::number(conversation.id), time.isEmpty() ? QStringLiteral("-") : time,
            QString::number(conversation.messages),
            conversation.unread == 0 ? QString()
                                     : QLatin1Char('*') + QString::number(conversation.unread),
            terminalText(conversation.party)};
}

void printTable(const QList<Conversation> &conversations, StandardOutput &output)
{
    constexpr qsizetype widest = 20; // longer ones push their own line only
    QList<qsizetype> widths{0, 0, 0, 0, 0};
    for (const Conversation &conversation : conversations) {
        const QStringList cells = cellsOf(conversation);
        for (int i = 0; i < cells.size(); ++i)
            widths[i] = qMax(widths.at(i), qMin<qsizetype>(widest, cells.at(i).size()));
    }
    for (const Conversation &conversation : conversations) {
        const QStringList cells = cellsOf(conversation);
        QString line;
        for (int i = 0; i < cells.size(); ++i) {
            const bool isNumber = i == 0 || i == 2;
            const auto width = static_cast<int>(widths.at(i));
            line +=
                (isNumber ? cells.at(i).rightJustified(width) : cells.at(i).leftJustified(width))
                + QLatin1String("  ");
        }
        output.writeLine(line + terminalText(conversation.words),
                         conversation.unread == 0 ? StandardOutput::Plain : StandardOutput::Bold);
    }
}

ExitCode runConversations(const Invocation &invocation)
{
    Listing listing;
    if (!invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("%1 takes no arguments").arg(QLatin1String("conversations")));
        return UsageError;
    }
    if (!listing.takeFilter(invocation))
        return UsageError;
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    QList<Conversation> conversations;
    const Answer answer = readConversations(invocation, listing.filter, &conversations);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    const bool asJson = invocation.global.format == QLatin1String("ndjson");
    (asJson ? printNdjson : printTable)(conversations, invocation.output);
    return AllDone;
}

} // namespace

Command conversationsCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "conversations",
        "",
        Text::tr("Lists conversations, the newest first."),
        {text("text"), text("ndjson")},
        {
            {text("since"),
             Text::tr("From this time on: 2024-05-01T10:00:00Z, 2024-05-01, today, "
                      "yesterday, 30m, 12h, 7d, 2w or @seconds."),
             text("T")},
            {text("until"), Text::tr("Before this time."), text("T")},
            {text("assume-tz"),
             Text::tr("Time zone of dates, e.g. Europe/Helsinki (default: the system's)."),
             text("ZONE")},
            {text("number"),
             Text::tr("To or from this number, in any spelling, or alphanumeric sender."),
             text("N")},
            {text("number-tail"), Text::tr("To or from any number with the same last 7 digits."),
             text("N")},
        },
        runConversations,
        {Text::tr("A line has the id, time of the newest message, number of messages, of unread "
                  "ones with a star, the other party, and the first words of the newest "
                  "message. Only messages that the options select are looked at. \"korvasync "
                  "list --conversation ID\" lists those of one."),
         {"korvasync conversations --since 7d",
          "korvasync conversations -o ndjson --number +15550100"},
         Text::tr("Exit codes: 0 listed, 2 usage, 3 the store cannot be read, 5 it gave no "
                  "answer.")}};
}
