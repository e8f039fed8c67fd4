// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <vmessage/vmessageparser.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>

//! What every VMessageParser finds while this object lives; null pointers are absent parts.
class ScriptedParser
{
public:
    ScriptedParser();
    ~ScriptedParser();

    const VMessage *message() const; //!< stands for a parsed message

    bool parses = true;
    const VMessageHeader *header = nullptr;
    const VMessageOriginator *originator = nullptr;
    const VMessageRecipient *recipient = nullptr;
    const VMessageBody *body = nullptr;

    QList<QByteArray> inputs; //!< what was given to parse, in the length that was told
    int parsersAlive = 0;
    int parsersMade = 0;

private:
    Q_DISABLE_COPY(ScriptedParser)
};
