// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/countformats.h"
#include "model/folder.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/number.h"
#include "shared/text.h"
#include "store/callstore.h"

#include <QtCore/QHash>

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace {

//! Counts messages or calls as they come.
class Counting
{
public:
    //! \param kinds  what their kind is called: folder or type
    Counting(bool isOfCalls, const char *kinds)
        : m_isOfCalls(isOfCalls)
        , m_kinds(kinds)
    {
    }

    void count(const QString &kind, const QDateTime &time, const QString &number, qint64 amount);
    QList<CountTable> tables(int limit) const;

private:
    using Rows = QHash<QString, CountTable::Row>;
    enum Order { MostFirst, ByKey };

    static void enter(Rows &rows, const QString &key, const QString &shown, qint64 amount);
    CountTable table(const char *by, const Rows &rows, Order order) const;

    const bool m_isOfCalls;
    const char *const m_kinds;
    CountTable::Row m_total;
    Rows m_byKind;
    Rows m_byYear;
    Rows m_byNumber; // by what the spellings of a number have in common
};

void Counting::count(const QString &kind, const QDateTime &time, const QString &number,
                     qint64 amount)
{
    const QString year = time.isValid() ? QString::number(time.date().year()) : QString();
    ++m_total.count;
    m_total.amount += amount;
    enter(m_byKind, kind, kind, amount);
    enter(m_byYear, year, year, amount);
    enter(m_byNumber, Number::comparable(number), number, amount);
}

void Counting::enter(Rows &rows, const QString &key, const QString &shown, qint64 amount)
{
    CountTable::Row &row = rows[key];
    const auto fullness = [](const QString &spelling) { // of a number: the international most
        return std::pair(spelling.startsWith(QLatin1Char('+')), spelling.size());
    };
    if (fullness(shown) > fullness(row.key))
        row.key = shown;
    ++row.count;
    row.amount += amount;
}

CountTable Counting::table(const char *by, const Rows &rows, Order order) const
{
    CountTable table{m_isOfCalls, by, rows.values(), 0};
    std::sort(table.rows.begin(), table.rows.end(),
              [order](const CountTable::Row &a, const CountTable::Row &b) {
                  return order == ByKey ? a.key < b.key
                                        : std::tie(b.count, a.key) < std::tie(a.count, b.key);
              });
    return table;
}

QList<CountTable> Counting::tables(int limit) const
{
    CountTable numbers = table("number", m_byNumber, MostFirst);
    if (numbers.rows.size() > limit) {
        numbers.hidden = numbers.rows.size() - limit;
        numbers.rows = numbers.rows.mid(0, limit);
    }
    return {{m_isOfCalls, "total", {m_total}, 0},
            table(m_kinds, m_byKind, MostFirst),
            table("year", m_byYear, ByKey),
            numbers};
}

ExitCode runStats(const Invocation &invocation)
{
    constexpr int numbersForPeople = 10;
    const QString &format = invocation.global.format;
    int limit =
        format == QLatin1String("text") ? numbersForPeople : std::numeric_limits<int>::max();
    QDateTime since;
    if (!invocation.arguments.isEmpty()) {
        Diagnostics::error(Text::tr("%1 takes no arguments").arg(QLatin1String("stats")));
        return UsageError;
    }
    QTimeZone zone = invocation.global.localZone;
    if (!Arguments::takeZone(invocation.options, zone)
        || !Arguments::takeTime(invocation.options, "since", zone, since)
        || !Arguments::takeNumber(invocation.options, "limit", 0, std::numeric_limits<int>::max(),
                                  limit))
        return UsageError;
    if (const ExitCode code = StoreAccess::requireStore(invocation.location))
        return code;
    Counting messages(false, "folder");
    MessageStore store(invocation.global.timeout);
    KorvaSyncIf::HistoryFilter filter;
    filter.from = since;
    const Answer answer = store.forEach(filter, [&](const StoredMessage &message) {
        messages.count(Folder::name(message.folder), message.time, message.number,
                       message.isRead ? 0 : 1);
    });
    if (answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, answer);
    Counting calls(true, "type");
    CallStore callStore(invocation.global.timeout);
    const CallStore::Read read = callStore.calls(CallStore::AllCalls, since);
    if (read.answer != Answer::Finished)
        return StoreAccess::complain(invocation.location, read.answer);
    for (const Call &call : read.calls)
        calls.count(call.type, call.start, call.number, call.duration);
    CountFormats::print(messages.tables(limit) + calls.tables(limit), format, invocation.output);
    return AllDone;
}

} // namespace

Command statsCommand()
{
    const auto text = [](const char *latin1) { return QString::fromLatin1(latin1); };
    return {
        "stats",
        "",
        Text::tr("Counts messages by folder, year (in UTC) and number, and calls by type, year and "
                 "number."),
        {text("text"), text("ndjson")},
        {
            {text("since"),
             Text::tr("From this time on: 2024-05-01T10:00:00Z, 2024-05-01, today, "
                      "yesterday, 30m, 12h, 7d, 2w or @seconds."),
             text("T")},
            {text("assume-tz"),
             Text::tr("Time zone of dates, e.g. Europe/Helsinki (default: the system's)."),
             text("ZONE")},
            {text("limit"), Text::tr("The N most frequent numbers (text: 10, ndjson: all)."),
             text("N")},
        },
        runStats,
        {Text::tr("Numbers whose last 7 digits are alike count as one. On a terminal each row has "
                  "a bar."),
         {"korvasync stats --since 2024-01-01",
          "korvasync stats -o ndjson | grep '\"by\":\"year\"'"},
         Text::tr(
             "Exit codes: 0 counted, 2 usage, 3 the store cannot be read, 5 it gave no answer.")}};
}
