// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "vmessagescanner.h"

#include "vmessagelines.h"

#include <string>

using namespace VMessageLines;

class VMessageScannerPrivate
{
public:
    using Message = VMessageScanner::Message;

    void discardRead();
    bool takeLine(Line *line);
    bool readLineOf(const Line &line, size_t start, Message *message);
    bool readBodyLine(const Line &line, size_t start, Message *message);
    void open(const Line &line, size_t start);
    void close(const Line &line, size_t start, Message *message);
    Message messageUpTo(size_t end, bool complete) const;

    enum class Place {
        Outside,
        Header, // and the vCards
        Body,
        Closing, // behind an END:VBODY line that closes the body unless text follows
    };

    std::string bytes;     // from the open message or the unread line on
    quint64 discarded = 0; // bytes of the file before those
    size_t unread = 0;     // start of the first unread line
    size_t searched = 0;   // no line end between unread and here
    bool finished = false;
    quint64 lineNumber = 0; // of the line read last

    Place place = Place::Outside;
    size_t begin = 0; // of the open message
    quint64 beginLine = 0;
    bool crLf = false;   // its lines up to the body end in CR LF
    bool atText = false; // the next line is the first of the body
    bool ownText = false;
    bool mayBeClosed = false; // the line before was END:VBODY behind a bare line feed
    LineEnd before = LineEnd::None;
};

void VMessageScannerPrivate::discardRead()
{
    const size_t done = place == Place::Outside ? unread : begin;
    bytes.erase(0, done);
    discarded += done;
    unread -= done;
    searched -= done;
    begin = 0;
}

bool VMessageScannerPrivate::takeLine(Line *line)
{
    const size_t feed = bytes.find('\n', searched);
    searched = feed == std::string::npos ? bytes.size() : feed + 1;
    if (feed == std::string::npos && (!finished || unread == bytes.size()))
        return false;
    *line = readLine(std::string_view(bytes).substr(unread, searched - unread));
    unread = searched;
    ++lineNumber;
    return true;
}

void VMessageScannerPrivate::open(const Line &line, size_t start)
{
    place = Place::Header;
    begin = start;
    beginLine = lineNumber;
    crLf = line.end != LineEnd::Lf;
}

void VMessageScannerPrivate::close(const Line &line, size_t start, Message *message)
{
    place = Place::Outside;
    const size_t next = joint(line.text);
    if (next != 0) { // the rest of the line is read as another one
        unread = searched = start + next;
        --lineNumber;
    }
    *message = messageUpTo(unread, true);
    message->isJoined = next != 0;
}

VMessageScanner::Message VMessageScannerPrivate::messageUpTo(size_t end, bool complete) const
{
    return {std::string_view(bytes).substr(begin, end - begin), discarded + begin, beginLine,
            complete, false};
}

// Each of the two tells whether a message ends with the line or before it.
bool VMessageScannerPrivate::readLineOf(const Line &line, size_t start, Message *message)
{
    if (place == Place::Body || place == Place::Closing)
        return readBodyLine(line, start, message);

    const Keyword word = keyword(line.text);
    const bool inside = place == Place::Header;
    if (word == Keyword::BeginVMsg) {
        if (inside)
            *message = messageUpTo(start, false);
        open(line, start);
        return inside;
    }
    if (!inside)
        return false;
    if (word == Keyword::EndVMsg) {
        close(line, start, message);
        return true;
    }
    crLf = crLf && line.end != LineEnd::Lf;
    if (word == Keyword::BeginVBody)
        place = Place::Body;
    atText = place == Place::Body;
    return false;
}

bool VMessageScannerPrivate::readBodyLine(const Line &line, size_t start, Message *message)
{
    const Keyword word = keyword(line.text);
    if (atText)
        ownText = isOwnText(line.text, crLf);
    atText = false;
    const bool structure = !ownText || before != LineEnd::Lf || place == Place::Closing;
    if (mayBeClosed && closesEnvelope(word, line.end))
        place = Place::Closing;
    mayBeClosed = !structure && word == Keyword::EndVBody && line.end == LineEnd::CrLf;
    switch (structure ? word : Keyword::None) {
    case Keyword::BeginVMsg:
        *message = messageUpTo(start, false);
        open(line, start);
        return true;
    case Keyword::EndVBody:
        place = Place::Closing;
        return false;
    case Keyword::EndVMsg:
        if (place == Place::Body)
            return false;
        close(line, start, message);
        return true;
    case Keyword::EndVEnv:
        return false;
    default:
        if (!trimmed(line.text).empty())
            place = Place::Body;
        return false;
    }
}

VMessageScanner::VMessageScanner()
    : d(new VMessageScannerPrivate)
{
}

VMessageScanner::~VMessageScanner() = default;

bool VMessageScanner::isBegin(std::string_view line) { return keyword(line) == Keyword::BeginVMsg; }

bool VMessageScanner::isEnd(std::string_view line) { return keyword(line) == Keyword::EndVMsg; }

bool VMessageScanner::isStructure(std::string_view line)
{
    const Keyword word = keyword(line);
    return word != Keyword::None && word != Keyword::BeginVCard && word != Keyword::EndVCard;
}

void VMessageScanner::add(std::string_view bytes)
{
    d->discardRead();
    d->bytes.append(bytes);
}

void VMessageScanner::finish() { d->finished = true; }

bool VMessageScanner::nextLineCanBeStructure() const
{
    return !d->crLf || d->before != LineEnd::Lf;
}

bool VMessageScanner::next(Message *message)
{
    Line line;
    size_t start = d->unread;
    while (d->takeLine(&line)) {
        const bool found = d->readLineOf(line, start, message);
        d->before = line.end;
        start = d->unread;
        if (found)
            return true;
    }
    if (!d->finished || d->place == VMessageScannerPrivate::Place::Outside)
        return false;
    *message = d->messageUpTo(d->bytes.size(), false);
    d->place = VMessageScannerPrivate::Place::Outside;
    return true;
}
