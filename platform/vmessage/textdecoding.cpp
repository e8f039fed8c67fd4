// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "textdecoding.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iconv.h>

namespace TextDecoding {

namespace {

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

int base64Digit(char c)
{
    if (c >= 'A' && c <= 'Z')
        return c - 'A';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 26;
    if (c >= '0' && c <= '9')
        return c - '0' + 52;
    if (c == '+')
        return 62;
    return c == '/' ? 63 : -1;
}

// What follows a soft line break whose equals sign stands before `p`, or null when
// there is none. The end of the text ends its last line.
const char *behindSoftBreak(const char *p, const char *end)
{
    while (p < end && (*p == ' ' || *p == '\t' || *p == '\r'))
        ++p;
    if (p == end)
        return p;
    return *p == '\n' ? p + 1 : nullptr;
}

bool startsWithEightAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t bytes = highBits;
    if (text.size() >= sizeof(bytes))
        std::memcpy(&bytes, text.data(), sizeof(bytes));
    return (bytes & highBits) == 0;
}

// Bytes of the UTF-8 sequence at the start of a text that is not empty, 0 if none.
size_t utf8SequenceLength(std::string_view text)
{
    const auto byte = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    const size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > text.size())
        return 0;
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    }
    const unsigned second = byte(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second > 0x9F;
    const bool beyondUnicode = lead == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyondUnicode ? 0 : length;
}

// iconv takes options behind slashes and commas, which are no part of a name.
bool isCharsetName(const std::string &name)
{
    constexpr const char *allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                    "0123456789-_.:+()";
    return !name.empty() && name.size() <= 64
        && name.find_first_not_of(allowed) == std::string::npos;
}

bool convert(iconv_t converter, std::string_view text, std::string *result)
{
    char *in = const_cast<char *>(text.data()); // iconv never writes to it
    size_t inLeft = text.size();
    for (;;) {
        char buffer[4096];
        char *out = buffer;
        size_t outLeft = sizeof buffer;
        // The last call, without input, brings what a stateful character set holds back.
        const bool last = inLeft == 0;
        const size_t converted = iconv(converter, last ? nullptr : &in, &inLeft, &out, &outLeft);
        const bool failed = converted == size_t(-1);
        if (failed && (errno != E2BIG || out == buffer))
            return false;
        result->append(buffer, out);
        if (last && !failed)
            return true;
    }
}

} // namespace

size_t decodeQuotedPrintable(char *text, size_t length)
{
    const char *in = text;
    const char *const end = text + length;
    char *out = text;
    while (in < end) {
        const char c = *in++;
        const char *softBreakEnd = c == '=' ? behindSoftBreak(in, end) : nullptr;
        if (c == '=' && end - in >= 2 && hexDigit(in[0]) >= 0 && hexDigit(in[1]) >= 0) {
            *out++ = char(hexDigit(in[0]) * 16 + hexDigit(in[1]));
            in += 2;
        } else if (softBreakEnd) {
            in = softBreakEnd;
        } else {
            *out++ = c;
        }
    }
    return size_t(out - text);
}

bool isBase64(std::string_view text)
{
    size_t digits = 0;
    size_t padding = 0;
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n')
            continue;
        if (c == '=')
            ++padding;
        else if (base64Digit(c) < 0 || padding > 0)
            return false;
        else
            ++digits;
    }
    return padding <= 2 && (digits + padding) % 4 == 0;
}

size_t decodeBase64(char *text, size_t length)
{
    char *out = text;
    uint32_t bits = 0;
    int bitCount = 0;
    for (size_t i = 0; i < length && text[i] != '='; ++i) {
        const int digit = base64Digit(text[i]);
        if (digit < 0)
            continue;
        bits = (bits << 6 | uint32_t(digit)) & 0xFFFF;
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            *out++ = char(bits >> bitCount & 0xFF);
        }
    }
    return size_t(out - text);
}

size_t unifyLineEnds(char *text, size_t length)
{
    const char *in = static_cast<const char *>(std::memchr(text, '\r', length));
    if (!in)
        return length;
    const char *const end = text + length;
    char *out = text + (in - text);
    while (in < end) {
        const char c = *in++;
        *out++ = c == '\r' ? '\n' : c;
        if (c == '\r' && in < end && *in == '\n')
            ++in;
    }
    return size_t(out - text);
}

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const size_t length = startsWithEightAscii(text) ? 8 : utf8SequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

bool convertToUtf8(std::string_view text, const std::string &charset, std::string *result)
{
    result->clear();
    if (!isCharsetName(charset))
        return false;
    const iconv_t converter = iconv_open("UTF-8", charset.c_str());
    if (reinterpret_cast<intptr_t>(converter) == -1)
        return false;
    const bool done = convert(converter, text, result);
    iconv_close(converter);
    // iconv itself lets code points beyond Unicode through.
    return done && isUtf8(*result);
}

std::string repairedUtf8(std::string_view text)
{
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    while (!text.empty()) {
        const size_t length = utf8SequenceLength(text);
        if (length == 0) {
            const unsigned latin1 = static_cast<unsigned char>(text.front());
            result += char(0xC0 | latin1 >> 6);
            result += char(0x80 | (latin1 & 0x3F));
            text.remove_prefix(1);
        } else {
            result.append(text.data(), length);
            text.remove_prefix(length);
        }
    }
    return result;
}

} // namespace TextDecoding
