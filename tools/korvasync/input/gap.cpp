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
    line = Remark;
    if (isReasonLine(head))
        leftovers.beginReason();
    return true;
}

void Gap::passRemark()
{
    if (window.takeLine())
        line = Other;
}

void Gap::noteFirstSign(std::string_view head)
{
    if (firstSign || leftovers.haveReason() || isBlankText(head))
        return;
    firstSign = head[head.find_first_not_of(" \t\n\v\f\r")];
}

void Gap::noteLine(std::string_view head)
{
    if (!text && !isBlankText(head))
        text = window.here();
    isMessage = isMessage || VMessageScanner::isStructure(head);
    const std::string_view begin = "BEGIN:VMSG";
    const bool isLast = head.size() == window.rest().size();
    if (!head.empty() && isLast && head == begin.substr(0, head.size()))
        line = CutBegin;
    else
        line = VMessageScanner::isEnd(head) ? MessageEnd : Other;
}

bool Gap::passUpToTag()
{
    const bool isFound = window.takeUpTo("<\n");
    boundText();
    if (!isFound)
        return false;
    if (window.rest().front() == '<')
        return true;
    window.takeLine();
    if (line == MessageEnd)
        end();
    return false;
}

void Gap::end()
{
    if (isMessage) {
        leftovers.drop();
        items += InputItem{InputItem::Message, window.bytes(text->offset, window.offset()),
                           text->line, false};
    } else if (text && !isXml() && !leftovers.haveReason()) {
        somethingIsPassedOver =
            somethingIsPassedOver || !isBlankText(window.view(text->offset, window.offset()));
    }
    text.reset();
    isMessage = false;
}

void Gap::endBeforeItem()
{
    end();
    leftovers.end(true);
}

bool Gap::endOfFile()
{
    const bool isItem = isMessage;
    end();
    if (leftovers.haveReason())
        leftovers.end(false);
    return isItem;
}

//! What is too long to be kept is passed over as it is read.
void Gap::boundText()
{
    constexpr quint64 longestText = quint64(64) * 1024;
    const quint64 longest = isMessage ? InputItem::longest : longestText;
    if (!text || window.offset() - text->offset <= longest)
        return;
    if (isMessage) {
        leftovers.drop();
        items += InputItem{InputItem::Message, QByteArray(), text->line, true};
    }
    isMessage = false;
    end();
}

quint64 Gap::needed()
{
    const quint64 here = window.offset();
    return std::min(text ? text->offset : here, leftovers.needed().value_or(here));
}
