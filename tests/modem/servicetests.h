// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "modemtesting.h"

//! What the service for other programs does on both daemons, in a process of its own.
class ServiceTests : public QObject
{
    Q_OBJECT
protected:
    ServiceTests(ModemStack::Daemon daemon, const PrivateBus &systemBus)
        : stack(daemon, systemBus)
    {
    }

    void sendsWhole(const QString &text);

private:
    bool provideModem();
    bool start(const QStringList &options = QStringList());
    void stop();

    ModemStack stack;
    BoundProcess service;

private Q_SLOTS:
    void init();
    void cleanup();
    void sendsOneAfterTheOther();
    void servesTenQuickCalls();
    void sendsAnyScriptWhole();
    void outlivesTheModemDaemon();
    void tellsWhatIsNotKnownInTime();
    void tellsEqualMessagesApart();
    void seesItsMessageThroughWhenTerminated();
    void endsWhenIdle();
};
