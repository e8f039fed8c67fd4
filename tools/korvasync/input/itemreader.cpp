// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "itemreader.h"

#include "model/refusal.h"
#include "objectline.h"
#include "process/interrupt.h"

#include <vmessage/vmessageparser.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <utility>

namespace {

using Size = decltype(QByteArray().size());

constexpr qint64 longestItem = qint64(32) * 1024 * 1024;
// Of a line that much is looked at to tell what it begins or ends: a reason names a file.
constexpr size_t headLength = 8192;
constexpr Size tagHeadLength = 6; // of an element: its sign, its name and what ends that

QByteArray toBytes(std::string_view text)
{
    return QByteArray(text.data(), static_cast<int>(text.size()));
}

bool isRemark(std::string_view head) { return head.substr(0, 2) == "# "; }

std::optional<InputItem::Kind> kindOfElement(std::string_view name)
{
    if (name == "sms")
        return InputItem::AndroidSms;
    if (name == "mms")
        return InputItem::AndroidMms;
    return name == "call" ? std::optional(InputItem::AndroidCall) : std::nullopt;
}

bool isTag(std::string_view name)
{
    return !name.empty() && std::isalpha(static_cast<unsigned char>(name.front()));
}

// Where in a broken element something else begins, 0 if nothing does.
size_t nextBeginning(std::string_view broken)
{
    bool lineStart = false;
    for (size_t i = 1; i < broken.size(); ++i) {
        const std::string_view here = broken.substr(i);
        if (lineStart) {
            const std::string_view head = here.substr(0, std::min(here.find('\n'), headLength));
            if (VMessageScanner::isBegin(head) || !ObjectLine::beginOf(head).empty())
                return i;
        }
        lineStart = here.front() == '\n';
        if (here.front() == '<' && kindOfElement(ElementScanner::nameAt(here)))
            return i;
    }
    return 0;
}

quint64 lineCount(const QByteArray &bytes) { return static_cast<quint64>(bytes.count('\n')); }

bool isMessage(std::string_view bytes)
{
    VMessageParser parser;
    return parser.parseVMessage(bytes.data(), static_cast<unsigned int>(bytes.size()));
}

} // namespace

QString InputItem::firstLine() const
{
    constexpr int mostShown = 40;
    return QString::fromUtf8(bytes.left(bytes.indexOf('\n')).trimmed().left(mostShown));
}

ItemReader::ItemReader(const QString &path, Form form, const QByteArray &readAhead)
    : file(path, readAhead)
    , form(form)
    , trouble(file.error())
{
}

std::optional<InputItem> ItemReader::next()
{
    while (found.isEmpty()) {
        if (step())
            continue;
        if (ended ? !finish() : !fill())
            return std::nullopt;
    }
    return found.takeFirst();
}

//! \return false after an error and when a signal came: what is there of the next item is
//!         not its all then
bool ItemReader::fill()
{
    const bool isOpen = place != Between && place != PassedLine && place != PassedSection;
    if (position - leftoverBegin.value_or(position) > longestItem)
        leftoverBegin.reset();
    const Size unread = isOpen ? begin : chatter >= 0 ? chatter : position;
    const Size done = qMin(unread, leftoverBegin.value_or(position));
    buffer.remove(0, done);
    discarded += static_cast<quint64>(done);
    position -= done;
    begin -= done;
    messageLine -= done;
    if (otherObject)
        otherObject->position -= done;
    if (chatter >= 0)
        chatter -= done;
    if (leftoverBegin)
        *leftoverBegin -= done;
    const QByteArray piece = file.read();
    trouble = file.error();
    ended = piece.isEmpty();
    buffer += piece;
    return trouble.isEmpty() && (!ended || Interrupt::signalNumber() == 0);
}

//! Reads on. \return false when more bytes are needed
bool ItemReader::step()
{
    if (rest().empty())
        return false;
    switch (place) {
    case Between:
        return stepBetween();
    case PassedLine:
        if (takeLine())
            place = Between;
        return true;
    case PassedSection:
        return stepPassedSection();
    case Object:
        return stepObject();
    case VMessage:
        return stepVMessage();
    case Element:
        return stepElement();
    case BrokenElement:
        return stepBrokenElement();
    }
    Q_UNREACHABLE();
}

//! Closes what is open at the end of the file. \return false when nothing is left to do
bool ItemReader::finish()
{
    switch (place) {
    case Between:
    case PassedLine:
        if (isRemains) {
            endChatter();
            return true;
        }
        endChatter();
        if (followsReason)
            closeLeftover(false);
        if (cutIsTold || (!isCutMarker && (!isBackup || root.isEmpty() || rootIsClosed)))
            return false;
        cutIsTold = true;
        found += InputItem{InputItem::CutFile, QByteArray(), line, false};
        return true;
    case PassedSection:
        place = Between;
        return true;
    case Object:
        emitItem(position);
        return true;
    case VMessage:
        closeMessage();
        return true;
    case Element:
        breakElement(false);
        return true;
    case BrokenElement:
        cutIsTold = true;
        emitItem(position);
        return true;
    }
    Q_UNREACHABLE();
}

std::string_view ItemReader::rest() const { return view(position, buffer.size()); }

std::string_view ItemReader::view(Size from, Size to) const
{
    return {buffer.constData() + from, static_cast<size_t>(to - from)};
}

//! The first bytes of the line that begins here; nothing when more of it has to be read.
std::optional<std::string_view> ItemReader::lineHead() const
{
    const std::string_view head = rest().substr(0, headLength);
    const size_t end = head.find('\n');
    if (end == std::string_view::npos && head.size() < headLength && !ended)
        return std::nullopt;
    return head.substr(0, end);
}

//! Reads to the end of the line. \return false when it is further on
bool ItemReader::takeLine()
{
    const auto end = buffer.indexOf('\n', position);
    position = end < 0 ? buffer.size() : end + 1;
    atLineStart = end >= 0;
    if (atLineStart)
        ++line;
    return atLineStart;
}

bool ItemReader::stepBetween()
{
    if (atLineStart) {
        const auto head = lineHead();
        if (!head)
            return false;
        if (isRemark(*head)) {
            endChatter();
            openRemark(*head);
            return true;
        }
        if (!followsReason)
            noteContent(*head);
        if (form != AndroidXml) {
            if (openObject(*head))
                return true;
            noteChatter(*head);
        }
        atLineStart = false;
    }
    const std::string_view text = rest();
    const size_t length = std::min(text.find_first_of("<\n"), text.size());
    position += static_cast<Size>(length);
    boundChatter();
    if (length == text.size())
        return true;
    if (text[length] == '<')
        return openMarkup();
    takeLine();
    if (remainsEnd)
        endChatter();
    return true;
}

void ItemReader::openRemark(std::string_view head)
{
    place = PassedLine;
    if (!isReasonLine(head))
        return;
    closeLeftover(false);
    leftoverBegin = position;
    followsReason = true;
}

//! \param beforeItem  which may be the one that the reason is of
void ItemReader::closeLeftover(bool beforeItem)
{
    if (followsReason && leftoverBegin) {
        const QByteArray bytes = buffer.mid(*leftoverBegin, position - *leftoverBegin);
        if (!beforeItem || !bytes.mid(bytes.indexOf('\n') + 1).trimmed().isEmpty())
            leftovers += bytes;
    }
    dropLeftover();
}

void ItemReader::dropLeftover()
{
    followsReason = false;
    leftoverBegin.reset();
}

QByteArray ItemReader::takeLeftovers() { return std::exchange(leftovers, QByteArray()); }

QByteArray ItemReader::passedOver() const
{
    return leftoverBegin ? buffer.mid(*leftoverBegin) : QByteArray();
}

void ItemReader::noteContent(std::string_view head)
{
    const QByteArray words = toBytes(head).trimmed();
    if (hasContent || words.isEmpty())
        return;
    hasContent = true;
    isXml = words.startsWith('<');
}

// ---- objects between BEGIN: and END: lines

bool ItemReader::openObject(std::string_view head)
{
    if (VMessageScanner::isBegin(head)) {
        openMessage();
        return true;
    }
    std::string_view name = ObjectLine::beginOf(head);
    // The end of an entry without its beginning is one by itself, so that it is refused.
    objectEnds = name.empty() && ObjectLine::isEnd(head, ObjectLine::callEntry);
    if (objectEnds)
        name = ObjectLine::callEntry;
    if (name.empty())
        return false;
    objectName = name;
    open(Object, name == ObjectLine::callEntry ? InputItem::CallEntry : InputItem::ForeignObject);
    return true;
}

void ItemReader::open(Place itemPlace, InputItem::Kind itemKind)
{
    endChatter();
    if (!isRoot)
        closeLeftover(true);
    place = itemPlace;
    kind = itemKind;
    begin = position;
    beginLine = line;
    atLineStart = false;
}

bool ItemReader::stepObject()
{
    if (atLineStart) {
        const auto head = lineHead();
        if (!head)
            return false;
        if (isReasonLine(*head) || VMessageScanner::isBegin(*head)
            || !ObjectLine::beginOf(*head).empty()) {
            emitItem(position);
            return true;
        }
        objectEnds = ObjectLine::isEnd(*head, objectName);
    }
    const bool isWhole = takeLine();
    if (isWhole && objectEnds)
        emitItem(position);
    else if (position - begin > longestItem)
        emitTooLong();
    return true;
}

void ItemReader::openMessage()
{
    open(VMessage, InputItem::Message);
    messageScanner = VMessageScanner();
    messageLine = position;
    otherObject.reset();
}

bool ItemReader::stepVMessage()
{
    if (atLineStart) {
        const auto head = lineHead();
        if (!head)
            return false;
        // What began in a message that was none ends where that one could not: else each that
        // seems to begin in it would be read to the same end.
        const bool wasRead = otherObject && offset() < brokenUpTo;
        const bool canBeStructure = messageScanner.nextLineCanBeStructure();
        if ((wasRead && VMessageScanner::isBegin(*head))
            || (canBeStructure && isReasonLine(*head))) {
            closeMessage();
            return true;
        }
        if (canBeStructure)
            noteOtherObject(*head);
        messageLine = position;
    }
    if (takeLine())
        takeMessageLine();
    if (place == VMessage && position - begin > longestItem) {
        if (otherObject)
            closeMessage();
        else
            emitTooLong();
    }
    return true;
}

void ItemReader::noteOtherObject(std::string_view head)
{
    const bool isText = head.empty() || std::isspace(static_cast<unsigned char>(head.front()));
    if (!otherObject && !isText && !ObjectLine::beginOf(head).empty())
        otherObject = Mark{position, line};
}

//! Ends the open message here, whether it is whole or not.
void ItemReader::closeMessage()
{
    const bool hasLastLine = !atLineStart && position > messageLine; // without its line end
    if (!hasLastLine || !takeMessageLine())
        emitMessage(position, false);
}

//! Hands the line in hand to the message, and takes back what is not the message's.
//! \return whether the message has ended
bool ItemReader::takeMessageLine()
{
    const VMessageScanner::Taken taken = messageScanner.take(view(messageLine, position));
    if (taken.verdict == VMessageScanner::Unfinished)
        return false;
    const Size next = position - static_cast<Size>(taken.unused.size());
    if (emitMessage(next, taken.verdict == VMessageScanner::Whole) && !taken.unused.empty()) {
        goBackTo({next, atLineStart ? line - 1 : line});
        openMessage();
    }
    return true;
}

// Another object that begins in a message is its text, unless the message is cut or broken. It
// is read by itself then.
bool ItemReader::emitMessage(Size end, bool isComplete)
{
    if (!otherObject || (isComplete && isMessage(view(begin, end)))) {
        emitItem(end);
        return true;
    }
    brokenUpTo = qMax(brokenUpTo, discarded + static_cast<quint64>(end));
    emitItem(otherObject->position);
    goBackTo(*otherObject);
    return false;
}

void ItemReader::goBackTo(const Mark &mark)
{
    position = mark.position;
    line = mark.line;
    atLineStart = true;
}

// ---- what stands between items

//! Keeps what stands between items, since the remains of a message are not to be passed over:
//! they begin with any line, and with one of a message it is known what they are.
void ItemReader::noteChatter(std::string_view head)
{
    const bool isBlank = toBytes(head).trimmed().isEmpty();
    if (chatter < 0 && !isBlank) {
        chatter = position;
        chatterLine = line;
    }
    isRemains = isRemains || VMessageScanner::isStructure(head);
    remainsEnd = VMessageScanner::isEnd(head);
    const std::string_view marker = "BEGIN:VMSG";
    isCutMarker = !head.empty() && position + static_cast<Size>(head.size()) == buffer.size()
        && head == marker.substr(0, head.size());
}

void ItemReader::endChatter()
{
    if (isRemains) {
        dropLeftover();
        found += InputItem{InputItem::Message, buffer.mid(chatter, position - chatter), chatterLine,
                           false};
    } else if (chatter >= 0 && !isXml && !followsReason && !somethingIsPassedOver) {
        somethingIsPassedOver = !buffer.mid(chatter, position - chatter).trimmed().isEmpty();
    }
    chatter = -1;
    isRemains = false;
    remainsEnd = false;
}

void ItemReader::boundChatter()
{
    constexpr Size longestChatter = Size(64) * 1024;
    if (chatter < 0 || position - chatter <= (isRemains ? longestItem : longestChatter))
        return;
    if (isRemains) {
        dropLeftover();
        found += InputItem{InputItem::Message, QByteArray(), chatterLine, true};
    }
    isRemains = false;
    endChatter();
}

// ---- elements

bool ItemReader::openMarkup()
{
    constexpr size_t longestName = 64;
    const std::string_view text = rest();
    if (text.size() < longestName && !ended)
        return false;
    if (form != TextObjects) {
        const std::string_view name = ElementScanner::nameAt(text.substr(0, longestName));
        if (const auto elementKind = kindOfElement(name)) {
            isBackup = isBackup || isXml;
            element = ElementScanner(name, name == "mms");
            deadEnds.begin(offset());
            open(Element, *elementKind);
            return true;
        }
        hasOtherElement = hasOtherElement || (!root.isEmpty() && isTag(name));
        if (isXml && !followsReason
            && (openSection(text, "<!--", "-->") || openSection(text, "<![CDATA[", "]]>")
                || openRoot(name)))
            return true;
    }
    ++position;
    return true;
}

bool ItemReader::openSection(std::string_view text, std::string_view start, const char *end)
{
    if (text.substr(0, start.size()) != start)
        return false;
    endChatter();
    sectionEnd = end;
    position += static_cast<Size>(start.size());
    place = PassedSection;
    return true;
}

bool ItemReader::stepPassedSection()
{
    const auto end = buffer.indexOf(sectionEnd, position);
    // The words that end it may be cut themselves.
    const auto length = static_cast<Size>(std::strlen(sectionEnd));
    const Size to = end < 0 ? qMax(position, buffer.size() - length + 1) : end + length;
    line +=
        static_cast<quint64>(std::count(buffer.cbegin() + position, buffer.cbegin() + to, '\n'));
    position = to;
    if (end >= 0)
        place = Between;
    return end >= 0;
}

// A backup that lacks the end tag of its root was cut, even if no element was.
bool ItemReader::openRoot(std::string_view name)
{
    if (!root.isEmpty() && toBytes(name) == '/' + root)
        rootIsClosed = true;
    if (!root.isEmpty() || isBackup || !isTag(name))
        return false;
    root = toBytes(name);
    isBackup = root == "smses" || root == "allsms" || root == "calls";
    isRoot = true;
    element = ElementScanner(name);
    deadEnds.begin(offset());
    open(Element, InputItem::ForeignObject);
    return true;
}

bool ItemReader::stepElement()
{
    const Size end = buffer.size();
    const char *const bytes = buffer.constData();
    while (position < end) {
        const char c = bytes[position];
        if (c == '#' && bytes[position - 1] == '\n') {
            const auto head = lineHead();
            if (!head)
                return false;
            if (isReasonLine(*head)) {
                breakElement(true);
                return true;
            }
        }
        if (c == '<' && element.shelter() != 0) {
            if (end - position < tagHeadLength && !ended)
                return false;
            if (isDeadEnd()) {
                breakElement(false);
                return true;
            }
        }
        const ElementScanner::Verdict verdict = element.take(c);
        if (verdict == ElementScanner::Broken) {
            breakElement(false);
            return true;
        }
        ++position;
        if (c == '\n')
            ++line;
        if (verdict == ElementScanner::Whole) {
            rootIsClosed = rootIsClosed || (isRoot && bytes[position - 2] == '/');
            emitItem(position);
            return true;
        }
    }
    if (position - begin > longestItem)
        emitTooLong();
    return false;
}

//! Whether the element comes to the beginning of another as an earlier one did, which was broken.
bool ItemReader::isDeadEnd()
{
    const std::string_view name = ElementScanner::nameAt(rest().substr(0, tagHeadLength));
    if (!kindOfElement(name) || deadEnds.pass(offset(), element.shelter()))
        return false;
    position += static_cast<Size>(name.size()) + 1; // so that it is found
    return true;
}

// One broken element ends nothing: what begins inside of it is read again.
void ItemReader::breakElement(bool atReason)
{
    const auto next = static_cast<Size>(nextBeginning(view(begin, position)));
    if (next != 0)
        emitUpTo(next);
    else if (atReason)
        emitUpTo(position - begin);
    else
        place = BrokenElement;
}

//! Takes the rest of its line to it, so that it can be mended.
bool ItemReader::stepBrokenElement()
{
    const std::string_view text = rest();
    const size_t length = std::min(text.find_first_of("<\n"), text.size());
    position += static_cast<Size>(length);
    if (length < text.size())
        emitItem(position);
    else if (position - begin > longestItem)
        emitTooLong();
    return true;
}

//! Ends the open item in the midst of its bytes, after \a length of them.
void ItemReader::emitUpTo(Size length)
{
    line = beginLine + lineCount(buffer.mid(begin, length));
    position = begin + length;
    atLineStart = buffer.at(position - 1) == '\n';
    emitItem(position);
}

void ItemReader::emitItem(Size end)
{
    const bool isElement = place == Element || place == BrokenElement;
    while (isElement && std::isspace(static_cast<unsigned char>(buffer.at(end - 1))))
        --end; // a broken one takes along what stands behind it
    if (!isRoot)
        found += InputItem{kind, buffer.mid(begin, end - begin), beginLine, false};
    isRoot = false;
    place = Between;
}

void ItemReader::emitTooLong()
{
    if (!isRoot)
        found += InputItem{kind, QByteArray(), beginLine, true};
    isRoot = false;
    place = Between;
}
