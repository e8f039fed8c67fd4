// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "modemtesting.h"

//! What holds for both daemons. A test class for each derives from this one.
class MessagingTests : public QObject
{
    Q_OBJECT
protected:
    MessagingTests(ModemStack::Daemon daemon, const PrivateBus &systemBus)
        : stack(daemon, systemBus)
    {
    }

    void sendsWhole(const QString &text);
    //! Sends a message that fails with the problem, which is warned of too; stored = in the
    //! outbox, else nowhere, as the outcome is not known.
    void fails(const QString &problem, bool isStored = true);

    ModemStack stack;

private Q_SLOTS:
    void cleanup();
    void sendsTextsWhole_data();
    void sendsTextsWhole();
    void tellsATooLongText();
    void storesASentMessage();
    void sendsTwoInARow();
    void leavesSeparatorsOutForTheModemOnly_data();
    void leavesSeparatorsOutForTheModemOnly();
    void dialsALongNumberWhole();
    void sendsThroughTheModemThatIsNamed();
    void tellsThatTheNamedModemIsMissing();
    void keepsNothingWhenAsked();
    void seesAMessageThroughWithoutItsSender();
    void waitsForALateAnswer();
    void tellsALockedSim();
    void tellsAMissingSim();
    void tellsAMissingModem();
    void tellsAMissingNetwork();
    void doesNotKnowWhenTheDaemonGoes();
};
