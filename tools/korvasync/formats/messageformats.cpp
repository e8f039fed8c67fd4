// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messageformats.h"

#include "androidxml.h"
#include "csv.h"
#include "mailbox.h"
#include "model/datetext.h"
#include "model/folder.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

#include <QtCore/QMap>

#include <algorithm>
#include <utility>

namespace MessageFormats {

JsonLine jsonOf(const StoredMessage &message, JsonLine json)
{
    json.add("id", message.id)
        .addUnlessEmpty("folder", Folder::name(message.folder))
        .addUnlessEmpty("number", message.number)
        .addUnlessEmpty("time", DateText::write(message.time))
        .addBool("read", message.isRead)
        .add("body", message.body)
        .addUnlessEmpty("token", message.token);
    return json;
}

static void printNdjson(const QList<StoredMessage> &messages, StandardOutput &output)
{
    for (const StoredMessage &message : messages)
        output.write(jsonOf(message).line());
}

static void printVMessages(const QList<StoredMessage> &messages, StandardOutput &output)
{
    for (const StoredMessage &message : messages)
        output.write(message.vMessage.toUtf8());
}

void print(const QList<StoredMessage> &messages, const QString &format, StandardOutput &output)
{
    static const QMap<QString, void (*)(const QList<StoredMessage> &, StandardOutput &)> printers{
        {QStringLiteral("ndjson"), printNdjson},
        {QStringLiteral("vmsg"), printVMessages},
        {QStringLiteral("csv"), Csv::print},
        {QStringLiteral("mbox"), Mailbox::print},
        {QStringLiteral("android-xml"), AndroidXml::print},
    };
    printers.value(format)(messages, output);
}

void printTable(const QList<StoredMessage> &messages, StandardOutput &output,
                const std::optional<QTimeZone> &zone)
{
    const auto timeOf = [&](const StoredMessage &message) {
        if (!message.time.isValid())
            return QStringLiteral("-");
        return zone ? DateText::writeIn(*zone, message.time) : DateText::write(message.time);
    };
    int timeWidth = 20;
    int idWidth = 0;
    int numberWidth = 0;
    constexpr int widestNumber = 20; // longer ones push their own line only
    for (const StoredMessage &message : messages) {
        idWidth = qMax(idWidth, static_cast<int>(QString::number(message.id).size()));
        numberWidth = qMax(numberWidth, static_cast<int>(message.number.size()));
        if (zone)
            timeWidth = qMax(timeWidth, static_cast<int>(timeOf(message).size()));
    }
    numberWidth = qMin(numberWidth, widestNumber);
    for (const StoredMessage &message : messages) {
        const QString line = QStringLiteral("%1  %2  %3  %4  %5  %6")
                                 .arg(QString::number(message.id).rightJustified(idWidth),
                                      timeOf(message).leftJustified(timeWidth),
                                      Folder::name(message.folder).leftJustified(6),
                                      message.isRead ? QStringLiteral(" ") : QStringLiteral("*"),
                                      terminalText(message.number).leftJustified(numberWidth),
                                      terminalText(message.body));
        output.writeLine(line, message.isRead ? StandardOutput::Plain : StandardOutput::Bold);
    }
}

static QByteArray page(const StoredMessage &message)
{
    const QList<std::pair<QString, QString>> head{
        {Text::tr("id:"), QString::number(message.id)},
        {Text::tr("folder:"), Folder::name(message.folder)},
        {Text::tr("number:"), terminalText(message.number)},
        {Text::tr("time:"), DateText::write(message.time)},
        {Text::tr("read:"), message.isRead ? Text::tr("yes") : Text::tr("no")},
    };
    const auto widest =
        std::max_element(head.cbegin(), head.cend(), [](const auto &a, const auto &b) {
            return a.first.size() < b.first.size();
        });
    const auto width = static_cast<int>(widest->first.size());
    QStringList lines;
    for (const auto &[name, value] : head)
        lines += name.leftJustified(width) + QLatin1Char(' ') + value;
    lines += QString();
    for (const QString &line : message.body.split(QLatin1Char('\n')))
        lines += terminalText(line);
    return lines.join(QLatin1Char('\n')).toUtf8() + "\n\n";
}

void printPages(const QList<StoredMessage> &messages, StandardOutput &output)
{
    for (const StoredMessage &message : messages)
        output.write(page(message));
}

} // namespace MessageFormats
