// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

// The quoted-printable operations of VMessageEncoder over bytes. \a lineLength is the
// encoder's count of characters on the current line.

namespace KorvaSyncIf {

QString quotedPrintable(const QByteArray &utf8, int &lineLength);
void appendQuotedPrintable(unsigned char character, QString &text, int &lineLength);

} // namespace KorvaSyncIf
