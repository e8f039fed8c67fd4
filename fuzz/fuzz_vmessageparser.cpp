// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a file of messages, and as the text of one message.

#include "fuzzing.h"
#include "scannedmessages.h"

#include <vmessage/textdecoding.h>
#include <vmessage/vmessageparser.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

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
    for (const ScannedMessage &message : scannedMessages(bytes)) {
        require(isMessage(message.bytes) || !message.complete);
        const auto again = scannedMessages(message.bytes);
        require(again.size() == 1 && again[0].bytes == message.bytes);
        require(again[0].complete == message.complete);
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
    const std::string file = message + message;
    const auto both = scannedMessages(file);
    require(both.size() == 2 && both[0].bytes == message && both[1].bytes == message);
    require(both[0].complete && both[1].complete);
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
