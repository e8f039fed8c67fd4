// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "countformats.h"

#include "callformats.h"
#include "jsonline.h"
#include "process/terminalwidth.h"
#include "shared/terminaltext.h"

#include "shared/text.h"

#include <QtCore/QMap>

#include <algorithm>
#include <unistd.h>

namespace {

const char *nameOfItems(const CountTable &table) { return table.isOfCalls ? "calls" : "messages"; }

QByteArray ndjson(const CountTable &table)
{
    QByteArray lines;
    for (const CountTable::Row &row : table.rows) {
        JsonLine json;
        json.add("of", QLatin1String(nameOfItems(table))).add("by", QLatin1String(table.by));
        if (qstrcmp(table.by, "year") != 0)
            json.addUnlessEmpty(table.by, row.key);
        else if (!row.key.isEmpty())
            json.add(table.by, row.key.toLongLong());
        json.add("count", row.count).add(table.isOfCalls ? "seconds" : "unread", row.amount);
        lines += json.line();
    }
    return lines;
}

//! What a table counts by, for people.
QString headingOf(const char *by)
{
    static const QMap<QByteArray, QString> headings{
        {"total", Text::tr("total")}, {"folder", Text::tr("folder")}, {"type", Text::tr("type")},
        {"year", Text::tr("year")},   {"number", Text::tr("number")},
    };
    return headings.value(by);
}

//! The columns of one table.
struct Layout
{
    QString heading;
    QString countHeading;
    QString amountHeading;
    int keyWidth;
    int countWidth;
    int amountWidth;
    qint64 most = 1;
    int barRoom = 0; // 0 = no bars

    Layout(const CountTable &table, int width);
    QByteArray headLine() const { return line(heading, countHeading, amountHeading, QString()); }
    QByteArray line(const QString &key, const QString &count, const QString &amount,
                    const QString &bar) const;
    QString bar(const CountTable::Row &row) const;
};

Layout::Layout(const CountTable &table, int width)
    : heading(headingOf(table.by))
    , countHeading(table.isOfCalls ? Text::tr("calls") : Text::tr("messages"))
    , amountHeading(table.isOfCalls ? Text::tr("duration") : Text::tr("unread", "messages"))
{
    constexpr int usualKey = 12;
    constexpr int usualCount = 8;
    constexpr int usualAmount = 10;
    constexpr int widestKey = 20; // longer ones push their own line only
    constexpr int shortestBar = 8;
    if (table.hidden > 0)
        heading = Text::tr("%1 (%2 of %3)")
                      .arg(heading)
                      .arg(table.rows.size())
                      .arg(table.rows.size() + table.hidden);
    countWidth = qMax(usualCount, static_cast<int>(countHeading.size()));
    amountWidth = qMax(usualAmount, static_cast<int>(amountHeading.size()));
    keyWidth = qMax(usualKey, static_cast<int>(heading.size()));
    for (const CountTable::Row &row : table.rows) {
        keyWidth = qMax(keyWidth, qMin(static_cast<int>(row.key.size()), widestKey));
        most = qMax(most, row.count);
    }
    const auto room = width - keyWidth - countWidth - amountWidth - 6 /* blanks */;
    if (table.rows.size() > 1 && room >= shortestBar)
        barRoom = room;
}

QByteArray Layout::line(const QString &key, const QString &count, const QString &amount,
                        const QString &bar) const
{
    QString line = key.leftJustified(keyWidth) + QLatin1String("  ")
        + count.rightJustified(countWidth) + QLatin1String("  ")
        + amount.rightJustified(amountWidth);
    if (!bar.isEmpty())
        line += QLatin1String("  ") + bar;
    return line.toUtf8() + '\n';
}

// A line that its key has pushed would be broken by its bar.
QString Layout::bar(const CountTable::Row &row) const
{
    if (barRoom == 0 || row.key.size() > keyWidth)
        return QString();
    return QString(static_cast<int>(qMax<qint64>(1, row.count * barRoom / most)), QChar(0x2588));
}

QByteArray text(const CountTable &table, int width)
{
    if (table.rows.isEmpty())
        return QByteArray();
    const Layout layout(table, width);
    const QString noKey = qstrcmp(table.by, "total") == 0 ? QString() : QStringLiteral("-");
    QByteArray lines = layout.headLine();
    for (const CountTable::Row &row : table.rows) {
        const QString amount =
            table.isOfCalls ? CallFormats::clockText(row.amount) : QString::number(row.amount);
        lines += layout.line(row.key.isEmpty() ? noKey : terminalText(row.key),
                             QString::number(row.count), amount, layout.bar(row));
    }
    return lines;
}

} // namespace

void CountFormats::print(const QList<CountTable> &tables, const QString &format,
                         StandardOutput &output)
{
    bool isFirst = true;
    for (const CountTable &table : tables) {
        if (format == QLatin1String("ndjson")) {
            output.write(ndjson(table));
            continue;
        }
        const QByteArray lines = text(table, terminalWidth(STDOUT_FILENO));
        if (!lines.isEmpty() && !isFirst)
            output.write("\n");
        output.write(lines);
        isFirst = isFirst && lines.isEmpty();
    }
}
