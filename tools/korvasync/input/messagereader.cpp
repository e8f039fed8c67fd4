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
    m_scanner = VMessageScanner();
    m_lineInHand = m_window.here();
    m_otherObject.reset();
}

bool MessageReader::step()
{
    if (m_window.atLineStart()) {
        const auto head = m_window.lineHead();
        if (!head)
            return false;
        if (endsBefore(*head)) {
            finish();
            return true;
        }
        noteOtherObject(*head);
        m_lineInHand = m_window.here();
    }
    if (m_window.takeLine())
        takeLineInHand();
    if (isOpen() && isTooLong()) {
        if (m_otherObject)
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
    const bool wasRead = m_otherObject && m_window.offset() < m_brokenUpTo;
    return (wasRead && VMessageScanner::isBegin(head))
        || (m_scanner.nextLineCanBeStructure() && isReasonLine(head));
}

void MessageReader::noteOtherObject(std::string_view head)
{
    const bool isText = !m_scanner.nextLineCanBeStructure() || head.empty()
        || std::isspace(static_cast<unsigned char>(head.front()));
    if (!m_otherObject && !isText && !ObjectLine::beginOf(head).empty())
        m_otherObject = m_window.here();
}

//! Ends the message here, whether it is whole or not.
void MessageReader::finish()
{
    // The line in hand may lack its end.
    const bool isTaken = m_window.atLineStart() || m_window.offset() == m_lineInHand.offset;
    if (isTaken || !takeLineInHand())
        emitUpTo(m_window.offset(), false);
}

//! Adds the line in hand to the message; what is not the message's begins the next one.
//! \return whether the message has ended
bool MessageReader::takeLineInHand()
{
    const auto taken = m_scanner.take(m_window.view(m_lineInHand.offset, m_window.offset()));
    if (taken.verdict == VMessageScanner::Unfinished)
        return false;
    const quint64 end = m_window.offset() - taken.unused.size();
    if (emitUpTo(end, taken.verdict == VMessageScanner::Whole) && !taken.unused.empty()) {
        m_window.goBackTo({end, m_lineInHand.line});
        open();
    }
    return true;
}

// Another object that begins in a message is its text, unless the message is cut or broken.
//! \return false when it is, and that object is next
bool MessageReader::emitUpTo(quint64 end, bool isComplete)
{
    if (!m_otherObject || (isComplete && isMessage(m_window.view(beginning().offset, end)))) {
        emitItem(end);
        return true;
    }
    m_brokenUpTo = std::max(m_brokenUpTo, end);
    emitItem(m_otherObject->offset);
    m_window.goBackTo(*m_otherObject);
    return false;
}
