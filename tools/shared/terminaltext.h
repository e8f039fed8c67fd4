// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! Whether a terminal shows \a c and does nothing else: no control character, no end of a line, no
//! mark that turns the writing direction.
bool isHarmless(QChar c);

//! \a text on one line and harmless on a terminal: what is not becomes a visible sign.
QString terminalText(QString text);

//! The same for lines of UTF-8, which stay lines. Their ends become bare line feeds.
QByteArray terminalLines(const QByteArray &lines);
