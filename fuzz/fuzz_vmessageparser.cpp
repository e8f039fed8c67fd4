// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a file of messages, and as the text of one message.

#include "fuzzing.h"

#include <vmessage/textdecoding.h>
#include <vmessage/vmessageparser.h>
#include <vmessage/vmessagescanner.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Found
{
    std::string bytes;
    bool complete;

    bool operator==(const Found &other) const
    {
        return bytes == other.bytes && complete == other.complete;
    }
};

std::vector<Found> scanned(std::string_view file, size_t chunkSize)
{
    std::vector<Found> result;
    VMessageScanner scanner;
    VMessageScanner::Message message;
    while (!file.empty()) {
        scanner.add(file.substr(0, chunkSize));
        file.remove_prefix(std::min(chunkSize, file.size()));
        while (scanner.next(&message))
            result.push_back({std::string(message.bytes), message.complete});
    }
    scanner.finish();
    while (scanner.next(&message))
        result.push_back({std::string(message.bytes), message.complete});
    return result;
}

// Whether there is a message; what it holds must be whole and UTF-8. If there is none, one of the
// lines is to blame.
bool isMessage(std::string_view bytes)
{
    VMessageParser parser;
    const VMessage *message = parser.parseVMessage(bytes.data(), unsigned(bytes.size()));
    const VMessageProblem problem = parser.problem();
    require((problem.kind == VMessageProblem::None) == (message != nullptr));
    require(problem.kind != VMessageProblem::LongText);
    require((problem.line == 0) == (message != nullptr));
    require(problem.line <= 1 + std::count(bytes.begin(), bytes.end(), '\n'));
    if (const VMessageBody *body = parser.body(message)) {
        require(body->text && body->text[body->length] == '\0');
        require(TextDecoding::isUtf8({body->text, size_t(body->length)}));
    }
    return message;
}

void checkFile(std::string_view bytes)
{
    isMessage(bytes);
    const std::vector<Found> whole = scanned(bytes, bytes.size());
    require(scanned(bytes, 1) == whole);
    require(scanned(bytes, 7) == whole);
    for (const Found &message : whole) {
        require(isMessage(message.bytes) || !message.complete);
        require(scanned(message.bytes, message.bytes.size()) == std::vector<Found>{message});
    }
}

void checkText(std::string text, size_t cut)
{
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    if (!TextDecoding::isUtf8(text))
        return;
    const std::string message = "BEGIN:VMSG\r\nVERSION:1.1\r\nBEGIN:VENV\r\nBEGIN:VBODY\r\n"
                                "X-SMS;TYPE=TEXT;CHARSET=UTF-8:"
        + text + "\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
    require(scanned(message + message, 1000)
            == std::vector<Found>{{message, true}, {message, true}});
    require(isMessage(message));
    for (const size_t length : {message.size(), cut % message.size()}) {
        VMessageParser parser;
        const VMessage *parsed = parser.parseVMessage(message.data(), unsigned(length));
        const VMessageBody *body = parser.body(parsed);
        require(!parsed || (body && text == std::string_view(body->text, size_t(body->length))));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    if (size > 0) {
        checkFile(bytes);
        checkText(std::string(bytes), size * data[0]);
    }
    return 0;
}
