// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "modemtesting.h"

//! What the client's "send" does on both daemons, in a process and store of its own.
class SendTests : public QObject
{
    Q_OBJECT
protected:
    struct Outcome
    {
        int exitCode = -1;
        QByteArray output;
        QByteArray errors;
    };

    SendTests(ModemStack::Daemon daemon, const PrivateBus &systemBus)
        : stack(daemon, systemBus)
    {
    }

    static Outcome run(const QStringList &arguments, const QByteArray &input = QByteArray());
    //! The messages of a folder, as {"id": ..., "number": ..., "body": ...}.
    static QList<QJsonObject> listed(const QString &folder);
    void sendsWhole(const QString &text);
    //! The message ends in the outbox.
    void fails();

    ModemStack stack;

private Q_SLOTS:
    void cleanup();
    void sendsTextsWhole_data();
    void sendsTextsWhole();
    void sendsStandardInput();
    void sendsTheMessageOfAFile();
    void printsResultsAsJson();
    void tellsTwoEqualMessagesApart();
    void takesNoEarlierMessageForTheOneSent();
    void waitsForALateAnswer();
    void tellsARefusal();
    void tellsAMissingDaemon();
    void tellsAMissingModem();
    void doesNotKnowWhenTheModemGoes();
    void sendsNothingInADryRun();
};
