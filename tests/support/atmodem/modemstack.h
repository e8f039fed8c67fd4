// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "privatebus.h"

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>

#include <functional>

//! A real modem daemon on the system bus with a simulated modem. All waiting has a bound, and
//! nothing that was started outlives this object or the test program.
class ModemStack : public QObject
{
    Q_OBJECT
public:
    enum class Daemon { ModemManager, Ofono };

    //! \param systemBus  where the daemon is to be
    ModemStack(Daemon daemon, const PrivateBus &systemBus);
    ~ModemStack() override;

    //! A modem that can send, with a fresh daemon unless the last one had no trouble.
    bool provide();
    //! A fresh daemon that knows a modem with such a SIM (see AtModem::obey()).
    bool start(const QByteArray &sim);
    bool startWithoutModem();
    void stop();
    void killDaemon();

    //! D-Bus path of the modem.
    QString modemPath() const;
    //! Gives the modem an order. The next provide() starts anew.
    bool order(const QByteArray &order);
    //! Takes the modem off the network and waits until the daemon knows.
    bool goAway();
    //! oFono only: sets the modem's "Powered" or "Online".
    bool setModemProperty(const QString &name, bool value);

    //! The whole messages since the last call, each {"number": ..., "text": ...}.
    QList<QJsonObject> takeMessages();
    //! Waits until the modem has begun to get a message since its last order.
    bool waitForSubmission();

Q_SIGNALS:
    void changed();

private:
    bool startModem(const QByteArray &sim);
    bool startDaemon();
    bool introduceModem();
    void readModem();
    bool waitUntil(const std::function<bool()> &isSo);
    QVariant call(const QString &path, const QString &interface, const QString &method,
                  const QVariantList &arguments = {}, bool *isDone = nullptr);
    QVariant modemProperty(const QString &interface, const QString &name);
    bool hasSettled(const QByteArray &sim);
    int modemState();
    QString networkStatus();

    const Daemon m_daemonKind;
    const QString m_busAddress;
    QDBusConnection m_bus;
    QTemporaryDir m_directory;
    BoundProcess m_daemon;
    BoundProcess m_modem;
    QString m_modemAddress; //!< path of the socket or TCP port
    QList<QJsonObject> m_messages;
    int m_submissions = 0;
    bool m_hasObeyed = false;
    bool m_isUntroubled = false;
};
