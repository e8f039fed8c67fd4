// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "arguments.h"

#include "choices.h"
#include "input/inputfile.h"
#include "model/folder.h"
#include "process/diagnostics.h"
#include "process/zonename.h"
#include "shared/interrupt.h"
#include "shared/text.h"

#include <limits>

namespace Arguments {

bool takeTime(const QCommandLineParser &parser, const char *option, const QTimeZone &local,
              QDateTime &time, DateText::Rounding rounding)
{
    const QString name = QLatin1String(option);
    if (!parser.isSet(name))
        return true;
    static const QDateTime now = DateText::now(); // one for all options
    time = DateText::readOption(parser.value(name), local, now, rounding);
    if (!time.isValid()) {
        Diagnostics::error(Text::tr("--%1 takes 2024-05-01T10:00:00Z, 2024-05-01, today, "
                                    "yesterday, 30m, 12h, 7d, 2w or @seconds")
                               .arg(name));
    }
    return time.isValid();
}

bool takeZone(const QCommandLineParser &parser, QTimeZone &zone)
{
    const QString name = QStringLiteral("assume-tz");
    if (!parser.isSet(name))
        return true;
    zone = ZoneName::zone(parser.value(name).toUtf8());
    if (!zone.isValid())
        Diagnostics::error(ZoneName::complaint(QStringLiteral("--assume-tz"), parser.value(name)));
    return zone.isValid();
}

bool takeNumber(const QCommandLineParser &parser, const char *option, int least, int most,
                int &number)
{
    const QString name = QLatin1String(option);
    if (!parser.isSet(name))
        return true;
    bool isNumber = false;
    number = parser.value(name).toInt(&isNumber);
    const bool fits = isNumber && number >= least && number <= most;
    if (!fits)
        Diagnostics::error(
            Text::tr("--%1 is a number from %2 to %3").arg(name).arg(least).arg(most));
    return fits;
}

std::optional<int> takeChoice(const QCommandLineParser &parser, const char *command,
                              const char *option)
{
    const QString name = QLatin1String(option);
    const QStringList choices = Choices::of(QLatin1String(command), name);
    const auto choice = static_cast<int>(choices.indexOf(parser.value(name)));
    if (choice >= 0)
        return choice;
    Diagnostics::error(Text::tr("--%1 is one of: %2").arg(name, choices.join(QLatin1String(", "))));
    return std::nullopt;
}

bool takeFolder(const QCommandLineParser &parser, const char *option, int &folder)
{
    const QString name = QLatin1String(option);
    if (!parser.isSet(name))
        return true;
    const auto location = Folder::byName(parser.value(name));
    if (location)
        folder = *location;
    else
        Diagnostics::error(Text::tr("--%1 is inbox, outbox, drafts, sent or my").arg(name));
    return location.has_value();
}

bool isUtf8(const QByteArray &bytes)
{
    const QByteArray mark("\xEF\xBB\xBF"); // Qt takes it away from the beginning
    QByteArray text = bytes;
    while (text.startsWith(mark))
        text.remove(0, mark.size());
    return QString::fromUtf8(text.constData(), int(text.size())).toUtf8() == text;
}

std::optional<QString> standardInput()
{
    InputFile input(QStringLiteral("-"));
    QByteArray bytes;
    for (QByteArray piece = input.read(); !piece.isEmpty(); piece = input.read())
        bytes += piece;
    if (Interrupt::signalNumber() != 0) // half of it is nothing to go by
        return std::nullopt;
    if (!input.error().isEmpty()) {
        Diagnostics::error(Text::tr("standard input cannot be read: %1; see what it comes from")
                               .arg(input.error().translated));
        return std::nullopt;
    }
    if (!isUtf8(bytes)) {
        Diagnostics::error(
            Text::tr("standard input is not UTF-8; convert it, with iconv for instance"));
        return std::nullopt;
    }
    return QString::fromUtf8(bytes.constData(), int(bytes.size())); // zeros and all
}

std::optional<QList<int>> databaseIds(const QStringList &arguments)
{
    QStringList words;
    for (const QString &argument : arguments) {
        if (argument != QLatin1String("-")) {
            words += argument;
            continue;
        }
        const auto input = standardInput();
        if (!input)
            return std::nullopt;
        for (const QString &line : input->split(QLatin1Char('\n'))) {
            if (!line.trimmed().isEmpty())
                words += line.trimmed();
        }
    }
    QList<int> ids;
    for (const QString &word : words) {
        bool isNumber = false;
        const int id = word.toInt(&isNumber);
        if (!isNumber) {
            Diagnostics::error(
                Text::tr("%1 is no database id; \"korvasync list\" shows them").arg(word));
            return std::nullopt;
        }
        ids += id;
    }
    return ids;
}

std::optional<InputItem> onlyMessage(const char *command, const QString &path)
{
    ItemReader reader(path, ItemReader::TextObjects);
    auto message = reader.next();
    const bool isAlone = !reader.next();
    if (Interrupt::signalNumber() != 0) // and nobody knows what else there is
        return std::nullopt;
    if (message && message->kind != InputItem::Message)
        message.reset();
    if (!reader.error().isEmpty()) {
        Diagnostics::error(Text::tr("%1 cannot be read: %2; name a file that you may read")
                               .arg(path, reader.error().translated));
    } else if (!message || !isAlone) {
        const QString sentence = message
            ? Text::tr("%1 takes exactly one message, and %2 has more")
            : Text::tr("%1 takes exactly one message, and %2 has none");
        Diagnostics::error(sentence.arg(QLatin1String(command), path));
    } else {
        return message;
    }
    return std::nullopt;
}

} // namespace Arguments
