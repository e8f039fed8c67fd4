// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "records.h"

#include <array>
#include <ctime>

namespace Bench {

namespace {

//! A small generator whose numbers do not change with the standard library.
class Random
{
public:
    explicit Random(std::uint32_t seed)
        : m_state(seed * 2654435761u + 1)
    {
    }
    std::uint32_t below(std::uint32_t end)
    {
        m_state = m_state * 1664525u + 1013904223u;
        return (m_state >> 8) % end;
    }

private:
    std::uint32_t m_state;
};

std::string makeBody(int index)
{
    constexpr int length = 60;
    static const std::array<const char *, 12> foreign = {"ä", "é", "ß", "ñ",  "ø",  "ж",
                                                         "и", "λ", "ω", "東", "京", "€"};
    Random random{std::uint32_t(index)};
    std::string body;
    for (int i = 0; i < length; ++i) {
        const std::uint32_t choice = random.below(32);
        if (choice >= 26)
            body += ' ';
        else if (index % 3 == 2 && choice < foreign.size())
            body += foreign[choice];
        else
            body += char('a' + choice);
    }
    return body;
}

void appendCard(const Record &record, std::string &text)
{
    text += "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL:";
    text += record.number;
    text += "\r\nEND:VCARD\r\n";
}

const char *boxOf(int folder)
{
    switch (folder) {
    case 4098:
        return "INBOX";
    case 4099:
        return "OUTBOX";
    case 4101:
        return "SENT";
    default:
        return "MYFOLDERS";
    }
}

} // namespace

std::string makeStamp(std::int64_t time)
{
    const std::time_t seconds = time;
    std::tm parts = {};
    gmtime_r(&seconds, &parts);
    std::array<char, 17> text = {};
    std::strftime(text.data(), text.size(), "%Y%m%dT%H%M%SZ", &parts);
    return text.data();
}

std::vector<Record> makeRecords(int count, int numbers, int first)
{
    constexpr std::array<int, 4> folders = {4098, 4099, 4101, 4104};
    constexpr std::int64_t start = 1577836800; // 2020-01-01
    constexpr int firstNumber = 15550100;
    std::vector<Record> records;
    records.reserve(std::size_t(count));
    for (int i = first; i < first + count; ++i) {
        const std::int64_t time = start + std::int64_t(i) * 60;
        const int party =
            firstNumber + int(Random{std::uint32_t(i) + 7}.below(std::uint32_t(numbers)));
        records.push_back({folders[std::size_t(i) % folders.size()], '+' + std::to_string(party),
                           time, makeBody(i), makeStamp(time)});
    }
    return records;
}

void appendVMessage(const Record &record, std::string &text)
{
    text += "BEGIN:VMSG\r\nVERSION:1.1\r\nX-IRMC-STATUS:READ\r\nX-IRMC-BOX:";
    text += boxOf(record.folder);
    text += "\r\nX-IRMC-TYPE:SMS\r\nX-MDO-TIMESTAMP:";
    text += record.stamp;
    text += "\r\nX-QLT-DT:";
    text += record.stamp;
    text += "\r\n";
    if (record.isSent())
        text += "BEGIN:VENV\r\n";
    appendCard(record, text);
    text += "BEGIN:VENV\r\nBEGIN:VBODY\r\nX-SMS;TYPE=TEXT;CHARSET=UTF-8:";
    text += record.body;
    text += "\r\nEND:VBODY\r\nEND:VENV\r\n";
    if (record.isSent())
        text += "END:VENV\r\n";
    text += "END:VMSG\r\n";
}

} // namespace Bench
