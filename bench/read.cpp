// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The rows "read", "modified" and "message", on a store that is open already.

#include "directstore.h"
#include "request.h"
#include "rows.h"
#include "sqlitestore.h"

#include <korvasync/smssyncinterface.h>

namespace Bench {

namespace {

constexpr int ModifiedReads = 20;
constexpr int SingleReads = 5000;

//! The ids of a store that makeStore() made, in no order.
int anyId(int step, int count) { return int(std::int64_t(step) * 7919 % count) + 1; }

QList<KorvaSyncIf::SyncSmsInfo> collected(KorvaSyncIf::PendingMsgs *pending)
{
    QList<KorvaSyncIf::SyncSmsInfo> messages;
    waitFor(pending, [&](KorvaSyncIf::PendingMsgs *done) { messages = done->syncSmsInfo(); });
    return messages;
}

} // namespace

void readFolder(const Turn &turn)
{
    const int expected = turn.count / 4;
    int found = 0;
    if (turn.isOurs()) {
        KorvaSyncIf::SMSSyncInterface facade;
        facade.message(1); // opens the store
        turn.report(seconds([&] {
            const auto messages = collected(facade.messages(QDateTime(), KorvaSyncIf::LocInbox));
            check(messages.first().vMessage.contains(QLatin1String("INBOX"))
                      && messages.last().vMessage.contains(QLatin1String("INBOX")),
                  "read");
            found = int(messages.size());
        }));
    } else if (turn.who == "SQLite") {
        SqliteStore store(turn.folder);
        turn.report(seconds([&] { found = int(store.readFolder(4098).size()); }));
    } else {
        DirectStore store(turn.folder, 0, 0);
        store.readOne(1);
        turn.report(seconds([&] { found = store.readFolder(4098); }));
    }
    check(found == expected, "rows of the folder");
}

void readModified(const Turn &turn)
{
    const QDateTime now = QDateTime::currentDateTimeUtc().addSecs(60);
    int found = 0;
    if (turn.isOurs()) {
        KorvaSyncIf::SMSSyncInterface facade;
        facade.message(1);
        turn.report(
            seconds([&] {
                for (int i = 0; i < ModifiedReads; ++i)
                    found +=
                        int(collected(facade.modifiedMessages(now, KorvaSyncIf::LocInbox)).size());
            })
            / ModifiedReads);
    } else {
        SqliteStore store(turn.folder);
        turn.report(seconds([&] {
                        for (int i = 0; i < ModifiedReads; ++i)
                            found += store.countModified(4098, now.toMSecsSinceEpoch());
                    })
                    / ModifiedReads);
    }
    check(found == 0, "nothing is modified");
}

void readOne(const Turn &turn)
{
    int found = 0;
    if (turn.isOurs()) {
        KorvaSyncIf::SMSSyncInterface facade;
        facade.message(1);
        turn.report(seconds([&] {
                        for (int i = 0; i < SingleReads; ++i)
                            found += facade.message(anyId(i, turn.count)).id > 0 ? 1 : 0;
                    })
                    / SingleReads);
    } else {
        DirectStore store(turn.folder, 0, 0);
        store.readOne(1);
        turn.report(seconds([&] {
                        for (int i = 0; i < SingleReads; ++i)
                            found += store.readOne(anyId(i, turn.count)) ? 1 : 0;
                    })
                    / SingleReads);
    }
    check(found == SingleReads, "messages by id");
}

// ---- what a program does at its start

void openStore(const Turn &turn)
{
    turn.report(seconds([&] { check(DirectStore(turn.folder, 0, 0).readOne(1), "open"); }));
}

void readAllFolders(const Turn &turn)
{
    int found = 0;
    turn.report(seconds([&] {
        KorvaSyncIf::SMSSyncInterface facade;
        for (const auto folder :
             {KorvaSyncIf::LocInbox, KorvaSyncIf::LocOutbox, KorvaSyncIf::LocDrafts,
              KorvaSyncIf::LocSent, KorvaSyncIf::LocMyFolder})
            found += int(collected(facade.messages(QDateTime(), folder)).size());
    }));
    check(found == turn.count, "all messages");
}

} // namespace Bench
