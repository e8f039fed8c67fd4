// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "vmessagediagnosis.h"

#include "vmessagelines.h"

#include <algorithm>

using namespace VMessageLines;

namespace VMessageDiagnosis {

namespace {

//! Goes through the lines of a message and knows which one it is at.
class LineCursor
{
public:
    explicit LineCursor(std::string_view bytes)
        : rest(bytes)
    {
    }

    bool next()
    {
        if (rest.empty())
            return false;
        line = readLine(rest);
        rest = line.rest;
        ++number;
        return true;
    }

    std::string_view rest;
    Line line = {};
    unsigned number = 0; // of the line, from 1
};

bool isBlank(const Line &line) { return trimmed(line.text).empty(); }

// The first line behind the last END:VBODY that closes no message, 0 if there is no END:VBODY. In
// the own form a line behind a bare line feed is text.
unsigned findLineBehindBody(LineCursor cursor, bool own)
{
    unsigned found = 0;
    bool isBehind = false;
    bool isText = false;
    while (cursor.next()) {
        const Keyword word = keyword(cursor.line.text);
        if (word == Keyword::EndVBody && !isText) {
            isBehind = true;
            found = 0;
        } else if (isBehind && found == 0 && word != Keyword::EndVEnv && !isBlank(cursor.line)) {
            found = cursor.number;
        }
        isText = own && cursor.line.end == LineEnd::Lf;
    }
    return found;
}

VMessageProblem diagnoseBody(const LineCursor &begin, bool crLf)
{
    const bool own = isOwnText(begin.rest, crLf);
    if (findBodyEnd(begin.rest, own))
        return {VMessageProblem::LongText, begin.number};
    if (const unsigned line = findLineBehindBody(begin, own))
        return {VMessageProblem::LineBehindBody, line};
    return {VMessageProblem::OpenBody, begin.number};
}

//! \param cursor  at the line that begins the message
VMessageProblem diagnoseMessage(LineCursor cursor)
{
    bool crLf = cursor.line.end != LineEnd::Lf;
    unsigned lastFilled = cursor.number;
    unsigned closing = 0; // the first line that closes what was not opened
    while (cursor.next()) {
        crLf = crLf && cursor.line.end != LineEnd::Lf;
        const Keyword word = keyword(cursor.line.text);
        if (word == Keyword::BeginVBody)
            return diagnoseBody(cursor, crLf);
        if (word == Keyword::BeginVMsg || word == Keyword::EndVMsg)
            break;
        if ((word == Keyword::EndVBody || word == Keyword::EndVEnv) && closing == 0)
            closing = cursor.number;
        if (!isBlank(cursor.line))
            lastFilled = cursor.number;
    }
    if (closing > 0)
        return {VMessageProblem::NoBody, closing};
    return {VMessageProblem::CutHeader, lastFilled};
}

} // namespace

VMessageProblem diagnose(std::string_view bytes)
{
    LineCursor cursor(bytes);
    while (cursor.next()) {
        if (keyword(cursor.line.text) == Keyword::BeginVMsg)
            return diagnoseMessage(cursor);
    }
    return {VMessageProblem::NoBegin, 1};
}

} // namespace VMessageDiagnosis
