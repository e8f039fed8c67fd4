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

    //! What the daemon's backend says.
    struct Words
    {
        QByteArray refusal;
        QByteArray loss; //!< of the modem, amid a message
    };

    SendTests(ModemStack::Daemon daemon, const PrivateBus &systemBus, const Words &words)
        : stack(daemon, systemBus)
        , words(words)
    {
    }

    static void start(QProcess *process, const QStringList &arguments,
                      const QByteArray &input = QByteArray());
    static Outcome finish(QProcess *process);
    static Outcome run(const QStringList &arguments, const QByteArray &input = QByteArray());
    //! The messages of a folder, as {"id": ..., "number": ..., "body": ...}.
    static QList<QJsonObject> listed(const QString &folder);
    void sendsWhole(const QString &text);
    //! The message ends in the outbox.
    void fails(const QByteArray &reason);

    ModemStack stack;
    const Words words;

private Q_SLOTS:
    void cleanup();
    void sendsTextsWhole_data();
    void sendsTextsWhole();
    void sendsStandardInput();
    void sendsTheMessageOfAFile();
    void sendsATextWithoutItsByteOrderMark();
    void printsResultsAsJson();
    void tellsTwoEqualMessagesApart();
    void takesNoEarlierMessageForTheOneSent();
    void takesNoOtherClientsMessageForTheOneSent();
    void waitsForALateAnswer();
    void tellsARefusal();
    void tellsAMissingDaemon();
    void tellsAMissingModem();
    void tellsAMissingSim();
    void tellsALockedSim();
    void tellsAMissingNetwork();
    void doesNotKnowWhenTheModemGoes();
    void doesNotKnowWhenTheTimeIsOver();
    void doesNotKnowWhenInterrupted();
    void doesNotKnowWhenTheStoreFails();
    void isNotDeceivedByAForgedAnnouncement();
    void sendsNothingInADryRun();
};
