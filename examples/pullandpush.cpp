// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// pullandpush SINCE NUMBER TEXT: a sync client. It prints every message that was added or changed
// after SINCE (such as 2024-05-01T10:00:00Z), then adds one to the inbox and prints its id. The
// store is in $KORVASYNC_STORE, else in the data folder's korvasync. A phone that is new has none
// until something is written ("korvasync add", for instance), and a read of it is an error, not an
// empty list: so nobody takes a lost store for one without messages.

#include <korvasync/smssyncinterface.h>
#include <korvasync/vmessageencoder.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTimer>

#include <cstdio>

using namespace KorvaSyncIf;

//! Runs \a use when the result is there; afterwards the pending object deletes itself. A store
//! that fails may give no result at all, so a client sets a limit. Returns what \a use returns.
template <typename Pending, typename Use>
bool await(Pending *pending, Use use)
{
    QEventLoop loop;
    bool isGood = false;
    QObject::connect(pending, &Pending::finished, &loop, [&] {
        isGood = use();
        loop.quit();
    });
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    if (!pending->isError()) // else finished() never comes
        loop.exec();
    return isGood;
}

int main(int argc, char **argv)
{
    // The trace shows texts. The store's warnings stay, which say what is missing.
    QLoggingCategory::setFilterRules(
        QStringLiteral("korvasync.*.debug=false\nkorvasync.pending.critical=false"));
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QDateTime since = QDateTime::fromString(arguments.value(1), Qt::ISODate);
    if (arguments.size() != 4 || !since.isValid()) {
        std::fputs("usage: pullandpush 2024-05-01T10:00:00Z NUMBER TEXT\n", stderr);
        return 2;
    }
    SMSSyncInterface phone;

    for (const LocationId folder : {LocInbox, LocOutbox, LocSent, LocMyFolder}) {
        PendingMsgs *const changes = phone.modifiedMessages(since, folder);
        const bool isPulled = await(changes, [&] {
            // A change carries the time of the change; the message itself has its own.
            for (const SyncSmsInfo &change : changes->syncSmsInfo())
                std::printf("%d\n%s", change.id, qUtf8Printable(phone.message(change.id).vMessage));
            return true;
        });
        if (!isPulled) {
            std::fputs("pullandpush: the messages cannot be read\n", stderr);
            return 1;
        }
    }

    SmsInfo message;
    message.parentId = LocInbox;
    message.fromNumber = arguments.value(2);
    message.body = arguments.value(3);
    message.time = QDateTime::currentDateTimeUtc();
    QList<SyncSmsInfo> messages{VMessageEncoder().encode(message)};
    PendingIds *const added = phone.addNewMessages(messages);
    const bool isPushed = await(added, [&] {
        const bool isAdded = added->status().constFirst() == SmsNoError;
        if (isAdded)
            std::printf("added as %d\n", added->ids().constFirst());
        return isAdded;
    });
    if (!isPushed)
        std::fputs("pullandpush: the message was not added\n", stderr);
    return isPushed ? 0 : 1;
}
