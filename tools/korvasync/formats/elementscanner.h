// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <string>
#include <string_view>

//! Finds the end of one XML element, byte by byte from its first. What stands in the values of
//! attributes is no markup, although some programs leave it there as it was typed: no text of a
//! message can end its element or begin another.
class ElementScanner
{
public:
    enum Verdict {
        Unfinished,
        Whole, //!< with this byte
        Broken //!< before this byte: the element cannot be followed any further
    };

    //! \param hasContent  an element that is more than its start tag goes up to its end tag
    explicit ElementScanner(std::string_view name = {}, bool hasContent = false)
        : m_name(name)
        , m_hasContent(hasContent)
    {
    }

    Verdict take(char c);

    //! What keeps a beginning that is next from being seen: the value or section that is open,
    //! by a number of its own for each kind. From equal shelters on, elements go the same way.
    //! \return 0 = nothing does
    int shelter() const;
    static constexpr int ShelterCount = 11; //!< with that

    //! The name of the tag that begins with the first byte, with the sign in front of an end
    //! tag or a declaration; empty when none begins there.
    static std::string_view nameAt(std::string_view markup);

private:
    enum Place { Start, Tag, Value, BehindValue, Content, TagName, Section };

    Verdict takeInTag(char c);
    Verdict takeInTagName(char c);
    void takeInSection(char c);
    bool isInEndTag() const { return m_inContent && m_tagName == '/' + m_name; }

    std::string m_name;
    bool m_hasContent = false;
    Place m_place = Start;
    char m_quote = '\0';
    char m_last = '\0';       // in the tag
    bool m_inContent = false; // the start tag of the element itself is read
    std::string m_tagName;    // of a tag in the content
    std::string_view m_sectionEnd;
    std::string m_lastOfSection;
};
