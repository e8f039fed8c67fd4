// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// newest: prints the ids of the newest twenty messages of the inbox, newest first.

#include <korvasync/historyinterface.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>

#include <cstdio>

using namespace KorvaSyncIf;

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*.debug=false"));
    QCoreApplication application(argc, argv);
    HistoryInterface history;
    HistoryFilter newest;
    newest.folders = {LocInbox};
    newest.order = HistoryFilter::Order::NewestFirst;
    newest.limit = 20;
    PendingHistory *const pending = history.query(newest);
    QObject::connect(pending, &PendingHistory::portion, &application,
                     [](const QList<HistoryItem> &items) {
                         for (const HistoryItem &item : items)
                             std::printf("%d\n", item.id);
                     });
    QObject::connect(pending, &PendingHistory::finished, &application, [](PendingHistory *done) {
        if (done->isError())
            std::fputs("newest: the store cannot be read\n", stderr);
        QCoreApplication::exit(done->isError() ? 1 : 0);
    });
    return QCoreApplication::exec();
}
