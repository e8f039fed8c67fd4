// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! Text in the encodings of mail, which leave nothing but printable ASCII.
namespace MailText {

//! The name beside an address (RFC 5322), or encoded words (RFC 2047) where that cannot hold
//! it; these go over several lines if need be.
QByteArray phrase(const QString &name);

//! What stands in a header for people to read, on one line or in encoded words likewise.
QByteArray headerText(const QString &text);

//! The body of a mail in quoted-printable (RFC 2045), without its last line end. No line of
//! it can pass for the separator of a mailbox.
QByteArray quotedPrintable(const QString &text);

} // namespace MailText
