// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "elementscanner.h"

static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

static bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'
        || c == '-' || c == ':' || c == '.';
}

std::string_view ElementScanner::nameAt(std::string_view markup)
{
    if (markup.empty() || markup.front() != '<')
        return {};
    size_t end = 1;
    if (end < markup.size() && std::string_view("/?!").find(markup[end]) != std::string_view::npos)
        ++end;
    while (end < markup.size() && isNameCharacter(markup[end]))
        ++end;
    return markup.substr(1, end - 1);
}

ElementScanner::Verdict ElementScanner::take(char c)
{
    switch (m_place) {
    case Start:
        m_place = Tag;
        return Unfinished;
    case Value:
        if (c == m_quote)
            m_place = BehindValue;
        return Unfinished;
    case BehindValue:
        // Anything else tells that a quotation mark is missing, or that a text has one.
        if (!isBlank(c) && c != ',' && c != '/' && c != '>' && c != '?')
            return Broken;
        m_place = Tag;
        return takeInTag(c);
    case Tag:
        return takeInTag(c);
    case Content:
        if (c == '<') {
            m_place = TagName;
            m_tagName.clear();
        }
        return Unfinished;
    case TagName:
        return takeInTagName(c);
    case Section:
        takeInSection(c);
        return Unfinished;
    }
    return Broken;
}

int ElementScanner::shelter() const
{
    if (m_place == Section)
        return m_sectionEnd == "-->" ? 1 : 2;
    if (m_place != Value)
        return 0;
    const int tag = !m_hasContent ? 0 : !m_inContent ? 1 : isInEndTag() ? 2 : 3;
    return 3 + 2 * tag + (m_quote == '"' ? 0 : 1);
}

ElementScanner::Verdict ElementScanner::takeInTag(char c)
{
    if (c == '<')
        return Broken;
    if (c == '"' || c == '\'') {
        m_quote = c;
        m_place = Value;
    }
    if (c != '>') {
        m_last = c;
        return Unfinished;
    }
    const bool isEnd = m_inContent ? isInEndTag() : !m_hasContent || m_last == '/';
    if (isEnd)
        return Whole;
    m_inContent = true;
    m_place = Content;
    return Unfinished;
}

ElementScanner::Verdict ElementScanner::takeInTagName(char c)
{
    m_tagName += c;
    if (m_tagName == "!--" || m_tagName == "![CDATA[") {
        m_sectionEnd = m_tagName == "!--" ? "-->" : "]]>";
        m_lastOfSection.clear();
        m_place = Section;
        return Unfinished;
    }
    const bool isDeclaration = m_tagName.front() == '!' && m_tagName.size() < 9;
    if (isNameCharacter(c) || isDeclaration || (m_tagName.size() == 1 && (c == '/' || c == '?')))
        return Unfinished;
    m_tagName.pop_back();
    if (m_tagName == "sms" || m_tagName == "mms" || m_tagName == "call")
        return Broken; // another element, and this one never ended
    m_last = ' ';
    m_place = Tag;
    return takeInTag(c);
}

void ElementScanner::takeInSection(char c)
{
    m_lastOfSection += c;
    if (m_lastOfSection.size() > m_sectionEnd.size())
        m_lastOfSection.erase(0, 1);
    if (m_lastOfSection == m_sectionEnd)
        m_place = Content;
}
