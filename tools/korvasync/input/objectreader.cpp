// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "objectreader.h"

#include "objectline.h"
#include "shared/rejectreason.h"

#include <vmessage/vmessagescanner.h>

FormReader::Beginning ObjectReader::beginningAt(std::string_view head)
{
    m_name = ObjectLine::beginOf(head);
    // The end of an entry without its beginning is one by itself, so that it is refused.
    m_endsHere = m_name.empty() && ObjectLine::isEnd(head, ObjectLine::CallEntry);
    if (m_endsHere)
        m_name = ObjectLine::CallEntry;
    return m_name.empty() ? Nothing : Item;
}

void ObjectReader::open()
{
    openHere(m_name == ObjectLine::CallEntry ? InputItem::CallEntry : InputItem::ForeignObject);
}

bool ObjectReader::step()
{
    if (m_window.atLineStart()) {
        const auto head = m_window.lineHead();
        if (!head)
            return false;
        if (isReasonLine(*head) || VMessageScanner::isBegin(*head)
            || !ObjectLine::beginOf(*head).empty()) {
            emitItem(m_window.offset());
            return true;
        }
        m_endsHere = ObjectLine::isEnd(*head, m_name);
    }
    const bool isWhole = m_window.takeLine();
    if (isWhole && m_endsHere)
        emitItem(m_window.offset());
    else if (isTooLong())
        emitTooLong();
    return true;
}
