// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "modemstack.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>

namespace {

constexpr int Patience = 20000; //!< milliseconds

} // namespace

ModemStack::ModemStack(Daemon daemon, const PrivateBus &systemBus)
    : m_daemonKind(daemon)
    , m_busAddress(systemBus.address())
    , m_bus(QDBusConnection::connectToBus(m_busAddress, QStringLiteral("modemstack")))
{
    connect(&m_modem, &QProcess::readyReadStandardOutput, this, &ModemStack::readModem);
    m_modem.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // All that tells of a daemon or a modem that comes, goes or changes.
    const char *const signalNames[][2] = {
        {"org.freedesktop.DBus", "NameOwnerChanged"},
        {"org.freedesktop.DBus.ObjectManager", "InterfacesAdded"},
        {"org.freedesktop.DBus.Properties", "PropertiesChanged"},
        {"org.ofono.Manager", "ModemAdded"},
        {"org.ofono.Modem", "PropertyChanged"},
        {"org.ofono.NetworkRegistration", "PropertyChanged"},
        {"org.ofono.SimManager", "PropertyChanged"},
    };
    for (const auto &signal : signalNames) {
        m_bus.connect(QString(), QString(), QString::fromLatin1(signal[0]),
                      QString::fromLatin1(signal[1]), this, SIGNAL(changed()));
    }
}

ModemStack::~ModemStack()
{
    stop();
    QDBusConnection::disconnectFromBus(QStringLiteral("modemstack"));
}

bool ModemStack::provide()
{
    if (m_isUntroubled)
        return true;
    m_isUntroubled = start("ready");
    return m_isUntroubled;
}

bool ModemStack::start(const QByteArray &sim)
{
    stop();
    return startModem(sim) && startDaemon() && introduceModem()
        && waitUntil([=] { return hasSettled(sim); });
}

bool ModemStack::startWithoutModem()
{
    stop();
    m_modemAddress.clear();
    return startDaemon();
}

void ModemStack::stop()
{
    m_daemon.end();
    m_modem.end();
    m_messages.clear();
    m_submissions = 0;
    m_isUntroubled = false;
}

void ModemStack::killDaemon()
{
    m_daemon.end();
    m_isUntroubled = false;
}

QString ModemStack::modemPath() const
{
    return m_daemonKind == Daemon::Ofono ? QStringLiteral("/phonesim")
                                         : QStringLiteral("/org/freedesktop/ModemManager1/Modem/0");
}

bool ModemStack::order(const QByteArray &order)
{
    m_isUntroubled = false;
    m_hasObeyed = false;
    m_submissions = 0;
    m_modem.write(order + '\n');
    return waitUntil([this] { return m_hasObeyed; });
}

bool ModemStack::goAway()
{
    return order("away") && waitUntil([this] {
               if (m_daemonKind == Daemon::Ofono)
                   return networkStatus() == QLatin1String("unregistered");
               return modemState() == 6 || modemState() == 7; // enabled, searching
           });
}

bool ModemStack::setModemProperty(const QString &name, bool value)
{
    m_isUntroubled = false;
    bool isDone = false;
    call(modemPath(), QStringLiteral("org.ofono.Modem"), QStringLiteral("SetProperty"),
         {name, QVariant::fromValue(QDBusVariant(value))}, &isDone);
    return isDone;
}

QList<QJsonObject> ModemStack::takeMessages()
{
    QList<QJsonObject> messages;
    messages.swap(m_messages);
    return messages;
}

bool ModemStack::waitForSubmission()
{
    return waitUntil([this] { return m_submissions > 0; });
}

bool ModemStack::startModem(const QByteArray &sim)
{
    QStringList arguments;
    if (m_daemonKind == Daemon::ModemManager)
        arguments.append(m_directory.filePath(QStringLiteral("modem")));
    QFile::remove(m_directory.filePath(QStringLiteral("modem")));
    m_modemAddress.clear();
    m_modem.startBound(QStringLiteral(ATMODEM), arguments);
    m_modem.write(sim + '\n');
    return waitUntil([this] { return !m_modemAddress.isEmpty(); });
}

void ModemStack::readModem()
{
    while (m_modem.canReadLine()) {
        const QJsonObject object = QJsonDocument::fromJson(m_modem.readLine()).object();
        if (object.contains(QStringLiteral("listening")))
            m_modemAddress = object.value(QStringLiteral("listening")).toString();
        if (object.contains(QStringLiteral("obeyed")))
            m_hasObeyed = true;
        if (object.contains(QStringLiteral("submitted")))
            ++m_submissions;
        if (object.contains(QStringLiteral("text")))
            m_messages.append(object);
        Q_EMIT changed();
    }
}

bool ModemStack::startDaemon()
{
    m_daemon.setWorkingDirectory(m_directory.path()); // where ModemManager looks for the socket
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    m_daemon.setStandardOutputFile(QProcess::nullDevice());
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    QString busName = QStringLiteral("org.freedesktop.ModemManager1");
    if (m_daemonKind == Daemon::ModemManager) {
        // Its test mode, which needs no authority to ask, goes with the session bus.
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_busAddress);
        m_daemon.setProcessEnvironment(environment);
        m_daemon.startBound(QStringLiteral("/usr/sbin/ModemManager"),
                            {QStringLiteral("--test-session"), QStringLiteral("--test-enable"),
                             QStringLiteral("--test-no-udev"),
                             QStringLiteral("--test-no-suspend-resume"),
                             QStringLiteral("--test-no-qrtr")});
    } else {
        busName = QStringLiteral("org.ofono");
        QFile configuration(m_directory.filePath(QStringLiteral("phonesim.conf")));
        configuration.open(QIODevice::WriteOnly);
        if (!m_modemAddress.isEmpty())
            configuration.write("[phonesim]\nAddress=127.0.0.1\nPort=" + m_modemAddress.toLatin1()
                                + "\n");
        configuration.close();
        environment.insert(QStringLiteral("OFONO_PHONESIM_CONFIG"), configuration.fileName());
        m_daemon.setProcessEnvironment(environment);
        // oFono keeps what it has not sent and sends it later: not across tests.
        m_daemon.startBound(
            QStringLiteral("unshare"),
            {QStringLiteral("--mount"), QStringLiteral("sh"), QStringLiteral("-c"),
             QStringLiteral("mount -t tmpfs none /var/lib/ofono && exec ofonod --nodetach")});
    }
    return waitUntil([=] { return m_bus.interface()->isServiceRegistered(busName).value(); });
}

bool ModemStack::introduceModem()
{
    if (m_daemonKind == Daemon::ModemManager) {
        bool isDone = false;
        call(QStringLiteral("/org/freedesktop/ModemManager1"),
             QStringLiteral("org.freedesktop.ModemManager1.Test"), QStringLiteral("SetProfile"),
             {QStringLiteral("test"), QStringLiteral("generic"),
              QStringList(QStringLiteral("modem"))},
             &isDone);
        return isDone;
    }
    const auto isThere = [this] {
        return modemProperty(QStringLiteral("org.ofono.Modem"), QStringLiteral("Type")).isValid();
    };
    return waitUntil(isThere) && setModemProperty(QStringLiteral("Powered"), true)
        && setModemProperty(QStringLiteral("Online"), true);
}

//! Whether the daemon knows as much of the modem as it ever will.
bool ModemStack::hasSettled(const QByteArray &sim)
{
    if (m_daemonKind == Daemon::ModemManager) {
        const int state = modemState();
        return sim == "ready" ? state >= 3 : state == (sim == "ask-pin" ? 2 : -1);
    }
    const QString simManager = QStringLiteral("org.ofono.SimManager");
    if (sim == "no-sim")
        return modemProperty(simManager, QStringLiteral("Present")) == QVariant(false);
    if (sim == "ask-pin")
        return modemProperty(simManager, QStringLiteral("PinRequired"))
            == QVariant(QStringLiteral("pin"));
    const QStringList interfaces = qdbus_cast<QStringList>(
        modemProperty(QStringLiteral("org.ofono.Modem"), QStringLiteral("Interfaces")));
    return interfaces.contains(QStringLiteral("org.ofono.MessageManager"))
        && networkStatus() == QLatin1String("registered");
}

//! ModemManager's number for the modem's state; 0 = there is no modem yet.
int ModemStack::modemState()
{
    return modemProperty(QStringLiteral("org.freedesktop.ModemManager1.Modem"),
                         QStringLiteral("State"))
        .toInt();
}

//! oFono's word for it.
QString ModemStack::networkStatus()
{
    return modemProperty(QStringLiteral("org.ofono.NetworkRegistration"), QStringLiteral("Status"))
        .toString();
}

bool ModemStack::waitUntil(const std::function<bool()> &isSo)
{
    QDeadlineTimer deadline(Patience);
    while (!isSo()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop loop;
        connect(this, &ModemStack::changed, &loop, &QEventLoop::quit);
        QTimer::singleShot(int(deadline.remainingTime()), &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

QVariant ModemStack::call(const QString &path, const QString &interface, const QString &method,
                          const QVariantList &arguments, bool *isDone)
{
    const QString busName = m_daemonKind == Daemon::Ofono
        ? QStringLiteral("org.ofono")
        : QStringLiteral("org.freedesktop.ModemManager1");
    QDBusMessage message = QDBusMessage::createMethodCall(busName, path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = m_bus.call(message, QDBus::Block, Patience);
    if (isDone)
        *isDone = reply.type() == QDBusMessage::ReplyMessage;
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QVariant ModemStack::modemProperty(const QString &interface, const QString &name)
{
    if (m_daemonKind == Daemon::Ofono)
        return qdbus_cast<QVariantMap>(
                   call(modemPath(), interface, QStringLiteral("GetProperties")))
            .value(name);
    return call(modemPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
                QStringLiteral("Get"), {interface, name})
        .value<QDBusVariant>()
        .variant();
}
