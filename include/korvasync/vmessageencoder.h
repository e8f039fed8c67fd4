// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/syncrecords.h>

namespace KorvaSyncIf {

//! Writes text messages as vMessage 1.1 (IrMC 1.1, section 9.9) with vCard 2.1 parties.
//!
//! A plain value; one encoder may encode any number of messages, one after the other.
//! Every line ends in CR LF and none is folded. Nothing here can fail: an empty field
//! gives an empty value or leaves its part out. The text is written as it stands but for
//! carriage returns, which are dropped, so line feeds inside it are bare.
class KORVASYNC_EXPORT VMessageEncoder
{
public:
    static const char *const CR;
    static const char *const LF;
    static const char *const SEMICOLON;
    static const char *const COLON;
    static const char *const EQUAL;
    static const char *const LWSP;
    static const char hexTab[16]; //!< upper-case hexadecimal digits, no terminating zero

    VMessageEncoder() = default;
    ~VMessageEncoder() = default;

    //! The whole message. The result's time is the message's in Qt::TextDate form and its
    //! own zone, while the vMessage has it in UTC.
    SyncSmsInfo encode(const SmsInfo &message);

    // The pieces of encode(); each appends to \a text.
    void encodeHeader(const SmsInfo &message, QString &text);
    void encodeBody(const SmsInfo &message, QString &text);
    void encodeVCardData(const QString &number, QString &text);

    //! Quoted-printable text (RFC 2045, 6.7) of UTF-8, for callers that write properties
    //! of their own. Lossy: equals signs and control characters other than tab and line
    //! feed are dropped with a warning each. A line feed becomes "=0D=0A".
    QString encodeQP(const QString &text);
    //! Appends one character of quoted-printable output, after a soft line break where
    //! the line is full.
    void appendChar(unsigned char character, QString &text);

private:
    int envelopeDepth = 0; // recipient envelopes still to be closed
    int lineLength = 0;    // characters on the current quoted-printable line
};

} // namespace KorvaSyncIf
