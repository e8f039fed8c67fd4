// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/syncrecords.h>

namespace KorvaSyncIf {

//! Writes text messages as vMessage 1.1 (IrMC 1.1, section 9.9) with vCard 2.1 parties.
//!
//! A plain value. One encoder may encode any number of messages, one after the other. Nothing here
//! can fail: an empty member gives an empty value, or its part is left out.
//!
//! Every line ends in CR LF, and none is folded. The text is not encoded: carriage returns are
//! dropped, line feeds stay bare, and everything else stays as it is. Numbers, read status and
//! times are not checked. docs/formats.md shows a message.
class KORVASYNC_EXPORT VMessageEncoder
{
public:
    // The pieces of lines, as texts that end in zero.
    static const char *const CR;
    static const char *const LF;
    static const char *const SEMICOLON;
    static const char *const COLON;
    static const char *const EQUAL;
    static const char *const LWSP;
    static const char hexTab[16]; //!< upper-case hexadecimal digits, no terminating zero

    VMessageEncoder() = default;
    ~VMessageEncoder() = default;

    //! Encodes a whole message. The vMessage has the time in UTC and in whole seconds.
    //! SyncSmsInfo::time has it in the form of Qt::TextDate, in the time's own zone; with Qt 5 the
    //! names in it are in the user's language. Id, folder and token are copied.
    SyncSmsInfo encode(const SmsInfo &message);

    //! Appends the lines from BEGIN:VMSG to the time. Without a time an empty line stands in its
    //! place.
    void encodeHeader(const SmsInfo &message, QString &text);
    //! Appends the envelope with the text, from BEGIN:VENV to END:VENV.
    void encodeBody(const SmsInfo &message, QString &text);
    //! Appends a vCard 2.1 with nothing but the number.
    void encodeVCardData(const QString &number, QString &text);

    //! Encodes a text as quoted-printable (RFC 2045, section 6.7) UTF-8, for callers that write
    //! properties of their own; encode() does not use it. Lines have up to 75 characters before
    //! their CR LF. Every space and tab is escaped. A line feed becomes "=0D=0A".
    //!
    //! The encoding is lossy: equals signs, and control characters other than tab and line feed,
    //! are dropped, each with a warning.
    QString encodeQP(const QString &text);
    //! Appends one character of quoted-printable output, after a soft line break if the line is
    //! full. The encoder counts the characters of the line; encodeQP() starts at 0, and encode()
    //! leaves 30.
    void appendChar(unsigned char character, QString &text);

private:
    int envelopeDepth = 0; // recipient envelopes still to be closed
    int lineLength = 0;    // characters on the current quoted-printable line
};

} // namespace KorvaSyncIf
