// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// pullandpush SINCE NUMBER TEXT: a sync client. It prints every message that was added or changed
// after SINCE (such as 2024-05-01T10:00:00Z), then adds one to the inbox and prints its id. The
// store is in $KORVASYNC_STORE, else in the data folder's korvasync.
//
// A new phone has no store. A read of it is an error, not an empty list, so that nobody takes a
// lost store for one without messages. The program says so and adds its message first, since the
// first write makes the store. Then it reads again. A store that is damaged takes no message,
// either.

#include <korvasync/smssyncinterface.h>
#include <korvasync/vmessageencoder.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTimer>

#include <cstdio>

using namespace KorvaSyncIf;

//! Waits for a result and runs \a use; afterwards the pending object deletes itself. A store that
//! fails may give no result at all, so a client sets a time limit.
//! \return what \a use returns; false if there is no result
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

//! Prints the changes of all folders.
//! \param ownId  database id of a message that is no news, since this program added it; or -1
//! \return false if a folder cannot be read; then nothing is printed
bool pull(SMSSyncInterface &phone, const QDateTime &since, int ownId)
{
    QByteArray text;
    for (const LocationId folder : {LocInbox, LocOutbox, LocSent, LocMyFolder}) {
        PendingMsgs *const changes = phone.modifiedMessages(since, folder);
        const bool isRead = await(changes, [&] {
            for (const SyncSmsInfo &change : changes->syncSmsInfo()) {
                // A change carries the time of the change; the message itself has its own.
                if (change.id != ownId)
                    text += QByteArray::number(change.id) + '\n'
                        + phone.message(change.id).vMessage.toUtf8();
            }
            return true;
        });
        if (!isRead)
            return false;
    }
    std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
    return true;
}

//! Adds one message to the inbox.
//! \return its database id; -1 if it was not added
int push(SMSSyncInterface &phone, const QString &number, const QString &text)
{
    SmsInfo message;
    message.parentId = LocInbox;
    message.fromNumber = number;
    message.body = text;
    message.time = QDateTime::currentDateTimeUtc();
    QList<SyncSmsInfo> messages{VMessageEncoder().encode(message)};
    PendingIds *const added = phone.addNewMessages(messages);
    int id = -1;
    await(added, [&] {
        id = added->ids().constFirst();
        return true;
    });
    return id;
}

int main(int argc, char **argv)
{
    // The debug messages show texts. The store's warnings stay, which say what is missing.
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
    const bool isPulled = pull(phone, since, -1);
    if (!isPulled)
        std::fputs(
            "pullandpush: the messages cannot be read; a new phone has none. Adding first.\n",
            stderr);
    const int id = push(phone, arguments.at(2), arguments.at(3));
    if (id == -1) {
        std::fputs("pullandpush: the message was not added\n", stderr);
        return 1;
    }
    std::printf("added as %d\n", id);
    if (!isPulled && !pull(phone, since, id)) {
        std::fputs("pullandpush: the messages still cannot be read\n", stderr);
        return 1;
    }
    return 0;
}
