// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagesending_p.h"

#include "historyentry_p.h"
#include "modemmanagersubmission_p.h"
#include "ofonosubmission_p.h"
#include "sendingmonitor.h"

#include <bus/messagebus.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>
#include <QtCore/QRegularExpression>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <algorithm>
#include <iterator>

namespace {

Q_LOGGING_CATEGORY(lcMessaging, "korvasync.messaging", QtWarningMsg)

constexpr int BusPatienceMsecs = 5000; // for each answer of the system bus

template <typename Backend>
Submission *makeSubmission(const QString &daemon, const QString &modemPath,
                           const OutgoingMessage &message, QObject *parent)
{
    return new Backend(daemon, modemPath, message, parent);
}

//! The library hands a number on as Latin-1, as its callers expect it to be read; to dial it,
//! it is read as the UTF-8 that it was.
QString asMeant(const QString &number)
{
    const QByteArray bytes = number.toLatin1();
    const QString meant = QString::fromUtf8(bytes);
    return QString::fromLatin1(bytes) == number && meant.toUtf8() == bytes ? meant : number;
}

bool isSeparator(QChar c)
{
    return c.isSpace() || c.category() == QChar::Punctuation_Dash
        || c.category() == QChar::Other_Format // direction marks come along from other programs
        || QStringLiteral("().,/").contains(c);
}

//! The number as it can be dialled; empty when it cannot. Nothing but separators is left out,
//! so that the message never goes to another number than the one that was meant.
QString toDial(const QString &number)
{
    const QString typed = asMeant(number);
    QString digits;
    std::copy_if(typed.cbegin(), typed.cend(), std::back_inserter(digits),
                 [](QChar c) { return !isSeparator(c); });
    // A message has room for 20 digits.
    static const QRegularExpression dialled(QStringLiteral("^\\+?[0-9*#]{1,20}$"));
    return dialled.match(digits).hasMatch() ? digits : QString();
}

QString describe(MessageBus::State bus)
{
    switch (bus) {
    case MessageBus::State::Open:
        break;
    case MessageBus::State::Absent:
        return QStringLiteral("There is no system bus.");
    case MessageBus::State::Silent:
        return QStringLiteral("The system bus does not answer.");
    }
    return QString();
}

int numberOfNext()
{
    static int last = 0;
    return ++last;
}

QString describeOfBus(const QDBusError &error)
{
    return MessageBus::isUnanswered(error)
        ? describe(MessageBus::State::Silent)
        : QStringLiteral("The system bus reports: %1").arg(wordsOf(error, {}));
}

} // namespace

struct MessageSending::Daemon
{
    const char *busName;
    const char *modemPathStart; //!< which of the daemons a path of a modem belongs to
    decltype(&makeSubmission<OfonoSubmission>) makeSubmission;
};

//! In order of preference.
const MessageSending::Daemon MessageSending::Daemons[] = {
    {"org.freedesktop.ModemManager1", "/org/freedesktop/ModemManager1/",
     makeSubmission<ModemManagerSubmission>},
    {"org.ofono", "/", makeSubmission<OfonoSubmission>},
};

MessageSending::MessageSending(const QString &modemPath, const QString &number, const QString &text,
                               bool keepInHistory)
    : QObject(QCoreApplication::instance())
    , m_message(numberOfNext())
    , m_modemPath(modemPath)
    , m_number(number)
    , m_text(text)
    , m_keepInHistory(keepInHistory)
{
}

void MessageSending::start()
{
    Q_EMIT SendingMonitor::instance()->begun(m_message);
    QMetaObject::invokeMethod(this, &MessageSending::begin, Qt::QueuedConnection);
}

void MessageSending::begin()
{
    using Outcome = Submission::Outcome;
    if (toDial(m_number).isEmpty())
        return keep(Outcome::NotSent, QStringLiteral("The number cannot be dialled."));
    MessageBus::system().open(BusPatienceMsecs, this, [this](MessageBus::State bus) {
        if (bus == MessageBus::State::Open)
            lookFor(std::begin(Daemons));
        else
            keep(Outcome::NotSent, describe(bus));
    });
}

//! Asks the bus for the daemon's unique name; the next daemon is looked for when there is none.
void MessageSending::lookFor(const Daemon *daemon)
{
    daemon = std::find_if(daemon, std::end(Daemons), [this](const Daemon &candidate) {
        return m_modemPath.isEmpty()
            || m_modemPath.startsWith(QLatin1String(candidate.modemPathStart));
    });
    if (daemon == std::end(Daemons)) {
        return keep(Submission::Outcome::NotSent,
                    QStringLiteral("There is no modem daemon, neither ModemManager nor oFono."));
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    question << QString::fromLatin1(daemon->busName);
    auto *answer = new QDBusPendingCallWatcher(
        QDBusConnection::systemBus().asyncCall(question, BusPatienceMsecs), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [=] {
        answer->deleteLater();
        const QDBusPendingReply<QString> reply(*answer);
        if (!reply.isError())
            submit(*daemon, reply.value());
        else if (reply.error().name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
            lookFor(daemon + 1);
        else
            keep(Submission::Outcome::NotSent, describeOfBus(reply.error()));
    });
}

void MessageSending::submit(const Daemon &daemon, const QString &uniqueName)
{
    auto *submission =
        daemon.makeSubmission(uniqueName, m_modemPath, {toDial(m_number), m_text}, this);
    connect(submission, &Submission::finished, this, &MessageSending::keep);
    submission->start();
}

void MessageSending::keep(Submission::Outcome outcome, const QString &problem)
{
    // Before it is stored, so that who finds the message there can tell the reason, too.
    if (!problem.isEmpty())
        tell(problem);
    if (outcome == Submission::Outcome::Unknown) {
        return finish(
            QStringLiteral("It is not known whether the message was sent. %1").arg(problem));
    }
    if (!m_keepInHistory)
        return finish(problem);
    const auto folder = outcome == Submission::Outcome::Accepted ? CommHistory::SentFolder
                                                                 : CommHistory::OutboxFolder;
    auto *entry = new HistoryEntry(m_number, m_text, folder, this);
    connect(entry, &HistoryEntry::written, this, [=](bool isStored) {
        if (!isStored)
            tell(QStringLiteral("A message could not be added to the history."));
        finish(problem);
    });
    entry->write();
}

void MessageSending::tell(const QString &problem)
{
    qCWarning(lcMessaging, "%s", qUtf8Printable(problem));
    Q_EMIT SendingMonitor::instance()->problemFound(m_message, problem);
}

void MessageSending::finish(const QString &problem)
{
    const int message = m_message; // a receiver may have deleted this object
    deleteLater();
    Q_EMIT finished(problem);
    Q_EMIT SendingMonitor::instance()->ended(message);
}

#include "moc_messagesending_p.cpp"
