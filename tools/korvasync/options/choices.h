// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "command.h"

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

//! The words that options take: the one table of them. Shells propose what it says.
namespace Choices {

//! The words of an option of a command, the default first if there is one.
//! \param command  as it is typed: "add", "calls add"; empty for what all commands take
//! \return empty for an option that takes any text
QStringList of(const QString &command, const QString &option);

//! What "korvasync --option-words" prints for the completions: a line "COMMAND:OPTION WORD..." for
//! each option that takes words, and ":OPTION WORD..." for what may stand before a command.
QByteArray lines(const QList<Command> &commands);

} // namespace Choices
