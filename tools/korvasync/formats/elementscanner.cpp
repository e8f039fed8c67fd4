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
    switch (place) {
    case Start:
        place = Tag;
        return Unfinished;
    case Value:
        if (c == quote)
            place = BehindValue;
        return Unfinished;
    case BehindValue:
        // Anything else tells that a quotation mark is missing, or that a text has one.
        if (!isBlank(c) && c != ',' && c != '/' && c != '>' && c != '?')
            return Broken;
        place = Tag;
        return takeInTag(c);
    case Tag:
        return takeInTag(c);
    case Content:
        if (c == '<') {
            place = TagName;
            tagName.clear();
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
    if (place == Section)
        return sectionEnd == "-->" ? 1 : 2;
    if (place != Value)
        return 0;
    const int tag = !hasContent ? 0 : !inContent ? 1 : isInEndTag() ? 2 : 3;
    return 3 + 2 * tag + (quote == '"' ? 0 : 1);
}

ElementScanner::Verdict ElementScanner::takeInTag(char c)
{
    if (c == '<')
        return Broken;
    if (c == '"' || c == '\'') {
        quote = c;
        place = Value;
    }
    if (c != '>') {
        last = c;
        return Unfinished;
    }
    const bool isEnd = inContent ? isInEndTag() : !hasContent || last == '/';
    if (isEnd)
        return Whole;
    inContent = true;
    place = Content;
    return Unfinished;
}

ElementScanner::Verdict ElementScanner::takeInTagName(char c)
{
    tagName += c;
    if (tagName == "!--" || tagName == "![CDATA[") {
        sectionEnd = tagName == "!--" ? "-->" : "]]>";
        lastOfSection.clear();
        place = Section;
        return Unfinished;
    }
    const bool isDeclaration = tagName.front() == '!' && tagName.size() < 9;
    if (isNameCharacter(c) || isDeclaration || (tagName.size() == 1 && (c == '/' || c == '?')))
        return Unfinished;
    tagName.pop_back();
    if (tagName == "sms" || tagName == "mms" || tagName == "call")
        return Broken; // another element, and this one never ended
    last = ' ';
    place = Tag;
    return takeInTag(c);
}

void ElementScanner::takeInSection(char c)
{
    lastOfSection += c;
    if (lastOfSection.size() > sectionEnd.size())
        lastOfSection.erase(0, 1);
    if (lastOfSection == sectionEnd)
        place = Content;
}
