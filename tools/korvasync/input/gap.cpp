// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "gap.h"

#include "shared/rejectreason.h"

#include <vmessage/vmessagescanner.h>

#include <algorithm>

namespace {

bool isBlankText(std::string_view text)
{
    return text.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
}

} // namespace

bool Gap::beginRemark(std::string_view head)
{
    if (head.substr(0, 2) != "# ") {
        noteFirstSign(head);
        return false;
    }
    end();
    m_line = Remark;
    if (isReasonLine(head))
        m_leftovers.beginReason();
    return true;
}

void Gap::passRemark()
{
    if (m_window.takeLine())
        m_line = Other;
}

void Gap::noteFirstSign(std::string_view head)
{
    if (m_firstSign || m_leftovers.haveReason() || isBlankText(head))
        return;
    m_firstSign = head[head.find_first_not_of(" \t\n\v\f\r")];
}

void Gap::noteLine(std::string_view head)
{
    if (!m_text && !isBlankText(head))
        m_text = m_window.here();
    m_isMessage = m_isMessage || VMessageScanner::isStructure(head);
    const std::string_view begin = "BEGIN:VMSG";
    const bool isLast = head.size() == m_window.rest().size();
    if (!head.empty() && isLast && head == begin.substr(0, head.size()))
        m_line = CutBegin;
    else
        m_line = VMessageScanner::isEnd(head) ? MessageEnd : Other;
}

bool Gap::passUpToTag()
{
    const bool isFound = m_window.takeUpTo("<\n");
    boundText();
    if (!isFound)
        return false;
    if (m_window.rest().front() == '<')
        return true;
    m_window.takeLine();
    if (m_line == MessageEnd)
        end();
    return false;
}

void Gap::end()
{
    if (m_isMessage) {
        m_leftovers.drop();
        m_items += InputItem{InputItem::Message, m_window.bytes(m_text->offset, m_window.offset()),
                             m_text->line, false};
    } else if (m_text && !isXml() && !m_leftovers.haveReason()) {
        m_somethingIsPassedOver = m_somethingIsPassedOver
            || !isBlankText(m_window.view(m_text->offset, m_window.offset()));
    }
    m_text.reset();
    m_isMessage = false;
}

void Gap::endBeforeItem()
{
    end();
    m_leftovers.end(true);
}

bool Gap::endOfFile()
{
    const bool isItem = m_isMessage;
    end();
    if (m_leftovers.haveReason())
        m_leftovers.end(false);
    return isItem;
}

//! What is too long to be kept is passed over as it is read.
void Gap::boundText()
{
    constexpr quint64 longestText = quint64(64) * 1024;
    const quint64 longest = m_isMessage ? InputItem::Longest : longestText;
    if (!m_text || m_window.offset() - m_text->offset <= longest)
        return;
    if (m_isMessage) {
        m_leftovers.drop();
        m_items += InputItem{InputItem::Message, QByteArray(), m_text->line, true};
    }
    m_isMessage = false;
    end();
}

quint64 Gap::needed()
{
    const quint64 here = m_window.offset();
    return std::min(m_text ? m_text->offset : here, m_leftovers.needed().value_or(here));
}
