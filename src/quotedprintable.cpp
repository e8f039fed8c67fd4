// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "quotedprintable_p.h"

#include "base/logging.h"

#include <korvasync/vmessageencoder.h>

#include <QtCore/QDebug>

namespace KorvaSyncIf {

namespace {

constexpr int LineLimit = 72;
const QLatin1String SoftLineBreak("=\r\n");

void appendHexDigits(uchar byte, QString &text, int &lineLength)
{
    appendQuotedPrintable(uchar(VMessageEncoder::hexTab[byte >> 4]), text, lineLength);
    appendQuotedPrintable(uchar(VMessageEncoder::hexTab[byte & 0x0F]), text, lineLength);
}

void appendEscape(uchar byte, QString &text, int &lineLength)
{
    appendQuotedPrintable('=', text, lineLength);
    appendHexDigits(byte, text, lineLength);
}

// Blanks are escaped wherever they stand and keep a line rule of their own, so an escaped
// blank may end its line earlier than another escape would.
void appendBlank(uchar byte, QString &text, int &lineLength)
{
    const QLatin1String escape(byte == ' ' ? "=20" : "=09");
    const int room = LineLimit - lineLength;
    if (room <= 3) {
        text += SoftLineBreak;
        text += escape;
        lineLength = 3;
    } else if (room == 4) {
        text += escape;
        text += SoftLineBreak;
        lineLength = 0;
    } else {
        text += escape;
        lineLength += 3;
    }
}

} // namespace

void appendQuotedPrintable(unsigned char character, QString &text, int &lineLength)
{
    if (lineLength > LineLimit) {
        text += SoftLineBreak;
        text += QLatin1Char(char(character));
        // The character on the new line is not counted. Sync clients compare the encoded text
        // byte by byte to see what has changed, so the line breaks stay where they are.
        lineLength = 0;
    } else if (character == '=' && lineLength + 4 > LineLimit) {
        text += SoftLineBreak;
        text += QLatin1Char('=');
        lineLength = 1;
    } else {
        text += QLatin1Char(char(character));
        ++lineLength;
    }
}

QString quotedPrintable(const QByteArray &utf8, int &lineLength)
{
    lineLength = 0;
    QString text;
    text.reserve(utf8.size() + (3 * utf8.size()) / 10);
    int expectedContinuations = 0;
    for (const char c : utf8) {
        const uchar byte = uchar(c);
        if (byte == ' ' || byte == '\t') {
            appendBlank(byte, text, lineLength);
        } else if (byte == '\n') {
            appendEscape('\r', text, lineLength);
            appendEscape('\n', text, lineLength);
        } else if (byte < 0x21 || byte == '=' || byte == 0x7F) {
            // The equals sign is lost here although it could be escaped: callers have
            // learned to keep it out of what they pass.
            qCWarning(lcEncoder) << "Warning :: control characters found while encoding QP ";
        } else if (byte < 0x7F) {
            appendQuotedPrintable(byte, text, lineLength);
        } else if (byte < 0xC0) {
            if (expectedContinuations < 1)
                qCWarning(lcEncoder) << "Warning :: Received 2nd/3rd/4th byte of a multibyte seq "
                                        "without getting the first byte";
            appendEscape(byte, text, lineLength);
            --expectedContinuations;
        } else if (byte >= 0xC2 && byte <= 0xF4) {
            appendEscape(byte, text, lineLength);
            expectedContinuations = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
        } else if (byte >= 0xF5 && byte != 0xFF) {
            qCWarning(lcEncoder) << "Warning:: found illegal bytes between F5 and FF";
        }
        // C0, C1 and FF are dropped in silence.
    }
    return text;
}

} // namespace KorvaSyncIf
