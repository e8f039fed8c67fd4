// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The row "conversations": a fresh adapter finds 1,000 conversations that exist.

#include "directstore.h"
#include "librecords.h"
#include "rows.h"

#include "syncstorageif/syncstorageif_p.h"

#include <set>

namespace Bench {

void resolveConversations(const Turn &turn)
{
    std::set<std::string> numbers;
    for (const Record &record : makeRecords(turn.count, turn.numbers))
        numbers.insert(record.number);
    if (turn.isOurs()) {
        KorvaSyncIf::SyncStorageIfPrivate::getGroup(KorvaSyncIf::cellularAccountUid(),
                                                    QStringLiteral("1")); // opens the store
        KorvaSyncIf::SyncStorageIfPrivate adapter;
        for (const std::string &number : numbers) {
            Record record{KorvaSyncIf::LocInbox, number, 0, {}, {}};
            adapter.pendingMessages.append(toSmsInfo(record));
        }
        turn.report(seconds([&] { adapter.fillGroupIdsOfMsgs(); }));
        for (const KorvaSyncIf::SmsInfo &message : std::as_const(adapter.pendingMessages))
            check(message.groupId > 0, "conversations");
    } else {
        DirectStore store(turn.folder, 0, 0);
        store.readOne(1);
        turn.report(seconds([&] {
            for (const std::string &number : numbers)
                check(store.findConversation(number), "conversations");
        }));
    }
}

} // namespace Bench
