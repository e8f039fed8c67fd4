// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QMetaType>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusObjectPath>

//! The properties of an object, by interface.
using ObjectInterfaces = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, ObjectInterfaces>;

struct OfonoModem
{
    QDBusObjectPath path;
    QVariantMap properties;
};
using OfonoModems = QList<OfonoModem>;

QDBusArgument &operator<<(QDBusArgument &argument, const OfonoModem &modem);
const QDBusArgument &operator>>(const QDBusArgument &argument, OfonoModem &modem);

Q_DECLARE_METATYPE(ObjectInterfaces)
Q_DECLARE_METATYPE(ManagedObjects)
Q_DECLARE_METATYPE(OfonoModem)
Q_DECLARE_METATYPE(OfonoModems)
