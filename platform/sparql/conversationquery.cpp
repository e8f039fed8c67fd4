// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "conversationquery_p.h"

#include <QtCore/QLatin1String>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

constexpr int LongestExpression = 64;

bool endsQuotes(char32_t c) { return c == '\'' || c == '\\' || c == '\n' || c == '\r' || c == 0; }

//! The language puts a code point in its place before it looks for quotes and escapes: one that
//! means something there would make another query.
bool appendCodePoint(const QString &digits, int count, QString *text)
{
    const auto isHexadecimal = [](QChar c) {
        return c.unicode() < 0x80 && std::isxdigit(c.cell());
    };
    if (digits.size() != count || !std::all_of(digits.cbegin(), digits.cend(), isHexadecimal))
        return false;
    const char32_t c = digits.toUInt(nullptr, 16);
    if (c > QChar::LastValidCodePoint || QChar::isSurrogate(c) || endsQuotes(c))
        return false;
    *text += QString::fromUcs4(&c, 1);
    return true;
}

//! Appends what stands behind a backslash, and moves \a at to its end.
bool appendEscaped(const QString &quoted, int *at, QString *text)
{
    const char letter = ++*at < quoted.size() ? quoted.at(*at).toLatin1() : '\0';
    if (letter == 'u' || letter == 'U') {
        const int count = letter == 'u' ? 4 : 8;
        const QString digits = quoted.mid(*at + 1, count);
        *at += count;
        return appendCodePoint(digits, count, text);
    }
    constexpr char letters[] = "tbnrf\"'\\";
    constexpr char meanings[] = "\t\b\n\r\f\"'\\";
    const char *const found = letter == '\0' ? nullptr : std::strchr(letters, letter);
    if (found)
        *text += QLatin1Char(meanings[found - letters]);
    return found;
}

//! The value of a text in single quotes; null when it is none, or longer than an expression.
QString valueOf(const QString &quoted)
{
    QString text;
    for (int at = 0; at < quoted.size() && text.size() <= LongestExpression; ++at) {
        const QChar c = quoted.at(at);
        if (!endsQuotes(c.unicode()))
            text += c;
        else if (c != QLatin1Char('\\') || !appendEscaped(quoted, &at, &text))
            return QString();
    }
    return text.size() <= LongestExpression ? text : QString();
}

//! Whether looking for it takes time in proportion to its length, whatever it is.
bool isSimple(const QString &expression)
{
    const QLatin1String signs("\\[](){}|*+?");
    return std::none_of(expression.cbegin(), expression.cend(),
                        [&](QChar c) { return signs.contains(c); });
}

} // namespace

std::optional<ConversationQuery> readConversationQuery(const QString &text)
{
    const QLatin1String beginning(
        "SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject '");
    const QLatin1String middle("'; nie:generator ?remoteId. FILTER REGEX(?remoteId, '");
    const QLatin1String end("$')}"); // its first sign belongs to the expression
    if (!text.startsWith(beginning) || !text.endsWith(end))
        return std::nullopt;
    const auto account = beginning.size();
    const auto accountEnd = text.indexOf(QLatin1Char('\''), account);
    const auto party = accountEnd + middle.size();
    const auto partyEnd = text.size() - end.size();
    if (accountEnd < 0 || party > partyEnd
        || QStringView(text).mid(accountEnd, middle.size()) != middle)
        return std::nullopt;
    ConversationQuery query;
    query.account = text.mid(account, accountEnd - account);
    query.party = text.mid(party, partyEnd - party);
    query.expression = valueOf(query.party + end.at(0));
    if (!isSimple(query.expression))
        query.expression = QString();
    return query;
}
