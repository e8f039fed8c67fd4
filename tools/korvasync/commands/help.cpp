// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "help.h"

#include "shared/text.h"

#include <utility>

namespace Help {

namespace {

constexpr int Width = 79; // as Qt's own part has it

//! Breaks one line between its words; what follows the first is indented.
QString wrapped(const QString &text, int indent = 0)
{
    QString lines;
    QString line;
    for (const QString &word : text.split(QLatin1Char(' '))) {
        const bool fits = line.size() + 1 + word.size() <= Width - indent;
        if (!line.isEmpty() && !fits) {
            lines += line + QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    return lines + line + QLatin1Char('\n');
}

//! Fills the lines of each paragraph; indented lines stay as they are.
QString filled(const QString &text)
{
    QString lines;
    QString paragraph;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        const bool isFixed = line.isEmpty() || line.startsWith(QLatin1Char(' '));
        if (isFixed && !paragraph.isEmpty())
            lines += wrapped(std::exchange(paragraph, QString()));
        if (isFixed)
            lines += line + QLatin1Char('\n');
        else
            paragraph += (paragraph.isEmpty() ? QString() : QStringLiteral(" ")) + line;
    }
    return paragraph.isEmpty() ? lines : lines + wrapped(paragraph);
}

QString optionsOf(const QCommandLineParser &parser)
{
    const QString help = parser.helpText();
    return help.mid(help.indexOf(QCoreApplication::translate("QCommandLineParser", "Options:")));
}

QString textOf(const HelpNotes &notes)
{
    QString text;
    if (!notes.remarks.isEmpty())
        text += QLatin1Char('\n') + filled(notes.remarks);
    if (!notes.examples.isEmpty()) {
        text += QLatin1Char('\n')
            + (notes.examples.size() == 1 ? Text::tr("Example:") : Text::tr("Examples:"))
            + QLatin1Char('\n');
        for (const QByteArray &example : notes.examples)
            text += QLatin1String("  ") + QLatin1String(example) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n') + wrapped(notes.exitCodes);
}

} // namespace

QByteArray overview(const QList<Command> &commands)
{
    constexpr int column = 16; // of the summaries
    QString text = wrapped(Text::tr("Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]"))
        + wrapped(Text::tr("Reads and writes the text messages and calls of a phone's store."))
        + QLatin1Char('\n')
        + wrapped(Text::tr("Commands (\"korvasync COMMAND --help\" shows more):"));
    for (const Command &command : commands) {
        text += QLatin1String("  ") + QString::fromLatin1(command.name).leftJustified(column - 2)
            + wrapped(command.summary, column);
    }
    QCommandLineParser parser;
    parser.addOptions(GlobalOptions::declared());
    const HelpNotes notes{
        {},
        {},
        Text::tr("Exit codes: 0 all done, 1 some items refused or failed and the rest done, 2 "
                 "usage, 3 the store cannot be used, 4 an id was not found, 5 the store gave no "
                 "answer in time, 8 not sent, 9 not known whether sent, 129, 130 and 143 "
                 "interrupted, 141 the reader of the output has gone.")};
    return (text + QLatin1Char('\n') + optionsOf(parser) + textOf(notes)).toUtf8();
}

QByteArray page(const Command &command, const QString &name)
{
    QCommandLineParser parser;
    parser.addOptions(command.options);
    parser.addOptions(GlobalOptions::declared(command.formats, command.globalOptions));
    const QString line = (name + QLatin1Char(' ') + QLatin1String(command.arguments)).trimmed();
    return (Text::tr("Usage: korvasync [OPTIONS] %1").arg(line) + QLatin1Char('\n')
            + wrapped(command.summary) + QLatin1Char('\n') + optionsOf(parser)
            + textOf(command.notes))
        .toUtf8();
}

} // namespace Help
