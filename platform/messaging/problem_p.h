// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! What both daemons can tell, in one wording.
namespace Problem {

//! \param path  empty: no modem was named
inline QString noModem(const QString &path)
{
    return path.isEmpty() ? QStringLiteral("There is no modem.")
                          : QStringLiteral("There is no modem %1.").arg(path);
}
inline QString noSim() { return QStringLiteral("The modem has no SIM card."); }
inline QString lockedSim()
{
    return QStringLiteral("The SIM card is locked and asks for its PIN.");
}
inline QString noMessaging() { return QStringLiteral("The modem cannot send messages."); }
inline QString noNetwork() { return QStringLiteral("The modem is not registered with a network."); }
//! For the 255 parts that one message can have.
inline QString tooLong() { return QStringLiteral("The text is too long."); }

} // namespace Problem
