// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messageformats.h"

#include "jsonline.h"
#include "messages/datetext.h"
#include "messages/folder.h"
#include "terminaltext.h"

namespace MessageFormats {

QByteArray ndjson(const StoredMessage &message)
{
    JsonLine json;
    json.add("id", message.id)
        .addUnlessEmpty("folder", Folder::name(message.folder))
        .addUnlessEmpty("number", message.number)
        .addUnlessEmpty("time", DateText::write(message.time))
        .addBool("read", message.isRead)
        .add("body", message.body)
        .addUnlessEmpty("token", message.token);
    return json.line();
}

QByteArray vmsg(const StoredMessage &message) { return message.vMessage.toUtf8(); }

QByteArray table(const QList<StoredMessage> &messages)
{
    const QString noTime = QStringLiteral("-");
    int idWidth = 0;
    int numberWidth = 0;
    constexpr int widestNumber = 20; // longer ones push their own line only
    for (const StoredMessage &message : messages) {
        idWidth = qMax(idWidth, static_cast<int>(QString::number(message.id).size()));
        numberWidth = qMax(numberWidth, static_cast<int>(message.number.size()));
    }
    numberWidth = qMin(numberWidth, widestNumber);
    QByteArray text;
    for (const StoredMessage &message : messages) {
        const QString time = DateText::write(message.time);
        const QString line = QStringLiteral("%1  %2  %3  %4  %5  %6\n")
                                 .arg(QString::number(message.id).rightJustified(idWidth),
                                      (time.isEmpty() ? noTime : time).leftJustified(20),
                                      Folder::name(message.folder).leftJustified(6),
                                      message.isRead ? QStringLiteral(" ") : QStringLiteral("*"),
                                      terminalText(message.number).leftJustified(numberWidth),
                                      terminalText(message.body));
        text += line.toUtf8();
    }
    return text;
}

QByteArray page(const StoredMessage &message)
{
    QStringList lines{
        QStringLiteral("id:     %1").arg(message.id),
        QLatin1String("folder: ") + Folder::name(message.folder),
        QLatin1String("number: ") + terminalText(message.number),
        QLatin1String("time:   ") + DateText::write(message.time),
        QLatin1String("read:   ") + QLatin1String(message.isRead ? "yes" : "no"),
        QString(),
    };
    for (const QString &line : message.body.split(QLatin1Char('\n')))
        lines += terminalText(line);
    return lines.join(QLatin1Char('\n')).toUtf8() + "\n\n";
}

} // namespace MessageFormats
