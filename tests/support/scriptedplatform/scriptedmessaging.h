// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

//! The messaging library behind the scripted platform: what comes of a message, and what was
//! handed over. One exists at a time.
class ScriptedMessaging
{
public:
    struct Message
    {
        QString number;
        QString text;
        bool keepInHistory;
    };
    enum class Outcome { Accepted, Refused, None };

    ScriptedMessaging();
    ~ScriptedMessaging();

    Outcome outcome = Outcome::Accepted; //!< of every message, on a later turn of the event loop

    QStringList names; //!< of the MessagingIf objects, in order
    QList<Message> messages;

    static ScriptedMessaging *current();

private:
    Q_DISABLE_COPY(ScriptedMessaging)
};
