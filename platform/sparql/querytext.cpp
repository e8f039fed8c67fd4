// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "querytext_p.h"

#include <QtCore/QList>

#include <algorithm>

namespace {

//! Escapes, comments, names in angle brackets and other quotes, between which a single quote
//! is none; parameters that are there already; and what a text cannot hold.
bool hidesQuotes(char c)
{
    switch (c) {
    case '\\':
    case '#':
    case '<':
    case '"':
    case '~':
    case '\n':
    case '\r':
    case '\0':
        return true;
    default:
        return false;
    }
}

//! Of what stands between two texts: long quotes, a language or a type make them another thing.
bool separatesTexts(const QByteArray &piece)
{
    return !piece.isEmpty() && !piece.startsWith('@') && !piece.startsWith('^');
}

bool isPlain(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '/'
        || c == '$';
}

} // namespace

ParameterQuery withParameters(const QByteArray &query)
{
    ParameterQuery asItIs{query, {}};
    if (std::any_of(query.cbegin(), query.cend(), hidesQuotes))
        return asItIs;
    const QList<QByteArray> pieces = query.split('\''); // in turns outside of a text and inside
    if (pieces.size() % 2 == 0)
        return asItIs;
    ParameterQuery result{pieces.first(), {}};
    for (int i = 1; i < pieces.size(); i += 2) {
        if (!separatesTexts(pieces.at(i + 1)))
            return asItIs;
        result.text += "~text" + QByteArray::number(result.values.size()) + pieces.at(i + 1);
        result.values.append(pieces.at(i));
    }
    return result;
}

bool hasPlainTexts(const ParameterQuery &query)
{
    const auto isPlainText = [](const QByteArray &text) {
        return std::all_of(text.cbegin(), text.cend(), isPlain);
    };
    return std::all_of(query.values.cbegin(), query.values.cend(), isPlainText);
}
