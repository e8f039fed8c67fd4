// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "listing.h"
#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/messageformats.h"
#include "model/folder.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/text.h"

#include <QtCore/QRegularExpression>

#include <korvasync/vmessageencoder.h>

#include <limits>
#include <optional>

using namespace KorvaSyncIf;

namespace {

//! Which messages are wanted.
struct Selection
{
    Listing listing;
    int undecided = 0; //!< texts at which the search for the expression was given up

    bool take(const Invocation &invocation);

private:
    bool takeExpression(const Invocation &invocation);
    bool takeFolder(const Invocation &invocation);
    bool matches(const QRegularExpression &body, const QString &text);
};

bool Selection::takeExpression(const Invocation &invocation)
{
    QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    if (invocation.isSet("ignore-case"))
        options |= QRegularExpression::CaseInsensitiveOption;
    const QRegularExpression body(invocation.value("grep").normalized(QString::NormalizationForm_C),
                                  options);
    if (!body.isValid())
        Diagnostics::error(Text::tr("--grep is no regular expression: %1").arg(body.errorString()));
    else if (!body.pattern().isEmpty())
        listing.condition = [this, body](const HistoryItem &item) {
            return matches(body, item.text);
        };
    return body.isValid();
}

bool Selection::takeFolder(const Invocation &invocation)
{
    const QString folder = invocation.value("folder");
    if (!invocation.isSet("folder") || folder == QLatin1String("all"))
        return true;
    const auto location = Folder::byName(folder);
    if (!location) {
        Diagnostics::error(Text::tr("--folder is inbox, outbox, drafts, sent, my or all"));
        return false;
    }
    listing.filter.folders = {*location};
    return true;
}

bool Selection::take(const Invocation &invocation)
{
    HistoryFilter &filter = listing.filter;
    filter.unreadOnly = invocation.isSet("unread");
    return listing.takeOptions(invocation)
        && Arguments::takeTime(invocation.options, "modified-since", listing.zone,
                               filter.modifiedSince, DateText::RoundDown)
        && takeExpression(invocation)
        && Arguments::takeNumber(invocation.options, "conversation", 1,
                                 std::numeric_limits<int>::max(), filter.conversation)
        && takeFolder(invocation);
}

bool Selection::matches(const QRegularExpression &body, const QString &text)
{
    const QRegularExpressionMatch match = body.match(text.normalized(QString::NormalizationForm_C));
    if (!match.isValid())
        ++undecided;
    return match.hasMatch();
}

//! Prints messages as they come. Forms that begin with what only the last message decides wait for
//! the end.
class Printer
{
public:
    //! \param zone  of the times in text output; nothing = UTC
    Printer(const Invocation &invocation, const std::optional<QTimeZone> &zone)
        : m_output(invocation.output)
        , m_format(invocation.global.format)
        , m_idsOnly(invocation.isSet("ids"))
        , m_isStreamed(m_format == QLatin1String("ndjson") || needsVMessages())
        , m_zone(zone)
    {
    }

    void print(const HistoryItem &item)
    {
        if (m_idsOnly) {
            m_output.write(QByteArray::number(item.id) + '\n');
            return;
        }
        StoredMessage message = StoredMessage::fromItem(item);
        if (needsVMessages())
            message.vMessage = m_encoder.encode(item.toSmsInfo()).vMessage;
        m_waiting += message;
        constexpr int portion = 500;
        if (m_isStreamed && m_waiting.size() >= portion)
            flush();
    }

    void end()
    {
        if (m_idsOnly)
            return;
        if (m_format == QLatin1String("text"))
            MessageFormats::printTable(m_waiting, m_output, m_zone);
        else
            flush();
    }

private:
    bool needsVMessages() const { return m_format == QLatin1String("vmsg"); }

    void flush()
    {
        MessageFormats::print(m_waiting, m_format, m_output);
        m_waiting.clear();
    }

    StandardOutput &m_output;
    const QString m_format;
    const bool m_idsOnly;
    const bool m_isStreamed;
    const std::optional<QTimeZone> m_zone;
    VMessageEncoder m_encoder;
    QList<StoredMessage> m_waiting;
};

//! What is wrong with the command line; empty = nothing.
QString misuse(const Invocation &invocation)
{
    const bool idsOnly = invocation.isSet("ids");
    const bool countOnly = invocation.isSet("count");
    const QString &format = invocation.global.format;
    const bool isLocal = invocation.isSet("local");
    const bool hasForm = format != QLatin1String("text") && format != QLatin1String("ndjson");
    if (!invocation.arguments.isEmpty())
        return Text::tr("list takes no arguments; --number and --grep look for messages");
    if (idsOnly && countOnly)
        return Text::tr("--ids and --count exclude each other");
    if (isLocal && (idsOnly || countOnly))
        return Text::tr("--local and --%1 exclude each other")
            .arg(QLatin1String(idsOnly ? "ids" : "count"));
    if (isLocal && format != QLatin1String("text"))
        return Text::tr("--%1 and -o %2 exclude each other").arg(QLatin1String("local"), format);
    if (hasForm && (idsOnly || countOnly))
        return Text::tr("--%1 and -o %2 exclude each other")
            .arg(QLatin1String(idsOnly ? "ids" : "count"), format);
    return QString();
}

Answer printMessages(const Invocation &invocation, const Listing &listing)
{
    std::optional<QTimeZone> zone;
    if (invocation.isSet("local"))
        zone = listing.zone;
    Printer printer(invocation, zone);
    const Answer answer =
        listing.read(invocation, [&](const HistoryItem &item) { printer.print(item); });
    if (answer == Answer::Finished)
        printer.end();
    return answer;
}

ExitCode runList(const Invocation &invocation)
{
    Selection selection;
    const QString wrong = misuse(invocation);
    if (!wrong.isEmpty())
        Diagnostics::error(wrong);
    if (!wrong.isEmpty() || !selection.take(invocation))
        return UsageError;
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    const Answer answer = invocation.isSet("count") ? selection.listing.printCount(invocation)
                                                    : printMessages(invocation, selection.listing);
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
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
                 Text::tr("From this time on: 2024-05-01T10:00:00Z, 2024-05-01, today, "
                          "yesterday, 30m, 12h, 7d, 2w or @seconds."),
                 text("T")},
                {text("modified-since"), Text::tr("Added or changed after this time."), text("T")},
                {text("until"), Text::tr("Before this time."), text("T")},
                {text("assume-tz"),
                 Text::tr("Time zone of dates, e.g. Europe/Helsinki (default: the system's)."),
                 text("ZONE")},
                {text("local"),
                 Text::tr("Show times in the time zone of --assume-tz or the system's, not in UTC "
                          "(text output only).")},
                {text("number"),
                 Text::tr("To or from this number, in any spelling, or alphanumeric sender."),
                 text("N")},
                {text("number-tail"),
                 Text::tr("To or from any number with the same last 7 digits."), text("N")},
                {text("conversation"), Text::tr("Of this conversation, by its id."), text("ID")},
                {text("unread"), Text::tr("Only what is unread.")},
                {text("grep"), Text::tr("With a text that matches this regular expression."),
                 text("RE")},
                {QStringList{text("i"), text("ignore-case")},
                 Text::tr("Let --grep match upper case with lower case.")},
                {text("limit"), Text::tr("Only the newest N."), text("N")},
                {text("ids"), Text::tr("Print only the ids.")},
                {text("count"), Text::tr("Print only how many there are.")},
            },
            runList,
            {{},
             {"korvasync list --folder inbox --since 2024-05-01 --limit 20",
              "korvasync list --since yesterday --unread", "korvasync list -o vmsg > all.vmsg"},
             Text::tr("Exit codes: 0 listed, 1 --grep could not be decided for some, 2 usage, 3 "
                      "the store cannot be read, 5 it gave no answer.")}};
}
