// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "dbustypes_p.h"
#include "submission_p.h"

#include <QtCore/QTimer>

class OrgFreedesktopModemManager1ModemInterface;
class OrgFreedesktopModemManager1ModemMessagingInterface;

//! Sends through ModemManager: enables the modem if need be, waits for the network if it had
//! to, makes a message object and sends that.
class ModemManagerSubmission : public Submission
{
    Q_OBJECT
public:
    //! \param modemPath  empty: the first modem that sends messages
    ModemManagerSubmission(const QString &daemon, const QString &modemPath,
                           const OutgoingMessage &message, QObject *parent);

    void start() override;

private:
    void chooseModem(const ManagedObjects &objects);
    void useModem(const QString &path, int state);
    void enable();
    void createIfReady();
    void send(const QString &messagePath);
    void judge(const QDBusError &error);

    const QString m_daemon;
    const QString m_modemPath;
    OrgFreedesktopModemManager1ModemInterface *m_modem = nullptr;
    OrgFreedesktopModemManager1ModemMessagingInterface *m_messaging = nullptr;
    QTimer m_networkTimer;
    bool m_isEnabled = false;
    bool m_isRegistered = false;
};
