// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! Names of files as texts, whatever bytes they have: old disks have names that are no UTF-8.
//! A byte that belongs to no character is half a surrogate pair, U+DC80 to U+DCFF, which no
//! text has and which is printed as a question mark.
namespace FileName {

QString decode(const QByteArray &name);
QByteArray encode(const QString &name);

qint64 size(const QString &name); //!< in bytes, 0 = not known

} // namespace FileName
