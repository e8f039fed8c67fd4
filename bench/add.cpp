// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The rows "add": messages through the facade, in calls of 1,000 and all at once.

#include "directstore.h"
#include "librecords.h"
#include "request.h"
#include "rows.h"
#include "sqlitestore.h"

#include <korvasync/smssyncinterface.h>

#include <set>

namespace Bench {

namespace {

bool isPowerOfTen(int number)
{
    while (number % 10 == 0)
        number /= 10;
    return number == 1;
}

//! Has the records added in portions and reports the time so far at each power of ten.
template <typename AddPortion>
void addInPortions(const Turn &turn, const AddPortion &addPortion)
{
    double sum = 0;
    for (int first = 0; first < turn.count; first += turn.callSize) {
        const int end = std::min(turn.count, first + turn.callSize);
        sum += seconds([&] { addPortion(first, end); });
        if (isPowerOfTen(end))
            turn.report(sum, '/' + std::to_string(end));
    }
}

void addOurs(const Turn &turn, const std::vector<Record> &records)
{
    const QList<KorvaSyncIf::SyncSmsInfo> messages = toSyncSmsInfos(records);
    KorvaSyncIf::SMSSyncInterface facade;
    addInPortions(turn, [&](int first, int end) {
        QList<KorvaSyncIf::SyncSmsInfo> call = messages.mid(first, end - first);
        waitFor(facade.addNewMessages(call), [&](KorvaSyncIf::PendingIds *pending) {
            const QList<int> ids = pending->ids();
            check(!pending->isError() && !ids.contains(-1) && ids.size() == call.size(), "add");
        });
    });
}

//! Asks for each conversation that is not known yet, as the library has to.
void resolveNumbers(DirectStore &store, const std::vector<Record> &records, int first, int end,
                    std::set<std::string> *resolved)
{
    for (int i = first; i < end; ++i) {
        const std::string &number = records[std::size_t(i)].number;
        if (resolved->count(number) == 0 && store.findConversation(number))
            resolved->insert(number);
    }
    for (int i = first; i < end; ++i) // those that were not found are made now
        resolved->insert(records[std::size_t(i)].number);
}

} // namespace

void add(const Turn &turn)
{
    const std::vector<Record> records = makeRecords(turn.count, turn.numbers, turn.present);
    if (turn.isOurs()) {
        addOurs(turn, records);
    } else if (turn.who == "SQLite") {
        SqliteStore store(turn.folder);
        addInPortions(turn, [&](int first, int end) { store.addMessages(records, first, end); });
    } else {
        DirectStore store(turn.folder, turn.present, turn.numbers);
        std::set<std::string> resolved;
        addInPortions(turn, [&](int first, int end) {
            if (turn.who == "limit, queries")
                resolveNumbers(store, records, first, end, &resolved);
            store.addMessages(records, first, end);
        });
    }
}

void makeStore(const Turn &turn)
{
    if (turn.isOurs()) {
        addOurs(turn, makeRecords(turn.count, turn.numbers));
    } else {
        const std::vector<Record> records = makeRecords(turn.count, turn.numbers);
        SqliteStore store(turn.folder);
        for (int first = 0; first < turn.count; first += turn.callSize)
            store.addMessages(records, first, std::min(turn.count, first + turn.callSize));
    }
}

} // namespace Bench
