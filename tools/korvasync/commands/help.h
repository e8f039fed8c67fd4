// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "options/command.h"

//! What --help prints.
namespace Help {

QByteArray overview(const QList<Command> &commands);

//! \param name  with that of the verb that it belongs to
QByteArray page(const Command &command, const QString &name);

} // namespace Help
