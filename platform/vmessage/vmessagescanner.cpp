// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "vmessagescanner.h"

#include "vmessagelines.h"

using namespace VMessageLines;

bool VMessageScanner::isBegin(std::string_view line) { return keyword(line) == Keyword::BeginVMsg; }

bool VMessageScanner::isEnd(std::string_view line) { return keyword(line) == Keyword::EndVMsg; }

bool VMessageScanner::isStructure(std::string_view line)
{
    const Keyword word = keyword(line);
    return word != Keyword::None && word != Keyword::BeginVCard && word != Keyword::EndVCard;
}

VMessageScanner::Taken VMessageScanner::take(std::string_view bytes)
{
    const Line line = readLine(bytes);
    const bool inBody = place == Body || place == Closing;
    const Verdict verdict = inBody ? takeInBody(line) : takeInHeader(line);
    isBehindFeed = line.end == LineEnd::Lf;
    if (verdict == Cut)
        return {verdict, bytes};
    const size_t next = verdict == Unfinished ? 0 : joint(line.text);
    return {verdict, next == 0 ? std::string_view() : bytes.substr(next)};
}

VMessageScanner::Verdict VMessageScanner::takeInHeader(const Line &line)
{
    crLf = crLf && line.end != LineEnd::Lf;
    if (place == Start) {
        place = Header;
        return Unfinished;
    }
    const Keyword word = keyword(line.text);
    if (word == Keyword::BeginVMsg)
        return Cut;
    if (word == Keyword::EndVMsg)
        return lacksBegin ? Broken : Whole;
    lacksBegin = lacksBegin || word == Keyword::EndVBody;
    atText = word == Keyword::BeginVBody;
    if (atText)
        place = Body;
    return Unfinished;
}

VMessageScanner::Verdict VMessageScanner::takeInBody(const Line &line)
{
    const Keyword word = keyword(line.text);
    if (atText)
        ownText = isOwnText(line.text, crLf);
    atText = false;
    const bool structure = !ownText || !isBehindFeed || place == Closing;
    if (mayBeClosed && closesEnvelope(word, line.end))
        place = Closing;
    mayBeClosed = !structure && word == Keyword::EndVBody && line.end == LineEnd::CrLf;
    switch (structure ? word : Keyword::None) {
    case Keyword::BeginVMsg:
        return Cut;
    case Keyword::EndVBody:
        place = Closing;
        return Unfinished;
    case Keyword::EndVMsg:
        return place == Body ? Unfinished : Whole;
    case Keyword::EndVEnv:
        return Unfinished;
    default:
        if (!trimmed(line.text).empty())
            place = Body;
        return Unfinished;
    }
}
