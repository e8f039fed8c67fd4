// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "markupreader.h"

#include "objectline.h"
#include "shared/rejectreason.h"

#include <vmessage/vmessagescanner.h>

#include <algorithm>
#include <cctype>

namespace {

constexpr size_t TagHeadLength = 6; // of an element: its sign, its name and what ends that

std::optional<InputItem::Kind> kindOfElement(std::string_view name)
{
    if (name == "sms")
        return InputItem::AndroidSms;
    if (name == "mms")
        return InputItem::AndroidMms;
    return name == "call" ? std::optional(InputItem::AndroidCall) : std::nullopt;
}

// Where in a broken element something else begins, 0 if nothing does.
size_t nextBeginning(std::string_view broken)
{
    bool lineStart = false;
    for (size_t i = 1; i < broken.size(); ++i) {
        const std::string_view here = broken.substr(i);
        if (lineStart) {
            const std::string_view head =
                here.substr(0, std::min(here.find('\n'), LineWindow::HeadLength));
            if (VMessageScanner::isBegin(head) || !ObjectLine::beginOf(head).empty())
                return i;
        }
        lineStart = here.front() == '\n';
        if (here.front() == '<' && kindOfElement(ElementScanner::nameAt(here)))
            return i;
    }
    return 0;
}

} // namespace

FormReader::Beginning MarkupReader::beginningAt(std::string_view head)
{
    const std::string_view name = ElementScanner::nameAt(head);
    m_elementKind = kindOfElement(name);
    if (m_elementKind) {
        if (m_gap.isXml())
            m_root.noteItem();
        m_place = Element;
        m_element = ElementScanner(name, name == "mms");
        return Item;
    }
    m_root.noteOther(name);
    if (!m_gap.isXml() || m_gap.left().haveReason())
        return Nothing;
    if (beginSection(head)) {
        m_place = Section;
        return PassedOver;
    }
    if (!m_root.noteTag(name))
        return Nothing;
    m_place = Element;
    m_element = ElementScanner(name);
    return PassedOver;
}

void MarkupReader::open()
{
    openHere(m_elementKind);
    if (m_place == Section)
        m_window.take(m_sectionStart.size());
    else
        m_deadEnds.begin(m_window.offset());
}

bool MarkupReader::step()
{
    switch (m_place) {
    case Section:
        return stepSection();
    case Element:
        return stepElement();
    case BrokenElement:
        return stepBrokenElement();
    }
    Q_UNREACHABLE();
}

void MarkupReader::finish()
{
    switch (m_place) {
    case Section:
        close();
        return;
    case Element:
        breakElement(false);
        return;
    case BrokenElement:
        m_endsInElement = true;
        emitElement(m_window.offset());
        return;
    }
    Q_UNREACHABLE();
}

bool MarkupReader::beginSection(std::string_view head)
{
    constexpr std::string_view comment("<!--");
    constexpr std::string_view characterData("<![CDATA[");
    const bool isComment = head.substr(0, comment.size()) == comment;
    if (!isComment && head.substr(0, characterData.size()) != characterData)
        return false;
    m_sectionStart = isComment ? comment : characterData;
    m_sectionEnd = isComment ? "-->" : "]]>";
    return true;
}

bool MarkupReader::stepSection()
{
    const std::string_view text = m_window.rest();
    const size_t end = text.find(m_sectionEnd);
    const bool isWhole = end != std::string_view::npos;
    // The words that end it may be cut themselves.
    const size_t kept = std::min(text.size(), m_sectionEnd.size() - 1);
    m_window.takeTo(m_window.offset() + (isWhole ? end + m_sectionEnd.size() : text.size() - kept));
    dropUpToHere();
    if (isWhole)
        close();
    return isWhole;
}

bool MarkupReader::stepElement()
{
    for (const char c : m_window.rest()) {
        if (c == '#' && m_window.isBehindFeed()) {
            const auto head = m_window.lineHead();
            if (!head)
                return false;
            if (isReasonLine(*head)) {
                breakElement(true);
                return true;
            }
        }
        if (c == '<' && m_element.shelter() != 0) {
            if (m_window.rest().size() < TagHeadLength && !m_window.hasEnded())
                return false;
            if (isDeadEnd()) {
                breakElement(false);
                return true;
            }
        }
        const ElementScanner::Verdict verdict = m_element.take(c);
        if (verdict == ElementScanner::Broken) {
            breakElement(false);
            return true;
        }
        m_window.takeByte(c);
        if (verdict == ElementScanner::Whole) {
            closeElement();
            return true;
        }
    }
    if (isTooLong())
        emitTooLong();
    return false;
}

void MarkupReader::closeElement()
{
    const std::string_view bytes = m_window.view(beginning().offset, m_window.offset());
    if (!isItem() && bytes[bytes.size() - 2] == '/')
        m_root.noteClosed();
    emitElement(m_window.offset());
}

//! Whether the element comes to the beginning of another as an earlier one did, which was broken.
bool MarkupReader::isDeadEnd()
{
    const std::string_view name = ElementScanner::nameAt(m_window.rest().substr(0, TagHeadLength));
    if (!kindOfElement(name) || m_deadEnds.pass(m_window.offset(), m_element.shelter()))
        return false;
    m_window.take(name.size() + 1); // so that it is found
    return true;
}

// One broken element ends nothing: what begins inside of it is read again.
void MarkupReader::breakElement(bool atReason)
{
    const std::string_view broken = m_window.view(beginning().offset, m_window.offset());
    const size_t next = nextBeginning(broken);
    if (next == 0 && !atReason) {
        m_place = BrokenElement;
        return;
    }
    const std::string_view passed = broken.substr(0, next == 0 ? broken.size() : next);
    const auto lines = static_cast<quint64>(std::count(passed.begin(), passed.end(), '\n'));
    m_window.goBackTo({beginning().offset + passed.size(), beginning().line + lines});
    emitElement(m_window.offset());
}

//! Takes the rest of its line to it, so that it can be mended.
bool MarkupReader::stepBrokenElement()
{
    if (m_window.takeUpTo("<\n"))
        emitElement(m_window.offset());
    else if (isTooLong())
        emitTooLong();
    return true;
}

//! Without the blanks behind it, which a broken one has taken along.
void MarkupReader::emitElement(quint64 end)
{
    const std::string_view bytes = m_window.view(beginning().offset, end);
    size_t length = bytes.size();
    while (std::isspace(static_cast<unsigned char>(bytes[length - 1])))
        --length;
    emitItem(beginning().offset + length);
}
