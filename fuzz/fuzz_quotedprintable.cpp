// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as UTF-8, from any length of the line before.

#include "fuzzing.h"

#include <korvasync/vmessageencoder.h>
#include <quotedprintable_p.h>
#include <vmessage/textdecoding.h>

using namespace KorvaSyncIf;

namespace {

bool isEncoded(unsigned char byte)
{
    const bool control = byte != '\t' && byte != '\n' && (byte < 0x20 || byte == 0x7F);
    const bool neverInUtf8 = byte == 0xC0 || byte == 0xC1 || byte >= 0xF5;
    return !control && byte != '=' && !neverInUtf8;
}

void check(const QByteArray &utf8, int lineLength)
{
    const QByteArray encoded = quotedPrintable(utf8, lineLength).toLatin1();
    QByteArray kept;
    for (const char byte : utf8) {
        if (byte == '\n')
            kept += "\r\n";
        else if (isEncoded(static_cast<unsigned char>(byte)))
            kept += byte;
    }
    for (const char byte : encoded)
        require((byte > 0x20 && byte < 0x7F) || byte == '\r' || byte == '\n');
    constexpr int longestLine = 77; // limit, the uncounted character, the "=" of the break
    for (const QByteArray &line : encoded.split('\n').mid(1))
        require(line.size() <= longestLine);
    QByteArray decoded = encoded;
    decoded.resize(
        int(TextDecoding::decodeQuotedPrintable(decoded.data(), size_t(decoded.size()))));
    require(decoded == kept);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    check(bytes, 0);
    check(bytes.mid(1), size > 0 ? data[0] % 80 : 0);
    VMessageEncoder().encodeQP(QString::fromUtf8(bytes));
    return 0;
}
