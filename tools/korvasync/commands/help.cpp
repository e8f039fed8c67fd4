// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "help.h"

#include <utility>

namespace Help {

namespace {

constexpr int width = 79; // as Qt's own part has it

//! Breaks one line between its words; what follows the first is indented.
QByteArray wrapped(const QByteArray &text, int indent)
{
    QByteArray lines;
    QByteArray line;
    for (const QByteArray &word : text.split(' ')) {
        const bool fits = line.size() + 1 + word.size() <= width - indent;
        if (!line.isEmpty() && !fits) {
            lines += line + '\n' + QByteArray(indent, ' ');
            line.clear();
        }
        line += (line.isEmpty() ? QByteArray() : QByteArray(" ")) + word;
    }
    return lines + line + '\n';
}

//! Fills the lines of each paragraph; indented lines stay as they are.
QByteArray filled(const QByteArray &text)
{
    QByteArray lines;
    QByteArray paragraph;
    for (const QByteArray &line : text.split('\n')) {
        const bool isFixed = line.isEmpty() || line.startsWith(' ');
        if (isFixed && !paragraph.isEmpty())
            lines += wrapped(std::exchange(paragraph, QByteArray()), 0);
        if (isFixed)
            lines += line + '\n';
        else
            paragraph += (paragraph.isEmpty() ? QByteArray() : QByteArray(" ")) + line;
    }
    return lines;
}

QByteArray optionsOf(const QCommandLineParser &parser)
{
    const QByteArray help = parser.helpText().toUtf8();
    return help.mid(help.indexOf("Options:"));
}

} // namespace

QByteArray overview(const QList<Command> &commands)
{
    constexpr int column = 11; // of the summaries
    QByteArray text("Usage: korvasync [OPTIONS] COMMAND [ARGUMENTS]\n"
                    "Reads and writes the text messages and calls of a phone's store.\n\n"
                    "Commands (\"korvasync COMMAND --help\" tells more):\n");
    for (const Command &command : commands) {
        text += "  " + QByteArray(command.name).leftJustified(column - 2)
            + wrapped(command.summary, column);
    }
    QCommandLineParser parser;
    GlobalOptions::declare(parser);
    return text + '\n' + optionsOf(parser) + '\n'
        + wrapped(
               "Exit codes: 0 all done, 1 some items refused or failed and the rest done, 2 usage, "
               "3 the store cannot be used, 4 an id was not found, 5 the store gave no answer in "
               "time, 8 not sent, 9 not known whether sent, 129, 130 and 143 interrupted, 141 "
               "nobody reads the output any more.",
               0);
}

QByteArray page(const Command &command, const QByteArray &name)
{
    QCommandLineParser parser;
    parser.addOptions(command.options);
    GlobalOptions::declare(parser, command.formats, command.globalOptions);
    const QByteArray usage = "Usage: korvasync [OPTIONS] " + name + ' ' + command.arguments;
    return usage.trimmed() + '\n' + wrapped(command.summary, 0) + '\n' + optionsOf(parser) + '\n'
        + filled(command.notes).chopped(1); // the end of the last line is counted twice
}

} // namespace Help
