// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusMessage>

//! A look whether a bus answers, before it is opened. To open a bus that does not answer makes the
//! bus library wait without limit, and every other connection of the process with it.
namespace BusProbe {

//! A connection on which the bus library asks the bus nothing by itself. It is not connected when
//! there is no bus. It is to be kept until the bus answers, as a silent bus has room for a few
//! callers only; QDBusConnection::disconnectFromPeer() ends it.
//! \param name     of the connection, in this process
//! \param address  of the bus
QDBusConnection connection(const QString &name, const QString &address);

//! What a bus answers, if only by refusing it, as it does when it got an earlier one late.
QDBusMessage greeting();

//! Whether no answer has come; what was asked may have been done.
bool isUnanswered(const QDBusError &error);

} // namespace BusProbe
