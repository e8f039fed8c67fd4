// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// followchanges [CURSOR]: prints what was added, changed and deleted since an earlier run had
// printed CURSOR, and the cursor for the next run. Without one, everything counts as added. A phone
// that is new has no store until something is written, which is an error here, not an empty list.

#include <korvasync/historyinterface.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>

#include <cstdio>

using namespace KorvaSyncIf;

static const char *wordFor(HistoryChange::Kind kind)
{
    switch (kind) {
    case HistoryChange::Kind::Added:
        return "added";
    case HistoryChange::Kind::Changed:
        return "changed";
    case HistoryChange::Kind::Deleted:
        break;
    }
    return "deleted";
}

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*.debug=false"));
    QCoreApplication application(argc, argv);
    HistoryInterface history;
    PendingChanges *const changes = history.changes(application.arguments().value(1));
    QObject::connect(changes, &PendingChanges::portion, &application,
                     [](const QList<HistoryChange> &portion) {
                         for (const HistoryChange &change : portion)
                             std::printf("%s %d\n", wordFor(change.kind), change.item.id);
                     });
    QObject::connect(changes, &PendingChanges::finished, &application, [](PendingChanges *done) {
        if (done->error() == HistoryError::UnknownCursor)
            std::fputs("followchanges: no cursor of this store; begin again without one\n", stderr);
        else if (done->isError())
            std::fputs("followchanges: the store cannot be read\n", stderr);
        else
            std::printf("%s\n", qUtf8Printable(done->cursor()));
        QCoreApplication::exit(done->isError() ? 1 : 0);
    });
    return QCoreApplication::exec();
}
