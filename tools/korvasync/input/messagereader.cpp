// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "messagereader.h"

#include "objectline.h"
#include "shared/rejectreason.h"

#include <vmessage/vmessageparser.h>

#include <algorithm>
#include <cctype>

namespace {

bool isMessage(std::string_view bytes)
{
    VMessageParser parser;
    return parser.parseVMessage(bytes.data(), static_cast<unsigned int>(bytes.size()));
}

} // namespace

FormReader::Beginning MessageReader::beginningAt(std::string_view head)
{
    return VMessageScanner::isBegin(head) ? Item : Nothing;
}

void MessageReader::open()
{
    openHere(InputItem::Message);
    scanner = VMessageScanner();
    lineInHand = window.here();
    otherObject.reset();
}

bool MessageReader::step()
{
    if (window.atLineStart()) {
        const auto head = window.lineHead();
        if (!head)
            return false;
        if (endsBefore(*head)) {
            finish();
            return true;
        }
        noteOtherObject(*head);
        lineInHand = window.here();
    }
    if (window.takeLine())
        takeLineInHand();
    if (isOpen() && isTooLong()) {
        if (otherObject)
            finish();
        else
            emitTooLong();
    }
    return true;
}

bool MessageReader::endsBefore(std::string_view head) const
{
    // What began in a message that was none ends where that one could not: else each that seems
    // to begin in it would be read to the same end.
    const bool wasRead = otherObject && window.offset() < brokenUpTo;
    return (wasRead && VMessageScanner::isBegin(head))
        || (scanner.nextLineCanBeStructure() && isReasonLine(head));
}

void MessageReader::noteOtherObject(std::string_view head)
{
    const bool isText = !scanner.nextLineCanBeStructure() || head.empty()
        || std::isspace(static_cast<unsigned char>(head.front()));
    if (!otherObject && !isText && !ObjectLine::beginOf(head).empty())
        otherObject = window.here();
}

//! Ends the message here, whether it is whole or not.
void MessageReader::finish()
{
    // The line in hand may lack its end.
    const bool isTaken = window.atLineStart() || window.offset() == lineInHand.offset;
    if (isTaken || !takeLineInHand())
        emitUpTo(window.offset(), false);
}

//! Adds the line in hand to the message; what is not the message's begins the next one.
//! \return whether the message has ended
bool MessageReader::takeLineInHand()
{
    const auto taken = scanner.take(window.view(lineInHand.offset, window.offset()));
    if (taken.verdict == VMessageScanner::Unfinished)
        return false;
    const quint64 end = window.offset() - taken.unused.size();
    if (emitUpTo(end, taken.verdict == VMessageScanner::Whole) && !taken.unused.empty()) {
        window.goBackTo({end, lineInHand.line});
        open();
    }
    return true;
}

// Another object that begins in a message is its text, unless the message is cut or broken.
//! \return false when it is, and that object is next
bool MessageReader::emitUpTo(quint64 end, bool isComplete)
{
    if (!otherObject || (isComplete && isMessage(window.view(beginning().offset, end)))) {
        emitItem(end);
        return true;
    }
    brokenUpTo = std::max(brokenUpTo, end);
    emitItem(otherObject->offset);
    window.goBackTo(*otherObject);
    return false;
}
