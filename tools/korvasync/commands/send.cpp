// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "options/command.h"
#include "store/storeaccess.h"

#include "formats/jsonline.h"
#include "options/arguments.h"
#include "process/diagnostics.h"
#include "shared/boundedcall.h"
#include "shared/interrupt.h"
#include "shared/sendable.h"
#include "shared/terminaltext.h"
#include "shared/text.h"
#include "store/messagesender.h"

#include <bus/messagebus.h>
#include <korvasync/pendingsmsid.h>

#include <cstdlib>
#include <unistd.h>

using namespace KorvaSyncIf;

namespace {

bool isStandardInput(const QStringList &words)
{
    return words.isEmpty() || words == QStringList(QStringLiteral("-"));
}

bool areMessage(const QStringList &words)
{
    if (isStandardInput(words))
        return !words.isEmpty() || !isatty(STDIN_FILENO);
    return words.size() == 2 && !words.first().isEmpty() && words.first() != QLatin1String("-");
}

// Number and text, or what is not among the words from standard input, the number in its first
// line. Nothing when that cannot be read.
std::optional<ParsedMessage> typedMessage(const QStringList &words)
{
    ParsedMessage message;
    message.recipients = QStringList(words.value(0));
    message.body = words.value(1);
    if (!isStandardInput(words) && message.body != QLatin1String("-"))
        return message;
    auto input = Arguments::standardInput();
    if (!input)
        return std::nullopt;
    if (input->endsWith(QLatin1Char('\n')))
        input->chop(1); // ends the last line, is not part of the text
    if (isStandardInput(words)) {
        message.recipients = QStringList(input->section(QLatin1Char('\n'), 0, 0).trimmed());
        input = input->section(QLatin1Char('\n'), 1);
    }
    message.body = *input;
    return message;
}

const char *nameOf(MessageSender::Outcome outcome)
{
    switch (outcome) {
    case MessageSender::Sent:
        return "sent";
    case MessageSender::NotSent:
    case MessageSender::Failed:
        return "failed";
    case MessageSender::Unknown:
        return "unknown";
    }
    Q_UNREACHABLE();
}

// The modem's reason is the platform's to tell; it has neither number nor text.
QString withReason(const QString &sentence, const MessageSender::Result &result)
{
    return result.problem.isEmpty() ? sentence : sentence + QLatin1String(": ") + result.problem;
}

ExitCode complainOfNoAnswer(const Invocation &invocation, MessageSender::WaitedFor waitedFor)
{
    switch (waitedFor) {
    case MessageSender::Store:
        return StoreAccess::complain(invocation.location, Answer::TimedOut);
    case MessageSender::SessionBus:
        Diagnostics::error(
            Text::tr("the message was not sent, as the session bus does not answer"));
        break;
    case MessageSender::OtherClients:
        Diagnostics::error(
            Text::tr("the message was not sent, as another client sends or adds on the "
                     "store %1; wait for it, or give it more with --timeout")
                .arg(invocation.location.path()));
        break;
    }
    return NoAnswer;
}

ExitCode complainOfNotSent(const Invocation &invocation, const MessageSender::Result &result)
{
    switch (result.answer) {
    case Answer::Refused:
        return StoreAccess::complain(invocation.location, result.answer);
    case Answer::TimedOut:
        return complainOfNoAnswer(invocation, result.waitedFor);
    case Answer::Interrupted:
        Diagnostics::error(Text::tr("interrupted before the message was sent"));
        return SendFailed;
    case Answer::Finished:
        break;
    }
    Diagnostics::error(
        result.cause == PendingSmsId::SubscriptionFailed
            ? Text::tr("the message was not sent, as there is no session bus; run it "
                       "in a session, or under dbus-run-session")
            : Text::tr("the message was not sent, as it cannot be read"));
    return SendFailed;
}

ExitCode complain(const Invocation &invocation, const MessageSender::Result &result)
{
    switch (result.outcome) {
    case MessageSender::Sent:
        return AllDone;
    case MessageSender::NotSent:
        return complainOfNotSent(invocation, result);
    case MessageSender::Failed:
        Diagnostics::error(withReason(
            Text::tr("the message was not sent and stands in the outbox as %1").arg(result.id),
            result));
        return SendFailed;
    case MessageSender::Unknown:
        break;
    }
    // Whatever the store's trouble is: to send it once more is what would do harm.
    Diagnostics::error(withReason(
        Text::tr("it is not known whether the message was sent; do not repeat it blindly"),
        result));
    static_cast<void>(StoreAccess::complain(invocation.location, result.answer)); // tells
    return SendUnknown;
}

ExitCode report(const Invocation &invocation, const MessageSender::Result &result)
{
    if (invocation.global.format == QLatin1String("ndjson")) {
        JsonLine json;
        if (result.id != -1)
            json.add("id", result.id);
        invocation.output.write(json.add("status", QLatin1String(nameOf(result.outcome))).line());
    } else if (result.outcome == MessageSender::Sent) {
        invocation.output.write(QByteArray::number(result.id) + '\n');
    }
    return complain(invocation, result);
}

// What a call that takes too long, or a signal amid one, makes of the message.
void tellWhenGivingUp(const Invocation &invocation, MessageSender::WaitedFor waitedFor,
                      const MessageSender *handedOver = nullptr)
{
    BoundedCall::onGivingUp([&invocation, waitedFor, handedOver](Answer answer) {
        MessageSender::Result result;
        result.waitedFor = waitedFor;
        result.answer = answer;
        if (handedOver) {
            result.outcome = MessageSender::Unknown;
            result.problem = handedOver->problem();
        }
        const ExitCode code = report(invocation, result);
        invocation.output.flush();
        std::_Exit(answer == Answer::Interrupted ? 128 + Interrupt::signalNumber() : code);
    });
}

// The library would wait without limit for a bus that does not answer. Here the wait ends by the
// time or a signal.
void openSessionBus(const Invocation &invocation)
{
    tellWhenGivingUp(invocation, MessageSender::SessionBus);
    const BoundedCall call(BoundedCall::Read, invocation.global.timeout);
    MessageBus::session().open(MessageBus::Unlimited);
}

ExitCode send(const Invocation &invocation, const SmsInfo &message)
{
    openSessionBus(invocation);
    tellWhenGivingUp(invocation, MessageSender::Store);
    MessageStore store(invocation.global.timeout);
    MessageSender sender(invocation.location, store);
    const auto handedOver = [&] { tellWhenGivingUp(invocation, MessageSender::Store, &sender); };
    return report(invocation, sender.send(message, invocation.global.timeout, handedOver));
}

void printDryRun(const Invocation &invocation, const SmsInfo &message)
{
    if (invocation.global.format == QLatin1String("ndjson")) {
        invocation.output.write(JsonLine()
                                    .add("status", QLatin1String(nameOf(MessageSender::Sent)))
                                    .add("number", message.toNumber)
                                    .add("body", message.body)
                                    .line());
    } else {
        invocation.output.write(Text::tr("would be sent to %1: %2")
                                    .arg(terminalText(message.toNumber), terminalText(message.body))
                                    .toUtf8()
                                + '\n');
    }
}

ExitCode runSend(const Invocation &invocation)
{
    if (!invocation.global.argumentsAreUtf8) {
        Diagnostics::error(Text::tr("number and text are not UTF-8; nothing was sent"));
        return UsageError;
    }
    const bool isFile = invocation.isSet("vmessage");
    const QStringList &arguments = invocation.arguments;
    if (isFile ? !arguments.isEmpty() : !areMessage(arguments)) {
        Diagnostics::error(Text::tr("send needs number and text, as two words or on standard "
                                    "input with the number in the first line; or --vmessage "
                                    "alone"));
        return UsageError;
    }
    std::optional<ParsedMessage> given;
    Reason parseError;
    if (isFile) {
        const auto message = Arguments::onlyMessage("send", invocation.value("vmessage"));
        if (!message)
            return UsageError;
        given = ParsedMessage::parse(message->bytes);
        if (!given)
            parseError = parseErrorIn(message->bytes, message->line);
    } else {
        given = typedMessage(arguments);
        if (!given)
            return UsageError;
    }
    const SendableMessage normalised =
        given ? normaliseToSend(*given) : SendableMessage{{}, RejectReason::SmsParse};
    if (given && normalised.message.body.isEmpty()) {
        Diagnostics::error(Text::tr("there is no text to send; give one behind the number"));
        return UsageError;
    }
    if (normalised.rejectReason != RejectReason::None) {
        const Reason reason = given ? reasonOf(normalised.rejectReason) : parseError;
        Diagnostics::error(
            Text::tr("not sent (%1): %2").arg(codeOf(normalised.rejectReason), reason.translated));
        return SomeNotDone;
    }
    if (!isCarriedWhole(normalised.message)) {
        Diagnostics::error(
            Text::tr("a message cannot carry this number or text; leave control characters out"));
        return UsageError;
    }
    if (const ExitCode code = StoreAccess::requirePlace(invocation.location))
        return code;
    if (!invocation.global.dryRun)
        return send(invocation, normalised.message);
    printDryRun(invocation, normalised.message);
    return AllDone;
}

} // namespace

Command sendCommand()
{
    return {
        "send",
        "[-] | NUMBER -|TEXT",
        Text::tr("Sends a message and prints its id. With -, the first line of standard input is "
                 "the number and the rest is the text. With NUMBER -, standard input is the text."),
        {QStringLiteral("text"), QStringLiteral("ndjson")},
        {{QStringLiteral("vmessage"), Text::tr("Send the only message of a file to its recipient."),
          QStringLiteral("FILE")}},
        runSend,
        {Text::tr("While a command runs, all users of the machine can see the words of its command "
                  "line. Scripts should give number and text on standard input."),
         {"korvasync send < message.txt", "fortune | korvasync send +15550100 -",
          "korvasync send +15550100 Hello"},
         Text::tr("Exit codes: 0 sent, 1 refused, 2 usage, 3 the store cannot be used, 5 it gave "
                  "no answer, 8 not sent, 9 not known whether sent.")},
        GlobalOptions::DryRun};
}
