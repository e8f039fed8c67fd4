// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "endkey.h"

#include <algorithm>
#include <iterator>

namespace CommHistory {

namespace {

constexpr int KeyLength = 7; // bytes, so that a key is a positive number

//! All of Unicode, in UTF-8; the one of two signs comes first.
constexpr const char *LineEnds[] = {"\r\n", "\n",       "\r",           "\v",
                                    "\f",   "\xc2\x85", "\xe2\x80\xa8", "\xe2\x80\xa9"};

//! The first bytes of a key, from the end of the text on.
qint64 lastBytes(const QByteArray &text, qsizetype size)
{
    qint64 key = 0;
    for (qsizetype i = 1; i <= KeyLength; ++i)
        key = key << 8 | (i <= size ? quint8(text.constData()[size - i]) : 0);
    return key;
}

} // namespace

qint64 endKey(const QByteArray &text)
{
    const auto end = std::find_if(std::begin(LineEnds), std::end(LineEnds),
                                  [&](const char *lineEnd) { return text.endsWith(lineEnd); });
    const auto ignored = end == std::end(LineEnds) ? 0 : qstrlen(*end);
    return lastBytes(text, text.size() - qsizetype(ignored));
}

std::pair<qint64, qint64> endKeys(const QByteArray &end)
{
    const qint64 first = lastBytes(end, end.size());
    const auto open = KeyLength - std::min<qsizetype>(KeyLength, end.size());
    return {first, first + (qint64(1) << (8 * open)) - 1};
}

bool hasLineEnd(const QByteArray &text)
{
    return std::any_of(std::begin(LineEnds), std::end(LineEnds),
                       [&](const char *lineEnd) { return text.contains(lineEnd); });
}

} // namespace CommHistory
