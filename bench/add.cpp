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

constexpr int CallSize = 1000;

bool isPowerOfTen(int number)
{
    while (number % 10 == 0)
        number /= 10;
    return number == 1;
}

//! Has the records added in portions and reports the time so far at each power of ten.
template <typename AddPortion>
void addInPortions(const Turn &turn, int portion, const AddPortion &addPortion)
{
    double sum = 0;
    for (int first = 0; first < turn.count; first += portion) {
        const int end = std::min(turn.count, first + portion);
        sum += seconds([&] { addPortion(first, end); });
        if (isPowerOfTen(end))
            turn.report(sum, '/' + std::to_string(end));
    }
}

void addOurs(const Turn &turn, const std::vector<Record> &records, int portion)
{
    const QList<KorvaSyncIf::SyncSmsInfo> messages = toSyncSmsInfos(records);
    KorvaSyncIf::SMSSyncInterface facade;
    addInPortions(turn, portion, [&](int first, int end) {
        QList<KorvaSyncIf::SyncSmsInfo> call = messages.mid(first, end - first);
        waitFor(facade.addNewMessages(call), [&](KorvaSyncIf::PendingIds *pending) {
            const QList<int> ids = pending->ids();
            check(!pending->isError() && !ids.contains(-1) && ids.size() == call.size(), "add");
        });
    });
}

//! The fixed query for each message whose conversation is not known yet, which is required.
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

//! How many messages the store in the turn's folder has: it is named in the row.
int present(const Turn &turn) { return turn.row.find("/full") != std::string::npos ? 100000 : 0; }

void addTo(const Turn &turn, int portion)
{
    const std::vector<Record> records = makeRecords(turn.count, turn.numbers, present(turn));
    if (turn.isOurs()) {
        addOurs(turn, records, portion);
    } else if (turn.who == "SQLite") {
        SqliteStore store(turn.folder);
        addInPortions(turn, portion,
                      [&](int first, int end) { store.addMessages(records, first, end); });
    } else {
        DirectStore store(turn.folder, present(turn), turn.numbers);
        std::set<std::string> resolved;
        addInPortions(turn, portion, [&](int first, int end) {
            if (turn.who == "limit, queries")
                resolveNumbers(store, records, first, end, &resolved);
            store.addMessages(records, first, end);
        });
    }
}

} // namespace

void add(const Turn &turn) { addTo(turn, CallSize); }

void addAtOnce(const Turn &turn) { addTo(turn, turn.count); }

void makeStore(const Turn &turn)
{
    if (turn.isOurs()) {
        addOurs(turn, makeRecords(turn.count, turn.numbers), CallSize);
    } else {
        const std::vector<Record> records = makeRecords(turn.count, turn.numbers);
        SqliteStore store(turn.folder);
        for (int first = 0; first < turn.count; first += CallSize)
            store.addMessages(records, first, std::min(turn.count, first + CallSize));
    }
}

} // namespace Bench
