// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>
#include <QtDBus/QDBusError>

//! A message as the modem takes it.
struct OutgoingMessage
{
    QString number; //!< without separators
    QString text;
};

//! What a daemon says of an error, for people and logs: on one short line, without characters
//! that a terminal acts on, since modem and network may have written it. Where it repeats number
//! or text of the message, the name of the error stands for it.
QString wordsOf(const QDBusError &error, const OutgoingMessage &message);
