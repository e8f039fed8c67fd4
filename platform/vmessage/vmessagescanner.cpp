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
    const bool inBody = m_place == Body || m_place == Closing;
    const Verdict verdict = inBody ? takeInBody(line) : takeInHeader(line);
    m_isBehindFeed = line.end == LineEnd::Lf;
    if (verdict == Cut)
        return {verdict, bytes};
    const size_t next = verdict == Unfinished ? 0 : joint(line.text);
    return {verdict, next == 0 ? std::string_view() : bytes.substr(next)};
}

VMessageScanner::Verdict VMessageScanner::takeInHeader(const Line &line)
{
    m_crLf = m_crLf && line.end != LineEnd::Lf;
    if (m_place == Start) {
        m_place = Header;
        return Unfinished;
    }
    const Keyword word = keyword(line.text);
    if (word == Keyword::BeginVMsg)
        return Cut;
    if (word == Keyword::EndVMsg)
        return m_lacksBegin ? Broken : Whole;
    m_lacksBegin = m_lacksBegin || word == Keyword::EndVBody;
    m_atText = word == Keyword::BeginVBody;
    if (m_atText)
        m_place = Body;
    return Unfinished;
}

VMessageScanner::Verdict VMessageScanner::takeInBody(const Line &line)
{
    const Keyword word = keyword(line.text);
    if (m_atText)
        m_ownText = isOwnText(line.text, m_crLf);
    m_atText = false;
    const bool structure = !m_ownText || !m_isBehindFeed || m_place == Closing;
    if (m_mayBeClosed && closesEnvelope(word, line.end))
        m_place = Closing;
    m_mayBeClosed = !structure && word == Keyword::EndVBody && line.end == LineEnd::CrLf;
    switch (structure ? word : Keyword::None) {
    case Keyword::BeginVMsg:
        return Cut;
    case Keyword::EndVBody:
        m_place = Closing;
        return Unfinished;
    case Keyword::EndVMsg:
        return m_place == Body ? Unfinished : Whole;
    case Keyword::EndVEnv:
        return Unfinished;
    default:
        if (!trimmed(line.text).empty())
            m_place = Body;
        return Unfinished;
    }
}
