// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The rows "encode" and "decode": the text of a message without a store.

#include "harness.h"
#include "librecords.h"
#include "rows.h"

#include "smssyncinterface_p.h"

#include <korvasync/vmessageencoder.h>
#include <vmessage/vmessageparser.h>

#include <array>
#include <cstring>
#include <string_view>

namespace Bench {

namespace {

struct EncodedText
{
    std::string time;
    std::string text;
};

//! What the text form that the library shows a time in looks like.
std::string timeText(std::int64_t seconds)
{
    return toSmsInfo({4098, {}, seconds, {}, {}}).time.toString(Qt::TextDate).toStdString();
}

//! The fields that the decoder takes from a message.
struct DecodedText
{
    std::string status;
    std::string box;
    std::string number;
    std::string body;
    std::string charset;
    std::int64_t time = 0;
    bool isSent = false;
};

int digits(const char *text, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i)
        value = value * 10 + (text[i] - '0');
    return value;
}

std::int64_t readStamp(const char *text)
{
    int year = digits(text, 4);
    const int month = digits(text + 4, 2);
    // Days from civil: years begin in March, so that the leap day is the last one.
    year -= month <= 2 ? 1 : 0;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + digits(text + 6, 2) - 1;
    const std::int64_t days =
        std::int64_t(year) * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - 719468;
    return ((days * 24 + digits(text + 9, 2)) * 60 + digits(text + 11, 2)) * 60
        + digits(text + 13, 2);
}

bool startsWith(std::string_view line, std::string_view beginning)
{
    return line.substr(0, beginning.size()) == beginning;
}

//! Picks the fields line by line, for texts of the encoder's form alone.
void scan(const std::string &text, DecodedText *decoded)
{
    DecodedText &message = *decoded;
    const char *at = text.data();
    const char *const end = at + text.size();
    while (at < end) {
        const void *const found = std::memchr(at, '\n', std::size_t(end - at));
        const char *const lineEnd = found ? static_cast<const char *>(found) : end;
        const std::string_view line(at, std::size_t(lineEnd - at - 1));
        const auto valueAfter = [&](std::string_view name) {
            return std::string(line.substr(name.size()));
        };
        if (startsWith(line, "X-IRMC-STATUS:"))
            message.status = valueAfter("X-IRMC-STATUS:");
        else if (startsWith(line, "X-IRMC-BOX:"))
            message.box = valueAfter("X-IRMC-BOX:");
        else if (startsWith(line, "X-QLT-DT:"))
            message.time = readStamp(at + sizeof("X-QLT-DT:") - 1);
        else if (startsWith(line, "TEL:"))
            message.number = valueAfter("TEL:");
        else if (startsWith(line, "BEGIN:VENV") && message.number.empty())
            message.isSent = true;
        else if (startsWith(line, "X-SMS;TYPE=TEXT;CHARSET=UTF-8:")) {
            message.body = valueAfter("X-SMS;TYPE=TEXT;CHARSET=UTF-8:");
            message.charset = "UTF-8";
        }
        at = lineEnd + 1;
    }
}

void encodeOurs(const Turn &turn, const std::vector<Record> &records)
{
    const QList<KorvaSyncIf::SmsInfo> messages = toSmsInfos(records);
    std::size_t length = 0;
    turn.report(seconds([&] {
        KorvaSyncIf::VMessageEncoder encoder;
        for (const KorvaSyncIf::SmsInfo &message : messages)
            length += std::size_t(encoder.encode(message).vMessage.size());
    }));
    check(length > records.size() * 300, "encode");
}

//! The same bytes, without any rule about what belongs where.
void encodeLimit(const Turn &turn, const std::vector<Record> &records)
{
    std::vector<std::string> times;
    times.reserve(records.size());
    for (const Record &record : records)
        times.push_back(timeText(record.time));
    std::size_t length = 0;
    turn.report(seconds([&] {
        for (std::size_t i = 0; i < records.size(); ++i) {
            EncodedText encoded;
            encoded.time = times[i];
            encoded.text.reserve(512);
            appendVMessage(records[i], encoded.text);
            length += encoded.text.size();
        }
    }));
    KorvaSyncIf::VMessageEncoder encoder;
    for (const Record &record : records) {
        std::string text;
        appendVMessage(record, text);
        check(encoder.encode(toSmsInfo(record)).vMessage.toStdString() == text, "same bytes");
    }
}

void decodeOurs(const Turn &turn, const std::vector<Record> &records,
                const std::vector<std::string> &texts)
{
    KorvaSyncIf::SMSSyncInterfacePrivate decoder;
    std::vector<KorvaSyncIf::SmsInfo> decoded(texts.size());
    turn.report(seconds([&] {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const std::string &text = texts[i];
            VMessageParser parser;
            const VMessage *const message =
                parser.parseVMessage(text.c_str(), unsigned(text.size()) + 1);
            decoder.extractMsgContents(&parser, message, decoded[i]);
        }
    }));
    for (std::size_t i = 0; i < records.size(); ++i) {
        const KorvaSyncIf::SmsInfo &info = decoded[i];
        check(info.body.toStdString() == records[i].body
                  && info.time.toSecsSinceEpoch() == records[i].time
                  && (info.fromNumber + info.toNumber).toStdString() == records[i].number,
              "decode");
    }
}

void decodeLimit(const Turn &turn, const std::vector<Record> &records,
                 const std::vector<std::string> &texts)
{
    std::vector<DecodedText> decoded(texts.size());
    turn.report(seconds([&] {
        for (std::size_t i = 0; i < texts.size(); ++i)
            scan(texts[i], &decoded[i]);
    }));
    for (std::size_t i = 0; i < records.size(); ++i) {
        check(decoded[i].body == records[i].body && decoded[i].time == records[i].time
                  && decoded[i].number == records[i].number
                  && decoded[i].isSent == records[i].isSent(),
              "scan");
    }
}

} // namespace

void encode(const Turn &turn)
{
    const std::vector<Record> records = makeRecords(turn.count, turn.numbers);
    if (turn.isOurs())
        encodeOurs(turn, records);
    else
        encodeLimit(turn, records);
}

void decode(const Turn &turn)
{
    const std::vector<Record> records = makeRecords(turn.count, turn.numbers);
    std::vector<std::string> texts(records.size());
    for (std::size_t i = 0; i < records.size(); ++i)
        appendVMessage(records[i], texts[i]);
    if (turn.isOurs())
        decodeOurs(turn, records, texts);
    else
        decodeLimit(turn, records, texts);
}

} // namespace Bench
