// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/event.h>
#include <platformexport.h>

#include <QtDBus/QDBusArgument>

// How events travel over D-Bus: an event as the structure (iixxibbissiisssssxa(ssssis)a(is)),
// its fields in the order of the getters of Event. Times are milliseconds since 1970-01-01
// UTC, the smallest 64-bit number where there is none; an event that comes from the bus has
// them in local time. Programs built with Qt 5 and with Qt 6 understand each other.

KORVAPLATFORM_EXPORT QDBusArgument &operator<<(QDBusArgument &argument,
                                               const CommHistory::Event &event);
KORVAPLATFORM_EXPORT const QDBusArgument &operator>>(const QDBusArgument &argument,
                                                     CommHistory::Event &event);
KORVAPLATFORM_EXPORT QDBusArgument &operator<<(QDBusArgument &argument,
                                               const CommHistory::MessagePart &part);
KORVAPLATFORM_EXPORT const QDBusArgument &operator>>(const QDBusArgument &argument,
                                                     CommHistory::MessagePart &part);
