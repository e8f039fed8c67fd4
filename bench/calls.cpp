// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The rows "calls": the call log, added in calls of 1,000 and read as a whole.

#include "directstore.h"
#include "records.h"
#include "request.h"
#include "rows.h"
#include "sqlitestore.h"

#include <korvasync/callsyncinterface.h>

namespace Bench {

namespace {

constexpr int CallSize = 1000;

QString callEntry(const Record &record)
{
    return QStringLiteral("BEGIN:VCALLHISTENTRY\r\nTYPE:%1\r\nTEL:%2\r\nDURATION:0\r\n"
                          "CALL-DATETIME:%3\r\nEND:VCALLHISTENTRY\r\n")
        .arg(record.isSent() ? QStringLiteral("outgoing") : QStringLiteral("incoming"),
             QString::fromStdString(record.number), QString::fromStdString(record.stamp));
}

template <typename AddPortion, typename ReadAll>
void addAndRead(const Turn &turn, const AddPortion &addPortion, const ReadAll &readAll)
{
    turn.report(seconds([&] {
                    for (int first = 0; first < turn.count; first += CallSize)
                        addPortion(first, std::min(turn.count, first + CallSize));
                }),
                "/add");
    int found = 0;
    turn.report(seconds([&] { found = readAll(); }), "/read");
    check(found == turn.count, "calls");
}

void addAndReadOurs(const Turn &turn, const std::vector<Record> &records)
{
    QList<QString> entries;
    for (const Record &record : records)
        entries.append(callEntry(record));
    KorvaSyncIf::CallSyncInterface facade;
    addAndRead(
        turn,
        [&](int first, int end) {
            waitFor(facade.addNewCalls(entries.mid(first, end - first)),
                    [](KorvaSyncIf::PendingStatus *pending) { check(!pending->isError(), "add"); });
        },
        [&] {
            int found = 0;
            constexpr auto all = KorvaSyncIf::CallType(3);
            waitFor(facade.calls(all, QDateTime()), [&](KorvaSyncIf::PendingMsgs *pending) {
                found = int(pending->callLogs().size());
            });
            return found;
        });
}

} // namespace

void addAndReadCalls(const Turn &turn)
{
    const std::vector<Record> records = makeRecords(turn.count, turn.numbers);
    if (turn.isOurs()) {
        addAndReadOurs(turn, records);
    } else if (turn.who == "SQLite") {
        SqliteStore store(turn.folder);
        addAndRead(
            turn, [&](int first, int end) { store.addCalls(records, first, end); },
            [&] { return store.readCalls(); });
    } else {
        DirectStore store(turn.folder, 0, 0);
        addAndRead(
            turn, [&](int first, int end) { store.addCalls(records, first, end); },
            [&] { return store.readCalls(); });
    }
}

} // namespace Bench
