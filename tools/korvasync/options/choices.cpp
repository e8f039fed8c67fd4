// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "choices.h"

namespace Choices {

namespace {

struct Choice
{
    const char *command; // empty = all
    const char *option;
    const char *words;
};

constexpr Choice Choices[] = {
    {"", "progress", "auto always never"},
    {"list", "folder", "inbox outbox drafts sent my all"},
    // Drafts are known there as well, but cannot be written.
    {"add", "folder", "inbox outbox sent my"},
    {"verify", "folder", "inbox outbox sent my"},
    {"modify", "folder", "inbox outbox sent my"},
    {"add", "from", "auto vmsg android-xml"},
    {"verify", "from", "auto vmsg android-xml"},
    {"calls add", "from", "auto entries android-xml"},
    {"add", "on-duplicate", "skip add fail"},
    {"calls add", "on-duplicate", "skip add fail"},
    {"add", "on-bad-time", "refuse now"},
    {"calls list", "type", "in out missed"},
    {"dups", "keep", "oldest newest"},
};

QByteArray line(const QString &command, const char *option, const QStringList &words)
{
    return command.toUtf8() + ':' + option + ' ' + words.join(QLatin1Char(' ')).toUtf8() + '\n';
}

//! \param name  of the command in its lines
//! \param typed  how it is typed in full
QByteArray linesOf(const Command &command, const QString &name, const QString &typed)
{
    QByteArray lines = line(name, "-o", command.formats);
    const QList<QCommandLineOption> options = command.options + GlobalOptions::declared();
    for (const QCommandLineOption &option : options) {
        const QString longName = option.names().constLast();
        const QStringList words = of(typed, longName);
        if (!words.isEmpty())
            lines += line(name, ("--" + longName.toUtf8()).constData(), words);
    }
    return lines;
}

} // namespace

QStringList of(const QString &command, const QString &option)
{
    for (const Choice &choice : Choices) {
        const bool isOfCommand = !*choice.command || command == QLatin1String(choice.command);
        if (isOfCommand && option == QLatin1String(choice.option))
            return QString::fromLatin1(choice.words).split(QLatin1Char(' '));
    }
    return {};
}

QByteArray lines(const QList<Command> &commands)
{
    const QString progress = QStringLiteral("progress");
    QByteArray all = line(QString(), "-o", {QStringLiteral("text"), QStringLiteral("ndjson")})
        + line(QString(), "--progress", of(QString(), progress));
    for (const Command &command : commands) {
        const QString name = QString::fromLatin1(command.name);
        if (command.actions.isEmpty())
            all += linesOf(command, name, name);
        for (const Command &action : command.actions) {
            const QString typed = name + QLatin1Char(' ') + QLatin1String(action.name);
            if (&action == &command.actions.constFirst()) // which need not be named
                all += linesOf(action, name, typed);
            all += linesOf(action, typed, typed);
        }
    }
    return all;
}

} // namespace Choices
