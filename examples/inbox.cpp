// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// inbox: prints the ids of the messages in the inbox, oldest first. The program runs in its event
// loop and waits nowhere.

#include <korvasync/smssyncinterface.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTimer>

#include <cstdio>

using namespace KorvaSyncIf;

int main(int argc, char **argv)
{
    // The debug messages show texts. The store's warnings stay, which say what is missing.
    QLoggingCategory::setFilterRules(
        QStringLiteral("korvasync.*.debug=false\nkorvasync.pending.critical=false"));
    QCoreApplication application(argc, argv);

    SMSSyncInterface phone;
    PendingMsgs *const pending = phone.messages(QDateTime(), LocInbox);
    if (pending->isError()) { // then finished() is never emitted
        std::fputs("inbox: the messages cannot be read\n", stderr);
        return 1;
    }
    QObject::connect(pending, &PendingMsgs::finished, &application, [](PendingMsgs *done) {
        for (const SyncSmsInfo &message : done->syncSmsInfo())
            std::printf("%d\n", message.id);
        QCoreApplication::quit();
    });
    QTimer::singleShot(10000, &application, [] { QCoreApplication::exit(1); }); // no answer in time
    return application.exec();
}
