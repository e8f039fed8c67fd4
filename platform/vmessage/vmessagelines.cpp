// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "vmessagelines.h"

namespace VMessageLines {

namespace {

// A last line that was cut inside the words that close a message.
bool isCutClosing(const Line &line)
{
    return line.end == LineEnd::None
        && (startsWith("END:VENV", line.text) || startsWith("END:VMSG", line.text));
}

// Where files were joined, there are byte order marks before messages, and the signs with
// which some programs end a file: a zero, or Ctrl-Z.
std::string_view withoutGlue(std::string_view line)
{
    const auto isEndOfFile = [](char c) { return c == '\0' || c == '\x1A'; };
    while (!line.empty() && (isEndOfFile(line.back()) || isBlank(line.back())))
        line.remove_suffix(1);
    for (;;) {
        if (line.substr(0, 3) == "\xEF\xBB\xBF")
            line.remove_prefix(3);
        else if (!line.empty() && isEndOfFile(line.front()))
            line.remove_prefix(1);
        else
            return line;
    }
}

} // namespace

Line readLine(std::string_view bytes)
{
    const size_t feed = bytes.find('\n');
    if (feed == std::string_view::npos)
        return {bytes, bytes.substr(bytes.size()), LineEnd::None};
    if (feed > 0 && bytes[feed - 1] == '\r')
        return {bytes.substr(0, feed - 1), bytes.substr(feed + 1), LineEnd::CrLf};
    return {bytes.substr(0, feed), bytes.substr(feed + 1), LineEnd::Lf};
}

Keyword keyword(std::string_view line)
{
    // Most lines show with their first byte that they are none.
    switch (line.empty() ? ' ' : line.front()) {
    case 'B':
    case 'b':
    case 'E':
    case 'e':
    case '\xEF':
    case '\0':
    case '\x1A':
        break;
    default:
        return Keyword::None;
    }
    if (joint(line) != 0)
        return Keyword::EndVMsg;
    line = withoutGlue(line);
    const bool begin = startsWith(line, "BEGIN");
    if (!begin && !startsWith(line, "END"))
        return Keyword::None;
    line = trimmed(line.substr(begin ? 5 : 3));
    if (line.empty() || line.front() != ':')
        return Keyword::None;
    line = trimmed(line.substr(1));
    if (equals(line, "VMSG"))
        return begin ? Keyword::BeginVMsg : Keyword::EndVMsg;
    if (equals(line, "VENV"))
        return begin ? Keyword::BeginVEnv : Keyword::EndVEnv;
    if (equals(line, "VCARD"))
        return begin ? Keyword::BeginVCard : Keyword::EndVCard;
    if (equals(line, "VBODY"))
        return begin ? Keyword::BeginVBody : Keyword::EndVBody;
    return Keyword::None;
}

size_t joint(std::string_view line)
{
    constexpr std::string_view end = "END:VMSG";
    constexpr std::string_view begin = "BEGIN:VMSG";
    const std::string_view words = withoutGlue(line);
    if (!startsWith(words, end))
        return 0;
    const std::string_view behind = trimmed(words.substr(end.size()));
    const std::string_view next = withoutGlue(behind);
    const bool begins = startsWith(next, begin) && trimmed(next.substr(begin.size())).empty();
    return begins ? size_t(behind.data() - line.data()) : 0;
}

const char *findBodyEnd(std::string_view bytes, bool own)
{
    bool closed = true; // from the line after this one on
    bool nextCloses = false;
    while (!bytes.empty()) {
        const size_t feed = bytes.substr(0, bytes.size() - 1).rfind('\n');
        const size_t start = feed == std::string_view::npos ? 0 : feed + 1;
        const Line line = readLine(bytes.substr(start));
        bytes = bytes.substr(0, start);
        const bool behindFeed = start > 0 && (start == 1 || bytes[start - 2] != '\r');

        const Keyword word = keyword(line.text);
        const bool isText = own && behindFeed && !(nextCloses && line.end == LineEnd::CrLf);
        nextCloses = closesEnvelope(word, line.end);
        switch (word) {
        case Keyword::EndVBody:
            if (closed && !isText)
                return line.text.data();
            break; // behind the end of the body it changes nothing
        case Keyword::EndVMsg:
        case Keyword::BeginVMsg:
            closed = true;
            break;
        case Keyword::EndVEnv:
            break;
        default:
            closed = closed && (trimmed(line.text).empty() || isCutClosing(line));
        }
    }
    return nullptr;
}

} // namespace VMessageLines
