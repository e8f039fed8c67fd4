// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "modemmanagersubmission_p.h"

#include "modemmanagerproxies.h"
#include "problem_p.h"

#include <QtDBus/QDBusMetaType>

namespace {

using ObjectManager = OrgFreedesktopDBusObjectManagerInterface;
using Modem = OrgFreedesktopModemManager1ModemInterface;
using Messaging = OrgFreedesktopModemManager1ModemMessagingInterface;
using Sms = OrgFreedesktopModemManager1SmsInterface;

// Limits in milliseconds.
constexpr int EnableLimit = 60000;
constexpr int NetworkLimit = 60000; //!< from the call that enables the modem on
constexpr int SendLimit = 180000;   //!< a long text goes out in many parts, one by one

// ModemManager's own numbers.
enum ModemState {
    StateFailed = -1,
    StateLocked = 2,
    StateDisabled = 3,
    StateEnabling = 5,
    StateRegistered = 8
};
constexpr uint FailedForLackOfSim = 2;

QString whyNotUsable(const QVariantMap &modem)
{
    const int state = modem.value(QStringLiteral("State")).toInt();
    const uint reason = modem.value(QStringLiteral("StateFailedReason")).toUInt();
    if (state == StateFailed && reason == FailedForLackOfSim)
        return Problem::noSim();
    if (state == StateLocked)
        return Problem::lockedSim();
    return Problem::noMessaging();
}

} // namespace

ModemManagerSubmission::ModemManagerSubmission(const QString &daemon, const QString &modemPath,
                                               const OutgoingMessage &message, QObject *parent)
    : Submission(message, parent)
    , m_daemon(daemon)
    , m_modemPath(modemPath)
{
    qDBusRegisterMetaType<ObjectInterfaces>();
    qDBusRegisterMetaType<ManagedObjects>();
    m_networkTimer.setSingleShot(true);
    connect(&m_networkTimer, &QTimer::timeout, this,
            [this] { finishNotSent(Problem::noNetwork()); });
}

void ModemManagerSubmission::start()
{
    auto *objects = new ObjectManager(m_daemon, QStringLiteral("/org/freedesktop/ModemManager1"),
                                      QDBusConnection::systemBus(), this);
    objects->setTimeout(QueryLimit);
    thenOrGiveUp(
        objects->GetManagedObjects(),
        [this](const QDBusPendingReply<ManagedObjects> &reply) { chooseModem(reply.value()); });
}

void ModemManagerSubmission::chooseModem(const ManagedObjects &objects)
{
    QString problem = Problem::noModem(m_modemPath);
    for (auto object = objects.cbegin(); object != objects.cend(); ++object) {
        const QString path = object.key().path();
        const auto modem = object->constFind(QString::fromLatin1(Modem::staticInterfaceName()));
        // A modem that is going may be an object without interfaces.
        if (modem == object->cend() || (!m_modemPath.isEmpty() && path != m_modemPath))
            continue;
        const int state = modem->value(QStringLiteral("State")).toInt();
        const bool sendsMessages =
            object->contains(QString::fromLatin1(Messaging::staticInterfaceName()));
        if (sendsMessages && state >= StateDisabled)
            return useModem(path, state);
        problem = whyNotUsable(*modem);
    }
    finishNotSent(problem);
}

void ModemManagerSubmission::useModem(const QString &path, int state)
{
    m_modem = new Modem(m_daemon, path, QDBusConnection::systemBus(), this);
    m_messaging = new Messaging(m_daemon, path, QDBusConnection::systemBus(), this);
    m_messaging->setTimeout(QueryLimit);
    if (state <= StateEnabling)
        return enable();
    if (state < StateRegistered)
        return finishNotSent(Problem::noNetwork());
    m_isEnabled = m_isRegistered = true;
    createIfReady();
}

void ModemManagerSubmission::enable()
{
    connect(m_modem, &Modem::StateChanged, this, [this](int, int state) {
        m_isRegistered = state >= StateRegistered;
        createIfReady();
    });
    m_modem->setTimeout(EnableLimit);
    m_networkTimer.start(NetworkLimit);
    thenOrGiveUp(m_modem->Enable(true), [this](const QDBusPendingReply<> &) {
        m_isEnabled = true;
        createIfReady();
    });
}

void ModemManagerSubmission::createIfReady()
{
    if (!m_isEnabled || !m_isRegistered || isFinished())
        return;
    m_networkTimer.stop();
    m_modem->disconnect(this);
    const QVariantMap properties{{QStringLiteral("number"), m_message.number},
                                 {QStringLiteral("text"), m_message.text}};
    thenOrGiveUp(
        m_messaging->Create(properties),
        [this](const QDBusPendingReply<QDBusObjectPath> &reply) { send(reply.value().path()); });
}

void ModemManagerSubmission::send(const QString &messagePath)
{
    watchForEndOf(m_daemon);
    auto *sms = new Sms(m_daemon, messagePath, QDBusConnection::systemBus(), this);
    sms->setTimeout(SendLimit);
    then(sms->Send(), [this, messagePath](const QDBusPendingReply<> &reply) {
        // The daemon would keep the object until it ends.
        m_messaging->Delete(QDBusObjectPath(messagePath));
        if (reply.isError())
            judge(reply.error());
        else
            finishAccepted();
    });
}

//! Whether the network may have the message although sending it ended in an error. What the
//! modem answers with an error it has not sent; of other errors only those are sure that the
//! daemon gives before it turns to the modem.
void ModemManagerSubmission::judge(const QDBusError &error)
{
    const QString prefix = QStringLiteral("org.freedesktop.ModemManager1.Error.");
    const QString name = error.name();
    const auto isOf = [&](const char *kind) {
        return name.startsWith(prefix + QLatin1String(kind));
    };
    const bool isFromModem = isOf("Message.") || isOf("MobileEquipment.");
    const bool isFromDaemon = isOf("Core.Unauthorized") || isOf("Core.InvalidArgs")
        || isOf("Core.WrongState") || isOf("Core.Unsupported")
        || error.type() == QDBusError::AccessDenied || error.type() == QDBusError::UnknownObject
        || error.type() == QDBusError::UnknownMethod;
    if (isOf("Core.TooMany")) // parts
        finishNotSent(Problem::tooLong());
    else if (isFromModem)
        finishNotSent(QStringLiteral("The message was refused: %1").arg(wordsOf(error, m_message)));
    else if (isFromDaemon)
        finishNotSent(describe(error));
    else
        finishUnknown(describe(error));
}

#include "moc_modemmanagersubmission_p.cpp"
