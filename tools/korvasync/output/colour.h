// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! Emphasis for people on standard output. A line stays as it is where that is no terminal, where
//! the terminal is dumb, and where the user has set NO_COLOR (https://no-color.org).
namespace Colour {

QString bold(const QString &line);
QString red(const QString &line);

} // namespace Colour
