// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "commands/help.h"
#include "commands/storeaccess.h"
#include "language/language.h"
#include "language/text.h"
#include "messages/filename.h"
#include "options/arguments.h"
#include "process/descriptors.h"
#include "process/diagnostics.h"
#include "process/interrupt.h"
#include "process/localzone.h"
#include "store/boundedcall.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtCore/QTranslator>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace {

const QList<Command> &commands()
{
    static const QList<Command> all{listCommand(),   showCommand(),   addCommand(),
                                    modifyCommand(), deleteCommand(), callsCommand(),
                                    sendCommand(),   statsCommand(),  numbersCommand(),
                                    dupsCommand(),   verifyCommand()};
    return all;
}

ExitCode usageError(QString sentence)
{
    if (sentence.endsWith(QLatin1Char('.'))) // Qt's own sentences
        sentence.chop(1);
    Diagnostics::error(Text::tr("%1; see korvasync --help").arg(sentence));
    return UsageError;
}

// A negative number is no option, but an id that no message has. Qt takes it for one unless
// something stands in front; a blank does no harm, as ids are trimmed.
QStringList withNegativeIds(QStringList arguments)
{
    static const QRegularExpression number(QStringLiteral("^(-[0-9]+)$"));
    return arguments.replaceInStrings(number, QStringLiteral(" \\1"));
}

//! What the words behind a verb ask it for; without such a word, its first action.
const Command &actionOf(const Command &verb, const QStringList &words)
{
    for (const QString &word : words) {
        for (const Command &action : verb.actions) {
            if (word == QLatin1String(action.name))
                return action;
        }
    }
    return verb.actions.isEmpty() ? verb : verb.actions.first();
}

ExitCode runOnStore(const Command &command, const Invocation &invocation)
{
    Diagnostics::install(invocation.global.verbose);
    if (invocation.global.quiet > 1)
        Diagnostics::silenceWarnings();
    if (!invocation.global.localZoneIsExact) {
        Diagnostics::warn(Text::tr("TZ names no zone that is known here; times without a "
                                   "zone are read with today's distance, %1: name a zone "
                                   "such as Europe/Helsinki")
                              .arg(QString::fromUtf8(invocation.global.localZone.id())));
    }
    invocation.location.select();
    BoundedCall::onGivingUp([&](Answer answer) {
        const ExitCode code = StoreAccess::complain(invocation.location, answer);
        invocation.output.flush();
        std::_Exit(answer == Answer::Interrupted ? 128 + Interrupt::signalNumber() : code);
    });
    return command.run(invocation);
}

ExitCode runCommand(const Command &verb, QStringList arguments, const QStringList &words,
                    GlobalOptions &global, StandardOutput &output)
{
    const Command &command = actionOf(verb, words);
    QByteArray name(verb.name);
    if (!verb.actions.isEmpty())
        name += QByteArray(" ") + command.name;
    if (QByteArray(command.arguments).startsWith("ID"))
        arguments = withNegativeIds(arguments);
    QCommandLineParser parser;
    parser.addOptions(command.options);
    GlobalOptions::declare(parser);
    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        output.write(Help::page(command, name));
        return AllDone;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        output.write("korvasync " KORVASYNC_VERSION "\n");
        return AllDone;
    }
    const QString wrong = global.take(parser);
    if (!wrong.isEmpty())
        return usageError(wrong);
    if (global.format.isEmpty())
        global.format = command.formats.first();
    if (!command.formats.contains(global.format)) {
        return usageError(Text::tr("%1 prints %2")
                              .arg(QLatin1String(name), command.formats.join(QLatin1String(", "))));
    }
    QStringList operands = parser.positionalArguments().mid(1);
    if (!verb.actions.isEmpty()) {
        const QString word =
            operands.isEmpty() ? QLatin1String(verb.actions.first().name) : operands.takeFirst();
        if (word != QLatin1String(command.name))
            return usageError(Text::tr("%1 has no such action; it takes %2")
                                  .arg(QLatin1String(verb.name), QLatin1String(verb.arguments)));
    }
    StoreLocation location(global.store);
    return runOnStore(command, {parser, operands, global, location, output});
}

// The first look at the command line, which only finds the command.
ExitCode run(const QStringList &arguments, GlobalOptions &global, StandardOutput &output)
{
    QCommandLineParser parser;
    GlobalOptions::declare(parser);
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    const QString name = parser.positionalArguments().value(0);
    const auto command =
        std::find_if(commands().cbegin(), commands().cend(),
                     [&](const Command &c) { return name == QLatin1String(c.name); });
    if (command != commands().cend())
        return runCommand(*command, arguments, parser.positionalArguments().mid(1), global, output);
    if (!name.isEmpty())
        return usageError(Text::tr("there is no command %1").arg(name));
    if (parser.isSet(QStringLiteral("version")))
        output.write("korvasync " KORVASYNC_VERSION "\n");
    else if (parser.isSet(QStringLiteral("help")))
        output.write(Help::overview(commands()));
    else
        return usageError(Text::tr("no command is given"));
    return AllDone;
}

} // namespace

int main(int argc, char *argv[])
{
    occupyClosedDescriptors();
    GlobalOptions global;
    const auto [zone, isExact] = LocalZone::rememberAndLeave();
    global.localZone = zone;
    global.localZoneIsExact = isExact;
    global.argumentsAreUtf8 = std::all_of(argv + 1, argv + argc, Arguments::isUtf8);
    // Names of files and all that is printed are UTF-8, whatever the locale says, and the system's
    // own words English, of which the catalogues translate what people read.
    const QStringList locales = Language::wanted();
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("LANGUAGE");
    QCoreApplication application(argc, argv);
    QTranslator translator;
    if (Language::load(translator, locales))
        QCoreApplication::installTranslator(&translator);
    Interrupt::install();
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += FileName::decode(argv[i]);
    StandardOutput output;
    ExitCode code = run(arguments, global, output);
    const bool isWritten = output.flush();
    if (output.readerIsGone())
        std::_Exit(128 + SIGPIPE); // it has what it wanted
    if (!isWritten) {
        Diagnostics::error(Text::tr("standard output cannot be written: %1; see where it goes")
                               .arg(output.error()));
        code = worse(code, SomeNotDone);
    }
    // A request that was given up would be waited for once more while the library ends.
    if (Interrupt::signalNumber() != 0)
        std::_Exit(128 + Interrupt::signalNumber());
    if (code == NoAnswer)
        std::_Exit(code);
    // All is done. Closing the store waits for its other users, who can close it as well.
    constexpr std::chrono::milliseconds closingTime(2000);
    BoundedCall::onGivingUp([code](Answer) { std::_Exit(code); });
    BoundedCall::boundTheRest(closingTime);
    return code;
}
