// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "scriptedmodem.h"

#include <QtCore/QMap>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusObjectPath>

#include <utility>

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;
Q_DECLARE_METATYPE(Interfaces)
Q_DECLARE_METATYPE(Objects)

namespace {

const QString ConnectionName = QStringLiteral("scripted modem");
const QString Path = QStringLiteral("/org/freedesktop/ModemManager1");
const QString Service = QStringLiteral("org.freedesktop.ModemManager1");
constexpr int Registered = 8;

Objects objects()
{
    const QString modem = Service + QStringLiteral(".Modem");
    return {{QDBusObjectPath(Path + QStringLiteral("/Modem/0")),
             {{modem, {{QStringLiteral("State"), Registered}}},
              {modem + QStringLiteral(".Messaging"), QVariantMap()}}}};
}

} // namespace

ScriptedModem::ScriptedModem(const QString &busAddress)
    : m_bus(QDBusConnection::connectToBus(busAddress, ConnectionName))
{
    qDBusRegisterMetaType<Interfaces>();
    qDBusRegisterMetaType<Objects>();
    if (!m_bus.registerVirtualObject(Path, this, QDBusConnection::SubPath)
        || !m_bus.registerService(Service))
        qFatal("There is no bus for the scripted modem");
}

ScriptedModem::~ScriptedModem() { QDBusConnection::disconnectFromBus(ConnectionName); }

QStringList ScriptedModem::texts() const
{
    QStringList texts;
    for (const Message &message : m_messages)
        texts += message.text;
    return texts;
}

void ScriptedModem::accept(bool always)
{
    m_acceptsAlways = always;
    const QList<QDBusMessage> calls = std::exchange(m_unanswered, {});
    for (const QDBusMessage &call : calls)
        m_bus.send(call.createReply());
}

void ScriptedModem::refuse(const QString &errorName, const QString &errorText)
{
    const QList<QDBusMessage> calls = std::exchange(m_unanswered, {});
    for (const QDBusMessage &call : calls)
        m_bus.send(call.createErrorReply(errorName, errorText));
}

void ScriptedModem::refuseToTake(const QString &errorName, const QString &errorText)
{
    m_errorName = errorName;
    m_errorText = errorText;
}

void ScriptedModem::answerInstead(const QString &method, const QVariantList &arguments)
{
    m_otherAnswers.insert(method, arguments);
}

bool ScriptedModem::handleMessage(const QDBusMessage &call, const QDBusConnection &bus)
{
    const auto other = m_otherAnswers.constFind(call.member());
    if (other != m_otherAnswers.constEnd()) {
        bus.send(call.createReply(*other));
    } else if (call.member() == QLatin1String("Send")) {
        m_messages += m_created.value(call.path().section(QLatin1Char('/'), -1).toInt());
        m_unanswered += call;
        if (m_acceptsAlways)
            accept(true);
        Q_EMIT asked();
    } else {
        bus.send(answerTo(call));
    }
    return true;
}

QDBusMessage ScriptedModem::answerTo(const QDBusMessage &call)
{
    if (call.member() == QLatin1String("GetManagedObjects"))
        return call.createReply(QVariant::fromValue(objects()));
    if (call.member() != QLatin1String("Create"))
        return call.createReply();
    if (!m_errorName.isEmpty())
        return call.createErrorReply(m_errorName, m_errorText);
    const auto properties = qdbus_cast<QVariantMap>(call.arguments().value(0));
    m_created += {properties.value(QStringLiteral("number")).toString(),
                  properties.value(QStringLiteral("text")).toString()};
    const QString sms = QStringLiteral("/SMS/%1").arg(m_created.size() - 1);
    return call.createReply(QVariant::fromValue(QDBusObjectPath(Path + sms)));
}
