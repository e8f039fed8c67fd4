// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "ofonosubmission_p.h"

#include "ofonoproxies.h"
#include "problem_p.h"

#include <bus/messagebus.h>

#include <QtDBus/QDBusMetaType>

#include <algorithm>

namespace {

using Manager = OrgOfonoManagerInterface;
using SimManager = OrgOfonoSimManagerInterface;
using NetworkRegistration = OrgOfonoNetworkRegistrationInterface;
using MessageManager = OrgOfonoMessageManagerInterface;

// Limits in milliseconds.
constexpr int HandOverLimit = 10000;
constexpr int OutcomeLimit = 180000; //!< the daemon itself tries several times

QStringList interfacesOf(const QVariant &value) { return qdbus_cast<QStringList>(value); }

bool hasInterface(const OfonoModem &modem, const char *name)
{
    return interfacesOf(modem.properties.value(QStringLiteral("Interfaces")))
        .contains(QLatin1String(name));
}

bool sendsMessages(const OfonoModem &modem)
{
    return hasInterface(modem, MessageManager::staticInterfaceName());
}

//! Whether a character takes more than the 16 bits that a message has for one.
bool hasWideCharacters(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSurrogate(); });
}

bool isTrue(const OfonoModem &modem, const char *property)
{
    return modem.properties.value(QLatin1String(property)).toBool();
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const OfonoModem &modem)
{
    argument.beginStructure();
    argument << modem.path << modem.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, OfonoModem &modem)
{
    argument.beginStructure();
    argument >> modem.path >> modem.properties;
    argument.endStructure();
    return argument;
}

OfonoSubmission::OfonoSubmission(const QString &daemon, const QString &modemPath,
                                 const OutgoingMessage &message, QObject *parent)
    : Submission(message, parent)
    , m_daemon(daemon)
    , m_modemPath(modemPath)
{
    qDBusRegisterMetaType<OfonoModem>();
    qDBusRegisterMetaType<OfonoModems>();
    m_outcomeTimer.setSingleShot(true);
    connect(&m_outcomeTimer, &QTimer::timeout, this,
            [this] { finishUnknown(QStringLiteral("The modem does not answer.")); });
}

void OfonoSubmission::start()
{
    auto *manager = new Manager(m_daemon, QStringLiteral("/"), QDBusConnection::systemBus(), this);
    manager->setTimeout(QueryLimit);
    thenOrGiveUp(manager->GetModems(), [this](const QDBusPendingReply<OfonoModems> &reply) {
        chooseModem(reply.value());
    });
}

void OfonoSubmission::chooseModem(const OfonoModems &modems)
{
    const auto fits = [this](const OfonoModem &modem) {
        return m_modemPath.isEmpty() || modem.path.path() == m_modemPath;
    };
    auto chosen = std::find_if(modems.cbegin(), modems.cend(), [&](const OfonoModem &modem) {
        return fits(modem) && sendsMessages(modem);
    });
    if (chosen == modems.cend())
        chosen = std::find_if(modems.cbegin(), modems.cend(), fits);
    if (chosen == modems.cend())
        return finishNotSent(Problem::noModem(m_modemPath));
    m_modemPath = chosen->path.path();
    if (!isTrue(*chosen, "Powered"))
        finishNotSent(QStringLiteral("The modem is switched off."));
    else if (!sendsMessages(*chosen))
        explainLackOfMessaging(*chosen);
    else if (!isTrue(*chosen, "Online"))
        finishNotSent(QStringLiteral("The modem is in flight mode."));
    else if (!hasInterface(*chosen, NetworkRegistration::staticInterfaceName()))
        finishNotSent(Problem::noNetwork());
    else
        checkNetwork();
}

void OfonoSubmission::explainLackOfMessaging(const OfonoModem &modem)
{
    if (!hasInterface(modem, SimManager::staticInterfaceName()))
        return finishNotSent(Problem::noMessaging());
    auto *sim = new SimManager(m_daemon, m_modemPath, QDBusConnection::systemBus(), this);
    sim->setTimeout(QueryLimit);
    thenOrGiveUp(sim->GetProperties(), [=](const QDBusPendingReply<QVariantMap> &reply) {
        const QVariantMap properties = reply.value();
        const QString pin = properties.value(QStringLiteral("PinRequired")).toString();
        if (!properties.value(QStringLiteral("Present")).toBool())
            finishNotSent(Problem::noSim());
        else if (!pin.isEmpty() && pin != QLatin1String("none"))
            finishNotSent(Problem::lockedSim());
        else
            finishNotSent(Problem::noMessaging());
    });
}

//! The daemon would keep a message back until there is a network, and send it some day when
//! nobody expects it any more.
void OfonoSubmission::checkNetwork()
{
    auto *network =
        new NetworkRegistration(m_daemon, m_modemPath, QDBusConnection::systemBus(), this);
    network->setTimeout(QueryLimit);
    thenOrGiveUp(network->GetProperties(), [this](const QDBusPendingReply<QVariantMap> &reply) {
        const QString status = reply.value().value(QStringLiteral("Status")).toString();
        if (status == QLatin1String("registered") || status == QLatin1String("roaming"))
            send();
        else
            finishNotSent(Problem::noNetwork());
    });
}

void OfonoSubmission::send()
{
    // Before the message, since its outcome may come before the reply that names it.
    QDBusConnection::systemBus().connect(m_daemon, QString(), QStringLiteral("org.ofono.Message"),
                                         QStringLiteral("PropertyChanged"), this,
                                         SLOT(messageChanged(QString, QDBusVariant, QDBusMessage)));
    watchForLoss();
    m_outcomeTimer.start(OutcomeLimit);
    auto *messages = new MessageManager(m_daemon, m_modemPath, QDBusConnection::systemBus(), this);
    messages->setTimeout(HandOverLimit);
    then(messages->SendMessage(m_message.number, m_message.text),
         [this](const QDBusPendingReply<QDBusObjectPath> &reply) {
             if (reply.isError())
                 return judge(reply.error());
             m_messagePath = reply.value().path();
             judgeState();
         });
}

void OfonoSubmission::judge(const QDBusError &error)
{
    if (MessageBus::isUnanswered(error))
        finishUnknown(describe(error));
    else if (error.name() != QLatin1String("org.ofono.Error.InvalidFormat"))
        finishNotSent(describe(error));
    else if (hasWideCharacters(m_message.text)) // version 1.31 cannot
        finishNotSent(QStringLiteral("oFono cannot send emoji."));
    else
        finishNotSent(Problem::tooLong());
}

void OfonoSubmission::watchForLoss()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    watchForEndOf(m_daemon);
    const auto loseModem = [this] { finishUnknown(QStringLiteral("The modem has gone.")); };
    auto *manager = new Manager(m_daemon, QStringLiteral("/"), bus, this);
    connect(manager, &Manager::ModemRemoved, this, [=](const QDBusObjectPath &path) {
        if (path.path() == m_modemPath)
            loseModem();
    });
    auto *modem = new OrgOfonoModemInterface(m_daemon, m_modemPath, bus, this);
    connect(modem, &OrgOfonoModemInterface::PropertyChanged, this,
            [=](const QString &name, const QDBusVariant &value) {
                if (name == QLatin1String("Interfaces")
                    && !interfacesOf(value.variant())
                            .contains(QLatin1String(MessageManager::staticInterfaceName())))
                    loseModem();
            });
}

void OfonoSubmission::messageChanged(const QString &name, const QDBusVariant &value,
                                     const QDBusMessage &signal)
{
    const QString state = value.variant().toString();
    if (name != QLatin1String("State") || state == QLatin1String("pending"))
        return;
    m_finalStates.insert(signal.path(), state);
    judgeState();
}

void OfonoSubmission::judgeState()
{
    const QString state = m_finalStates.value(m_messagePath);
    if (state == QLatin1String("sent"))
        finishAccepted();
    else if (!state.isEmpty())
        finishNotSent(QStringLiteral("The message was refused."));
}

#include "moc_ofonosubmission_p.cpp"
