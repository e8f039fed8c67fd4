// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads files as a person adds them, each in two sizes, of which the second is four times the
// first, and has callgrind write down the work for each. growth.sh compares.
//
// growth SEED COUNT: the files whose work once grew with the square of their size, and COUNT
// others, put together from the same parts by chance. Prints what each consists of.

#include "memoryfile.h"

#include <formats/callelement.h>
#include <formats/callentry.h>
#include <formats/smselement.h>
#include <input/itemreader.h>
#include <model/normalising.h>

#include <valgrind/callgrind.h>

#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_view_literals;

namespace {

//! A file of one beginning and then nothing but the same words.
struct Shape
{
    std::string_view beginning;
    std::vector<std::string_view> words;
};

constexpr auto xmlRoot = "<?xml version=\"1.0\"?>\n<smses>"sv;
constexpr auto xmlMessage = "<sms body=\""sv;
constexpr auto reason = "# a:1: sms-parse: x\r\n"sv;
constexpr auto message = "BEGIN:VMSG\r\n"sv;
constexpr auto body = "BEGIN:VMSG\r\nX-IRMC-BOX:INBOX\r\nX-QLT-DT:20240105T081500Z\r\n"
                      "BEGIN:VCARD\r\nTEL:+15550100\r\nEND:VCARD\r\n"
                      "BEGIN:VENV\r\nBEGIN:VBODY\r\n"sv;
constexpr auto littleEndian = "\xFF\xFE"sv;
constexpr auto wideMessage = "B\0E\0G\0I\0N\0:\0V\0M\0S\0G\0"sv;

const std::vector<std::string_view> beginnings = {""sv,    xmlRoot, xmlMessage,  reason,
                                                  message, body,    littleEndian};

const std::vector<std::string_view> parts = {
    "BEGIN:VMSG\r\n"sv,
    "END:VMSG\r\n"sv,
    "BEGIN:VBODY\r\n"sv,
    "END:VBODY\r\n"sv,
    "BEGIN:VENV\r\n"sv,
    "END:VENV\r\n"sv,
    "BEGIN:VCARD\r\n"sv,
    "END:VCARD\r\n"sv,
    "TEL:1\r\n"sv,
    "X-SMS;TYPE=TEXT;CHARSET=UTF-8:x\r\n"sv,
    "X-SMS:a\n"sv,
    "X-SMS;ENCODING=BASE64:QQ\r\n"sv,
    "TEXT;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-7:=41=\r\n"sv,
    "Date:x\r\n"sv,
    "X-READ:1\r\n"sv,
    "BEGIN:VNOTE\r\n"sv,
    "END:VNOTE\r\n"sv,
    "BEGIN:VCALLHISTENTRY\r\n"sv,
    "END:VCALLHISTENTRY\r\n"sv,
    reason,
    "# x\n"sv,
    "BEGIN:VMSG"sv,
    "BEGIN:VMSG\n"sv,
    wideMessage,
    "\0B\0E\0G\0I\0N\0:\0V\0M\0S\0G"sv,
    "\xFF\xFE"sv,
    "\xFE\xFF"sv,
    "\xEF\xBB\xBF"sv,
    "<sms "sv,
    "<sms a=\""sv,
    "<sms a='"sv,
    "<call "sv,
    "<mms>"sv,
    "<mms"sv,
    "</mms>"sv,
    "<part b=\""sv,
    "<a>"sv,
    "<"sv,
    ">"sv,
    "/>"sv,
    "\""sv,
    "'"sv,
    "a='b' "sv,
    "body=\"\n"sv,
    "<!"sv,
    "<!--"sv,
    "-->"sv,
    "<![CDATA["sv,
    "]]>"sv,
    "<?xml "sv,
    "<smses>"sv,
    "</smses>"sv,
    "&#"sv,
    "&amp;"sv,
    "~"sv,
    "address=\"+155501234567~\""sv,
    "\n"sv,
    "\r\n"sv,
    "\0"sv,
    " "sv,
    "a"sv,
    "=\r\n"sv,
};

const std::vector<Shape> onceSlow = {
    {""sv, {"<mms><!--"sv}},
    {""sv, {"<mms><![CDATA["sv}},
    {""sv, {"<mms>"sv, "<!--"sv, "<mms>"sv, "<![CDATA["sv}},
    {"<mms>"sv, {"<a b=\"<mms>\" >"sv}},
    {"<mms><!-- <a b='"sv, {"<mms><!--<mms><a b=\""sv}},
    {""sv, {"\0<sms "sv}},
    {xmlRoot, {"\0<sms "sv}},
    {reason, {"\0<sms "sv}},
    {""sv, {message, wideMessage}},
    {""sv, {wideMessage, message}},
    {littleEndian, {"\n"sv, message}},
    {littleEndian, {"B\0E\0G\0I\0N\0:\0V\0M\0S\0G"sv}},
    {""sv, {"BEGIN:VMSG\r\nBEGIN:VNOTE\r\nBEGIN:VBODY\r\nX-SMS:a\n"sv}},
};

QByteArray fileOf(const Shape &shape, size_t size)
{
    std::string bytes(shape.beginning);
    while (bytes.size() < size) {
        for (const std::string_view word : shape.words)
            bytes += word;
    }
    return QByteArray(bytes.data(), int(bytes.size()));
}

// One message with so many parties; no two are the same.
QByteArray fileOfCards(size_t size)
{
    std::string bytes(message);
    bytes += "X-IRMC-BOX:INBOX\r\nX-QLT-DT:20240105T081500Z\r\n";
    for (int i = 0; bytes.size() < size; ++i)
        bytes += "BEGIN:VCARD\r\nTEL:+1555" + std::to_string(1000000 + i) + "\r\nEND:VCARD\r\n";
    bytes += "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS:a\r\nEND:VBODY\r\nEND:VENV\r\nEND:VMSG\r\n";
    return QByteArray(bytes.data(), int(bytes.size()));
}

void judge(const InputItem &item)
{
    NormalisingRules rules;
    rules.folder = KorvaSyncIf::LocInbox;
    rules.localZone = QTimeZone::utc();
    rules.now = QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
    std::optional<ParsedMessage> parsed;
    switch (item.kind) {
    case InputItem::Message:
        parsed = ParsedMessage::parse(item.bytes);
        break;
    case InputItem::AndroidSms:
        parsed = SmsElement::parse(item.bytes);
        break;
    case InputItem::CallEntry:
        CallEntry::parse(item.bytes, rules.localZone, rules.now);
        break;
    case InputItem::AndroidCall:
        CallElement::parse(item.bytes, rules.now);
        break;
    case InputItem::AndroidMms:
    case InputItem::ForeignObject:
    case InputItem::CutFile:
        break;
    }
    if (parsed)
        normalise(*parsed, rules);
}

void measure(const QByteArray &bytes)
{
    const MemoryFile file(bytes);
    CALLGRIND_ZERO_STATS;
    ItemReader reader(file.path());
    while (const auto item = reader.next())
        judge(*item);
    CALLGRIND_DUMP_STATS;
}

QByteArray readable(std::string_view bytes)
{
    return QByteArray(bytes.data(), int(bytes.size())).toPercentEncoding(" !\"#&'/:;<=>?[]");
}

void measureBoth(const QByteArray &small, const QByteArray &large, const Shape &shape)
{
    std::string words;
    for (const std::string_view word : shape.words)
        words += word;
    std::printf("%d %d \"%s\" and repeated \"%s\"\n", int(small.size()), int(large.size()),
                readable(shape.beginning).constData(), readable(words).constData());
    measure(small);
    measure(large);
}

} // namespace

int main(int argc, char *argv[])
{
    require(argc == 3);
    silenceTrace();
    constexpr size_t smallSize = 2 * 1024;
    constexpr size_t largeSize = 4 * smallSize;
    std::vector<Shape> shapes = onceSlow;
    std::mt19937 random(unsigned(std::atoi(argv[1])));
    const auto anyOf = [&](const auto &all) { return all[random() % all.size()]; };
    for (int i = 0; i < std::atoi(argv[2]); ++i) {
        Shape shape{anyOf(beginnings), {}};
        for (auto count = 1 + random() % 4; count > 0; --count)
            shape.words.push_back(anyOf(parts));
        shapes.push_back(shape);
    }
    measure(fileOfCards(largeSize)); // what is done but once is done here
    measureBoth(fileOfCards(smallSize), fileOfCards(largeSize), {"cards"sv, {"a card"sv}});
    for (const Shape &shape : shapes)
        measureBoth(fileOf(shape, smallSize), fileOf(shape, largeSize), shape);
    return 0;
}
