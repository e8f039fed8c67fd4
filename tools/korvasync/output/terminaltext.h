// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! \a text on one line and harmless on a terminal: line ends, escapes and marks that turn
//! the writing direction become visible signs.
QString terminalText(QString text);
