// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "objectreader.h"

#include "objectline.h"
#include "shared/rejectreason.h"

#include <vmessage/vmessagescanner.h>

FormReader::Beginning ObjectReader::beginningAt(std::string_view head)
{
    name = ObjectLine::beginOf(head);
    // The end of an entry without its beginning is one by itself, so that it is refused.
    endsHere = name.empty() && ObjectLine::isEnd(head, ObjectLine::callEntry);
    if (endsHere)
        name = ObjectLine::callEntry;
    return name.empty() ? Nothing : Item;
}

void ObjectReader::open()
{
    openHere(name == ObjectLine::callEntry ? InputItem::CallEntry : InputItem::ForeignObject);
}

bool ObjectReader::step()
{
    if (window.atLineStart()) {
        const auto head = window.lineHead();
        if (!head)
            return false;
        if (isReasonLine(*head) || VMessageScanner::isBegin(*head)
            || !ObjectLine::beginOf(*head).empty()) {
            emitItem(window.offset());
            return true;
        }
        endsHere = ObjectLine::isEnd(*head, name);
    }
    const bool isWhole = window.takeLine();
    if (isWhole && endsHere)
        emitItem(window.offset());
    else if (isTooLong())
        emitTooLong();
    return true;
}
