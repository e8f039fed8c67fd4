// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "dbustypes_p.h"
#include "submission_p.h"

#include <QtCore/QHash>
#include <QtCore/QTimer>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>

//! Sends through oFono, which queues a message at once and tells later what became of it.
//! Power and flight mode are the owner's choice here: a modem that is off is left off.
class OfonoSubmission : public Submission
{
    Q_OBJECT
public:
    //! \param modemPath  empty: the first modem that sends messages
    OfonoSubmission(const QString &daemon, const QString &modemPath, const OutgoingMessage &message,
                    QObject *parent);

    void start() override;

private Q_SLOTS:
    void messageChanged(const QString &name, const QDBusVariant &value, const QDBusMessage &signal);

private:
    void chooseModem(const OfonoModems &modems);
    void explainLackOfMessaging(const OfonoModem &modem);
    void checkNetwork();
    void send();
    void watchForLoss();
    void judge(const QDBusError &error);
    void judgeState();

    const QString m_daemon;
    QString m_modemPath;
    QTimer m_outcomeTimer;
    QString m_messagePath;                 //!< empty until the daemon has taken the message
    QHash<QString, QString> m_finalStates; //!< by path of the message; may come before the path
};
