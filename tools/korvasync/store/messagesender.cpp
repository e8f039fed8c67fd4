// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagesender.h"

#include "shared/interrupt.h"
#include "shared/parsedmessage.h"
#include "shared/troublewatch.h"

#include <QtCore/QDeadlineTimer>

using namespace KorvaSyncIf;

MessageSender::MessageSender(StoreLocation &location, MessageStore &store)
    : m_location(location)
    , m_store(store)
    , m_clientLock(location)
    , m_since(QDateTime::currentDateTimeUtc().addDays(-1)) // the clock may be set meanwhile
{
}

Answer MessageSender::read(LocationId folder, QList<StoredMessage> &messages)
{
    if (m_location.state() == StoreLocation::Absent) // the first message makes it
        return Answer::Finished;
    const MessageStore::Read read = m_store.messages(m_since, folder);
    for (const SyncSmsInfo &record : read.messages)
        messages += StoredMessage::fromRecord(record);
    return read.answer;
}

Answer MessageSender::remember()
{
    QList<StoredMessage> messages;
    for (const LocationId folder : {LocSent, LocOutbox}) {
        const Answer answer = read(folder, messages);
        if (answer != Answer::Finished)
            return answer;
    }
    for (const StoredMessage &message : std::as_const(messages))
        m_knownIds += message.id;
    return Answer::Finished;
}

// Whether the message has come into one of the folders.
Answer MessageSender::look(const SmsInfo &message, Result &result)
{
    const QStringView body = ParsedMessage::comparable(message.body);
    for (const LocationId folder : {LocSent, LocOutbox}) {
        QList<StoredMessage> messages;
        const Answer answer = read(folder, messages);
        if (answer != Answer::Finished)
            return answer;
        for (const StoredMessage &stored : std::as_const(messages)) {
            if (m_knownIds.contains(stored.id) || stored.number != message.toNumber
                || ParsedMessage::comparable(stored.body) != body)
                continue;
            result.outcome = folder == LocSent ? Sent : Failed;
            result.id = stored.id;
            return Answer::Finished;
        }
    }
    return Answer::Finished;
}

MessageSender::Result MessageSender::send(const SmsInfo &message, std::chrono::milliseconds timeout,
                                          const std::function<void()> &handedOver)
{
    constexpr std::chrono::milliseconds pollInterval(250);
    Result result;
    result.answer = m_clientLock.take(timeout);
    if (result.answer != Answer::Finished) {
        result.waitedFor = OtherClients;
        return result;
    }
    result.answer = remember();
    if (result.answer == Answer::Finished && Interrupt::signalNumber() != 0)
        result.answer = Answer::Interrupted;
    if (result.answer != Answer::Finished)
        return result;
    const TroubleWatch watch;
    m_delivery.emplace(message);
    result.cause = m_delivery->errorCause();
    if (result.cause != PendingSmsId::NoError)
        return result;
    result.outcome = Unknown;
    handedOver();
    const QDeadlineTimer deadline(timeout);
    QEventLoop loop;
    QObject::connect(&*m_delivery, &Delivery::answered, &loop, &QEventLoop::quit);
    // A store that has trouble may be well again before the time is over.
    while (result.outcome == Unknown && result.answer != Answer::Interrupted
           && !deadline.hasExpired()) {
        QTimer::singleShot(pollInterval, &loop, &QEventLoop::quit);
        {
            const BoundedCall call(BoundedCall::Write, timeout); // the bus may hold the loop up
            loop.exec();
        }
        result.answer =
            Interrupt::signalNumber() != 0 ? Answer::Interrupted : look(message, result);
    }
    if (result.outcome == Unknown && result.answer == Answer::Finished && watch.hasTrouble())
        result.answer = Answer::Refused; // what became of the message could not be stored
    result.problem = m_delivery->problem();
    return result;
}
