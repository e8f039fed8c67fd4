// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <vmessage/vmessagescanner.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

//! A message as VMessageScanner finds it in a file.
struct ScannedMessage
{
    std::string_view bytes; //!< from BEGIN:VMSG on
    size_t offset = 0;      //!< of the first byte in the file
    size_t line = 0;        //!< of BEGIN:VMSG in the file, from 1
    bool complete = false;  //!< ends in END:VMSG, and no body is closed that was not opened
    bool isJoined = false;  //!< the next one begins on the line on which this one ends

    bool operator==(const ScannedMessage &other) const
    {
        return bytes == other.bytes && offset == other.offset && line == other.line
            && complete == other.complete && isJoined == other.isJoined;
    }
};

//! All messages of a file. What the scanner of one hands back goes to that of the next.
inline std::vector<ScannedMessage> scannedMessages(std::string_view file)
{
    std::vector<ScannedMessage> found;
    ScannedMessage message;
    std::optional<VMessageScanner> scanner;
    const auto close = [&](size_t end) {
        message.bytes = file.substr(message.offset, end - message.offset);
        found.push_back(message);
        scanner.reset();
    };
    size_t start = 0;
    for (size_t line = 1; start < file.size();) {
        const size_t feed = std::min(file.find('\n', start), file.size() - 1);
        const std::string_view bytes = file.substr(start, feed + 1 - start);
        const std::string_view words = bytes.substr(0, bytes.find_last_not_of("\r\n") + 1);
        if (!scanner && VMessageScanner::isBegin(words)) {
            scanner.emplace();
            message = {{}, start, line, false, false};
        }
        const auto taken = scanner ? scanner->take(bytes) : VMessageScanner::Taken();
        start += bytes.size() - taken.unused.size();
        if (taken.unused.empty())
            ++line;
        message.complete = taken.verdict == VMessageScanner::Whole;
        message.isJoined = taken.verdict != VMessageScanner::Cut && !taken.unused.empty();
        if (taken.verdict != VMessageScanner::Unfinished)
            close(start);
    }
    if (scanner)
        close(file.size());
    return found;
}
