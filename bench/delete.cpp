// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The row "delete": 10,000 messages by id.

#include "directstore.h"
#include "request.h"
#include "rows.h"
#include "sqlitestore.h"

#include <korvasync/smssyncinterface.h>

namespace Bench {

void removeMessages(const Turn &turn)
{
    std::vector<int> ids;
    for (int id = 1; id <= turn.count; id += 10)
        ids.push_back(id);
    if (turn.isOurs()) {
        const QList<int> list(ids.cbegin(), ids.cend());
        KorvaSyncIf::SMSSyncInterface facade;
        facade.message(1); // opens the store
        turn.report(seconds([&] {
            waitFor(facade.deleteMessages(list), [&](KorvaSyncIf::PendingStatus *pending) {
                check(pending->status().count(KorvaSyncIf::SmsNoError) == list.size(), "delete");
            });
        }));
        check(facade.message(ids.back()).id == -1 && facade.message(2).id == 2, "what is left");
    } else if (turn.who == "SQLite") {
        SqliteStore store(turn.folder);
        turn.report(seconds([&] { store.remove(ids); }));
    } else {
        DirectStore store(turn.folder, 0, 0);
        store.readOne(1);
        turn.report(seconds([&] { store.remove(ids); }));
        check(!store.readOne(ids.back()) && store.readOne(2), "what is left");
    }
}

} // namespace Bench
