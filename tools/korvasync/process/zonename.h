// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTimeZone>

//! What people call a time zone. To Qt any word may be a zone, at UTC, and some rules are without
//! end; to the C library whatever it does not know is UTC. So names are looked at here first.
namespace ZoneName {

//! The zone of a name such as Europe/Helsinki, or of a rule as POSIX has it; invalid when there is
//! none, or when Qt cannot read the rule.
QTimeZone zone(const QByteArray &name);

//! Whether the C library finds a zone when TZ is \a name, which has no colon in front: the file of
//! one, or a rule.
bool isKnownToTheSystem(const QByteArray &name);

//! Why \a name is of no use, for people.
//! \param place  where it stands: TZ or an option
QString complaint(const QString &place, const QString &name);

} // namespace ZoneName
