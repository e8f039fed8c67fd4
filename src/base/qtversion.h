// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QHash>
#include <QtDBus/QDBusMetaType>

// All that differs between Qt 5.15 and Qt 6 for this library.

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using HashSeed = size_t;
//! Whether Qt::TextDate is the same in every language.
constexpr bool TextDateIsEnglish = true;
#else
using HashSeed = uint;
constexpr bool TextDateIsEnglish = false;
#endif

//! How a registered type is written on the bus.
template <typename T>
const char *busSignature()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QDBusMetaType::typeToSignature(QMetaType::fromType<T>());
#else
    return QDBusMetaType::typeToSignature(qMetaTypeId<T>());
#endif
}
