// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The rows "encode" and "decode" for EVCard: a card with TEL, NOTE and REV per record.

#include "../harness.h"
#include "../records.h"

#include <libebook-contacts/libebook-contacts.h>

#include <memory>

using namespace Bench;

namespace {

struct Unref
{
    void operator()(EVCard *card) const { g_object_unref(card); }
    void operator()(char *text) const { g_free(text); }
};
using Card = std::unique_ptr<EVCard, Unref>;
using Text = std::unique_ptr<char, Unref>;

void add(EVCard *card, const char *name, const std::string &value)
{
    e_vcard_add_attribute_with_value(card, e_vcard_attribute_new(nullptr, name), value.c_str());
}

Card toCard(const Record &record)
{
    Card card(e_vcard_new());
    add(card.get(), EVC_TEL, record.number);
    add(card.get(), EVC_NOTE, record.body);
    add(card.get(), EVC_REV, record.stamp);
    return card;
}

//! What a caller has of a parsed card; EVCard parses when it is first asked.
std::string noteOf(EVCard *card)
{
    const Text note(e_vcard_attribute_get_value(e_vcard_get_attribute(card, EVC_NOTE)));
    return note.get();
}

} // namespace

int main(int argc, char *argv[])
{
    Turn encode{"encode", "EVCard"};
    if (argc > 1)
        encode.count = std::atoi(argv[1]);
    Turn decode = encode;
    decode.row = "decode";
    const std::vector<Record> records = makeRecords(encode.count, encode.numbers);
    std::vector<Card> cards;
    for (const Record &record : records)
        cards.push_back(toCard(record));
    std::vector<Text> texts;
    texts.reserve(records.size());
    encode.report(seconds([&] {
        for (const Card &card : cards)
            texts.emplace_back(e_vcard_to_string(card.get(), EVC_FORMAT_VCARD_30));
    }));
    std::vector<std::string> notes;
    notes.reserve(records.size());
    decode.report(seconds([&] {
        for (const Text &text : texts) {
            const Card card(e_vcard_new_from_string(text.get()));
            notes.push_back(noteOf(card.get()));
        }
    }));
    for (std::size_t i = 0; i < records.size(); ++i)
        check(notes[i] == records[i].body, "EVCard");
}
