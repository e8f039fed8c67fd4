// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// From the bytes of a message text to the text. What decodes in place gives back the new
// length, which is never the greater one.
namespace TextDecoding {

//! Quoted-printable (RFC 2045, 6.7). What is no escape stays as it is, since some programs
//! label raw text so, and so do blanks at line ends, which phones leave unescaped.
size_t decodeQuotedPrintable(char *text, size_t length);

//! Whether a text is base64 (RFC 2045, 6.8), in whole groups and with nothing but blanks and line
//! ends among them. Decoded, anything else gives rubbish.
bool isBase64(std::string_view text);

//! \pre isBase64()
size_t decodeBase64(char *text, size_t length);

//! Makes every CR LF and every lone CR a line feed.
size_t unifyLineEnds(char *text, size_t length);

bool isUtf8(std::string_view text);

//! The text in UTF-8, taken from \a charset, any name that iconv knows.
//! \return false when there is no such character set or the bytes are not of it
bool convertToUtf8(std::string_view text, const std::string &charset, std::string *result);

//! The text in UTF-8; every byte that belongs to no UTF-8 sequence is taken as Latin-1,
//! so that nothing is lost and the rest stays readable.
std::string repairedUtf8(std::string_view text);

} // namespace TextDecoding
