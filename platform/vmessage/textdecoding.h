// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// From the bytes of a message text to the text. Functions that decode in place return the new
// length in bytes, which is never greater than the old one.
namespace TextDecoding {

//! Decodes quoted-printable (RFC 2045, section 6.7) in place. What is not an escape stays as it is,
//! since some programs give raw text this label. Blanks at line ends stay too: phones do not escape
//! them.
size_t decodeQuotedPrintable(char *text, size_t length);

//! Whether a text is base64 (RFC 2045, section 6.8): whole groups, with nothing but blanks and line
//! ends among them. Decoding anything else gives rubbish.
bool isBase64(std::string_view text);

//! Decodes base64 in place.
//! \pre isBase64()
size_t decodeBase64(char *text, size_t length);

//! Turns every CR LF and every lone CR into a line feed, in place.
size_t unifyLineEnds(char *text, size_t length);

bool isUtf8(std::string_view text);

//! Converts a text to UTF-8.
//! \param charset  any name that iconv knows
//! \return false if there is no such character set, or if the bytes are not valid in it
bool convertToUtf8(std::string_view text, const std::string &charset, std::string *result);

//! The text in UTF-8. Every byte that belongs to no UTF-8 sequence is taken as Latin-1, so that
//! nothing is lost and the rest stays readable.
std::string repairedUtf8(std::string_view text);

} // namespace TextDecoding
