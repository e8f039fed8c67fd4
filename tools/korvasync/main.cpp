// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "commands/help.h"
#include "input/filename.h"
#include "options/arguments.h"
#include "options/choices.h"
#include "process/descriptors.h"
#include "process/diagnostics.h"
#include "process/language.h"
#include "process/localzone.h"
#include "process/suggestion.h"
#include "process/zonename.h"
#include "shared/boundedcall.h"
#include "shared/interrupt.h"
#include "shared/text.h"
#include "store/storeaccess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtCore/QTranslator>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <system_error>

namespace {

const QList<Command> &commands()
{
    static const QList<Command> all{
        listCommand(),   showCommand(),    addCommand(),          modifyCommand(),  deleteCommand(),
        callsCommand(),  sendCommand(),    statsCommand(),        numbersCommand(), dupsCommand(),
        verifyCommand(), changesCommand(), conversationsCommand()};
    return all;
}

//! \param page  the verb whose --help tells more; empty = the client's own
ExitCode usageError(const QString &sentence, const QString &page = QString())
{
    const QString command =
        page.isEmpty() ? QStringLiteral("korvasync") : QLatin1String("korvasync ") + page;
    Diagnostics::error(Text::tr("%1; see %2 --help").arg(sentence, command));
    return UsageError;
}

//! What is wrong with a command line that \a parser has not understood.
QString misuseOf(const QCommandLineParser &parser, const QList<QCommandLineOption> &options)
{
    QString sentence = parser.errorText();
    if (sentence.endsWith(QLatin1Char('.')))
        sentence.chop(1);
    const QString typed = parser.unknownOptionNames().value(0);
    if (typed.size() < 2) // each letter is near to each other
        return sentence;
    QStringList names;
    for (const QCommandLineOption &option : options)
        names += option.names();
    return Suggestion::added(sentence, typed, names);
}

// A negative number is no option, but an id that no message has. Qt takes it for one unless
// something stands in front; a blank does no harm, as ids are trimmed.
QStringList withNegativeIds(QStringList arguments)
{
    static const QRegularExpression number(QStringLiteral("^(-[0-9]+)$"));
    return arguments.replaceInStrings(number, QStringLiteral(" \\1"));
}

QStringList namesOf(const QList<Command> &commands)
{
    QStringList names;
    for (const Command &command : commands)
        names += QLatin1String(command.name);
    return names;
}

//! null = none has this name
const Command *byName(const QList<Command> &commands, const QString &name)
{
    const auto found = std::find_if(commands.cbegin(), commands.cend(), [&](const Command &c) {
        return name == QLatin1String(c.name);
    });
    return found == commands.cend() ? nullptr : &*found;
}

//! The first operand behind a verb, which names one of its actions. What stands behind an option
//! that takes a value is no operand, whichever of the actions the option belongs to.
QString actionWord(const Command &verb, const QStringList &arguments)
{
    QCommandLineParser parser;
    QStringList known;
    QList<QCommandLineOption> options = GlobalOptions::declared();
    for (const Command &action : verb.actions)
        options += action.options;
    for (const QCommandLineOption &option : qAsConst(options)) {
        if (known.contains(option.names().constFirst()))
            continue;
        known += option.names();
        parser.addOption(option);
    }
    parser.parse(arguments); // what is wrong is for the action to tell
    return parser.positionalArguments().value(1);
}

ExitCode runOnStore(const Command &command, const Invocation &invocation)
{
    Diagnostics::showTrace(invocation.global.verbose);
    if (invocation.global.quiet > 1)
        Diagnostics::silenceWarnings();
    if (!invocation.global.unknownZone.isEmpty()) {
        Diagnostics::error(
            ZoneName::complaint(QStringLiteral("TZ"), invocation.global.unknownZone));
        return UsageError;
    }
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

ExitCode runCommand(const Command &command, const QString &name, QStringList arguments,
                    GlobalOptions &global, StandardOutput &output)
{
    if (QByteArray(command.arguments).startsWith("ID"))
        arguments = withNegativeIds(arguments);
    const QList<QCommandLineOption> options = command.options + GlobalOptions::declared();
    QCommandLineParser parser;
    parser.addOptions(options);
    if (!parser.parse(arguments))
        return usageError(misuseOf(parser, options), name);
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
        return usageError(wrong, name);
    if (global.format.isEmpty() && command.printsTextOnTerminals && output.isTerminal())
        global.format = QStringLiteral("text");
    if (global.format.isEmpty())
        global.format = command.formats.first();
    if (!command.formats.contains(global.format)) {
        const QString sentence =
            Text::tr("%1 prints %2").arg(name, command.formats.join(QLatin1String(", ")));
        return usageError(sentence, name);
    }
    // Without the words that name the command; its first action need not be named.
    const QStringList operands =
        parser.positionalArguments().mid(static_cast<int>(name.count(QLatin1Char(' '))) + 1);
    StoreLocation location(global.store);
    return runOnStore(command, {parser, operands, global, location, output});
}

ExitCode runAction(const Command &verb, const QStringList &arguments, GlobalOptions &global,
                   StandardOutput &output)
{
    const QString verbName = QLatin1String(verb.name);
    const QString word = actionWord(verb, arguments);
    const Command *const action =
        word.isEmpty() ? &verb.actions.first() : byName(verb.actions, word);
    if (action) {
        return runCommand(*action, verbName + QLatin1Char(' ') + QLatin1String(action->name),
                          arguments, global, output);
    }
    const QString sentence = Suggestion::added(Text::tr("%1 has no action %2").arg(verbName, word),
                                               word, namesOf(verb.actions));
    return usageError(Text::tr("%1; it takes %2").arg(sentence, QLatin1String(verb.arguments)),
                      verbName);
}

// The first look at the command line, which only finds the command.
ExitCode run(const QStringList &arguments, GlobalOptions &global, StandardOutput &output)
{
    const QList<QCommandLineOption> options = GlobalOptions::declared();
    const QString optionWords = QStringLiteral("option-words"); // for the completions alone
    QCommandLineParser parser;
    parser.addOptions(options);
    parser.addOption(QCommandLineOption(optionWords));
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    if (!parser.parse(arguments))
        return usageError(misuseOf(parser, options));
    const QString name = parser.positionalArguments().value(0);
    const Command *const command = byName(commands(), name);
    if (command && !command->actions.isEmpty())
        return runAction(*command, arguments, global, output);
    if (command)
        return runCommand(*command, name, arguments, global, output);
    if (!name.isEmpty()) {
        const QString sentence = Text::tr("there is no command %1").arg(name);
        return usageError(Suggestion::added(sentence, name, namesOf(commands())));
    }
    if (parser.isSet(QStringLiteral("version")))
        output.write("korvasync " KORVASYNC_VERSION "\n");
    else if (parser.isSet(QStringLiteral("help")))
        output.write(Help::overview(commands()));
    else if (parser.isSet(optionWords))
        output.write(Choices::lines(commands()));
    else
        return usageError(Text::tr("no command is given"));
    return AllDone;
}

// Commands that read ahead or bound the time of the store have threads of their own, from the
// start: where there is none, nothing is under way yet.
ExitCode runWithThreads(const QStringList &arguments, GlobalOptions &global, StandardOutput &output)
{
    try {
        return run(arguments, global, output);
    } catch (const std::system_error &error) {
        Diagnostics::error(Text::tr("the system gives this program no thread: %1; end other "
                                    "programs, or raise the limit of processes")
                               .arg(Text::ofSystemError(error.code().value()).translated));
        output.flush();
        std::_Exit(SomeNotDone);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    occupyClosedDescriptors();
    Diagnostics::install();
    GlobalOptions global;
    const LocalZone::Found local = LocalZone::rememberAndLeave();
    global.localZone = local.zone;
    global.localZoneIsExact = local.isExact;
    global.unknownZone = local.unknownName;
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
    ExitCode code = runWithThreads(arguments, global, output);
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
