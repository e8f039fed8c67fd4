// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The rows "encode" and "decode" for KContacts: a card with TEL, NOTE and REV per record.

#include "../harness.h"
#include "../records.h"

#include <KContacts/Addressee>
#include <KContacts/VCardConverter>

using namespace Bench;

namespace {

KContacts::Addressee toCard(const Record &record)
{
    KContacts::Addressee card;
    card.setRevision(QDateTime::fromSecsSinceEpoch(record.time, Qt::UTC));
    card.insertPhoneNumber(KContacts::PhoneNumber(QString::fromStdString(record.number)));
    card.setNote(QString::fromStdString(record.body));
    return card;
}

} // namespace

int main(int argc, char *argv[])
{
    Turn encode{"encode", "KContacts"};
    if (argc > 1)
        encode.count = std::atoi(argv[1]);
    Turn decode = encode;
    decode.row = "decode";
    const std::vector<Record> records = makeRecords(encode.count, encode.numbers);
    std::vector<KContacts::Addressee> cards;
    for (const Record &record : records)
        cards.push_back(toCard(record));
    std::vector<QByteArray> texts;
    texts.reserve(records.size());
    const KContacts::VCardConverter converter;
    encode.report(seconds([&] {
        for (const KContacts::Addressee &card : cards)
            texts.push_back(converter.createVCard(card));
    }));
    std::vector<KContacts::Addressee> parsed;
    parsed.reserve(records.size());
    decode.report(seconds([&] {
        for (const QByteArray &text : texts)
            parsed.push_back(converter.parseVCard(text));
    }));
    for (std::size_t i = 0; i < records.size(); ++i)
        check(parsed[i].note().toStdString() == records[i].body, "KContacts");
}
